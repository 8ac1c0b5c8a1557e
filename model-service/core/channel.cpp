// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/channel.h"

#include "wire/frame.h"

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace lumora::service {

ChannelEnd readRequests(int descriptor, Inbox &inbox)
{
    wire::FrameReader frames;
    std::vector<char> buffer(std::size_t{1} << 16U);
    for (;;) {
        const ssize_t count = read(descriptor, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return frames.isInsideFrame() ? ChannelEnd::malformed : ChannelEnd::closed;
        frames.append({buffer.data(), static_cast<std::size_t>(count)});
        for (;;) {
            const auto body = frames.next();
            if (!body)
                break;
            auto request = wire::decodeRequest(*body);
            if (!request)
                return ChannelEnd::malformed;
            inbox.post(std::move(*request));
        }
        if (frames.isBroken())
            return ChannelEnd::malformed;
    }
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace lumora::service
