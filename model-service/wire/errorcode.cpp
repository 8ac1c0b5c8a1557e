// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/messages.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lumora::wire {

namespace {

constexpr std::array<std::pair<ErrorCode, std::string_view>, 9> names{{
    {ErrorCode::cancelled, "cancelled"},
    {ErrorCode::notLoaded, "notLoaded"},
    {ErrorCode::badFile, "badFile"},
    {ErrorCode::badProjector, "badProjector"},
    {ErrorCode::noMemory, "noMemory"},
    {ErrorCode::contextFull, "contextFull"},
    {ErrorCode::cutShort, "cutShort"},
    {ErrorCode::tooManyCalls, "tooManyCalls"},
    {ErrorCode::internal, "internal"},
}};

} // namespace

std::string_view errorCodeName(ErrorCode code)
{
    const auto *const found = std::ranges::find(names, code, &std::pair<ErrorCode, std::string_view>::first);
    return found->second;
}

std::optional<ErrorCode> errorCodeFromName(std::string_view name)
{
    const auto *const found = std::ranges::find(names, name, &std::pair<ErrorCode, std::string_view>::second);
    return found == names.end() ? std::nullopt : std::optional(found->first);
}

} // namespace lumora::wire
