// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "evaluation/scores.h"

#include <QStringList>

#include <array>
#include <initializer_list>
#include <string_view>

namespace lumora::evaluation {

namespace {

/// What is asked of the built-in model, and how much of it is to be right at least.
struct Measure
{
    const char *name;
    int goal; // percent
};

constexpr Measure decision{"tool decision, with good arguments", 97};
constexpr Measure date{"date answers", 97};
constexpr Measure excerpt{"excerpt answers with the right sentence", 90};
constexpr Measure citation{"excerpt answers that cite the title", 95};
constexpr Measure image{"answers about text and codes in images", 92};
constexpr Measure chat{"recall and extraction", 85};
constexpr Measure card{"structured answers", 85};
constexpr Measure refusal{"honest refusals", 95};
constexpr std::array measures = {decision, date, excerpt, citation, image, chat, card, refusal};

bool isOneOf(const QString &task, std::initializer_list<const char *> tasks)
{
    return std::ranges::any_of(tasks, [&task](const char *one) { return task == QLatin1String(one); });
}

} // namespace

void Scores::Count::add(bool isRight)
{
    ++asked;
    right += isRight ? 1 : 0;
}

QString Scores::Count::percent() const
{
    return asked == 0 ? QStringLiteral("–") : QString::number(100.0 * right / asked, 'f', 1) + QStringLiteral(" %");
}

Scores::Count &Scores::measure(const char *name)
{
    return m_measures[QLatin1String(name)];
}

void Scores::add(const QString &task, const QJsonObject &expect, const Reply &reply, const Judgement &judgement)
{
    measure(decision.name).add(judgement.call);
    if (task == QLatin1String("date"))
        measure(date.name).add(judgement.isRight());
    if (task == QLatin1String("search.answer")) {
        measure(excerpt.name).add(judgement.content);
        measure(citation.name).add(judgement.citation);
    }
    if (isOneOf(task, {"image.text", "image.line", "barcode"}))
        measure(image.name).add(judgement.content);
    if (isOneOf(task, {"recall", "extract", "items", "pick", "text.answer", "points", "shorten"}))
        measure(chat.name).add(judgement.isRight());
    if (expect.contains(QLatin1String("structured")))
        measure(card.name).add(judgement.content);
    else if (expect.value(QLatin1String("refuses")).toBool())
        measure(refusal.name).add(judgement.isRight());
    m_tasks[task].add(judgement.isRight());

    m_seconds += reply.seconds;
    m_inputTokens += reply.inputTokens;
    m_outputTokens += reply.outputTokens;
    if (reply.secondsToText > 0) {
        m_secondsToText += reply.secondsToText;
        ++m_texts;
    }
}

QString Scores::text() const
{
    QString text = QStringLiteral("| asked of the model | replies | right | goal |\n|---|---:|---:|---:|\n");
    for (const Measure &measure : measures) {
        const auto found = m_measures.find(QLatin1String(measure.name));
        const Count count = found == m_measures.end() ? Count() : found->second;
        text += QStringLiteral("| %1 | %2 | %3 | %4 % |\n")
                    .arg(QLatin1String(measure.name), QString::number(count.asked), count.percent(),
                         QString::number(measure.goal));
    }
    Count all;
    text += QStringLiteral("\n| task | replies | all right |\n|---|---:|---:|\n");
    for (const auto &[task, count] : m_tasks) {
        text += QStringLiteral("| %1 | %2 | %3 |\n").arg(task, QString::number(count.asked), count.percent());
        all.asked += count.asked;
        all.right += count.right;
    }
    text += QStringLiteral("| all | %1 | %2 |\n").arg(QString::number(all.asked), all.percent());
    text +=
        QStringLiteral("\n%1 replies in %2 s: %3 tokens read, %4 written; the first text came after %5 s on average.\n")
            .arg(QString::number(all.asked), QString::number(m_seconds, 'f', 1), QString::number(m_inputTokens),
                 QString::number(m_outputTokens), QString::number(m_texts > 0 ? m_secondsToText / m_texts : 0, 'f', 2));
    return text;
}

} // namespace lumora::evaluation
