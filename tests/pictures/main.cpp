// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// lumora-pictures FOLDER light|dark [rtl] [long] [LANGUAGE]: writes a picture of each state of the window, at its least
// size and at a common one; rtl: mirrored; long: with interface texts that are two fifths longer, as other languages
// may have them; LANGUAGE: in that one, such as "de".

#include "app/appearance.h"
#include "app/mainwindow.h"
#include "app/translations.h"
#include "pictures/states.h"

#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>
#include <QTest>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

using namespace lumora;

namespace {

constexpr int timeout = 10000; // ms
constexpr int settling = 400;  // ms: images are read, texts laid out

class LongerTexts final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *, const char *source, const char *, int) const override
    {
        const QString text = QString::fromUtf8(source);
        QString more;
        while (more.size() < text.size() * 2 / 5)
            more += QStringLiteral(" lön") + (more.size() % 3 == 0 ? u'g' : u'd');
        return text + more;
    }
};

void darken()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor("#202020"));
    palette.setColor(QPalette::WindowText, Qt::white);
    QGuiApplication::setPalette(palette);
}

bool takePicture(const WindowState &state, QSize size, const QString &path)
{
    StoreFixture files;
    state.prepare(files);
    const auto store = files.start();
    const MainWindow main;
    QQuickWindow *window = main.window();
    if (!window)
        return false;
    main.setStore(store.get());
    window->resize(size);
    state.act(*store);
    if (!QTest::qWaitForWindowExposed(window) || !QTest::qWaitFor([&] { return state.hasCome(*store); }, timeout)) {
        std::fprintf(stderr, "The state \"%s\" does not come.\n", qPrintable(state.name));
        return false;
    }
    QTest::qWait(settling);
    return window->grabWindow().save(path);
}

} // namespace

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: lumora-pictures FOLDER light|dark [rtl] [long] [LANGUAGE]\n", stderr);
        return EXIT_FAILURE;
    }
    chooseFont();
    if (arguments[2] == "dark")
        darken();

    LongerTexts longer;
    for (const QString &option : arguments.mid(3)) {
        if (option == "rtl")
            QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        else if (option == "long")
            QGuiApplication::installTranslator(&longer);
        else
            installTranslations(QGuiApplication::applicationDirPath(), {option});
    }

    bool isComplete = true;
    for (const WindowState &state : windowStates()) {
        for (const QSize size : {QSize(760, 520), QSize(1280, 800)}) {
            const QString name =
                QString("%1/%2-%3x%4.png").arg(arguments[1], state.name).arg(size.width()).arg(size.height());
            isComplete = takePicture(state, size, name) && isComplete;
        }
    }
    return isComplete ? EXIT_SUCCESS : EXIT_FAILURE;
}
