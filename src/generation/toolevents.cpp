// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/toolevents.h"

#include <algorithm>

namespace lumora {

namespace {

void complete(QList<ToolEvent> &events, const QString &id)
{
    const auto event = std::ranges::find(events, id, &ToolEvent::id);
    if (event != events.end())
        event->status = QStringLiteral("Complete");
}

} // namespace

QList<ToolEvent> toolEvents(const Transcript &transcript)
{
    QList<ToolEvent> events;
    for (const Transcript::Entry &entry : transcript.entries) {
        if (const auto *calls = std::get_if<Transcript::ToolCalls>(&entry)) {
            for (const Transcript::ToolCall &call : calls->calls)
                events.append({call.id, call.toolName, QStringLiteral("Running")});
        } else if (const auto *output = std::get_if<Transcript::ToolOutput>(&entry)) {
            complete(events, output->id);
        }
    }
    return events;
}

} // namespace lumora
