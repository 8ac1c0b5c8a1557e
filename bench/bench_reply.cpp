// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// A chat of ten questions through the whole program but its window: store, session, service, engine. Prints one JSON
// object: tokens a second while replies are written, and the time to the first text of the tenth question, both with
// what the service has computed for the nine before it and in a service that has just started.
//
// Each reply ends after 128 tokens, since a model of random weights does not end by itself.
//
// bench_reply LAUNCHER MODEL.gguf    (absolute paths)

#include "platform/model/local/localmodelservice.h"
#include "store/chatstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace lumora;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int questions = 10;
constexpr int chats = 9;            // of one question each
constexpr qint64 replyLength = 128; // tokens

double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

[[noreturn]] void fail(const QString &why)
{
    std::fprintf(stderr, "bench_reply: %s\n", qPrintable(why));
    std::exit(1);
}

template <typename Condition>
void waitFor(Condition condition, const char *what)
{
    const Clock::time_point limit = Clock::now() + std::chrono::minutes(5);
    QTimer wakeUp; // so that the limit is seen, and the engine has the processor to itself until then
    wakeUp.start(std::chrono::seconds(1));
    while (!condition()) {
        if (Clock::now() > limit)
            fail(QStringLiteral("no %1 within five minutes").arg(QLatin1String(what)));
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

struct Answered
{
    double untilFirstText = 0; ///< seconds, from the sending
    double whileWriting = 0;   ///< seconds, from the first text to the end
    qint64 outputTokens = 0;
    qint64 inputTokens = 0;
};

/// The service on this computer, with a limit to the length of its replies.
class BriefModelService : public LocalModelService
{
    Q_OBJECT

public:
    using LocalModelService::LocalModelService;

    std::unique_ptr<ModelReply> respond(ReplyRequest request) override
    {
        request.options.maximumResponseTokens = replyLength;
        return LocalModelService::respond(std::move(request));
    }
};

/// The program, but for its window, on a data directory.
class Program
{
public:
    Program(const QString &data, const QString &launcher, const QString &modelFile)
        : m_store(SystemLanguageModel(makeService(launcher, modelFile)), data)
    {
        waitFor([this] { return !isLoading(); }, "model");
        if (!m_store.modelAvailability().isAvailable())
            fail(m_store.availabilityMessage());
    }

    Answered ask(const QString &question)
    {
        const ChatStore *store = &m_store;
        const auto reply = [store]() -> const ChatMessage & { return store->selectedConversation()->messages.back(); };
        m_store.setDraft(question);
        const Clock::time_point sent = Clock::now();
        m_store.send();
        waitFor([&] { return !m_store.isGenerating() || !reply().text.isEmpty(); }, "first text");
        const Clock::time_point first = Clock::now();
        waitFor([&] { return !m_store.isGenerating(); }, "end of a reply");
        if (!m_store.errorMessage().isEmpty() || !reply().outputTokens)
            fail(m_store.errorMessage());
        return {seconds(first - sent), seconds(Clock::now() - first), *reply().outputTokens, *reply().inputTokens};
    }

    void startChat() { m_store.newConversation(); }

private:
    bool isLoading() const
    {
        return m_store.modelAvailability().reason() == Availability::UnavailableReason::modelNotReady;
    }

    static std::shared_ptr<ModelService> makeService(const QString &launcher, const QString &modelFile)
    {
        return std::make_shared<BriefModelService>(LocalModelSettings{
            .modelFolder = std::nullopt, .builtInModel = modelFile, .command = {launcher, {}}, .patience = {}});
    }

    ChatStore m_store;
};

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

QString questionText(int number)
{
    return QStringLiteral(
               "Question %1: what does the %2. paragraph of the agreement say about the garden, the cellar and "
               "the shared stairs, and who has to be asked before anything is changed there?")
        .arg(number)
        .arg(number + 3);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 3)
        fail(QStringLiteral("usage: bench_reply LAUNCHER MODEL.gguf"));
    const QString launcher = QString::fromLocal8Bit(argv[1]);
    const QString model = QString::fromLocal8Bit(argv[2]);
    const QTemporaryDir data;
    const QString history = data.filePath(QStringLiteral("Lumora/conversations.json"));
    const QString beforeLast = data.filePath(QStringLiteral("before-the-tenth.json"));

    Answered first;
    Answered warm;
    std::vector<double> rates; // tokens a second
    {
        Program program(data.path(), launcher, model);
        for (int i = 1; i <= chats; ++i) {
            program.startChat();
            first = program.ask(questionText(i));
            // The first token ends the wait for the first text.
            rates.push_back(double(first.outputTokens - 1) / first.whileWriting);
        }
        program.startChat();
        for (int i = 1; i <= questions; ++i) {
            if (i == questions && !QFile::copy(history, beforeLast))
                fail(QStringLiteral("the history cannot be copied"));
            warm = program.ask(questionText(i));
        }
    }
    QFile::remove(history);
    QFile::rename(beforeLast, history);
    const Answered cold = Program(data.path(), launcher, model).ask(questionText(questions));
    if (cold.inputTokens != warm.inputTokens)
        fail(QStringLiteral("the two tenth questions are not the same"));

    std::printf(
        "{\"tokensPerSecond\": %.3f, \"promptTokens\": %lld, \"replyTokens\": %lld, \"tenthPromptTokens\": %lld, "
        "\"firstTextWarm\": %.4f, \"firstTextCold\": %.4f}\n",
        median(rates), static_cast<long long>(first.inputTokens), static_cast<long long>(replyLength),
        static_cast<long long>(warm.inputTokens), warm.untilFirstText, cold.untilFirstText);
    return 0;
}

#include "bench_reply.moc"
