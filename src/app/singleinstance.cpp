// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/singleinstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

#include <chrono>

namespace lumora {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds answerTimeout = 3s;

/// One socket for each folder, where only this user can reach it. The path of a socket has to be short.
QString socketPath(const QString &folder)
{
    const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return (runtime.isEmpty() ? folder : runtime) + QStringLiteral("/lumora-") + QString::fromLatin1(hash);
}

} // namespace

SingleInstance::SingleInstance(const QString &folder, QObject *parent)
    : QObject(parent)
    , m_folder(folder)
    , m_lock(folder + QStringLiteral("/lock"))
    , m_server(this)
{
    // The lock of a running program never goes stale by its age; that of one that has died does.
    m_lock.setStaleLockTime(0);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            socket->disconnectFromServer();
            Q_EMIT raiseRequested();
        }
    });
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Outcome SingleInstance::claim()
{
    QDir().mkpath(m_folder);
    if (m_lock.tryLock(0)) {
        listen();
        return Outcome::first;
    }
    if (m_lock.error() != QLockFile::LockFailedError)
        return Outcome::unguarded;
    return askHolder() ? Outcome::second : Outcome::silent;
}

void SingleInstance::listen()
{
    // What a program that died left behind; the lock says that nobody listens there.
    QLocalServer::removeServer(socketPath(m_folder));
    if (!m_server.listen(socketPath(m_folder)))
        qWarning("A second start cannot reach this window: %ls", qUtf16Printable(m_server.errorString()));
}

bool SingleInstance::askHolder() const
{
    QLocalSocket socket;
    socket.connectToServer(socketPath(m_folder));
    if (!socket.waitForConnected(int(answerTimeout.count())))
        return false;
    return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(int(answerTimeout.count()));
}

} // namespace lumora
