// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localservicetest.h"

#include <QFile>
#include <QLoggingCategory>

using namespace std::chrono_literals;

namespace lumora {

TestReply::TestReply(ModelService &service, const QString &prompt, ReplyRequest request)
{
    request.prompt.text = prompt;
    reply = service.respond(std::move(request));
    QObject::connect(reply.get(), &ModelReply::textArrived, [this](const QString &piece) { text += piece; });
    QObject::connect(reply.get(), &ModelReply::toolCalled,
                     [this](const QString &callID, const QString &name, const QByteArray &arguments) {
                         calls.append({callID, name, QString::fromUtf8(arguments)});
                     });
    QObject::connect(reply.get(), &ModelReply::finished, [this](const Usage &counted, const QByteArray &content) {
        usage = counted;
        json = content;
    });
    QObject::connect(reply.get(), &ModelReply::failed, [this](const QString &description) { failure = description; });
}

bool isRunning(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    // One that has ended, but whose end nobody has noticed yet, is a zombie.
    const QByteArray text = status.readAll();
    return text.mid(text.lastIndexOf(')') + 2, 1) != "Z";
}

ReplyRequest requestWithTool()
{
    ReplyRequest request;
    request.tools = {{"ask", "Asks.", {}}};
    return request;
}

void LocalServiceTest::init()
{
    // Deaths are expected here.
    QLoggingCategory::setFilterRules("lumora.model.warning=false");
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = {};
    m_settings.modelFolder = m_folder->path();
    m_settings.command.program = FAKE_SERVICE;
    m_settings.patience.untilSettled = 0ms;
    m_settings.patience.untilNextLook = 10ms;
}

void LocalServiceTest::cleanup()
{
    m_service.reset();
    m_folder.reset();
}

QString LocalServiceTest::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write");
    return file.fileName();
}

void LocalServiceTest::becomeAvailable()
{
    if (!QFile::exists(path("model.gguf")))
        writeModel("GGUF fine");
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

QByteArray LocalServiceTest::loads() const
{
    QFile file(path("model.gguf.loads"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 LocalServiceTest::servicePid() const
{
    const TestReply reply(*m_service, "pid");
    [&reply] { QTRY_VERIFY(reply.hasEnded()); }();
    return reply.text.toLongLong();
}

wire::Respond LocalServiceTest::echo(const QStringList &images) const
{
    ReplyRequest request;
    for (const QString &image : images)
        request.prompt.attachments.append(Attachment(image).label("attached image"));
    const TestReply reply(*m_service, "echo", request);
    [&reply] { QTRY_VERIFY(reply.hasEnded()); }();
    const auto message = wire::decodeRequest(reply.text.toStdString());
    return message ? std::get<wire::Respond>(*message) : wire::Respond();
}

} // namespace lumora
