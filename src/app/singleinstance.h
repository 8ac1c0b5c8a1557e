// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/filedescriptor.h"

#include <QLocalServer>
#include <QObject>
#include <QString>

#include <memory>

class QLocalSocket;

namespace lumora {

/// Keeps two programs from writing the same files: the first one that asks for a folder holds it until it ends, however
/// it ends. Others ask the holder to show itself.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        first,     ///< this program holds the folder
        second,    ///< another does, and has been asked to show itself
        silent,    ///< another does, but gives no answer within seconds
        unguarded, ///< nothing can be written to the folder, so there is nothing to hold
    };

    /// What a start is for.
    enum class Wish {
        window,
        newChat,
    };

    /// folder: an absolute path; it is made where it does not exist.
    explicit SingleInstance(const QString &folder, QObject *parent = nullptr);
    ~SingleInstance() override;

    /// wish: what another program that holds the folder is asked for.
    Outcome claim(Wish wish = Wish::window);

Q_SIGNALS:
    /// Another program was started and asks for this one's window. token: what lets the window come to the front
    /// (XDG activation); may be empty.
    void raiseRequested(const QString &token);
    /// Before raiseRequested, where a new chat is wanted as well.
    void newChatRequested();

private:
    enum class Holder { none, answers, isSilent };
    enum class Lock { taken, held, impossible };

    Holder askHolder(Wish wish) const;
    Lock lock();
    void listen();
    void answer(QLocalSocket *socket);

    QString m_folder;
    QString m_socket;      ///< where the holder can be asked
    FileDescriptor m_lock; ///< the system lets go of it when this program ends, however it ends
    QLocalServer m_server;
};

} // namespace lumora
