// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/matrix.h"

#include <array>
#include <span>

namespace lumora::training {

// What the matrices of a head are put together from. Nothing is replaced: all of it is added to what is there.

void shrinkTo(float share, Matrix numbers);

/// The identity, from a row and a column on.
void addIdentity(Matrix rows, int firstRow, int firstColumn, int count, float size);

/// The same, but for a direction in it, of length one, which becomes nothing.
void addIdentityWithout(std::span<const float> direction, Matrix rows, int firstRow, int firstColumn, float size);

/// Rows, from a row on; they may have fewer columns.
void addRows(Matrix to, int firstRow, ConstMatrix rows, float size);

/// Rows as columns, from a column on.
void addTransposed(Matrix to, int firstColumn, ConstMatrix rows, float size);

/// A pair of a head's numbers in which its queries stand ahead of its keys, by an angle.
struct Turn
{
    int pair;
    float size;
    float angle;
};

/// Three that tell near from nearer, and a slower one in which distance hardly matters.
std::array<Turn, 4> nearestFirst(int headSize);

/// Queries that are made of one column and stand so. Replaces what is there.
void setTurns(Matrix queries, int column, float size, std::span<const Turn> turns);

} // namespace lumora::training
