// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/matrix.h"

#include <cblas.h>

namespace lumora::training {

namespace {

float keeping(Into into)
{
    return into == Into::add ? 1.0F : 0.0F;
}

} // namespace

void multiply(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor)
{
    cblas_sgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, result.rows, result.columns, left.columns, factor, left.data,
                left.stride, right.data, right.stride, keeping(into), result.data, result.stride);
}

void multiplyByTransposed(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor)
{
    cblas_sgemm(CblasRowMajor, CblasNoTrans, CblasTrans, result.rows, result.columns, left.columns, factor, left.data,
                left.stride, right.data, right.stride, keeping(into), result.data, result.stride);
}

void multiplyTransposed(ConstMatrix left, ConstMatrix right, Matrix result, Into into, float factor)
{
    cblas_sgemm(CblasRowMajor, CblasTrans, CblasNoTrans, result.rows, result.columns, left.rows, factor, left.data,
                left.stride, right.data, right.stride, keeping(into), result.data, result.stride);
}

void useOneThreadForProducts()
{
    openblas_set_num_threads(1);
}

} // namespace lumora::training
