// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/kernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace lumora::training {

namespace {

/// e to the power of a number, in steps that a compiler turns into vector instructions: 2 to a whole number is a matter
/// of bits, and 2 to the rest, at most a half, a short series.
inline float exponential(float number)
{
    constexpr float lowest = -87.0F; // below, the result is no normal number
    constexpr float highest = 88.0F;
    constexpr float rounding = 12582912.0F; // 1.5 · 2²³: adding it leaves a whole number in the last bits
    const float power = std::min(std::max(number, lowest), highest) * 1.44269504F;
    const float shifted = power + rounding;
    const float rest = power - (shifted - rounding);
    float series = 1.5403530e-4F;
    series = series * rest + 1.3333558e-3F;
    series = series * rest + 9.6181291e-3F;
    series = series * rest + 5.5504109e-2F;
    series = series * rest + 2.4022651e-1F;
    series = series * rest + 6.9314718e-1F;
    series = series * rest + 1.0F;
    return series * std::bit_cast<float>((std::bit_cast<std::uint32_t>(shifted) << 23U) + 0x3F800000U);
}

float sumOfSquares(const float *numbers, int count)
{
    float sum = 0;
#pragma omp simd reduction(+ : sum)
    for (int i = 0; i < count; ++i)
        sum += numbers[i] * numbers[i];
    return sum;
}

} // namespace

void normalise(ConstMatrix input, std::span<const float> gains, float epsilon, Matrix output, std::span<float> scales)
{
    const auto width = static_cast<float>(input.columns);
    for (int row = 0; row < input.rows; ++row) {
        const float *const in = input.row(row);
        float *const out = output.row(row);
        const float scale = 1.0F / std::sqrt(sumOfSquares(in, input.columns) / width + epsilon);
        scales[row] = scale;
        for (int i = 0; i < input.columns; ++i)
            out[i] = in[i] * scale * gains[i];
    }
}

void normaliseBackward(ConstMatrix input, std::span<const float> gains, std::span<const float> scales,
                       ConstMatrix outputGradient, Matrix inputGradient, std::span<float> gainGradients)
{
    const auto width = static_cast<float>(input.columns);
    for (int row = 0; row < input.rows; ++row) {
        const float *const in = input.row(row);
        const float *const from = outputGradient.row(row);
        float *const to = inputGradient.row(row);
        const float scale = scales[row];
        float sum = 0;
#pragma omp simd reduction(+ : sum)
        for (int i = 0; i < input.columns; ++i)
            sum += gains[i] * from[i] * in[i];
        sum *= scale * scale * scale / width;
        for (int i = 0; i < input.columns; ++i) {
            to[i] += scale * gains[i] * from[i] - in[i] * sum;
            gainGradients[i] += from[i] * in[i] * scale;
        }
    }
}

Rotations::Rotations(int headSize, int positions, float base)
    : m_headSize(headSize)
{
    for (int position = 0; position < positions; ++position) {
        for (int i = 0; i < headSize; i += 2) {
            const double angle = position * std::pow(double{base}, -double(i) / headSize);
            m_cosines.push_back(static_cast<float>(std::cos(angle)));
            m_sines.push_back(static_cast<float>(std::sin(angle)));
        }
    }
}

void Rotations::turn(Matrix rows, std::span<const int> positions, Direction direction) const
{
    const float sign = direction == Direction::forward ? 1.0F : -1.0F;
    const int pairs = m_headSize / 2;
    for (int row = 0; row < rows.rows; ++row) {
        const std::size_t place = static_cast<std::size_t>(positions[row]) * pairs;
        const float *const cosines = &m_cosines[place];
        const float *const sines = &m_sines[place];
        for (float *head = rows.row(row); head < rows.row(row) + rows.columns; head += m_headSize) {
            for (int pair = 0; pair < pairs; ++pair) {
                const float x = head[2 * pair];
                const float y = head[2 * pair + 1];
                head[2 * pair] = x * cosines[pair] - sign * y * sines[pair];
                head[2 * pair + 1] = sign * x * sines[pair] + y * cosines[pair];
            }
        }
    }
}

void gate(ConstMatrix gateUp, Matrix output)
{
    const int count = output.columns;
    for (int row = 0; row < output.rows; ++row) {
        const float *const gates = gateUp.row(row);
        float *const out = output.row(row);
#pragma omp simd
        for (int i = 0; i < count; ++i)
            out[i] = gates[i] / (1.0F + exponential(-gates[i])) * gates[count + i];
    }
}

void gateBackward(ConstMatrix gateUp, ConstMatrix outputGradient, Matrix gateUpGradient)
{
    const int count = outputGradient.columns;
    for (int row = 0; row < outputGradient.rows; ++row) {
        const float *const gates = gateUp.row(row);
        const float *const from = outputGradient.row(row);
        float *const to = gateUpGradient.row(row);
#pragma omp simd
        for (int i = 0; i < count; ++i) {
            const float x = gates[i];
            const float open = 1.0F / (1.0F + exponential(-x));
            to[i] = from[i] * gates[count + i] * open * (1.0F + x * (1.0F - open));
            to[count + i] = from[i] * x * open;
        }
    }
}

float exponentials(std::span<float> numbers, float shift)
{
    float sum = 0;
    float *const all = numbers.data();
    const auto count = static_cast<int>(numbers.size());
#pragma omp simd reduction(+ : sum)
    for (int i = 0; i < count; ++i) {
        all[i] = exponential(all[i] - shift);
        sum += all[i];
    }
    return sum;
}

float largest(std::span<const float> numbers)
{
    float most = numbers.front();
    const float *const all = numbers.data();
    const auto count = static_cast<int>(numbers.size());
#pragma omp simd reduction(max : most)
    for (int i = 0; i < count; ++i)
        most = std::max(most, all[i]);
    return most;
}

} // namespace lumora::training
