// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// lumora-image-reader WHAT MEMORY SECONDS TESSDATA [LANGUAGE...]: writes what stands in the image file that is its
// standard input to its standard output, as reading.h encodes it. WHAT: text or barcodes; MEMORY: bytes of address
// space; SECONDS: of processor time; TESSDATA: the folder of language data, or empty for the system's; LANGUAGE: the
// user's. Ends with a HelperStatus.

#include "platform/process/confinement.h"
#include "platform/process/helperstatus.h"
#include "platform/vision/reader/contents.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

using namespace lumora;

namespace {

bool writeOut(const QByteArray &bytes)
{
    QFile output;
    return output.open(STDOUT_FILENO, QIODevice::WriteOnly) && output.write(bytes) == bytes.size() && output.flush();
}

} // namespace

int main(int argc, char **argv)
{
    const QList<QByteArray> arguments(argv + 1, argv + argc);
    struct stat facts = {};
    if (arguments.size() < 4 || fstat(STDIN_FILENO, &facts) != 0 || !S_ISREG(facts.st_mode))
        return unable;
    if (!confine(arguments[1].toULongLong(), arguments[2].toULongLong(), {arguments[3].toStdString()}))
        return unable;
    if (!arguments[3].isEmpty())
        qputenv("TESSDATA_PREFIX", arguments[3]);
    QStringList languages;
    for (const QByteArray &language : arguments.mid(4))
        languages.append(QString::fromUtf8(language));
    try {
        const Reading reading = arguments[0] == "text" ? readWriting(STDIN_FILENO, languages) : readCodes(STDIN_FILENO);
        return writeOut(encoded(reading)) ? complete : incomplete;
    } catch (const std::exception &) {
        return incomplete;
    }
}
