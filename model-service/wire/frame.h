// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumora::wire {

/// The largest body of a frame, in bytes.
constexpr std::size_t maximumBodySize = std::size_t{64} * 1024 * 1024;

/// The body with its length before it. Throws std::length_error where the body is empty or above the limit.
std::string frame(std::string_view body);

/// Cuts a stream of bytes, which may come in pieces of any size, into the bodies of its frames.
/// It holds no more than the bytes that have come; a length that is only announced costs nothing.
class FrameReader
{
public:
    void append(std::string_view bytes);

    /// The next whole body; nothing while it has not all come, and nothing ever again once the stream is broken.
    std::optional<std::string> next();

    /// A length of zero or above the limit was read: where the next frame begins cannot be known.
    bool isBroken() const { return m_broken; }

    /// Bytes of an unfinished frame are held. At the end of a stream this says that it was cut.
    bool isInsideFrame() const { return m_buffer.size() > m_start; }

private:
    std::string m_buffer;
    std::size_t m_start = 0; // of the first byte that no body has taken
    bool m_broken = false;
};

} // namespace lumora::wire
