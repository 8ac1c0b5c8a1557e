// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/compression.h"

#include <memory>
#include <new>
#include <zstd.h>

namespace lumora {

namespace {

constexpr int quickLevel = 1;

struct Deleter
{
    void operator()(ZSTD_CCtx *context) const { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx *context) const { ZSTD_freeDCtx(context); }
};

/// The context that create makes, made once a thread: most often it is larger than what goes through it.
template <auto create>
auto *context()
{
    using Context = std::remove_pointer_t<decltype(create())>;
    static thread_local const std::unique_ptr<Context, Deleter> made(create());
    if (!made)
        throw std::bad_alloc();
    return made.get();
}

} // namespace

QByteArray compressed(const QByteArray &bytes)
{
    QByteArray result(qsizetype(ZSTD_compressBound(size_t(bytes.size()))), Qt::Uninitialized);
    const size_t size = ZSTD_compressCCtx(context<ZSTD_createCCtx>(), result.data(), size_t(result.size()),
                                          bytes.constData(), size_t(bytes.size()), quickLevel);
    if (ZSTD_isError(size))
        throw std::bad_alloc(); // there is no other error, with room enough
    return {result.constData(), qsizetype(size)};
}

QByteArray decompressed(const QByteArray &bytes)
{
    const auto size = ZSTD_getFrameContentSize(bytes.constData(), size_t(bytes.size()));
    QByteArray result(qsizetype(size), Qt::Uninitialized);
    if (ZSTD_decompressDCtx(context<ZSTD_createDCtx>(), result.data(), size_t(size), bytes.constData(),
                            size_t(bytes.size())) != size)
        qFatal("The memory is damaged.");
    return result;
}

} // namespace lumora
