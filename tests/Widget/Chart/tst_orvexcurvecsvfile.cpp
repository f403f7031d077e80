#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveCsvFile.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include "CerrCapture.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace Gui::Widget;
using Flavour = OrvexCurveCsvFile::Flavour;

Q_DECLARE_METATYPE(Flavour)

namespace {

using Values = std::vector<double>;

struct Fixture
{
    Fixture()
        : manager(std::make_shared<OrvexCurveManager>(nullptr))
        , group(manager->createGroup("g"))
    {
        manager->setCurrentGroup("g");
    }

    std::shared_ptr<OrvexCurve> add(const std::string& title, Values x, Values y)
    {
        auto curve = group->createCurve(std::string());
        curve->setTitle(title);
        curve->setData(std::move(x), std::move(y));
        return curve;
    }

    QByteArray text() const { return OrvexCurveCsvFile::format(group->getAllCurves(false), Flavour::Comma); }

    std::shared_ptr<OrvexCurveManager> manager;
    std::shared_ptr<OrvexCurveGroup> group;
};

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& bytes)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(bytes);
    return path;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// "title|suffix|xUnit|yUnit"
QString describe(const OrvexCurve& c)
{
    return QString::fromStdString(c.title() + "|" + c.suffix() + "|" + c.xUnit() + "|" + c.yUnit());
}

} // namespace

class tst_OrvexCurveCsvFile : public QObject
{
    Q_OBJECT

private slots:
    void formatAndRoundTrip_data();
    void formatAndRoundTrip();
    void exportedCurves();
    void numbersWrittenAsQtWrites_data();
    void numbersWrittenAsQtWrites();
    void cellsReadAsToDouble_data();
    void cellsReadAsToDouble();
    void importTables_data();
    void importTables();
    void csvSuffix_data();
    void csvSuffix();
    void failures_data();
    void failures();
    void managerWithoutGroup();
};

void tst_OrvexCurveCsvFile::formatAndRoundTrip_data()
{
    QTest::addColumn<Flavour>("flavour");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("comma") << Flavour::Comma
                           << QByteArray("#Title,a,b\n#Suffix,,(p2)\n#X-Unit,GHz,s\n#Y-Unit,dB,V\n"
                                         "1,10, \n2,20,2.5e+300\n3, ,-0.000125\n");
    QTest::newRow("blank") << Flavour::Blank
                           << QByteArray("#Title a b\n#Suffix  (p2)\n#X-Unit GHz s\n#Y-Unit dB V\n"
                                         "1 10 nan\n2 20 2.5e+300\n3 nan -0.000125\n");
}

// One row per distinct X with missing cells in the flavour's own form; an
// empty first suffix keeps its place, and everything reads back as it was.
void tst_OrvexCurveCsvFile::formatAndRoundTrip()
{
    QFETCH(Flavour, flavour);
    Fixture source;
    const auto a = source.add("a", {1, 2}, {10, 20});
    const auto b = source.add("b", {2, 3}, {2.5e+300, -0.000125});
    a->setXUnit("GHz");
    a->setYUnit("dB");
    b->setSuffix("(p2)");
    b->setXUnit("s");
    b->setYUnit("V");
    QTemporaryDir dir;
    const QString path = dir.filePath("table.csv");
    QVERIFY(OrvexCurveCsvFile::exportGroup(*source.group, path, flavour));
    QTEST(readFile(path), "expected");

    Fixture target;
    target.add("existing", {1}, {1});
    QCOMPARE(OrvexCurveCsvFile::importFiles(*target.group, {path}, flavour), 2);
    const auto made = target.group->getAllCurves(false);
    QCOMPARE(made.size(), std::size_t(3));
    QCOMPARE(made[0]->title(), std::string("existing"));
    for (const auto& [actual, expected] : {std::make_pair(made[1], a), std::make_pair(made[2], b)}) {
        QCOMPARE(describe(*actual), describe(*expected));
        QCOMPARE(actual->xData(), expected->xData());
        QCOMPARE(actual->yData(), expected->yData());
        QVERIFY(actual->id() != expected->id());
    }
}

