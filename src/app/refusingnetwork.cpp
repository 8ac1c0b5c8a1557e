// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/refusingnetwork.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace lumora {

namespace {

class RefusedReply : public QNetworkReply
{
public:
    RefusedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request, QObject *parent)
        : QNetworkReply(parent)
    {
        setOperation(operation);
        setRequest(request);
        setUrl(request.url());
        setError(OperationCanceledError, QStringLiteral("This program uses no network."));
        setFinished(true);
        open(QIODevice::ReadOnly);
        QTimer::singleShot(0, this, [this] {
            Q_EMIT errorOccurred(OperationCanceledError);
            Q_EMIT finished();
        });
    }

    void abort() override {}

protected:
    qint64 readData(char *, qint64) override { return -1; }
};

class RefusingManager : public QNetworkAccessManager
{
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *) override
    {
        return new RefusedReply(operation, request, this);
    }
};

} // namespace

QNetworkAccessManager *RefusingNetwork::create(QObject *parent)
{
    return new RefusingManager(parent);
}

} // namespace lumora
