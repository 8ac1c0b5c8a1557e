// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/randomnumbers.h"

#include "trainer/matrix.h"

#include <cmath>
#include <cstddef>

namespace lumora::training {

// By Gram and Schmidt.
std::vector<float> RandomNumbers::orthogonalRows(int rows, int columns)
{
    std::vector<float> numbers(static_cast<std::size_t>(rows) * columns);
    const Matrix all(numbers.data(), rows, columns);
    for (int row = 0; row < rows; ++row) {
        float *const made = all.row(row);
        for (int i = 0; i < columns; ++i)
            made[i] = normal(1.0F);
        for (int before = 0; before < row; ++before) {
            float common = 0;
            for (int i = 0; i < columns; ++i)
                common += made[i] * all.row(before)[i];
            for (int i = 0; i < columns; ++i)
                made[i] -= common * all.row(before)[i];
        }
        float squares = 0;
        for (int i = 0; i < columns; ++i)
            squares += made[i] * made[i];
        for (int i = 0; i < columns; ++i)
            made[i] /= std::sqrt(squares);
    }
    return numbers;
}

} // namespace lumora::training
