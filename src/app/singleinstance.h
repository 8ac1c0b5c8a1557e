// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <memory>

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
        silent,    ///< another does, but gives no answer
        unguarded, ///< nothing can be written to the folder, so there is nothing to hold
    };

    /// folder: an absolute path; it is made where it does not exist.
    explicit SingleInstance(const QString &folder, QObject *parent = nullptr);
    ~SingleInstance() override;

    Outcome claim();

Q_SIGNALS:
    /// Another program was started and asks for this one's window.
    void raiseRequested();

private:
    void listen();
    bool askHolder() const;

    QString m_folder;
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace lumora
