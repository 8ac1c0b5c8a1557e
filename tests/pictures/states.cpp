// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pictures/states.h"

#include "documents/listfile.h"

#include <QImage>
#include <QPainter>

namespace lumora {

namespace {

constexpr double day = 86400; // seconds

ChatMessage finished(ChatMessage message, qint64 inputTokens, qint64 outputTokens)
{
    message.inputTokens = inputTokens;
    message.outputTokens = outputTokens;
    if (!message.toolEvents)
        message.toolEvents = QList<ToolEvent>();
    return message;
}

ChatMessage leaseAnswer()
{
    ChatMessage answer =
        assistantMessage("**Lease 2026.pdf** allows one cat or one small dog, with the landlord's consent "
                         "*in writing* beforehand. Other pets need a separate agreement.");
    answer.toolEvents = {{"1", "searchDocuments", "Complete"}};
    return finished(answer, 812, 95);
}

ChatMessage leaseCard()
{
    ChatMessage answer = assistantMessage({});
    answer.card =
        AnswerCard{"Keeping a cat",
                   "The lease allows one cat once the landlord has agreed in writing.",
                   {"One cat or one small dog is allowed", "Consent comes first, and in writing",
                    "A deposit of two months covers damage by animals as well as the usual wear of the rooms"},
                   {"Write to the landlord", "Keep the answer with the lease"}};
    return finished(answer, 904, 121);
}

ChatMessage manyKinds()
{
    return finished(
        assistantMessage(
            "## Before you move in\n\nThree things are worth doing **now**:\n\n1. Read the *inventory*.\n2. Note "
            "the meters:\n   - water\n   - electricity\n3. Keep a copy, as [the guide](https://example.org) "
            "says.\n\n> Both parties sign the protocol.\n\n```sh\nls -la ~/Documents  # where it lies\n```\n\n| "
            "Meter | Reading |\n|---|---:|\n| Water | 1204 |\n| Power | 88213 |\n\nDone ✅ — ~~later~~ `today`."),
        240, 160);
}

ChatMessage runningTools()
{
    ChatMessage reply = assistantMessage("Let me look.");
    reply.toolEvents = {{"1", "currentDate", "Complete"}, {"2", "searchDocuments", "Running"}};
    return reply;
}

std::vector<Conversation> chats(std::vector<ChatMessage> messages)
{
    const QString title = messages.empty() ? QStringLiteral("New Chat") : messages.front().text.left(48);
    return {conversation(title, 9 * day, std::move(messages)),
            conversation("Read this page", 8 * day, {userMessage("Read this page"), assistantMessage("It is empty.")}),
            conversation("Plan for a quiet weekend by the sea, with rain", 7 * day, {userMessage("Plan")})};
}

std::vector<ChatMessage> aboutTheLease()
{
    return {userMessage("What does the lease say about pets? I want to keep a cat."), leaseAnswer(),
            userMessage("Make me a list of what I have to do."), leaseCard()};
}

void writeDocuments(const StoreFixture &files)
{
    files.write("Documents/documents.json",
                encodeDocuments({ImportedDocument{.name = "Lease 2026.pdf", .filename = "A.pdf"},
                                 ImportedDocument{.name = "notes.md", .filename = "B.md"},
                                 ImportedDocument{.name = "Protocol of the meeting of the owners in spring.txt",
                                                  .filename = "C.txt"}}));
}

QString drawReceipt(const StoreFixture &files, const QString &name)
{
    QImage paper(900, 560, QImage::Format_RGB32);
    paper.fill(QColor("#f3efe6"));
    QPainter painter(&paper);
    QFont font = painter.font();
    font.setPixelSize(44);
    painter.setFont(font);
    painter.drawText(paper.rect(), Qt::AlignCenter, "Café am Hafen\n\n2 × Tea   7.00\n1 × Cake  4.50\n\nTotal  11.50");
    painter.end();
    QDir().mkpath(files.path("Images"));
    if (!paper.save(files.path("Images/" + name)))
        qFatal("cannot write %s", qPrintable(name));
    return files.path("Images/" + name);
}

WindowState chat(const QString &name, std::vector<ChatMessage> messages)
{
    return {.name = name, .prepare = [messages = std::move(messages)](StoreFixture &files) {
                files.write(chats(messages));
                writeDocuments(files);
            }};
}

WindowState during(const QString &name, const Script &script, std::function<bool(const ChatMessage &)> isReply)
{
    return {.name = name,
            .prepare =
                [script](StoreFixture &files) {
                    files.write(chats({userMessage("What does the lease say about pets?"), leaseAnswer()}));
                    writeDocuments(files);
                    files.model->enqueue(script);
                },
            .act =
                [](ChatStore &store) {
                    store.setDraft("What is today's date, and when does the lease end?");
                    store.send();
                },
            .hasCome = [isReply = std::move(isReply)](
                           const ChatStore &store) { return isReply(store.selectedConversation()->messages.back()); }};
}

WindowState unavailable(const QString &name, Availability availability)
{
    return {.name = "unavailable-" + name, .prepare = [availability](StoreFixture &files) {
                files.write(chats(aboutTheLease()));
                files.model->setAvailability(availability);
            }};
}

WindowState imagePending()
{
    WindowState state = chat("image-pending", aboutTheLease());
    state.act = [](ChatStore &store) {
        const StoreFixture elsewhere;
        store.attachImage(QUrl::fromLocalFile(drawReceipt(elsewhere, "receipt.png")));
        store.setDraft("What is the total?");
    };
    return state;
}

WindowState images()
{
    WindowState state = chat("images", {});
    state.prepare = [](StoreFixture &files) {
        ChatMessage there = userMessage("What is the total?");
        there.imageFilename = "there.png";
        ChatMessage missing = userMessage("And of this one?");
        missing.imageFilename = "missing.png";
        drawReceipt(files, "there.png");
        files.write(chats({there, finished(assistantMessage("The total is **11.50**."), 310, 12), missing}));
    };
    return state;
}

WindowState failure()
{
    WindowState state = chat("error", aboutTheLease());
    state.prepare = [prepare = state.prepare](StoreFixture &files) {
        prepare(files);
        files.model->enqueue(Script::failure("The language model ended unexpectedly. Send the message again."));
    };
    state.act = [](ChatStore &store) {
        store.setDraft("And the deposit?");
        store.send();
        store.library()->add(QUrl::fromLocalFile("/nowhere/minutes.pdf"));
    };
    state.hasCome = [](const ChatStore &store) {
        return !store.errorMessage().isEmpty() && !store.library()->errorMessage().isEmpty();
    };
    return state;
}

} // namespace

std::vector<WindowState> windowStates()
{
    const QString longWord(90, u'w');
    return {
        {.name = "empty", .prepare = [](StoreFixture &) {}},
        chat("finished", aboutTheLease()),
        chat("kinds-of-text", {userMessage("What should I do before I move in?"), manyKinds()}),
        chat("scripts",
             {userMessage("我的租约什么时候到期？ 契約はいつ終わりますか？"),
              finished(assistantMessage(
                           "租约于**2026年12月31日**到期。\n\nينتهي عقد الإيجار في 31 ديسمبر.\n\nהחוזה "
                           "מסתיים ב-31 בדצמבר.\n\nThe lease ends on 31 December. 🏠👩🏽‍💻"),
                       90, 60)}),
        chat("long-titles", {userMessage("An unusually long first message that becomes a title " + longWord),
                             finished(assistantMessage("A long word wraps: " + longWord), 9, 9)}),
        during("waiting", Script::hold(), [](const ChatMessage &reply) { return reply.text.isEmpty(); }),
        during("streaming",
               Script::pieces({"The lease ends on **31 December 2026**, and it can be ended", " with"})
                   .then(Script::hold()),
               [](const ChatMessage &reply) { return !reply.text.isEmpty(); }),
        chat("tool-running", {userMessage("What does the lease say about pets?"), runningTools()}),
        imagePending(),
        images(),
        failure(),
        unavailable("loading", Availability::unavailable(Availability::UnavailableReason::modelNotReady)),
        unavailable("off", Availability::unavailable(Availability::UnavailableReason::appleIntelligenceNotEnabled)),
        unavailable("device", Availability::unavailable(Availability::UnavailableReason::deviceNotEligible)),
        unavailable("other", Availability::unavailable(Availability::UnavailableReason::other)),
    };
}

} // namespace lumora
