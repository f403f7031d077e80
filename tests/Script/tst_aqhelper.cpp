#include "ScriptSandbox.h"

#include <Script/AQEventNames.h>
#include <Script/AQHelper.h>

#include <QColor>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

using namespace QtUIBase;

class tst_AQHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exportVisualOrderWithoutHiddenSections()
    {
        // Cells are written by type: numbers in six significant digits, colours by name.
        const QList<QVariantList> rows{{"port 1", 1234567.0, QColor(Qt::red)},
                                       {quint64(18000000000000000000ull), -42, QChar('Z')},
                                       {QVariant(), 0.5, QColor(0, 0, 255)}};
        QStandardItemModel model(3, 4);
        model.setHorizontalHeaderLabels({"Name", "Value", "Colour", "Hidden"});
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                model.setData(model.index(row, column), rows[row][column]);
        QTableView view;
        view.setModel(&model);
        view.horizontalHeader()->moveSection(2, 0); // Colour first
        view.setColumnHidden(3, true);

        ScriptSandbox sandbox(false);
        const QString file = sandbox.path("table.csv");
        QVERIFY(AQHelper::exportTableToCSV(&view, file, ";"));
        QCOMPARE(ScriptSandbox::readLines(file), (QStringList{"Colour;Name;Value", "#ff0000;port 1;1.23457e+06",
                                                              "Z;18000000000000000000;-42", "#0000ff;;0.5"}));

        QVERIFY(!AQHelper::exportTableToCSV(nullptr, sandbox.path("a.csv"), ","));
        QVERIFY(!AQHelper::exportTableToCSV(&view, QString(), ","));
        QVERIFY(!AQHelper::exportTableToCSV(&view, sandbox.path("missing/a.csv"), ","));
        QVERIFY(!QFile::exists(sandbox.path("a.csv")));
    }

    void eventNameMigration_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("migrated");
        QTest::newRow("button down") << QByteArray("QtSignal View Canvas OrvexMouseEvent 1 10 20")
                                     << QByteArray("QtSignal View Canvas OrvexMouseEvent LButtonDown 10 20");
        QTest::newRow("10 is not 1") << QByteArray("OrvexMouseEvent 10 5") << QByteArray("OrvexMouseEvent MouseMove 5");
        QTest::newRow("mouse prefix, key number") << QByteArray("OrvexMouseEvent 15")
                                                  << QByteArray("OrvexMouseEvent 15");
    }

    void eventNameMigration()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, migrated);
        QCOMPARE(AQEventNames::migrateLine(line), migrated);
    }
};

QTEST_MAIN(tst_AQHelper)
#include "tst_aqhelper.moc"
