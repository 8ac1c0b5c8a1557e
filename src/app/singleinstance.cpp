// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/singleinstance.h"

#include "platform/files/filestore.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

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
    , m_socket(socketPath(folder))
    , m_server(this)
{
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
    constexpr auto pause = 20ms;
    createFolder(m_folder);
    // Another program that holds the folder may not listen yet, or may be about to end.
    for (const QDeadlineTimer limit(answerTimeout);; std::this_thread::sleep_for(pause)) {
        // Asked first, since its lock is gone where somebody has deleted the folder under it.
        const Holder holder = askHolder(wish);
        if (holder != Holder::none)
            return holder == Holder::answers ? Outcome::second : Outcome::silent;
        const Lock result = lock();
        if (result == Lock::impossible)
            return Outcome::unguarded;
        if (result == Lock::taken)
            break;
        if (limit.hasExpired())
            return Outcome::silent;
    }
    listen();
    return Outcome::first;
}

SingleInstance::Lock SingleInstance::lock()
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    const QByteArray path = QFile::encodeName(m_folder + QStringLiteral("/lock"));
    m_lock = FileDescriptor(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, ownerOnly));
    if (!m_lock.isOpen())
        return Lock::impossible;
    if (::flock(m_lock.number(), LOCK_EX | LOCK_NB) == 0)
        return Lock::taken;
    return errno == EWOULDBLOCK || errno == EINTR ? Lock::held : Lock::impossible;
}

void SingleInstance::listen()
{
    // What a program that died left behind; the lock says that nobody listens there.
    QLocalServer::removeServer(m_socket);
    if (!m_server.listen(m_socket))
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

SingleInstance::Holder SingleInstance::askHolder(Wish wish) const
{
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    if (!socket.waitForConnected(int(answerTimeout.count())))
        return Holder::none;
    socket.write(requestLine(wish));
    socket.flush();
    const bool hasAnswered =
        socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(int(answerTimeout.count()));
    return hasAnswered ? Holder::answers : Holder::isSilent;
}

} // namespace lumora
