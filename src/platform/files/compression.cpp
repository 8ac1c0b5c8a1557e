// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/compression.h"

#include <memory>
#include <new>
#include <zstd.h>

namespace lumora {

namespace {

constexpr int fastest = 1;

struct Deleter
{
    void operator()(ZSTD_CCtx *context) const { ZSTD_freeCCtx(context); }
};

/// Its tables are larger than what is compressed most often: they are made once.
ZSTD_CCtx *compressionContext()
{
    static thread_local const std::unique_ptr<ZSTD_CCtx, Deleter> context(ZSTD_createCCtx());
    if (!context)
        throw std::bad_alloc();
    return context.get();
}

} // namespace

QByteArray compressed(const QByteArray &bytes)
{
    QByteArray result(qsizetype(ZSTD_compressBound(size_t(bytes.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compressCCtx(compressionContext(), result.data(), size_t(result.size()), bytes.constData(),
                                          size_t(bytes.size()), fastest);
    if (ZSTD_isError(size))
        throw std::bad_alloc(); // it has no other error, with room enough
    return {result.constData(), qsizetype(size)};
}

QByteArray decompressed(const QByteArray &bytes)
{
    const auto size = ZSTD_getFrameContentSize(bytes.constData(), size_t(bytes.size()));
    QByteArray result(qsizetype(size), Qt::Uninitialized);
    if (ZSTD_decompress(result.data(), size_t(size), bytes.constData(), size_t(bytes.size())) != size)
        qFatal("The memory is damaged.");
    return result;
}

} // namespace lumora
