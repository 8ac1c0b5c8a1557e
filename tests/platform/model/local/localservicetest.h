// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/localmodelservice.h"
#include "platform/model/outcome.h"

#include <QTemporaryDir>
#include <QTest>

namespace lumora {

using Reason = Availability::UnavailableReason;

/// A reply and what has come of it.
struct TestReply
{
    TestReply(ModelService &service, const QString &prompt, ReplyRequest request = {});

    bool hasEnded() const { return usage || failure; }
    ModelReply *operator->() const { return reply.get(); }

    QString text;
    QList<QStringList> calls;
    std::optional<Usage> usage;
    QByteArray json;
    std::optional<QString> failure;

    std::unique_ptr<ModelReply> reply;
};

bool isRunning(qint64 pid);

/// A request that offers the one tool "ask".
ReplyRequest requestWithTool();

/// A service whose process is the fake one, on a folder of its own for each test.
class LocalServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString write(const QString &name, const QByteArray &content) const;
    void writeModel(const QByteArray &content) const { write("model.gguf", content); }
    void createService() { m_service = std::make_shared<LocalModelService>(m_settings); }
    /// With a model that loads, where the test has not written one.
    void becomeAvailable();
    /// How the service was told to load the file: for each time a dot, or a p where it was told of a projector.
    QByteArray loads() const;
    qint64 servicePid() const;
    /// What reaches the service of a prompt with images.
    wire::Respond echo(const QStringList &images) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    LocalModelSettings m_settings;
    std::shared_ptr<LocalModelService> m_service;
};

} // namespace lumora
