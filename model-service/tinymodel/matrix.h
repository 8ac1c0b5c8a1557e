// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace lumora::tinymodel {

/// One named matrix, row after row. Vectors have one row.
struct Matrix
{
    std::string name;
    std::int64_t columns = 0;
    std::int64_t rows = 1;
    std::vector<float> values;
    std::vector<std::int64_t> sides; ///< where it has more than two dimensions, the innermost first: in place of
                                     ///< columns and rows
};

/// Numbers with the mean 0, the same in every run.
class Random
{
public:
    void fill(std::vector<float> &values, float size);
    Matrix matrix(const std::string &name, std::int64_t columns, std::int64_t rows, float size);

private:
    std::mt19937 m_bits{20260101};
    std::normal_distribution<float> m_normal;
};

Matrix constant(const std::string &name, std::int64_t columns, float value);

/// The size that a product of this many random numbers of unit size and as many weights needs to be of unit size, too.
float inverseRoot(std::int64_t count);

} // namespace lumora::tinymodel
