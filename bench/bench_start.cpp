// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// How long a start takes until the first frame and until the chats are in it, and how much memory the process then has:
// with a history of 20 MB in 2,000 chats, against an empty window. Prints JSON.

#include "samplehistory.h"
#include "store/historyfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace lumora;

namespace {

constexpr int starts = 15;
constexpr int chats = 2000;
constexpr int messages = 8; // a chat; about 10 KB

struct Start
{
    double firstFrame; // ms
    double filledFrame;
    double residentMegabytes;
    double proportionalMegabytes;
};

/// The one that is shown, in Latin letters: fonts for other scripts and for emoji come into memory when they are
/// wanted.
Conversation shownChat()
{
    Conversation chat;
    for (int i = 0; i < messages; ++i)
        chat.messages.append(
            {.role = i % 2 == 0 ? ChatMessage::Role::user : ChatMessage::Role::assistant,
             .text = QStringLiteral("The lease says that pets are allowed in the flat. ").repeated(10)});
    return chat;
}

void writeHistory(const QString &folder)
{
    std::vector<Conversation> history;
    for (int i = 0; i < chats; ++i)
        history.push_back(sampleConversation(messages, 1600, quint32(i + 1)));
    history.push_back(shownChat());
    QDir(folder).mkpath(QStringLiteral("Lumora"));
    QFile file(folder + QStringLiteral("/Lumora/conversations.json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(encodeConversations(history)) < 0)
        qFatal("The history cannot be written.");
}

Start start(const QString &program, const QString &dataFolder)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder);
    environment.insert(QStringLiteral("XDG_STATE_HOME"), dataFolder);
    process.setProcessEnvironment(environment);
    const std::chrono::nanoseconds begin = std::chrono::steady_clock::now().time_since_epoch();
    process.start(program);
    process.waitForFinished();
    const QList<QByteArray> numbers = process.readAllStandardOutput().simplified().split(' ');
    if (numbers.size() != 4)
        qFatal("%s shows nothing.", qPrintable(program));
    const auto since = [&](const QByteArray &then) { return double(then.toLongLong() - begin.count()) / 1e6; };
    return {since(numbers.at(0)), since(numbers.at(1)), numbers.at(2).toDouble() / 1024,
            numbers.at(3).toDouble() / 1024};
}

QJsonObject medians(std::vector<Start> all)
{
    const auto median = [&](double Start::*value) {
        std::ranges::sort(all, {}, value);
        return all[all.size() / 2].*value;
    };
    return {{QStringLiteral("firstFrame"), median(&Start::firstFrame)},
            {QStringLiteral("filledFrame"), median(&Start::filledFrame)},
            {QStringLiteral("residentMegabytes"), median(&Start::residentMegabytes)},
            {QStringLiteral("proportionalMegabytes"), median(&Start::proportionalMegabytes)}};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QDir programs(QCoreApplication::applicationDirPath());
    const QTemporaryDir full;
    const QTemporaryDir empty;
    writeHistory(full.path());
    std::vector<Start> ours;
    std::vector<Start> oursWithoutHistory;
    std::vector<Start> bare;
    for (int i = 0; i < starts; ++i) {
        ours.push_back(start(programs.filePath(QStringLiteral("startlumora")), full.path()));
        bare.push_back(start(programs.filePath(QStringLiteral("startbare")), empty.path()));
        oursWithoutHistory.push_back(start(programs.filePath(QStringLiteral("startlumora")), empty.path()));
    }
    const QJsonObject result{{QStringLiteral("lumora"), medians(ours)},
                             {QStringLiteral("lumoraWithoutHistory"), medians(oursWithoutHistory)},
                             {QStringLiteral("bare"), medians(bare)}};
    QTextStream(stdout) << QJsonDocument(result).toJson();
    return 0;
}
