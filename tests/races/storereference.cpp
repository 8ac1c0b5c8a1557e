// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/storereference.h"

#include "races/comparison.h"
#include "store/historyfile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace lumora::races {

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList texts(const QJsonValue &array)
{
    QStringList result;
    for (const auto &each : array.toArray())
        result.append(each.toString());
    return result;
}

/// Nothing where it is no answer.
std::optional<AnswerCard> cardFrom(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (object.isEmpty())
        return std::nullopt;
    AnswerCard card;
    card.title = object["title"].toString();
    card.summary = object["summary"].toString();
    card.keyPoints = texts(object["keyPoints"]);
    card.nextSteps = texts(object["nextSteps"]);
    return card;
}

} // namespace

void StoreReference::apply(const Operation &operation)
{
    operation(m_now);
    if (!m_now.run) {
        m_pending.clear();
        m_asked.reset();
    } else if (!m_asked) {
        m_asked = Asked();
    }
}

void StoreReference::start()
{
    const auto stored = decodeConversations(m_file);
    apply([&](StoreRules &rules) { rules.start(stored.value_or(std::vector<Conversation>())); });
}

QString StoreReference::observe(const ChatStore &store)
{
    StoreRules candidate = m_now;
    QString difference = differenceAfter(candidate, store, m_since);
    for (size_t seen = 0; seen < m_pending.size() && !difference.isEmpty(); ++seen) {
        m_pending[seen].change(m_now);
        candidate = m_now;
        const QString next = differenceAfter(candidate, store, m_pending[seen].since);
        if (next.isEmpty())
            m_pending.erase(m_pending.begin(), m_pending.begin() + ptrdiff_t(seen) + 1);
        difference = next.isEmpty() ? next : difference + "\n or " + next;
    }
    m_now = candidate;
    m_savesSeen = candidate.saves;
    m_since = TimePoint::now();
    if (!m_now.run)
        m_asked.reset();
    return m_complaint.isEmpty() ? difference : m_complaint;
}

bool StoreReference::hasCaughtUp(const ChatStore &store)
{
    StoreRules last = m_now;
    for (const News &news : m_pending)
        news.change(last);
    // Some news make no difference, and so it cannot be seen how many of them the store has taken.
    return differenceAfter(last, store, m_pending.empty() ? m_since : m_pending.back().since).isEmpty();
}

QString StoreReference::differenceAfter(StoreRules &candidate, const ChatStore &store, const TimePoint &since)
{
    QString difference = compare(candidate, store, since);
    const QByteArray file = contents(*store.conversationsFileURL());
    const bool hasSaved = candidate.saves != m_savesSeen;
    if (difference.isEmpty() && !hasSaved && file != m_file)
        difference = "the history was written when it was not to be";
    if (difference.isEmpty() && hasSaved && decodeConversations(file) != candidate.conversations)
        difference = "the history file does not hold the chats";
    if (difference.isEmpty())
        m_file = file;
    return difference;
}

QString StoreReference::waitingFor() const
{
    QString text = QString("%1 news of the model").arg(m_pending.size());
    if (m_asked)
        text += QString(", a reply after “%1” with %2 calls").arg(m_asked->text).arg(m_asked->events.size());
    for (const ToolEvent &event : m_asked ? m_asked->events : QList<ToolEvent>())
        text += ", " + event.name + ": " + event.status;
    return text;
}

void StoreReference::complain(const QString &what)
{
    if (m_complaint.isEmpty())
        m_complaint = what;
}

void StoreReference::takeCount(const QString &text)
{
    if (!m_asked || m_asked->isOver)
        return complain("a text was counted for no run");
    m_asked->prompt = promptText(m_now, *m_now.run, m_asked->budget);
    if (text != m_asked->prompt)
        complain("counted:\n" + text + "\ninstead of:\n" + m_asked->prompt);
}

void StoreReference::answerCount(qint64 tokens, qint64 contextSize)
{
    if (!m_asked)
        return;
    if (tokens > contextSize * 3 / 4 && m_asked->budget > 500)
        m_asked->budget /= 2;
    else
        m_pending.push_back({[tokens](StoreRules &rules) { rules.contextTokens = tokens; }});
}

void StoreReference::takeRequest(const ReplyRequest &request, const QStringList &documentNames)
{
    if (!m_asked || m_asked->isOver)
        return complain("a reply was asked for by no run");
    const Run &run = *m_now.run;
    QStringList tools;
    for (const ToolDefinition &tool : request.tools)
        tools.append(tool.name);
    std::optional<QString> image;
    for (const Attachment &attachment : request.prompt.attachments)
        image = QFileInfo(attachment.path()).fileName();
    if (!request.prompt.text.startsWith(m_asked->prompt))
        complain("asked:\n" + request.prompt.text + "\ninstead of:\n" + m_asked->prompt);
    if (tools != offeredTools(run, documentNames))
        complain("offered the tools " + tools.join(", ") + " for: " + run.typedText);
    if (image != run.image)
        complain("another image was attached than the latest: " + image.value_or("none"));
    if (request.schema.has_value() != (run.style == ReplyStyle::structured))
        complain("the reply has another style than was chosen");
}

QList<ToolEvent> StoreReference::unseenEvents() const
{
    QList<ToolEvent> events = m_asked->events;
    for (ToolEvent &event : events)
        event.id.clear();
    return events;
}

void StoreReference::expectText()
{
    if (m_now.run->style == ReplyStyle::chat)
        m_pending.push_back(
            {[text = m_asked->text, events = unseenEvents()](StoreRules &rules) { rules.takeText(text, events); }});
}

void StoreReference::addText(const QString &piece)
{
    if (!m_asked || m_asked->isOver)
        return complain("the model goes on with a reply that has ended");
    m_asked->text += piece;
    if (!piece.isEmpty()) // nothing is no news
        expectText();
}

void StoreReference::addToolCall(const QString &callID, const QString &name, const QStringList &offered)
{
    if (!m_asked || m_asked->isOver)
        return complain("the model goes on with a reply that has ended");
    ToolEvent event;
    event.id = callID;
    event.name = name;
    event.status = "Running";
    m_asked->events.append(event);
    expectText();
    if (!offered.contains(name))
        fail("*");
}

void StoreReference::addToolOutput(const QString &callID)
{
    if (!m_asked || m_asked->isOver)
        return complain("the model goes on with a reply that has ended");
    for (ToolEvent &event : m_asked->events) {
        if (event.id == callID)
            event.status = "Complete";
    }
    expectText();
}

void StoreReference::finish(const Usage &usage, const QByteArray &json)
{
    if (!m_asked || m_asked->isOver)
        return complain("the model goes on with a reply that has ended");
    const qint64 input = usage.input.totalTokenCount;
    const qint64 output = usage.output.totalTokenCount;
    const std::optional<AnswerCard> card = cardFrom(json);
    if (m_now.run->style == ReplyStyle::structured && !card)
        return fail("*");
    m_asked->isOver = true;
    m_pending.push_back({[=, events = unseenEvents()](StoreRules &rules) {
        if (rules.run->style == ReplyStyle::structured)
            rules.takeCard(*card, events, input, output);
        else
            rules.takeTextEnd(events, input, output);
    }});
}

void StoreReference::fail(const QString &description)
{
    if (!m_asked || m_asked->isOver)
        return;
    m_asked->isOver = true;
    m_pending.push_back({[description](StoreRules &rules) { rules.takeFailure(description); }});
}

} // namespace lumora::races
