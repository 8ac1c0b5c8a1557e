// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"
#include "store/historyfile.h"

// What can be read of a history can be written, and is read as the same.
void lumora::fuzz::tryInput(std::string_view input)
{
    auto read = decodeConversations(QByteArray(input.data(), qsizetype(input.size())));
    if (!read)
        return;
    const QByteArray written = encodeConversations(*read);
    require(decodeConversations(written) == read, "A history reads as another one once it is saved.");
    for (Conversation &conversation : *read)
        conversation.messages.pack();
    require(encodeConversations(*read) == written, "Packed messages are written as others.");
    for (Conversation &conversation : *read)
        conversation.messages.all();
    require(encodeConversations(*read) == written, "Messages are others once they were packed.");
}
