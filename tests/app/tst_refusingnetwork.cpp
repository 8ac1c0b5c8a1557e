// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/refusingnetwork.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

#include <memory>

using namespace lumora;

class RefusingNetworkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesEveryRequest_data()
    {
        QTest::addColumn<QString>("address");

        QTest::newRow("web") << QStringLiteral("http://127.0.0.1:%1/");
        QTest::newRow("encrypted web") << QStringLiteral("https://127.0.0.1:%1/");
        QTest::newRow("file") << QStringLiteral("file:///etc/hostname");
        QTest::newRow("data") << QStringLiteral("data:text/plain,a");
    }

    void refusesEveryRequest()
    {
        QFETCH(QString, address);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QSignalSpy connected(&server, &QTcpServer::newConnection);
        RefusingNetwork network;
        const std::unique_ptr<QNetworkAccessManager> manager(network.create(nullptr));

        address.replace("%1", QString::number(server.serverPort()));
        const std::unique_ptr<QNetworkReply> reply(manager->get(QNetworkRequest(QUrl(address))));
        QSignalSpy finished(reply.get(), &QNetworkReply::finished);

        QVERIFY(finished.wait());
        QVERIFY(reply->isFinished());
        QVERIFY(reply->error() != QNetworkReply::NoError);
        QCOMPARE(reply->readAll(), QByteArray());
        QCOMPARE(connected.count(), 0);
    }
};

QTEST_GUILESS_MAIN(RefusingNetworkTest)
#include "tst_refusingnetwork.moc"
