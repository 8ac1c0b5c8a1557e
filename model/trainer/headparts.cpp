// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/headparts.h"

#include <cmath>
#include <cstddef>

namespace lumora::training {

void shrinkTo(float share, Matrix numbers)
{
    for (int row = 0; row < numbers.rows; ++row)
        for (int i = 0; i < numbers.columns; ++i)
            numbers.row(row)[i] *= share;
}

void addIdentity(Matrix rows, int firstRow, int firstColumn, int count, float size)
{
    for (int i = 0; i < count; ++i)
        rows.row(firstRow + i)[firstColumn + i] += size;
}

void addIdentityWithout(std::span<const float> direction, Matrix rows, int firstRow, int firstColumn, float size)
{
    const int count = static_cast<int>(direction.size());
    addIdentity(rows, firstRow, firstColumn, count, size);
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < count; ++j)
            rows.row(firstRow + i)[firstColumn + j] -=
                size * direction[static_cast<std::size_t>(i)] * direction[static_cast<std::size_t>(j)];
}

void addRows(Matrix to, int firstRow, ConstMatrix rows, float size)
{
    for (int row = 0; row < rows.rows; ++row)
        for (int i = 0; i < rows.columns; ++i)
            to.row(firstRow + row)[i] += rows.row(row)[i] * size;
}

void addTransposed(Matrix to, int firstColumn, ConstMatrix rows, float size)
{
    for (int row = 0; row < rows.rows; ++row)
        for (int i = 0; i < rows.columns; ++i)
            to.row(i)[firstColumn + row] += rows.row(row)[i] * size;
}

std::array<Turn, 4> nearestFirst(int headSize)
{
    const int fastest = headSize / 4;
    return {{{fastest, 1.0F, 0.8F}, {fastest + 2, 1.0F, 0.8F}, {fastest + 4, 1.0F, 0.8F}, {fastest + 8, 2.0F, 0.0F}}};
}

void setTurns(Matrix queries, int column, float size, std::span<const Turn> turns)
{
    for (const Turn &turn : turns) {
        queries.row(turn.pair)[column] = size * turn.size * std::cos(turn.angle);
        queries.row(turn.pair + 1)[column] = size * turn.size * std::sin(turn.angle);
    }
}

} // namespace lumora::training
