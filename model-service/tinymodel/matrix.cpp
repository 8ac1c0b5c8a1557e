// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "matrix.h"

#include <cmath>

namespace lumora::tinymodel {

void Random::fill(std::vector<float> &values, float size)
{
    for (float &value : values)
        value = size * m_normal(m_bits);
}

Matrix Random::matrix(const std::string &name, std::int64_t columns, std::int64_t rows, float size)
{
    Matrix made{name, columns, rows, std::vector<float>(static_cast<std::size_t>(columns * rows)), {}};
    fill(made.values, size);
    return made;
}

Matrix constant(const std::string &name, std::int64_t columns, float value)
{
    return {name, columns, 1, std::vector<float>(static_cast<std::size_t>(columns), value), {}};
}

float inverseRoot(std::int64_t count)
{
    return 1.0F / std::sqrt(static_cast<float>(count));
}

} // namespace lumora::tinymodel
