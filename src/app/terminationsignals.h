// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace lumora {

/// Turns the signals by which a session or a terminal ends a program (SIGTERM, SIGHUP, SIGINT) into one of Qt's, so
/// that the program ends in order. One object at a time, on the main thread; while it lives, these signals end nothing
/// by themselves.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    /// From the event loop.
    void received();

private:
    QSocketNotifier m_notifier;
};

} // namespace lumora
