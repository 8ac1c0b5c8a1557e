// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/racedriver.h"

#include "platform/search/userquery.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>

namespace lumora::races {

namespace {

constexpr int longestStory = 40;
constexpr int patience = 60000; // milliseconds until what should come counts as lost

} // namespace

RaceDriver::RaceDriver(quint32 seed)
    : m_random(seed)
    , m_modelRandom(seed + 1)
{
    const auto names = [this] {
        QStringList result;
        for (const ImportedDocument &document : m_store->library()->documents())
            result.append(document.name);
        return result;
    };
    m_model = std::make_shared<WatchedModel>(m_reference, names, [this](const ReplyRequest &) { return script(); });
    m_clock.start(10);
    for (const Pick &each : pickable()) {
        if (each.outcome == Pick::Outcome::failsWithoutCopy)
            continue;
        QDir().mkpath(QFileInfo(pick(each)).path());
        QFile file(pick(each));
        if (!file.open(QIODevice::WriteOnly) || file.write(each.content) != each.content.size())
            qFatal("The disk for temporary files is full.");
    }
    open();
    m_difference = observe();
}

/// Where a file lies that can be picked. Each has a folder, since some have one name.
QString RaceDriver::pick(const Pick &pick) const
{
    return m_folder.filePath(QString("picks/%1/%2").arg(qHash(pick.content)).arg(pick.name));
}

void RaceDriver::open()
{
    m_reference.start();
    m_store = std::make_unique<ChatStore>(SystemLanguageModel(m_model), m_folder.path());
    m_properties = std::make_unique<PropertyMirror>(*m_store);
    m_libraryProperties = std::make_unique<PropertyMirror>(*m_store->library());
    m_chats = std::make_unique<ChatMirror>(*m_store);
}

int RaceDriver::number(int below)
{
    return std::uniform_int_distribution(0, below - 1)(m_random);
}

QUuid RaceDriver::anyChat()
{
    const std::vector<Conversation> &chats = m_reference.now().conversations;
    const int chosen = number(12);
    if (chosen == 0)
        return QUuid::createUuid();
    return chosen < 4 ? m_reference.now().selectedID : chats[size_t(number(1000)) % chats.size()].id;
}

QString RaceDriver::step()
{
    std::vector<int> weights;
    for (const Kind &each : kinds())
        weights.push_back(each.weight);
    const Kind &kind = kinds()[std::discrete_distribution<size_t>(weights.begin(), weights.end())(m_random)];
    m_story.append(kind.name);
    if (m_story.size() > longestStory)
        m_story.removeFirst();
    (this->*kind.take)();
    if (!m_reference.now().run)
        m_model->forget();

    const int turns = number(8);
    QString difference = observe();
    for (int i = 0; i < turns - 2 && difference.isEmpty(); ++i)
        difference = turn();
    if (turns == 7 && difference.isEmpty())
        difference = settle();
    return difference;
}

QString RaceDriver::turn()
{
    m_story.last() += '.';
    QCoreApplication::processEvents();
    return observe();
}

QString RaceDriver::observe()
{
    if (!m_difference.isEmpty())
        return m_difference;
    for (const QString &difference : {m_reference.observe(*m_store), m_libraryReference.observe(*m_store->library()),
                                      m_properties->stale(), m_libraryProperties->stale(), m_chats->stale()}) {
        if (!difference.isEmpty())
            return difference;
    }
    return m_libraryReference.hasCaughtUp() ? m_libraryReference.observeCopies(*m_store->library()) : QString();
}

/// Until nothing is left to happen by itself.
QString RaceDriver::settle()
{
    m_story.last() += " and all settles";
    const QDeadlineTimer limit(patience);
    const auto isSettled = [this] {
        return m_reference.hasCaughtUp(*m_store) && m_libraryReference.hasCaughtUp() &&
               (!m_reference.now().run || m_model->isWaiting());
    };
    QString difference = observe();
    while (difference.isEmpty() && !isSettled()) {
        if (limit.hasExpired())
            return QString("it does not settle: %1%2")
                .arg(m_reference.waitingFor(), m_libraryReference.hasCaughtUp() ? "" : " and imports");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        difference = observe();
    }
    return difference;
}

QString RaceDriver::finish()
{
    m_story.append("the end");
    stop();
    m_model->forget();
    QString difference = settle();
    if (difference.isEmpty())
        restart();
    if (difference.isEmpty())
        difference = observe();
    return difference.isEmpty() ? indexed() : difference;
}

/// The index loses what was removed some time later.
QString RaceDriver::indexed()
{
    QSet<QString> wanted;
    for (const ImportedDocument &document : m_libraryReference.now().documents)
        wanted.insert(document.id.toString(QUuid::WithoutBraces).toUpper());
    QSet<QString> found;
    const QDeadlineTimer limit(patience);
    do {
        found.clear();
        UserQuery query(m_store->library()->index(), "lighthouse", {{}, 100000});
        while (const auto item = query.next())
            found.insert(item->uniqueIdentifier);
    } while (found != wanted && !limit.hasExpired());
    return found == wanted ? QString() : "the search index holds other documents than the list";
}

} // namespace lumora::races
