// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/terminationsignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace lumora {

namespace {

constexpr std::array endings = {SIGTERM, SIGHUP, SIGINT};

std::atomic<int> counter = -1; // the only thing that the handler touches

void note(int /*signal*/)
{
    const int error = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(counter, &one, sizeof one);
    errno = error;
}

int openCounter()
{
    counter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return counter;
}

void handle(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endings) {
        struct sigaction before = {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // as nohup wants it
            ::sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
    , m_notifier(openCounter(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        std::uint64_t count = 0;
        if (::read(counter, &count, sizeof count) > 0)
            Q_EMIT received();
    });
    handle(note);
}

TerminationSignals::~TerminationSignals()
{
    handle(SIG_DFL);
    m_notifier.setEnabled(false);
    ::close(counter.exchange(-1));
}

} // namespace lumora
