// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/storefixture.h"
#include "ui/documentlistmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace lumora;

class DocumentListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesTouchNoOtherRow()
    {
        const StoreFixture files;
        for (const char *name : {"a.txt", "b.txt", "c.txt"})
            files.write(name, "words");
        DocumentLibrary library(files.data.path());
        DocumentListModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setLibrary(&library);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);

        for (const char *name : {"a.txt", "b.txt", "c.txt"})
            library.add(QUrl::fromLocalFile(files.path(name)));
        QTRY_COMPARE(shown(model), QStringList({"a.txt", "b.txt", "c.txt"}));
        QCOMPARE(inserted.size(), 3);

        library.remove(library.documents().at(1));
        QCOMPARE(shown(model), QStringList({"a.txt", "c.txt"}));
        QCOMPARE(removed.size(), 1);
        QCOMPARE(removed.first().at(1), QVariant(1));
        QCOMPARE(removed.first().at(2), QVariant(1));
        QCOMPARE(inserted.size(), 3);
        QVERIFY(reset.isEmpty());
    }

private:
    static QStringList shown(const DocumentListModel &model)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names << model.data(model.index(row), DocumentListModel::documentRole).value<ImportedDocument>().name;
        return names;
    }
};

QTEST_GUILESS_MAIN(DocumentListModelTest)
#include "tst_documentlistmodel.moc"
