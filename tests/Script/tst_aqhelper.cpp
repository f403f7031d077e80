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
    void cellText_data();
    void cellText();
    void exportVisualOrderWithoutHiddenSections();
    void exportRefusesBadInput();
    void eventNameMigration_data();
    void eventNameMigration();
};

void tst_AQHelper::cellText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("bool") << QVariant(true) << "true";
    QTest::newRow("string") << QVariant(QStringLiteral("a b")) << "a b";
    QTest::newRow("string list") << QVariant(QStringList{"x"}) << "x";
    QTest::newRow("byte array") << QVariant(QByteArray("raw")) << "raw";
    QTest::newRow("int") << QVariant(-42) << "-42";
    QTest::newRow("uint") << QVariant(4000000000u) << "4000000000";
    QTest::newRow("int64") << QVariant(qint64(-9000000000)) << "-9000000000";
    QTest::newRow("uint64") << QVariant(quint64(18000000000000000000ull)) << "18000000000000000000";
    QTest::newRow("double 6 digits") << QVariant(3.14159265) << "3.14159";
    QTest::newRow("double large") << QVariant(1234567.0) << "1.23457e+06";
    QTest::newRow("float") << QVariant(0.5f) << "0.5";
    QTest::newRow("char") << QVariant(QChar(0x3a9)) << QString(QChar(0x3a9));
    QTest::newRow("colour") << QVariant(QColor(255, 128, 0)) << "#ff8000";
    QTest::newRow("invalid") << QVariant() << "";
}

void tst_AQHelper::cellText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(AQHelper::cellText(value), text);
}

void tst_AQHelper::exportVisualOrderWithoutHiddenSections()
{
    QStandardItemModel model(2, 3);
    model.setHorizontalHeaderLabels({"Name", "Value", "Colour"});
    model.setData(model.index(0, 0), QStringLiteral("port 1"));
    model.setData(model.index(0, 1), 50.0);
    model.setData(model.index(0, 2), QColor(Qt::red));
    model.setData(model.index(1, 0), QStringLiteral("port 2"));
    model.setData(model.index(1, 1), 75);
    model.setData(model.index(1, 2), QColor(Qt::blue));
    QTableView view;
    view.setModel(&model);
    view.horizontalHeader()->moveSection(2, 0); // Colour first
    view.setColumnHidden(1, true);

    ScriptSandbox sandbox(false);
    const QString file = sandbox.path(QStringLiteral("table.csv"));
    QVERIFY(AQHelper::exportTableToCSV(&view, file, QStringLiteral(";")));
    QCOMPARE(ScriptSandbox::readLines(file), (QStringList{"Colour;Name", "#ff0000;port 1", "#0000ff;port 2"}));
}

void tst_AQHelper::exportRefusesBadInput()
{
    QStandardItemModel model(1, 1);
    QTableView view;
    view.setModel(&model);
    ScriptSandbox sandbox(false);
    QVERIFY(!AQHelper::exportTableToCSV(nullptr, sandbox.path("a.csv"), ","));
    QVERIFY(!AQHelper::exportTableToCSV(&view, QString(), ","));
    QVERIFY(!AQHelper::exportTableToCSV(&view, sandbox.path("missing/a.csv"), ","));
    QVERIFY(!QFile::exists(sandbox.path("a.csv")));
}

void tst_AQHelper::eventNameMigration_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("migrated");

    QTest::newRow("button down") << QByteArray("QtSignal View Canvas OrvexMouseEvent 1 10 20")
                                 << QByteArray("QtSignal View Canvas OrvexMouseEvent LButtonDown 10 20");
    QTest::newRow("10 is not 1") << QByteArray("OrvexMouseEvent 10 5 5") << QByteArray("OrvexMouseEvent MouseMove 5 5");
    QTest::newRow("key event prefix") << QByteArray("OrvexKeyEvent 15 65") << QByteArray("OrvexKeyEvent KeyDown 65");
    QTest::newRow("mouse prefix with key number") << QByteArray("OrvexMouseEvent 15 65")
                                                  << QByteArray("OrvexMouseEvent 15 65");
    QTest::newRow("row 9 needs its blank") << QByteArray("OrvexMouseEvent 9") << QByteArray("OrvexMouseEvent 9");
    QTest::newRow("last row") << QByteArray("OrvexMouseEvent 23") << QByteArray("OrvexMouseEvent TouchesMove");
    QTest::newRow("already named") << QByteArray("OrvexMouseEvent Timer") << QByteArray("OrvexMouseEvent Timer");
}

void tst_AQHelper::eventNameMigration()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, migrated);
    QCOMPARE(AQEventNames::migrateLine(line), migrated);
}

QTEST_MAIN(tst_AQHelper)
#include "tst_aqhelper.moc"