// Only visible curves, in their current data type; unsorted X with repeats
// gives sorted rows with the first point per X.
void tst_OrvexCurveCsvFile::exportedCurves()
{
    Fixture source;
    source.add("shown", {3, 1, 2, 1, std::nan("")}, {30, 10, 20, 99, 7});
    source.add("hidden", {1.5}, {0})->setVisible(false);
    auto normalised = source.add("scaled", {1, 2}, {2, 6});
    normalised->setDataType(OrvexCurveDataType::LinearNormalizedData);
    source.add("shown", {1}, {1})->setVisible(false);

    const QByteArray text = OrvexCurveCsvFile::format(source.group->getAllCurves(true), Flavour::Comma);
    // The group's raw Y spans 0..99 (hidden curves count for normalising).
    QCOMPARE(text, QByteArray("#Title,shown,scaled\n#Suffix,,\n#X-Unit,,\n#Y-Unit,,\n"
                              "1,10,0.020202\n2,20,0.0606061\n3,30, \n"));

    QTemporaryDir dir;
    const QString path = dir.filePath("visible.csv");
    QVERIFY(OrvexCurveCsvFile::exportGroup(*source.group, path, Flavour::Comma));
    QCOMPARE(readFile(path), text);
}

void tst_OrvexCurveCsvFile::numbersWrittenAsQtWrites_data()
{
    QTest::addColumn<Values>("values");
    const double inf = std::numeric_limits<double>::infinity();
    // NaN per flavour, layout switches, ties away from zero and rounding carries.
    QTest::newRow("edges") << Values{0.0, -0.0, inf, -inf, std::nan(""), -std::nan(""), 1e-5, 1e-4, 0.000123456,
                                     99999.9, 999999, 1e6, 1234567, 1e21, 1e100, 1e-100, 1e300, 5e-324,
                                     std::numeric_limits<double>::max(), 1234565, -1234565, 123456.5, 12345.25,
                                     -12345.25, 1234.125, 9999995, 9999985, 999999.5, 0.5, 2.5, 9.999995, 99.99996,
                                     0.000999999, 0.00099999949, 9999994.9, -99999.95};
    // Values of every magnitude with full mantissas, and short decimals.
    Values random;
    QRandomGenerator generator(7);
    for (int i = 0; i < 20000; ++i) {
        const double mantissa = generator.generateDouble() * 10 - 5;
        const int exponent = generator.bounded(-320, 300);
        random.push_back(mantissa * std::pow(10.0, exponent));
        random.push_back(static_cast<double>(generator.bounded(-99999999, 99999999)) / std::pow(10.0, i % 9));
    }
    QTest::newRow("random") << random;
}

void tst_OrvexCurveCsvFile::numbersWrittenAsQtWrites()
{
    QFETCH(Values, values);

    Values x(values.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<double>(i);
    Fixture source;
    const auto curve = source.add("v", x, values);
    for (const Flavour flavour : {Flavour::Comma, Flavour::Blank}) {
        const QList<QByteArray> lines = OrvexCurveCsvFile::format({curve}, flavour).split('\n');
        QCOMPARE(lines.size(), static_cast<int>(values.size()) + 5);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const QList<QByteArray> cells = lines[static_cast<int>(i) + 4].split(flavour == Flavour::Comma ? ',' : ' ');
            QCOMPARE(cells.size(), 2);
            const double v = values[i];
            const QString expected =
                std::isnan(v) && flavour == Flavour::Comma ? QStringLiteral(" ") : QString("%1").arg(v, 0, 'g');
            QCOMPARE(QString::fromLatin1(cells[1]), expected);
        }
    }
}

void tst_OrvexCurveCsvFile::cellsReadAsToDouble_data()
{
    QTest::addColumn<QByteArray>("cell");
    for (const char* cell : {"+5", ".5", "5.", "-.5", "1e5", "1E-5", "+.5e-3", "00012", " 7 ", "\t8\t", "-0", "1.5e+3",
                             "1e0000000000000000000000005", "0.1234567890123456789012345", "5e-324", "2e-324",
                             "1.7976931348623157e308", "1.7976931348623159e308", "1e400", "1e-400", "inf", "-inf",
                             "+inf", "INF", "Infinity", "nan", "NaN", "-nan", "nan(1)", " ", "0x10", "1_0", "1..2",
                             "--1", "+-1", "-+1", "1e", "1e+", "e5", ".", "+", "5d", "1 2"})
        QTest::newRow(cell) << QByteArray(cell);
    // GB2312 full-width digit and ideographic space
    QTest::newRow("full-width 5") << QByteArray("\xA3\xB5");
    QTest::newRow("ideographic space around 5") << QByteArray("\xA1\xA1" "5\xA1\xA1");
}

