// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <string_view>

namespace lumora::training {

/// A byte as the one printable character that stands for it in vocabularies of byte pairs, in UTF-8. Printable
/// characters of Latin-1 stand for themselves; the other 68 bytes are U+0100 and on, in order, so that a space is Ġ.
const std::string &printable(unsigned char byte);

/// All bytes so.
std::string printable(std::string_view bytes);

} // namespace lumora::training
