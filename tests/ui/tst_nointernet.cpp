// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// To be run by withoutinternet, which kills it where it reaches for the network.

#include "ui/windowtest.h"

#include <QDesktopServices>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>

#include <csignal>
#include <sys/socket.h>

using namespace lumora;

/// Stands in for the browser and the mail program.
class LinkCatcher : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void open(const QUrl &url) { opened << url; }

    QList<QUrl> opened;
};

class NoInternetTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void traceNotices_data();
    void traceNotices();
    void messageReachesNothing_data();
    void messageReachesNothing();
    void cleanupTestCase();

private:
    void clickEverywhere() const;

    LinkCatcher m_catcher;
};

namespace {

const QStringList schemes{"http", "https", "mailto"};
const QString links = "[page](http://192.0.2.1/a) https://host.invalid/b www.host.invalid <a@host.invalid>";

/// What the program does that is called with this word, instead of its tests.
int reachOut(const QString &way)
{
    if (way == "page") {
        QNetworkAccessManager manager;
        const std::unique_ptr<QNetworkReply> reply(manager.get(QNetworkRequest(QUrl("http://127.0.0.1:9/"))));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        return loop.exec();
    }
    const QStringList families{"local", "internet", "internet, version 6", "network devices"};
    const std::array numbers{AF_UNIX, AF_INET, AF_INET6, AF_NETLINK};
    return ::socket(numbers.at(size_t(families.indexOf(way))), SOCK_DGRAM, 0) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

void NoInternetTest::initTestCase()
{
    QFile status("/proc/self/status");
    QVERIFY(status.open(QIODevice::ReadOnly));
    QVERIFY2(status.readAll().contains("\nSeccomp:\t2"), "run this test by withoutinternet");
    for (const QString &scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, &m_catcher, "open");
}

void NoInternetTest::traceNotices_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("isNoticed");
    QTest::newRow("local socket") << "local" << false;
    for (const char *way : {"internet", "internet, version 6", "network devices", "page"})
        QTest::newRow(way) << way << true;
}

void NoInternetTest::traceNotices()
{
    QFETCH(QString, way);
    QFETCH(bool, isNoticed);
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(), {"--reach-out", way});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), isNoticed ? QProcess::CrashExit : QProcess::NormalExit);
    QCOMPARE(program.exitCode(), isNoticed ? SIGSYS : 0);
}

void NoInternetTest::messageReachesNothing_data()
{
    QTest::addColumn<QString>("text");
    // Nobody has these addresses and names, so that only an attempt can be noticed.
    QTest::newRow("image") << "![a](http://192.0.2.1/a.png) ![b](https://host.invalid/b.svg)";
    QTest::newRow("image in a link") << "[![a](http://192.0.2.1/a.png)](http://192.0.2.1/a)";
    QTest::newRow("image by reference") << "![a][b]\n\n[b]: http://192.0.2.1/a.png";
    QTest::newRow("image without a scheme") << "![a](//192.0.2.1/a.png) ![b](file://192.0.2.1/share/b.png)";
    QTest::newRow("HTML") << "<img src=\"http://192.0.2.1/a.png\"><iframe src=https://host.invalid></iframe>";
    QTest::newRow("style") << "<style>@import url(http://192.0.2.1/a.css); p {background: url(//192.0.2.1/a)}</style>";
    QTest::newRow("image in an image")
        << "![a](data:image/svg+xml,%3Csvg%20xmlns='http://www.w3.org/2000/svg'%3E%3Cimage%20href="
           "'http://192.0.2.1/a.png'/%3E%3C/svg%3E)";
    QTest::newRow("links") << links;
    QTest::newRow("code, list, table") << "```html\n<img src=http://192.0.2.1/a>\n```\n- "
                                          "![a](http://192.0.2.1/a)\n\n|a|\n|-|\n|![a](http://192.0.2.1/a)|";
    QTest::newRow("address of the network") << "\\\\192.0.2.1\\share\\a.png smb://192.0.2.1/a ws://192.0.2.1";
}

void NoInternetTest::messageReachesNothing()
{
    QFETCH(QString, text);
    m_catcher.opened.clear();
    ChatMessage card = assistantMessage({});
    card.card = AnswerCard{text, text, {text}, {text}};
    card.toolEvents = {{"1", text, "Complete"}};
    start({conversation(text, 1, {card}), conversation("Chat", 2)});
    m_store->selectConversation(m_store->conversations().back().id);
    clickEverywhere();

    m_fixture->model->enqueue(Script::words(text));
    m_store->setDraft(text);
    m_driver->press(Qt::Key_Return);
    QTRY_VERIFY(!m_store->isGenerating());
    QCOMPARE(m_store->selectedConversation()->messages.back().text, text);
    clickEverywhere();
    m_fixture->write("notes.md", text.toUtf8());
    m_store->library()->add(QUrl::fromLocalFile(m_fixture->path("notes.md")));
    QTRY_VERIFY(m_driver->showsText("notes.md"));
    m_fixture->write("a.svg",
                     QByteArray("<svg xmlns='http://www.w3.org/2000/svg' xmlns:x='http://www.w3.org/1999/xlink'>"
                                "<image x:href='http://192.0.2.1/a.png'/></svg>"));
    m_store->attachImage(QUrl::fromLocalFile(m_fixture->path("a.svg")));
    clickEverywhere();

    for (const QUrl &url : m_catcher.opened)
        QVERIFY2(schemes.contains(url.scheme()), qPrintable(url.toString()));
    QVERIFY2(!m_catcher.opened.isEmpty() || text != links, "no click came to a link");
}

void NoInternetTest::cleanupTestCase()
{
    for (const QString &scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

/// On all that stands in the messages, closely enough for every link.
void NoInternetTest::clickEverywhere() const
{
    QTRY_VERIFY(messageList());
    QQuickItem *list = messageList();
    QTRY_VERIFY(list->property("count").toInt() > 0);
    QVERIFY(QTest::qWaitForWindowExposed(m_driver->window()));
    const QRectF area = list->mapRectToScene(QRectF(0, 0, list->width(), list->height()));
    for (qreal y = area.top() + 6; y < area.bottom(); y += 12) {
        for (qreal x = area.left() + 8; x < area.right(); x += 24)
            QTest::mouseClick(m_driver->window(), Qt::LeftButton, {}, QPointF(x, y).toPoint());
    }
}

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--reach-out") == 0) {
        const QCoreApplication application(argc, argv);
        return reachOut(QString::fromLocal8Bit(argv[2]));
    }
    return runWindowTest<NoInternetTest>(argc, argv);
}

#include "tst_nointernet.moc"
