// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/examplestream.h"
#include "evaluation/interview.h"
#include "evaluation/scores.h"
#include "platform/model/local/localmodelservice.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTextStream>

#include <exception>

using namespace lumora;
using namespace lumora::evaluation;

namespace {

struct Files
{
    QString service;
    QString model;
    QString examples; // the command that writes them
    QString replies;  // empty: they are not written down
};

QByteArray record(const training::Example &example, const QJsonObject &expect, const Reply &reply,
                  const Judgement &judgement)
{
    QJsonArray calls;
    for (const Call &call : reply.calls)
        calls.append(QJsonObject{{QStringLiteral("tool"), call.tool}, {QStringLiteral("arguments"), call.arguments}});
    const QJsonObject object{
        {QStringLiteral("task"), QString::fromStdString(example.task)},
        {QStringLiteral("right"), judgement.isRight()},
        {QStringLiteral("prompt"), QString::fromStdString(example.request.prompt)},
        {QStringLiteral("calls"), calls},
        {QStringLiteral("reply"), reply.failure.value_or(reply.text)},
        {QStringLiteral("expected"), QString::fromStdString(example.turns.back().text)},
        {QStringLiteral("expect"), expect},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

void ask(const SystemLanguageModel &model, const training::Example &example, Scores &scores, QFile &replies)
{
    const Reply reply = QCoro::waitFor(interview(model, example));
    const QJsonObject expect = QJsonDocument::fromJson(QByteArray::fromStdString(example.expect)).object();
    const Judgement judgement = judge(expect, reply);
    scores.add(QString::fromStdString(example.task), expect, reply, judgement);
    if (replies.isOpen())
        replies.write(record(example, expect, reply, judgement));
}

Scores evaluate(const Files &files)
{
    LocalModelSettings settings;
    settings.builtInModel = QFileInfo(files.model).absoluteFilePath();
    settings.command.program = QFileInfo(files.service).absoluteFilePath();
    settings.patience.untilSettled = ServicePatience::Time(0);
    const SystemLanguageModel model(std::make_shared<LocalModelService>(settings));
    QFile replies(files.replies);
    if (!files.replies.isEmpty() && !replies.open(QIODevice::WriteOnly))
        throw std::runtime_error("the file for the replies could not be opened");

    Scores scores;
    training::ExampleStream stream(files.examples.toStdString(), 1, training::ExampleStream::Ends::withTheCommand);
    stream.forEach([&](const training::Example &example) { ask(model, example, scores, replies); });
    return scores;
}

} // namespace

/// Puts examples to a model through the program's own session and service, and writes tables of what was right.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption service(QStringLiteral("service"), QStringLiteral("lumora-model"),
                                     QStringLiteral("program"));
    const QCommandLineOption model(QStringLiteral("model"), QStringLiteral("the model file"), QStringLiteral("file"));
    const QCommandLineOption examples(
        QStringLiteral("examples"), QStringLiteral("what writes the examples, one a line"), QStringLiteral("command"));
    const QCommandLineOption replies(
        QStringLiteral("replies"), QStringLiteral("where to write each reply, as JSON lines"), QStringLiteral("file"));
    parser.addOptions({service, model, examples, replies});
    parser.addHelpOption();
    parser.process(application);
    try {
        const Scores scores =
            evaluate({parser.value(service), parser.value(model), parser.value(examples), parser.value(replies)});
        QTextStream(stdout) << scores.text();
    } catch (const std::exception &error) {
        QTextStream(stderr) << "lumora-evaluate: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
