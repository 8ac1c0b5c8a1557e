// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/program.h"

#include "app/appearance.h"
#include "app/installation.h"
#include "app/mainwindow.h"
#include "app/singleinstance.h"
#include "app/translations.h"
#include "app/windowmemory.h"
#include "platform/desktop/filedialogs.h"
#include "platform/files/storagelocation.h"
#include "platform/isolation/isolation.h"
#include "store/chatstore.h"

#include <QGuiApplication>
#include <QLocale>
#include <QTextStream>

#include <cstdlib>
#include <optional>
#include <string>

namespace lumora {

namespace {

void say(const QString &line)
{
    QTextStream(stderr) << line << Qt::endl;
}

int runWindow(std::shared_ptr<ModelService> service, const std::optional<QString> &applicationSupport,
              const SingleInstance *instance)
{
    std::optional<ChatStore> store;
    const MainWindow window(windowStateFile());
    if (!window.window())
        return EXIT_FAILURE;
    // A long history takes longer to read than a window to appear.
    window.whenShown([&] {
        const QString programFolder = QCoreApplication::applicationDirPath();
        store.emplace(SystemLanguageModel(std::move(service)), applicationSupport,
                      PdfTextReader{.helper = installedPdfHelper(programFolder)},
                      ImageReader{.helper = installedImageReader(programFolder)});
        if (window.setStore(&*store))
            return;
        say(QStringLiteral("Lumora is not installed completely: its window cannot be filled. Install it again."));
        QCoreApplication::exit(EXIT_FAILURE);
    });
    if (instance)
        QObject::connect(instance, &SingleInstance::raiseRequested, window.window(), [&window] { window.raise(); });
    return QGuiApplication::exec();
}

} // namespace

void prepareApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Lumora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUMORA_VERSION));
    preferPortalFileDialogs();
    QGuiApplication::setDesktopFileName(QStringLiteral("org.lumora.Lumora"));
}

int runProgram(std::shared_ptr<ModelService> service)
{
    if (const std::string missing = missingIsolation(); !missing.empty())
        say(QString::fromStdString(missing));
    installTranslations(QCoreApplication::applicationDirPath(), QLocale::system().uiLanguages());
    chooseFont();
    chooseIcon();
    const std::optional<QString> applicationSupport = applicationSupportDirectory();
    const std::optional<QString> folder = storageFolder(applicationSupport);
    if (!folder)
        return runWindow(std::move(service), applicationSupport, nullptr);

    SingleInstance instance(*folder);
    switch (instance.claim()) {
    case SingleInstance::Outcome::first:
        return runWindow(std::move(service), applicationSupport, &instance);
    case SingleInstance::Outcome::second:
        say(QStringLiteral("Lumora is already running; its window has been raised."));
        return EXIT_SUCCESS;
    case SingleInstance::Outcome::silent:
        say(QStringLiteral("Lumora is already running, but its window does not answer."));
        return EXIT_FAILURE;
    case SingleInstance::Outcome::unguarded:
        break;
    }
    return runWindow(std::move(service), applicationSupport, nullptr);
}

} // namespace lumora
