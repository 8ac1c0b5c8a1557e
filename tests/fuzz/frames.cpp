// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"
#include "wire/frame.h"

#include <string>

using namespace lumora;

namespace {

/// The bodies of a stream that comes in pieces of this size, each as a frame again.
std::string framed(std::string_view stream, std::size_t pieceSize, bool &isBroken)
{
    wire::FrameReader reader;
    std::string result;
    for (std::size_t at = 0; at < stream.size(); at += pieceSize) {
        reader.append(stream.substr(at, pieceSize));
        while (const auto body = reader.next())
            result += wire::frame(*body);
    }
    isBroken = reader.isBroken();
    fuzz::require(isBroken || reader.isInsideFrame() == (result.size() < stream.size()),
                  "What is held of a frame is not what has come of it.");
    return result;
}

} // namespace

// A stream is cut into the same frames whatever its pieces are, and these are the stream's beginning.
void lumora::fuzz::tryInput(std::string_view input)
{
    bool isBroken = false;
    bool isBrokenToo = false;
    const std::string whole = framed(input, std::max<std::size_t>(input.size(), 1), isBroken);
    require(input.starts_with(whole), "The frames are not those of the stream.");
    for (const std::size_t pieceSize : {1, 3, 7})
        require(framed(input, pieceSize, isBrokenToo) == whole && isBroken == isBrokenToo,
                "The pieces of the stream make a difference.");
}