// A cell converts exactly when QString::toDouble says so, to its value; a
// NaN or blank cell is a missing value, any other cell drops its line.
void tst_OrvexCurveCsvFile::cellsReadAsToDouble()
{
    QFETCH(QByteArray, cell);

    bool ok = false;
    const QString decoded = QTextCodec::codecForName("GB2312")->toUnicode(cell);
    const double value = decoded.toDouble(&ok);
    const bool missing = decoded.trimmed().isEmpty() || (ok && std::isnan(value));

    const auto columns = OrvexCurveCsvFile::parse("1," + cell + ",9\n2,7,8\n", Flavour::Comma);
    QCOMPARE(columns.size(), std::size_t(2));
    if (missing) {
        QCOMPARE(columns[0].x, (Values{2}));
        QCOMPARE(columns[1].x, (Values{1, 2}));
    } else if (!ok) {
        QCOMPARE(columns[0].x, (Values{2}));
        QCOMPARE(columns[1].x, (Values{2}));
    } else {
        QCOMPARE(columns[0].x, (Values{1, 2}));
        QCOMPARE(columns[0].y[0], value);
        QCOMPARE(std::signbit(columns[0].y[0]), std::signbit(value));
        QCOMPARE(columns[1].y, (Values{9, 8}));
    }
}

void tst_OrvexCurveCsvFile::importTables_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected"); // title|suffix|xUnit|yUnit|points per curve
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& expected) {
        QTest::newRow(name) << bytes << expected;
    };
    // The comma flavour hands a file over to the blank one by its first data line.
    row("blank table", "#Title a b\n1 2 3\n2 4 5\n", {"a||||2", "b||||2"});
    row("comma table", "#Title,a b,c\n1,2,3\n", {"a b||||1", "c||||1"});
    row("commas in the header only", "#Title,a,b\n1 2 3\n", {"curve||||1", "curve||||1"});
    row("first data line decides", "# a, comment\n\n  \n1\t2\n3,4\n", {"curve||||1"});
    row("header only, blank", "#Title a b\n", {});
    row("CRLF lines", "#Title a\r\n1 2\r\n2 3\r\n", {"a||||2"});
    row("all four headers", "#Title,a,b\n#Suffix,s1,s2\n#X-Unit,Hz,s\n#Y-Unit,dB,V\n1,2,3\n",
        {"a|s1|Hz|dB|1", "b|s2|s|V|1"});
    row("any order, later line wins", "#Y-Unit,dB,V\n#Title,x,y\n1,2,3\n#Title,a,b\n", {"a|||dB|1", "b|||V|1"});
    row("empty cells keep their place", "#Suffix,,s2\n#X-Unit,Hz\n1,2,3\n", {"curve||Hz||1", "curve|s2|||1"});
    row("other # lines are comments", "#Titles,x\n#title,y\n# Title,z\n#Title,a\n1,2\n", {"a||||1"});
    row("blank headers", "#Title a b\n#Suffix  s2\n#Y-Unit dB V\n1 2 3\n", {"a|||dB|1", "b|s2||V|1"});
    row("widest line sets the columns", "1,2\n2,3,4,5\n3,x\n", {"curve||||2", "curve||||1", "curve||||1"});
    const QString volts = QString::fromUtf8("\xE7\x94\xB5\xE5\x8E\x8B"); // "voltage" in Chinese
    const QByteArray gb = QTextCodec::codecForName("GB2312")->fromUnicode(volts);
    row("GB2312", "#Title," + gb + "\n1,2\n", {volts + "||||1"});
    row("UTF-8 with byte-order mark", "\xEF\xBB\xBF#Title," + volts.toUtf8() + "\n1,2\n", {volts + "||||1"});
    row("UTF-16 with byte-order mark",
        "\xFF\xFE" + QTextCodec::codecForName("UTF-16LE")->fromUnicode("#Title," + volts + "\n1,2\n"),
        {volts + "||||1"});
}

void tst_OrvexCurveCsvFile::importTables()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    QTemporaryDir dir;
    Fixture target;
    QCOMPARE(OrvexCurveCsvFile::importFiles(*target.group, {writeFile(dir, "t.csv", bytes)}, Flavour::Comma),
             expected.size());
    QStringList actual;
    for (const auto& curve : target.group->getAllCurves(false))
        actual << describe(*curve) + "|" + QString::number(curve->dataSize());
    QCOMPARE(actual, expected);
}

