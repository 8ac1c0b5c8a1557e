// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/toolevents.h"

#include <QTest>

using namespace lumora;

class ToolEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheTranscript_data()
    {
        QTest::addColumn<QList<Transcript::Entry>>("entries");
        QTest::addColumn<QList<ToolEvent>>("events");
        using Entries = QList<Transcript::Entry>;
        using Events = QList<ToolEvent>;
        const auto calls = [](const QStringList &ids) {
            Transcript::ToolCalls result;
            for (const QString &id : ids)
                result.calls.append({id, "tool-" + id, "{}"});
            return result;
        };
        const auto output = [](const QString &id) { return Transcript::ToolOutput{id, "text"}; };

        QTest::newRow("no calls") << Entries{Transcript::Instructions{"i"}, Transcript::PromptText{"p"},
                                             Transcript::Response{"r"}}
                                  << Events{};
        QTest::newRow("running") << Entries{calls({"1"})} << Events{{"1", "tool-1", "Running"}};
        QTest::newRow("each by its own id") << Entries{calls({"1", "2"}), output("2")}
                                            << Events{{"1", "tool-1", "Running"}, {"2", "tool-2", "Complete"}};
        QTest::newRow("in call order") << Entries{calls({"2"}), output("2"), calls({"1"}), output("1")}
                                       << Events{{"2", "tool-2", "Complete"}, {"1", "tool-1", "Complete"}};
        QTest::newRow("an output for nothing")
            << Entries{output("1"), calls({"1"}), output("3")} << Events{{"1", "tool-1", "Running"}};
        QTest::newRow("a shared id") << Entries{calls({"1", "1"}), output("1")}
                                     << Events{{"1", "tool-1", "Complete"}, {"1", "tool-1", "Running"}};
    }

    void followsTheTranscript()
    {
        QFETCH(QList<Transcript::Entry>, entries);
        QFETCH(QList<ToolEvent>, events);
        QCOMPARE(toolEvents({entries}), events);
    }
};

QTEST_APPLESS_MAIN(ToolEventsTest)
#include "tst_toolevents.moc"
