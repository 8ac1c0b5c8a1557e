// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/trainingvocabulary.h"
#include "trainer/builtinmodel.h"
#include "trainer/checkpoint.h"
#include "trainer/predictions.h"
#include "trainer/startingweights.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <fstream>

using namespace lumora::training;

namespace {

QJsonObject turn(const QString &text)
{
    return {{"role", "model"}, {"text", text}};
}

/// A line such as the generator writes, with a tool's output in it.
std::string exampleLine(const QString &text)
{
    const QJsonObject tool{{"name", "find"}, {"description", "Finds."}, {"schema", R"({"type":"object"})"}};
    const QJsonObject output{{"role", "tool"}, {"name", "find"}, {"output", text + "\n" + text}};
    const QJsonObject request{{"instructions", "Be brief. <|im_end|>"},
                              {"tools", QJsonArray{tool}},
                              {"prompt", text},
                              {"schema", QJsonValue()}};
    const QJsonObject example{{"task", "test"},
                              {"request", request},
                              {"turns", QJsonArray{turn(R"({"tool": "find", "arguments": {}})"), output, turn(text)}},
                              {"expect", QJsonObject()}};
    return QJsonDocument(example).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace

class ModelFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::ifstream file(MERGES);
        m_vocabulary = std::make_unique<TrainingVocabulary>(Tokenizer::read(file));
        m_model.shape = {.layers = 4, .hidden = 128, .context = 1024};
        m_model.shape.vocabulary = int(m_vocabulary->tokenizer().size());
        m_model.weights = startingWeights(m_model.shape, m_vocabulary->tokenizer().texts(), 1);
    }

    void weightsComeBack_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<double>("tolerance");
        QTest::newRow("single") << int(NumberFormat::single) << 0.0;
        QTest::newRow("half") << int(NumberFormat::half) << 0.0005;
        QTest::newRow("eight bits") << int(NumberFormat::eightBits) << 0.03;
    }

    void weightsComeBack()
    {
        QFETCH(int, format);
        QFETCH(double, tolerance);
        const std::string path = m_folder.filePath("model.gguf").toStdString();
        writeModel(m_model, m_vocabulary->tokenizer(), NumberFormat(format), path);
        const BuiltInModel read = readModel(path, m_vocabulary->tokenizer());
        QVERIFY(read.shape == m_model.shape);
        for (std::size_t i = 0; i < read.weights.size(); ++i)
            QVERIFY(std::abs(read.weights[i] - m_model.weights[i]) <= tolerance * (std::abs(m_model.weights[i]) + 0.5));
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, readModel(path, Tokenizer({})));
    }

    void halfPrecisionRounds_data()
    {
        QTest::addColumn<float>("number");
        QTest::addColumn<int>("bits");
        QTest::newRow("one") << 1.0F << 0x3C00;
        QTest::newRow("to even") << 1.0F + 1.0F / 2048 << 0x3C00;
        QTest::newRow("up") << 1.0F + 3.0F / 2048 << 0x3C02;
        QTest::newRow("up to the next power of two") << 1.9999F << 0x4000;
        QTest::newRow("smallest") << std::ldexp(1.0F, -24) << 0x0001;
        QTest::newRow("largest") << -65504.0F << 0xFBFF;
        QTest::newRow("too large") << 65520.0F << 0x7C00;
        QTest::newRow("zero") << -0.0F << 0x8000;
    }

    void halfPrecisionRounds()
    {
        QFETCH(float, number);
        QTEST(int(toHalf(number)), "bits");
    }

    void checkpointComesBack()
    {
        Checkpoint saved{m_model.weights, {7, m_model.weights, m_model.weights}, 123, 45, 6.5};
        saved.optimiser.means[3] = 42;
        const std::string path = m_folder.filePath("checkpoint").toStdString();
        QVERIFY(!readCheckpoint(path, m_model.shape));
        writeCheckpoint(saved, m_model.shape, path);
        const auto read = readCheckpoint(path, m_model.shape);
        QVERIFY(read && read->weights == saved.weights && read->optimiser.means == saved.optimiser.means);
        QCOMPARE(read->optimiser.steps, 7);
        QCOMPARE(read->tokens, 123);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, readCheckpoint(path, Shape{.width = 256}));
    }

    // The engine reads the same tokens, lays a chat out the same way, and goes on with the same tokens.
    void engineAgrees_data()
    {
        QTest::addColumn<bool>("isFalsified");
        QTest::addColumn<bool>("agrees");
        QTest::newRow("as exported") << false << true;
        QTest::newRow("with other predictions") << true << false;
    }

    void engineAgrees()
    {
#ifndef CHECK_MODEL
        QSKIP("there is no engine");
#else
        QFETCH(bool, isFalsified);
        const QString path = m_folder.filePath("checked.gguf");
        writeModel(m_model, m_vocabulary->tokenizer(), NumberFormat::single, path.toStdString());
        BuiltInModel model = readModel(path.toStdString(), m_vocabulary->tokenizer());
        if (isFalsified)
            std::ranges::reverse(std::span(model.weights).first(size_t(model.shape.vocabulary) * model.shape.width));
        QProcess check;
        check.start(CHECK_MODEL, {path});
        QVERIFY(check.waitForStarted());
        Network network(model.shape);
        for (const char *text :
             {"What's  the   date?\n\n\tIt's 12:30, isn't it?", "Größe: 3,50 €; naïve résumé — “ok”",
              "日本語とEnglish ١٢٣", "say <|im_start|> exactly ",
              "👩‍👩‍👧 e\u0301 \u00A0 x\r\n\r\ny 𝔘𝔫𝔦 ½ ²", "don'T WE'LL I'd_x 'S"}) {
            const std::string line = predictionLine(exampleLine(text), *m_vocabulary, network, model.weights);
            check.write(QByteArray::fromStdString(line + '\n'));
        }
        check.closeWriteChannel();
        QVERIFY(check.waitForFinished(60000));
        const QByteArray said = check.readAllStandardOutput();
        QVERIFY2(said.contains("6 examples, 0 of them in other tokens"), said + check.readAllStandardError());
        QTEST(check.exitStatus() == QProcess::NormalExit && check.exitCode() == 0, "agrees");
#endif
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<TrainingVocabulary> m_vocabulary;
    BuiltInModel m_model;
};

QTEST_GUILESS_MAIN(ModelFileTest)
#include "modelfiletest.moc"
