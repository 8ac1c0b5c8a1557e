// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/process/helperprocess.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace lumora {

namespace {

/// What is done in the new process before it becomes the program.
class Preparation
{
public:
    Preparation(int input, int output)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
        posix_spawn_file_actions_addchdir_np(&m_actions, "/");

        // Qt ignores SIGPIPE, and a thread may block signals; the program is to know nothing of either.
        sigset_t signals;
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }
    ~Preparation()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    Preparation(const Preparation &) = delete;
    Preparation &operator=(const Preparation &) = delete;

    const posix_spawn_file_actions_t *actions() const { return &m_actions; }
    const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

HelperProcess::HelperProcess(const QString &program, QList<QByteArray> arguments, const FileDescriptor &input)
{
    start(program, arguments, input.number());
}

void HelperProcess::start(const QString &program, QList<QByteArray> &arguments, int input)
{
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        m_startError = errno;
        return;
    }
    m_output = FileDescriptor(ends[0]);
    const FileDescriptor itsOutput(ends[1]);

    arguments.prepend(QFile::encodeName(program));
    std::vector<char *> words;
    for (QByteArray &argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    const std::array<char *, 1> environment{nullptr};

    const Preparation preparation(input, itsOutput.number());
    m_startError = ::posix_spawn(&m_process, words.front(), preparation.actions(), preparation.attributes(),
                                 words.data(), environment.data());
    if (m_startError != 0) {
        m_process = 0;
        return;
    }
    // By number: the declaration of the C library that we build on is one that C++ cannot link.
    m_endEvent = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, m_process, 0)));
    if (!m_endEvent.isOpen())
        m_startError = errno;
}

HelperProcess::~HelperProcess()
{
    if (m_process != 0)
        end();
}

int HelperProcess::end()
{
    // Until it is waited for, its number is nobody else's; one that has ended keeps its status.
    ::kill(-m_process, SIGKILL);
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return status;
}

} // namespace lumora