void tst_OrvexCurveCsvFile::csvSuffix_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("written");
    QTest::newRow("no suffix") << "data" << "data.csv";
    QTest::newRow("upper case") << "data.CSV" << "data.CSV";
    QTest::newRow("other suffix") << "data.txt" << "data.txt.csv";
    QTest::newRow("dotted folder") << "v1.2/data" << "v1.2/data.csv";
}

void tst_OrvexCurveCsvFile::csvSuffix()
{
    QFETCH(QString, given);
    QTEST(OrvexCurveCsvFile::withCsvSuffix(given), "written");
}

void tst_OrvexCurveCsvFile::failures_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no such file
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("missing file") << QByteArray() << QByteArray("Cannot open file for reading: ");
    QTest::newRow("empty file") << QByteArray("") << QByteArray("Empty file: ");
    QTest::newRow("no data") << QByteArray("#Title,a\n# note\n\n") << QByteArray();
    QTest::newRow("no line converts") << QByteArray("x,y\nfirst,second\n1,two\n") << QByteArray();
}

// A file that cannot be read is reported and skipped; the group stays as it
// was, and the other files are still read.
void tst_OrvexCurveCsvFile::failures()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, message);
    QTemporaryDir dir;
    const QString path = content.isNull() ? dir.filePath("bad.csv") : writeFile(dir, "bad.csv", content);
    Fixture target;
    target.add("kept", {1, 2}, {3, 4});
    const QByteArray before = target.text();
    CerrCapture capture;
    QCOMPARE(OrvexCurveCsvFile::importFiles(*target.group, {path}, Flavour::Comma), 0);
    QCOMPARE(target.text(), before);
    const QString good = writeFile(dir, "good.csv", "1 2\n");
    QCOMPARE(OrvexCurveCsvFile::importFiles(*target.group, {path, good}, Flavour::Comma), 1);
    QCOMPARE(target.group->size(), std::size_t(2));
    const QByteArray line = message.isEmpty() ? QByteArray() : message + path.toUtf8() + "\n";
    QCOMPARE(capture.text(), line + line);
}

// The view's entries: a group is made for an import only when a file yields
// curves, and export without a current group writes the bare headers.
void tst_OrvexCurveCsvFile::managerWithoutGroup()
{
    QTemporaryDir dir;
    auto manager = std::make_shared<OrvexCurveManager>(nullptr);
    const std::string empty = writeFile(dir, "empty.csv", "#Title,a\n").toStdString();
    CerrCapture capture;
    QCOMPARE(OrvexCurveCsvFile::importData(*manager, {empty, dir.filePath("none.csv").toStdString()},
                                           Flavour::Comma),
             0);
    QVERIFY(manager->groupIds().empty());

    const std::string path = dir.filePath("out").toStdString();
    QVERIFY(OrvexCurveCsvFile::exportData(*manager, path, Flavour::Comma));
    QCOMPARE(readFile(dir.filePath("out.csv")), QByteArray("#Title\n#Suffix\n#X-Unit\n#Y-Unit\n"));

    const std::string table = writeFile(dir, "t.csv", "1 2 3\n").toStdString();
    QCOMPARE(OrvexCurveCsvFile::importData(*manager, {table, table}, Flavour::Comma), 4);
    QCOMPARE(manager->groupIds().size(), std::size_t(1));
    QCOMPARE(manager->getCurrentGroup()->size(), std::size_t(4));

    manager->getCurrentGroup()->getAllCurves(false)[1]->setVisible(false);
    QVERIFY(OrvexCurveCsvFile::exportData(*manager, path + ".csv", Flavour::Comma));
    QCOMPARE(readFile(dir.filePath("out.csv")),
             QByteArray("#Title,curve,curve,curve\n#Suffix,,,\n#X-Unit,,,\n#Y-Unit,,,\n1,2,2,3\n"));

    // Writing into a missing folder fails before anything is written.
    CerrCapture failure;
    const QString unwritable = dir.filePath("no/such/out.csv");
    QVERIFY(!OrvexCurveCsvFile::exportData(*manager, unwritable.toStdString(), Flavour::Comma));
    QFile probe(unwritable);
    QVERIFY(!probe.open(QIODevice::WriteOnly));
    QCOMPARE(failure.text(), "Cannot open file for writing: " + probe.errorString().toUtf8() + "\n");
}

QTEST_MAIN(tst_OrvexCurveCsvFile)
#include "tst_orvexcurvecsvfile.moc"
