// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "core/inbox.h"
#include "core/tokencontext.h"
#include "wire/messages.h"

#include <cstdint>
#include <functional>
#include <string>

namespace lumora::service {

/// Works on requests, one after the other, and answers each.
class Service
{
public:
    using Send = std::function<void(const wire::Answer &)>;

    /// send is called by the thread that runs. loadCrashes is told, before a file is given to the engine, what is to be
    /// answered should the engine crash over it, and null once that is over.
    Service(Engine &engine, Inbox &inbox, Send send, std::function<void(const wire::Answer *)> loadCrashes);

    /// Returns once the inbox is closed.
    void run();

private:
    void deliver(const wire::Answer &answer);
    wire::Answer answer(const Job &job);
    wire::Answer work(const wire::Load &load, const std::stop_token &stop);
    wire::Answer work(const wire::Count &count, const std::stop_token &stop);
    wire::Answer work(const wire::Prepare &prepare, const std::stop_token &stop);
    wire::Answer work(const wire::Respond &respond, const std::stop_token &stop);
    bool loadProjector(std::int64_t id, const std::string &path, const std::stop_token &stop, std::string &description);
    void requireModel() const;

    Engine &m_engine;
    Inbox &m_inbox;
    Send m_send;
    std::function<void(const wire::Answer *)> m_loadCrashes;
    TokenContext m_context;
};

} // namespace lumora::service
