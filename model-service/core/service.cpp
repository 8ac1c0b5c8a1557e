// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/service.h"

#include "core/conversation.h"
#include "core/failure.h"
#include "core/reply.h"

#include <new>
#include <utility>

namespace lumora::service {

namespace {

wire::Answer failed(std::int64_t id, const Failure &failure)
{
    return wire::Failed{id, failure.code(), failure.message()};
}

/// Says, as long as it lives, what a crash of the engine would mean.
class CrashWatch
{
public:
    CrashWatch(const std::function<void(const wire::Answer *)> &tell, std::int64_t id, const Failure &meaning)
        : m_tell(tell)
    {
        const wire::Answer ifItCrashes = failed(id, meaning);
        m_tell(&ifItCrashes);
    }
    ~CrashWatch() { m_tell(nullptr); }
    CrashWatch(const CrashWatch &) = delete;
    CrashWatch &operator=(const CrashWatch &) = delete;

private:
    const std::function<void(const wire::Answer *)> &m_tell;
};

} // namespace

Service::Service(Engine &engine, Inbox &inbox, Send send, std::function<void(const wire::Answer *)> loadCrashes)
    : m_engine(engine)
    , m_inbox(inbox)
    , m_send(std::move(send))
    , m_loadCrashes(std::move(loadCrashes))
    , m_context(engine)
{
}

void Service::run()
{
    for (;;) {
        const auto job = m_inbox.next();
        if (!job)
            return;
        deliver(answer(*job));
    }
}

// A message that cannot be sent must not end the process, or nobody would be told.
void Service::deliver(const wire::Answer &answer)
{
    try {
        m_send(answer);
    } catch (const std::exception &error) {
        const auto id = std::visit([](const auto &message) { return message.id; }, answer);
        m_send(failed(id, internalFailure(error.what())));
    }
}

wire::Answer Service::answer(const Job &job)
{
    return std::visit(
        [&](const auto &request) -> wire::Answer {
            try {
                if (job.stop.stop_requested())
                    throw cancelled();
                if constexpr (requires { work(request, job.stop); })
                    return work(request, job.stop);
                else
                    throw internalFailure("a message came out of its turn");
            } catch (const Failure &failure) {
                return failed(request.id, failure);
            } catch (const std::bad_alloc &) {
                m_context.forget();
                return failed(request.id, {wire::ErrorCode::noMemory,
                                           "There is not enough free memory. Close other programs and try again."});
            } catch (const std::exception &error) {
                m_context.forget();
                return failed(request.id, internalFailure(error.what()));
            }
        },
        job.request);
}

wire::Answer Service::work(const wire::Load &load, const std::stop_token &stop)
{
    m_context.forget();
    std::string description;
    {
        const CrashWatch watch(m_loadCrashes, load.id,
                               badFile(load.path, "the program that runs it crashed while it read the file"));
        description = m_engine.load(load.path, load.contextLimit, stop);
    }
    const bool readsImages = load.projector && loadProjector(load.id, *load.projector, stop, description);
    return wire::Loaded{load.id, static_cast<std::int64_t>(m_engine.contextSize()), std::move(description),
                        readsImages};
}

/// Whether it was loaded. A model without one is of use all the same.
bool Service::loadProjector(std::int64_t id, const std::string &path, const std::stop_token &stop,
                            std::string &description)
{
    const CrashWatch watch(m_loadCrashes, id, badProjector(path));
    try {
        m_engine.loadProjector(path, stop);
        return true;
    } catch (const std::exception &error) {
        if (stop.stop_requested())
            throw cancelled();
        description += ". " + std::string(error.what());
        return false;
    }
}

wire::Answer Service::work(const wire::Count &count, const std::stop_token &)
{
    requireModel();
    const auto tokens = m_engine.tokenize(count.text, SpecialTokens::asText);
    return wire::Counted{count.id, static_cast<std::int64_t>(tokens.size())};
}

wire::Answer Service::work(const wire::Prepare &prepare, const std::stop_token &stop)
{
    requireModel();
    const std::size_t before = m_context.evaluatedCount();
    const Sequence opening = Conversation(m_engine).opening({.instructions = prepare.instructions}, {});
    if (opening.tokens.size() > m_engine.contextSize())
        throw promptTooLong();
    m_context.advanceTo(opening, stop);
    return wire::Finished{.id = prepare.id,
                          .inputTokens = static_cast<std::int64_t>(opening.tokens.size()),
                          .evaluatedTokens = static_cast<std::int64_t>(m_context.evaluatedCount() - before),
                          .content = std::nullopt};
}

wire::Answer Service::work(const wire::Respond &respond, const std::stop_token &stop)
{
    requireModel();
    return Reply(m_engine, m_context, respond,
                 {m_send, [this](const std::string &call) { return m_inbox.toolOutput(call); }, stop})
        .run();
}

void Service::requireModel() const
{
    if (m_engine.contextSize() == 0)
        throw notLoaded();
}

} // namespace lumora::service
