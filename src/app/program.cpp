// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/program.h"

#include "app/appearance.h"
#include "app/desktopactivation.h"
#include "app/installation.h"
#include "app/mainwindow.h"
#include "app/singleinstance.h"
#include "app/terminationsignals.h"
#include "app/translations.h"
#include "app/windowmemory.h"
#include "platform/desktop/filedialogs.h"
#include "platform/files/storagelocation.h"
#include "platform/isolation/isolation.h"
#include "store/chatstore.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>
#include <QTextStream>

#include <cstdlib>
#include <optional>
#include <string>

namespace lumora {

namespace {

/// The program's name among those of all programs: of its desktop file, its icon and its place on the bus.
const QString desktopFile = QStringLiteral("org.lumora.Lumora");

void say(const QString &line)
{
    QTextStream(stderr) << line << Qt::endl;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("lumora::Program", text);
}

/// The desktop, another start or the session may ask for the window, for a new chat, or for the program's end.
void followRequests(const MainWindow &window, const DesktopActivation &desktop, const TerminationSignals &termination,
                    const SingleInstance *instance)
{
    QQuickWindow *shown = window.window();
    const auto raise = [&window](const QString &token) { window.raise(token); };
    const auto startNewChat = [&window] { window.startNewChat(); };
    QObject::connect(&desktop, &DesktopActivation::raiseRequested, shown, raise);
    QObject::connect(&desktop, &DesktopActivation::newChatRequested, shown, startNewChat);
    QObject::connect(&termination, &TerminationSignals::received, shown, &QCoreApplication::quit);
    if (!instance)
        return;
    QObject::connect(instance, &SingleInstance::raiseRequested, shown, raise);
    QObject::connect(instance, &SingleInstance::newChatRequested, shown, startNewChat);
}

int runWindow(std::shared_ptr<ModelService> service, const std::optional<QString> &applicationSupport,
              const SingleInstance *instance, SingleInstance::Wish wish)
{
    std::optional<ChatStore> store;
    const MainWindow window(windowStateFile());
    if (!window.window())
        return EXIT_FAILURE;
    const DesktopActivation desktop(desktopFile); // before a long history is read: the desktop waits for it
    const TerminationSignals termination;
    followRequests(window, desktop, termination, instance);
    if (wish == SingleInstance::Wish::newChat)
        window.startNewChat();
    // A long history takes longer to read than a window to appear.
    window.whenShown([&] {
        const QString programFolder = QCoreApplication::applicationDirPath();
        store.emplace(SystemLanguageModel(std::move(service)), applicationSupport,
                      PdfTextReader{.helper = installedPdfHelper(programFolder)},
                      ImageReader{.helper = installedImageReader(programFolder)});
        if (window.setStore(&*store))
            return;
        say(translated(QT_TRANSLATE_NOOP(
            "lumora::Program", "Lumora is not installed completely: its window cannot be filled. Install it again.")));
        QCoreApplication::exit(EXIT_FAILURE);
    });
    // The session is about to end, or somebody else may keep it from doing so.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, window.window(), [&store] {
        if (store)
            store->save();
    });
    const int status = QGuiApplication::exec();
    if (store)
        store->stopGenerating(); // what there is of a reply stays
    return status;
}

} // namespace

void prepareApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Lumora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUMORA_VERSION));
    preferPortalFileDialogs();
    QGuiApplication::setDesktopFileName(desktopFile);
}

SingleInstance::Wish readArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Chat with a language model that stays on your computer."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption newChat(QStringLiteral("new-chat"), QStringLiteral("Start a new chat."));
    parser.addOption(newChat);
    parser.process(arguments);
    return parser.isSet(newChat) ? SingleInstance::Wish::newChat : SingleInstance::Wish::window;
}

int runProgram(std::shared_ptr<ModelService> service, SingleInstance::Wish wish)
{
    if (const std::string missing = missingIsolation(); !missing.empty())
        say(QString::fromStdString(missing));
    installTranslations(QCoreApplication::applicationDirPath(), QLocale::system().uiLanguages());
    chooseFont();
    chooseIcon();
    const std::optional<QString> applicationSupport = applicationSupportDirectory();
    const std::optional<QString> folder = storageFolder(applicationSupport);
    if (!folder)
        return runWindow(std::move(service), applicationSupport, nullptr, wish);

    SingleInstance instance(*folder);
    switch (instance.claim(wish)) {
    case SingleInstance::Outcome::first:
        return runWindow(std::move(service), applicationSupport, &instance, wish);
    case SingleInstance::Outcome::second:
        say(translated(QT_TRANSLATE_NOOP("lumora::Program", "Lumora is already running; its window has been raised.")));
        return EXIT_SUCCESS;
    case SingleInstance::Outcome::silent:
        say(translated(
            QT_TRANSLATE_NOOP("lumora::Program", "Lumora is already running, but its window does not answer.")));
        return EXIT_FAILURE;
    case SingleInstance::Outcome::unguarded:
        break;
    }
    return runWindow(std::move(service), applicationSupport, nullptr, wish);
}

} // namespace lumora
