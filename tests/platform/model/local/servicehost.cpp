// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Starts the service given as the first argument on the model file given as the second, and makes it hang. Writes the
// service's process id, and goes on until it is killed.

#include "platform/model/local/localmodelservice.h"

#include <QCoreApplication>

#include <cstdio>

using namespace lumora;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    LocalModelSettings settings;
    settings.builtInModel = arguments.at(2);
    settings.command.program = arguments.at(1);
    settings.patience.untilSettled = std::chrono::milliseconds(0);
    LocalModelService service(settings);

    ReplyRequest request;
    request.prompt.text = "pid";
    const auto reply = service.respond(request);
    std::unique_ptr<ModelReply> hanging;
    QObject::connect(reply.get(), &ModelReply::textArrived, [&](const QString &pid) {
        request.prompt.text = "hang";
        hanging = service.respond(request);
        QObject::connect(hanging.get(), &ModelReply::textArrived, [pid] {
            std::puts(qPrintable(pid));
            std::fflush(stdout);
        });
    });
    return QCoreApplication::exec();
}
