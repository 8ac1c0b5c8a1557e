// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "evaluation/judgement.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>

namespace lumora::evaluation {

namespace {

QStringList texts(const QJsonValue &list)
{
    QStringList all;
    for (const auto &value : list.toArray())
        all.append(value.toString().simplified());
    return all;
}

bool containsAll(const QString &text, const QStringList &parts, Qt::CaseSensitivity sensitivity = Qt::CaseSensitive)
{
    return std::ranges::all_of(parts, [&](const QString &part) { return text.contains(part, sensitivity); });
}

QString argumentTexts(const Call &call)
{
    QStringList all;
    for (const auto &value : QJsonDocument::fromJson(call.arguments.toUtf8()).object())
        all.append(value.toString().simplified());
    return all.join(QLatin1Char(' '));
}

bool isExpectedCall(const QJsonObject &expect, const QList<Call> &calls)
{
    const QJsonValue tool = expect.value(QLatin1String("tool"));
    if (tool.isNull())
        return calls.isEmpty();
    return !calls.isEmpty() && calls.first().tool == tool.toString() &&
           containsAll(argumentTexts(calls.first()), texts(expect.value(QLatin1String("argument_contains"))),
                       Qt::CaseInsensitive);
}

bool isExpectedCard(const QJsonObject &expect, const QString &reply)
{
    const QJsonObject card = QJsonDocument::fromJson(reply.toUtf8()).object();
    const auto text = [&card](const char *name) { return card.value(QLatin1String(name)).toString().simplified(); };
    const auto list = [&card](const char *name) { return texts(card.value(QLatin1String(name))); };
    return text("title") == expect.value(QLatin1String("title")).toString().simplified() &&
           containsAll(text("summary"), texts(expect.value(QLatin1String("summary")))) &&
           list("keyPoints") == texts(expect.value(QLatin1String("points"))) &&
           list("nextSteps") == texts(expect.value(QLatin1String("steps")));
}

} // namespace

Judgement judge(const QJsonObject &expect, const Reply &reply)
{
    if (reply.failure)
        return {false, false, false};
    const QString text = reply.text.simplified();
    const auto member = [&expect](const char *name) { return expect.value(QLatin1String(name)); };
    Judgement judgement;
    judgement.call = isExpectedCall(expect, reply.calls);
    judgement.content = containsAll(text, texts(member("contains")));
    if (member("exact").isString())
        judgement.content = judgement.content && text == member("exact").toString().simplified();
    if (member("structured").isObject())
        judgement.content = judgement.content && isExpectedCard(member("structured").toObject(), reply.text);
    if (member("cites").isString())
        judgement.citation = text.contains(member("cites").toString().simplified());
    return judgement;
}

} // namespace lumora::evaluation
