// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/bytesink.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <memory>

namespace lumora {

/// Writes compact JSON, UTF-8, keys in the order in which they are given. Texts may hold anything; what UTF-8 cannot
/// carry is written as U+FFFD. Numbers must be finite, and read back as the same double. What is written goes to the
/// sink in pieces of some 100 KB, while it still lies in the processor's cache.
class JsonWriter
{
public:
    explicit JsonWriter(ByteSink sink);
    ~JsonWriter();
    Q_DISABLE_COPY_MOVE(JsonWriter)

    void startObject();
    void endObject();
    void startArray();
    void endArray();

    /// key: plain ASCII
    void key(QByteArrayView key);

    void text(const QString &text);
    void utf8Text(QByteArrayView text);
    void texts(const QStringList &texts);
    /// An array that another writer wrote.
    void array(QByteArrayView json);
    void number(double number);
    void integer(qint64 integer);
    void identifier(const QUuid &id);

    /// Gives the sink the last piece. To be called once, at the end.
    void finish();

private:
    void drainWhereFull();

    struct Output;
    std::unique_ptr<Output> m_output;
};

} // namespace lumora
