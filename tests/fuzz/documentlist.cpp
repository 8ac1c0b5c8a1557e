// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/listfile.h"
#include "fuzz/fuzztarget.h"

// What can be read of a list can be written, and is read as the same.
void lumora::fuzz::tryInput(std::string_view input)
{
    const auto read = decodeDocuments(QByteArray(input.data(), qsizetype(input.size())));
    if (read)
        require(decodeDocuments(encodeDocuments(*read)) == read, "A list reads as another one once it is saved.");
}
