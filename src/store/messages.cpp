// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/messages.h"

#include "platform/files/compression.h"
#include "store/historyfile.h"

namespace lumora {

Messages::Messages(std::vector<ChatMessage> messages)
    : m_messages(std::move(messages))
{
}

Messages::Messages(std::initializer_list<ChatMessage> messages)
    : m_messages(messages)
{
}

void Messages::pack()
{
    if (m_messages.empty())
        return;
    m_packed = compressed(encodeMessages(m_messages));
    m_messages = {};
}

QByteArray Messages::packedJson() const
{
    return m_packed.isNull() ? QByteArray() : decompressed(m_packed);
}

void Messages::unpack() const
{
    if (m_packed.isNull())
        return;
    m_messages = decodeMessages(decompressed(m_packed));
    m_packed = {};
}

const std::vector<ChatMessage> &Messages::all() const
{
    unpack();
    return m_messages;
}

std::vector<ChatMessage> &Messages::all()
{
    unpack();
    return m_messages;
}

} // namespace lumora
