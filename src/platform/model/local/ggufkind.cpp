// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/ggufkind.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <optional>

namespace lumora {

namespace {

constexpr qint64 headSize = 4096; // whoever writes such files begins with the architecture

/// Reads numbers and texts from the start of a file's head; nothing once it has come to the end.
class HeadReader
{
public:
    explicit HeadReader(QByteArrayView head)
        : m_rest(head)
    {
    }

    template <typename Number>
    std::optional<Number> number()
    {
        const auto bytes = take(sizeof(Number));
        return bytes ? std::optional(qFromLittleEndian<Number>(bytes->data())) : std::nullopt;
    }

    std::optional<QByteArrayView> text()
    {
        const auto length = number<quint64>();
        return length ? take(*length) : std::nullopt;
    }

    std::optional<QByteArrayView> take(quint64 size)
    {
        if (size > quint64(m_rest.size()))
            return std::nullopt;
        const QByteArrayView taken = m_rest.first(qsizetype(size));
        m_rest = m_rest.sliced(qsizetype(size));
        return taken;
    }

private:
    QByteArrayView m_rest;
};

/// Goes past a value; false where that is not possible, or the kind is none whose length is known at once.
bool skip(HeadReader &head, quint32 kind)
{
    constexpr quint32 string = 8;
    constexpr std::array<quint64, 13> sizes = {1, 1, 2, 2, 4, 4, 4, 1, 0, 0, 8, 8, 8};
    if (kind == string)
        return head.text().has_value();
    return kind < sizes.size() && sizes.at(kind) > 0 && head.take(sizes.at(kind));
}

std::optional<QByteArrayView> architectureOf(QByteArrayView bytes)
{
    constexpr qsizetype lengthOfStart = 4 + 4 + 8 + 8; // magic, version, and how many tensors and entries there are
    if (bytes.size() < lengthOfStart || !bytes.startsWith("GGUF"))
        return std::nullopt;
    HeadReader head(bytes.sliced(lengthOfStart));
    for (;;) {
        const auto key = head.text();
        const auto kind = head.number<quint32>();
        if (!key || !kind)
            return std::nullopt;
        if (*key == "general.architecture")
            return head.text();
        if (!skip(head, *kind))
            return std::nullopt;
    }
}

} // namespace

bool beginsLikeModel(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "GGUF";
}

GgufKind ggufKind(const QString &path)
{
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.read(headSize) : QByteArray();
    if (const auto architecture = architectureOf(bytes))
        return *architecture == "clip" ? GgufKind::projector : GgufKind::model;
    const bool isCalledSo = QFileInfo(path).fileName().startsWith(QLatin1String("mmproj"), Qt::CaseInsensitive);
    return isCalledSo ? GgufKind::projector : GgufKind::model;
}

} // namespace lumora
