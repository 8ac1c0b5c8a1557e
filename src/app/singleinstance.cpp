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
    // In a sandbox, only this folder of it is the same for every start.
    const QString sandbox = qEnvironmentVariable("FLATPAK_ID");
    const QString shared = sandbox.isEmpty() ? runtime : runtime + QStringLiteral("/app/") + sandbox;
    return (runtime.isEmpty() ? folder : shared) + QStringLiteral("/lumora-") + QString::fromLatin1(hash);
}

constexpr char newChat = '+';
constexpr char windowOnly = '-';

/// What a second start tells the first: one character for its wish, and what the desktop gave it so that the window may
/// come to the front.
QByteArray requestLine(SingleInstance::Wish wish)
{
    return (wish == SingleInstance::Wish::newChat ? newChat : windowOnly) + qgetenv("XDG_ACTIVATION_TOKEN") + '\n';
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
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { answer(socket); });
            answer(socket); // its line may be there already
        }
    });
}

SingleInstance::~SingleInstance() = default;

SingleInstance::Outcome SingleInstance::claim(Wish wish)
{
    QDir().mkpath(m_folder);
    if (m_lock.tryLock(0)) {
        listen();
        return Outcome::first;
    }
    if (m_lock.error() != QLockFile::LockFailedError)
        return Outcome::unguarded;
    return askHolder(wish) ? Outcome::second : Outcome::silent;
}

void SingleInstance::listen()
{
    // What a program that died left behind; the lock says that nobody listens there.
    QLocalServer::removeServer(socketPath(m_folder));
    if (!m_server.listen(socketPath(m_folder)))
        qWarning("A second start cannot reach this window: %ls", qUtf16Printable(m_server.errorString()));
}

void SingleInstance::answer(QLocalSocket *socket)
{
    if (socket->state() != QLocalSocket::ConnectedState || !socket->canReadLine())
        return;
    const QByteArray line = socket->readLine().trimmed();
    socket->disconnectFromServer();
    if (line.startsWith(newChat))
        Q_EMIT newChatRequested();
    Q_EMIT raiseRequested(QString::fromUtf8(line.mid(1)));
}

bool SingleInstance::askHolder(Wish wish) const
{
    QLocalSocket socket;
    socket.connectToServer(socketPath(m_folder));
    if (!socket.waitForConnected(int(answerTimeout.count())))
        return false;
    socket.write(requestLine(wish));
    socket.flush();
    return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(int(answerTimeout.count()));
}

} // namespace lumora
