// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/generationrun.h"

#include "features/structuredanswer.h"
#include "generation/generationtask.h"
#include "generation/promptassembly.h"
#include "generation/sessionsetup.h"

namespace lumora {

namespace {

/// The prompt text that fits three quarters of the context, or the shortest attempt. Publishes its token count.
QCoro::Task<QString> fittedPrompt(GenerationRun run)
{
    qint64 budget = initialPromptBudget;
    QString text = run.promptText(budget);
    qint64 tokens = co_await run.tokenCount(text);
    while (tokens > promptTokenLimit(run.model().contextSize()) && budget > minimumPromptBudget) {
        budget /= 2;
        text = run.promptText(budget);
        tokens = co_await run.tokenCount(text);
    }
    run.publishContextTokens(tokens);
    co_return text;
}

QCoro::Task<> streamText(GenerationRun run, std::shared_ptr<LanguageModelSession> session, Prompt prompt)
{
    ResponseStream stream = session->streamResponse(std::move(prompt), GenerationOptions());
    while (true) {
        const std::optional<Snapshot> snapshot = co_await stream.next();
        if (!snapshot || run.task->isCancelled() || !run.currentStore())
            break;
        run.applySnapshot(*snapshot);
        run.recordToolEvents(*session);
    }
    run.record(*session);
}

QCoro::Task<> askForAnswer(GenerationRun run, std::shared_ptr<LanguageModelSession> session, Prompt prompt)
{
    const StructuredAnswer answer =
        co_await session->respond<StructuredAnswer>(std::move(prompt), IncludeSchemaInPrompt::yes, GenerationOptions());
    if (!run.task->isCancelled())
        run.applyAnswer(answer);
    run.record(*session);
}

QCoro::Task<> generateReply(GenerationRun run)
{
    const QString text = co_await fittedPrompt(run);
    const ToolList tools = run.selectTools();
    const auto session = std::make_shared<LanguageModelSession>(run.model(), tools, sessionInstructions());
    const GenerationTask::SessionGuard stoppable(run.task, *session);
    const Prompt prompt = makePrompt(text, run.imageURL);
    if (run.replyStyle == ReplyStyle::structured)
        co_await askForAnswer(run, session, prompt);
    else
        co_await streamText(run, session, prompt);
}

} // namespace

QCoro::Task<> generate(GenerationRun run)
{
    if (!run.store)
        co_return;
    try {
        co_await generateReply(run);
    } catch (const CancellationError &) {
        // Who stopped it knows.
    } catch (const ModelError &error) {
        run.fail(error.description());
    } catch (const std::exception &error) {
        run.fail(ChatStore::tr("The reply failed unexpectedly (%1). Please try again.")
                     .arg(QString::fromUtf8(error.what())));
    }
    run.end();
}

ChatStore *GenerationRun::currentStore() const
{
    return store && store->m_generationID == generationID ? store.data() : nullptr;
}

ChatStore &GenerationRun::requireCurrentStore() const
{
    ChatStore *current = currentStore();
    if (!current)
        throw CancellationError();
    return *current;
}

SystemLanguageModel GenerationRun::model() const
{
    return requireCurrentStore().m_model;
}

QString GenerationRun::promptText(qint64 budget) const
{
    return requireCurrentStore().promptText(conversationID, messageID, budget);
}

ToolList GenerationRun::selectTools() const
{
    const ChatStore &current = requireCurrentStore();
    return lumora::selectTools(typedText, imageURL, *current.library(), current.m_images);
}

QCoro::Task<qint64> GenerationRun::tokenCount(const QString &text) const
{
    return model().tokenCount(text);
}

void GenerationRun::publishContextTokens(qint64 tokens) const
{
    requireCurrentStore().setContextTokens(tokens);
}

void GenerationRun::applySnapshot(const Snapshot &snapshot) const
{
    if (ChatStore *current = currentStore())
        current->applySnapshot(snapshot.content, messageID, conversationID);
}

void GenerationRun::applyAnswer(const StructuredAnswer &answer) const
{
    if (ChatStore *current = currentStore())
        current->applyAnswer(answer, messageID, conversationID);
}

void GenerationRun::recordToolEvents(const LanguageModelSession &session) const
{
    if (ChatStore *current = currentStore())
        current->recordToolEvents(session.transcript(), messageID, conversationID);
}

void GenerationRun::record(const LanguageModelSession &session) const
{
    recordToolEvents(session);
    if (ChatStore *current = currentStore())
        current->recordUsage(session.usage(), messageID, conversationID);
}

void GenerationRun::fail(const QString &description) const
{
    ChatStore *current = currentStore();
    if (!current)
        return;
    current->setErrorMessage(description);
    current->discardEmptyReply(messageID, conversationID);
}

void GenerationRun::end() const
{
    ChatStore *current = currentStore();
    if (!current)
        return;
    current->m_generationTask = nullptr;
    current->m_generationID = std::nullopt;
    current->setGenerating(false);
    current->save();
}

} // namespace lumora
