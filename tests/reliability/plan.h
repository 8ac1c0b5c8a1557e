// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <random>
#include <vector>

namespace lumora {

/// What somebody who uses the program would say is in it. Chats are known by their titles, which are all different.
struct Holdings
{
    std::map<QString, QStringList> chats; ///< their messages, as "user: …" and "assistant: …"
    QStringList documents;                ///< in the order of the list

    bool operator==(const Holdings &) const = default;
};

/// Something that the user does. Files and texts are known by a number, from which their content follows.
struct Step
{
    enum class Kind { newChat, select, attach, send, finish, stop, deleteChat, import, removeDocument };

    Kind kind = Kind::newChat;
    int number = 0;        ///< of what is sent, attached or imported
    bool hasImage = false; ///< of what is sent
    QString chat{};        ///< title
    QString document{};    ///< name
};

/// For messages about a step.
QString text(const Step &step);
QString text(const Holdings &holdings);

/// The content of the picture or the document with this number, and its name.
QByteArray pictureBytes(int number);
QByteArray documentBytes(int number);
QString documentName(int number);
/// A word that this document has, and no other.
QString wordOf(int number);
int numberIn(const QString &name);
/// What the model says to a question, in two parts.
QString replyBegin(int number);
QString replyEnd(int number);
QString question(int number);

/// What is there when the step is done.
Holdings after(Holdings holdings, const Step &step);

/// A seeded sequence of steps that are possible one after another. firstNumber: greater than any number that is in use.
std::vector<Step> plannedDay(Holdings holdings, int firstNumber, int length, std::mt19937 &random);

} // namespace lumora
