// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>

namespace lumora::training {

/// Numbers row after row, of which each row begins `stride` numbers after the one before.
template <typename Number>
struct MatrixView
{
    Number *data = nullptr;
    int rows = 0;
    int columns = 0;
    int stride = 0;

    MatrixView() = default;
    MatrixView(Number *numbers, int rowCount, int columnCount, int rowStride)
        : data(numbers)
        , rows(rowCount)
        , columns(columnCount)
        , stride(rowStride)
    {
    }
    MatrixView(Number *numbers, int rowCount, int columnCount)
        : MatrixView(numbers, rowCount, columnCount, columnCount)
    {
    }
    template <typename Other>
    MatrixView(const MatrixView<Other> &other) // NOLINT(google-explicit-constructor): what can be written can be read
        : MatrixView(other.data, other.rows, other.columns, other.stride)
    {
    }

    Number *row(int index) const { return data + static_cast<std::ptrdiff_t>(index) * stride; }

    /// count rows from the first one on, and of these count columns from a first one on.
    MatrixView rowsFrom(int first, int count) const { return {row(first), count, columns, stride}; }
    MatrixView columnsFrom(int first, int count) const { return {data + first, rows, count, stride}; }
};

using Matrix = MatrixView<float>;
using ConstMatrix = MatrixView<const float>;

enum class Into {
    replace,
    add,
};

// Each: the product, times a factor, replaces what is in the result or is added to it. One thread.

/// result = left · right
void multiply(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor = 1.0F);

/// result = left · rightᵀ
void multiplyByTransposed(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor = 1.0F);

/// result = leftᵀ · right
void multiplyTransposed(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor = 1.0F);

/// Keeps the products from starting threads of their own. Once, before the first.
void useOneThreadForProducts();

} // namespace lumora::training
