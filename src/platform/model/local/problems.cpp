// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/problems.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace lumora::problems {

namespace {

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

QString noFile(const std::optional<QString> &folder)
{
    if (!folder)
        return QCoreApplication::translate("LanguageModel", "There is no language model.");
    return QCoreApplication::translate("LanguageModel",
                                       "There is no language model. Put a model file (*.gguf) into the folder %1.")
        .arg(QDir::toNativeSeparators(*folder));
}

QString unreadable(const QString &path)
{
    return QCoreApplication::translate("LanguageModel",
                                       "The model file %1 cannot be read. Allow reading it, or replace it.")
        .arg(nameOf(path));
}

QString growing(const QString &path)
{
    return QCoreApplication::translate("LanguageModel",
                                       "The model file %1 is still being written. Wait until it is complete.")
        .arg(nameOf(path));
}

QString partMissing(const QString &path)
{
    return QCoreApplication::translate(
               "LanguageModel",
               "The model file %1 is one of several parts, and not all of them are there. Add the others, or "
               "wait until they are complete.")
        .arg(nameOf(path));
}

QString noModel(const QString &path)
{
    return QCoreApplication::translate(
               "LanguageModel", "The file %1 is not a model file, or not a complete one. Replace it or remove it.")
        .arg(nameOf(path));
}

QString tooLarge(const QString &path)
{
    return QCoreApplication::translate("LanguageModel",
                                       "The model %1 is larger than this computer's memory. Use a smaller one.")
        .arg(nameOf(path));
}

QString crashing()
{
    return QCoreApplication::translate(
        "LanguageModel", "The language model keeps crashing. Use another model file, or try again in a minute.");
}

QString killedWhileLoading()
{
    return QCoreApplication::translate(
        "LanguageModel", "The language model was killed while it was loading, perhaps because memory was short. Close "
                         "other programs or use a smaller model file, then try again in a minute.");
}

QString loadingTooLong(const QString &path)
{
    return QCoreApplication::translate(
               "LanguageModel",
               "The model file %1 took too long to load. Check the disk that it lies on, or use another "
               "model file.")
        .arg(nameOf(path));
}

QString toolOutputTooLong()
{
    return QCoreApplication::translate("LanguageModel",
                                       "What the tool found is too long for the language model. Ask for less.");
}

} // namespace lumora::problems
