// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/plan.h"

#include <iterator>

namespace lumora {

namespace {

const QString emptyChat = QStringLiteral("New Chat");

QString withImage(const QString &line, bool hasImage)
{
    return hasImage ? line + QStringLiteral(" (with its picture)") : line;
}

template <typename List>
auto &oneOf(List &list, std::mt19937 &random)
{
    return *std::next(list.begin(), std::uniform_int_distribution<qsizetype>(0, qsizetype(list.size()) - 1)(random));
}

/// Adds steps to a plan, and knows what is there after them.
class Planner
{
public:
    Planner(Holdings holdings, int firstNumber, std::mt19937 &random)
        : m_holdings(std::move(holdings))
        , m_number(firstNumber)
        , m_random(random)
    {
    }

    void ask();
    void add(const Step &step)
    {
        m_steps.push_back(step);
        m_holdings = after(std::move(m_holdings), step);
    }
    void addAny();
    bool happens(int percent) { return std::uniform_int_distribution(1, 100)(m_random) <= percent; }

    std::vector<Step> steps() const { return m_steps; }

private:
    void import() { add({.kind = Step::Kind::import, .number = m_number++}); }

    Holdings m_holdings;
    int m_number;
    std::mt19937 &m_random;
    std::vector<Step> m_steps;
};

void Planner::ask()
{
    QString chat = emptyChat;
    if (happens(50))
        add({.kind = Step::Kind::newChat});
    else
        add({.kind = Step::Kind::select, .chat = chat = oneOf(m_holdings.chats, m_random).first});
    const int number = m_number++;
    const bool hasImage = happens(40);
    if (hasImage)
        add({.kind = Step::Kind::attach, .number = number});
    add({.kind = Step::Kind::send, .number = number, .hasImage = hasImage, .chat = chat});
    if (chat == emptyChat)
        chat = question(number);
    if (happens(30))
        import(); // while the reply streams
    add({.kind = happens(70) ? Step::Kind::finish : Step::Kind::stop, .number = number, .chat = chat});
}

void Planner::addAny()
{
    if (happens(55))
        ask();
    else if (happens(50))
        import();
    else if (happens(50) && !m_holdings.documents.isEmpty())
        add({.kind = Step::Kind::removeDocument, .document = oneOf(m_holdings.documents, m_random)});
    else
        add({.kind = Step::Kind::deleteChat, .chat = oneOf(m_holdings.chats, m_random).first});
}

QByteArray filler(int number, int size)
{
    QByteArray bytes;
    std::minstd_rand random{unsigned(number) + 1};
    while (bytes.size() < size)
        bytes += 'w' + QByteArray::number(uint(random() % 5000)) + ' ';
    return bytes;
}

} // namespace

QByteArray pictureBytes(int number)
{
    return filler(number, 1 + number * 7919 % 60000);
}

QString wordOf(int number)
{
    return QStringLiteral("word%1").arg(number);
}

QByteArray documentBytes(int number)
{
    return wordOf(number).toUtf8() + ' ' + filler(number, number * 6101 % 20000);
}

QString documentName(int number)
{
    return QStringLiteral("Document %1.txt").arg(number);
}

int numberIn(const QString &name)
{
    return name.section(u'.', 0, 0).section(u' ', -1).toInt();
}

QString question(int number)
{
    return QStringLiteral("Question %1").arg(number);
}

QString replyBegin(int number)
{
    return QStringLiteral("The beginning %1").arg(number);
}

QString replyEnd(int number)
{
    return QStringLiteral(" and the end %1.").arg(number);
}

QString text(const Step &step)
{
    static const std::map<Step::Kind, QString> names{
        {Step::Kind::newChat, "new chat"},       {Step::Kind::select, "select"},
        {Step::Kind::attach, "attach"},          {Step::Kind::send, "send"},
        {Step::Kind::finish, "finish"},          {Step::Kind::stop, "stop"},
        {Step::Kind::deleteChat, "delete chat"}, {Step::Kind::import, "import"},
        {Step::Kind::removeDocument, "remove"},
    };
    return QStringLiteral("%1 %2 %3%4")
        .arg(names.at(step.kind), QString::number(step.number), step.chat, step.document);
}

QString text(const Holdings &holdings)
{
    QString lines;
    for (const auto &[title, messages] : holdings.chats)
        lines += title + ": " + messages.join(", ") + '\n';
    return lines + holdings.documents.join(", ");
}

Holdings after(Holdings holdings, const Step &step)
{
    switch (step.kind) {
    case Step::Kind::newChat:
        holdings.chats.try_emplace(emptyChat);
        break;
    case Step::Kind::send: {
        auto chat = holdings.chats.extract(step.chat);
        if (step.chat == emptyChat)
            chat.key() = question(step.number);
        chat.mapped().append(withImage("user: " + question(step.number), step.hasImage));
        holdings.chats.insert(std::move(chat));
        break;
    }
    case Step::Kind::finish:
        holdings.chats[step.chat].append("assistant: " + replyBegin(step.number) + replyEnd(step.number));
        break;
    case Step::Kind::stop:
        holdings.chats[step.chat].append("assistant: " + replyBegin(step.number));
        break;
    case Step::Kind::deleteChat:
        holdings.chats.erase(step.chat);
        if (holdings.chats.empty())
            holdings.chats.try_emplace(emptyChat);
        break;
    case Step::Kind::import:
        holdings.documents.append(documentName(step.number));
        break;
    case Step::Kind::removeDocument:
        holdings.documents.removeAll(step.document);
        break;
    case Step::Kind::select:
    case Step::Kind::attach:
        break;
    }
    return holdings;
}

std::vector<Step> plannedDay(Holdings holdings, int firstNumber, int length, std::mt19937 &random)
{
    Planner planner(std::move(holdings), firstNumber, random);
    while (int(planner.steps().size()) < length)
        planner.addAny();
    return planner.steps();
}

} // namespace lumora
