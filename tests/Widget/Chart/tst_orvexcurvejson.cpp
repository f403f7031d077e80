#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include "CerrCapture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace Gui::Widget;

namespace {

// @p text with every space made a no-break space.
QByteArray nbsp(const char* text)
{
    return QByteArray(text).replace(' ', "\xC2\xA0");
}

std::shared_ptr<OrvexCurveManager> makeManager()
{
    return std::make_shared<OrvexCurveManager>(nullptr);
}

// Two groups, the second hidden and current; every field off its default somewhere.
std::shared_ptr<OrvexCurveManager> sampleModel()
{
    auto manager = makeManager();
    auto shown = manager->createGroup("shown");
    shown->setCustomSymbol("circle");
    auto hidden = manager->createGroup("hidden");
    hidden->setVisible(false);
    hidden->setCustomSymbol("");

    auto a = shown->createCurve("a");
    a->setTitle("Gain \"main\" \xC3\xA9\\");
    a->setSuffix("(port 1)");
    a->setLineStyle(Qt::DashDotLine);
    a->setWidth(3);
    a->setBarWidth(7);
    a->setXUnit("GHz");
    a->setYUnit("dB");
    a->setXLabel("Frequency");
    a->setYLabel("S11");
    a->setData(std::vector<double>{0.1, 1e-300, 2.5e12, -0.0}, std::vector<double>{-3.25, 1.0 / 3.0, 7, 1e308});

    auto b = shown->createCurve("b");
    b->setVisible(false);
    b->setLineStyle(Qt::NoPen);
    b->setWidth(0);

    auto c = hidden->createCurve("c");
    c->setTitle("third");
    c->setData(std::vector<double>{1, 2}, std::vector<double>{-1, -2});
    manager->setCurrentGroup("hidden");
    return manager;
}

void compareCurves(const OrvexCurve& actual, const OrvexCurve& expected)
{
    QCOMPARE(actual.id(), expected.id());
    QCOMPARE(actual.title(), expected.title());
    QCOMPARE(actual.suffix(), expected.suffix());
    QCOMPARE(actual.lineStyle(), expected.lineStyle());
    QCOMPARE(actual.width(), expected.width());
    QCOMPARE(actual.visible(), expected.visible());
    QCOMPARE(actual.barWidth(), expected.barWidth());
    QCOMPARE(actual.xUnit(), expected.xUnit());
    QCOMPARE(actual.yUnit(), expected.yUnit());
    QCOMPARE(actual.xLabel(), expected.xLabel());
    QCOMPARE(actual.yLabel(), expected.yLabel());
    QCOMPARE(actual.xData(OrvexCurveDataType::RawData), expected.xData(OrvexCurveDataType::RawData));
    QCOMPARE(actual.yData(OrvexCurveDataType::RawData), expected.yData(OrvexCurveDataType::RawData));
}

QByteArray oneCurveFile(const QJsonObject& curve)
{
    QJsonObject group{{"id", "g"}, {"visible", true}, {"customSymbol", ""}, {"curves", QJsonArray{curve}}};
    return QJsonDocument(QJsonObject{{"groups", QJsonArray{group}}, {"currentGroupId", "g"}}).toJson();
}

} // namespace

class tst_OrvexCurveJson : public QObject
{
    Q_OBJECT

private slots:
    void roundTripThroughFile();
    void writtenKeys();
    void curveTypeIgnored_data();
    void curveTypeIgnored();
    void importReplacesModelAndSignals();
    void repeatedIdsAndOddValues();
    void failureMessages_data();
    void failureMessages();
    void notJsonLeavesModel_data();
    void notJsonLeavesModel();
};

void tst_OrvexCurveJson::roundTripThroughFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("curves.json");
    auto source = sampleModel();
    QVERIFY(source->exportData(path));

    auto target = makeManager();
    target->createCurve("to be replaced");
    QVERIFY(target->importData(path));

    QCOMPARE(target->groupIds(), source->groupIds());
    QCOMPARE(target->currentGroupId(), std::string("hidden"));
    QCOMPARE(target->getCurrentGroup(), target->findGroup("hidden"));
    QVERIFY(!target->getCurve("to be replaced"));
    for (const auto& group : source->getAllGroups(false)) {
        const auto copy = target->findGroup(group->id());
        QVERIFY(copy);
        QCOMPARE(copy->visible(), group->visible());
        QCOMPARE(copy->customSymbol(), group->customSymbol());
        QCOMPARE(copy->curveIds(), group->curveIds());
        for (const auto& curve : group->getAllCurves(false)) {
            compareCurves(*copy->getCurve(curve->id()), *curve);
            if (QTest::currentTestFailed())
                return;
        }
    }
    // Colours are not in the file: the palette hands them out again.
    source->getCurve("a")->setColor(Qt::black);
    QCOMPARE(target->getCurve("a")->color(), OrvexCurve::paletteColor(0));
    QCOMPARE(target->getCurve("b")->color(), OrvexCurve::paletteColor(1));
    QCOMPARE(target->getCurve("c")->color(), OrvexCurve::paletteColor(0));

    // Writing the imported model gives the same file again.
    const QString again = dir.filePath("again.json");
    QVERIFY(target->exportData(again));
    QFile first(path);
    QFile second(again);
    QVERIFY(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
    QCOMPARE(second.readAll(), first.readAll());
}

void tst_OrvexCurveJson::writtenKeys()
{
    auto manager = sampleModel();
    manager->getCurve("a")->setCurveType(OrvexCurveType::Bar);
    const QJsonObject root = QJsonDocument::fromJson(manager->exportToBytes()).object();
    QCOMPARE(root.keys(), QStringList({"currentGroupId", "groups"}));
    const QJsonObject group = root["groups"].toArray().at(0).toObject();
    QCOMPARE(group.keys(), QStringList({"curves", "customSymbol", "id", "visible"}));
    const QJsonObject curve = group["curves"].toArray().at(0).toObject();
    QStringList expected{"id", "title", "suffix", "lineStyle", "width", "visible", "barWidth",
                         "xUnit", "yUnit", "xLabel", "yLabel", "X", "Y"};
    expected.sort();
    QCOMPARE(curve.keys(), expected);
}

void tst_OrvexCurveJson::curveTypeIgnored_data()
{
    QTest::addColumn<int>("curveType");
    QTest::newRow("0") << 0;
    QTest::newRow("2") << 2;
    QTest::newRow("unknown 99") << 99;
}

void tst_OrvexCurveJson::curveTypeIgnored()
{
    QFETCH(int, curveType);
    auto manager = makeManager();
    QVERIFY(manager->importFromBytes((oneCurveFile({{"id", "c"}, {"curveType", curveType}}))));
    QCOMPARE(manager->getCurve("c")->curveType(), OrvexCurveType::Line);
}

void tst_OrvexCurveJson::importReplacesModelAndSignals()
{
    auto manager = sampleModel();
    const auto oldCurve = manager->getCurve("a");
    int oldDeleted = 0;
    connect(oldCurve.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { ++oldDeleted; });
    int currentChanges = 0;
    connect(manager.get(), &OrvexCurveManager::currentGroupChanged, this, [&] { ++currentChanges; });

    // Visible curve: the change flag can only come from the emitted dataChanged().
    const QByteArray file =
        (oneCurveFile({{"id", "n"}, {"visible", true}, {"X", QJsonArray{1}}, {"Y", QJsonArray{2}}}));
    QVERIFY(manager->importFromBytes(file));
    QCOMPARE(oldDeleted, 1);
    QVERIFY(oldCurve->group().expired());
    QCOMPARE(currentChanges, 1);
    QCOMPARE(manager->groupIds(), std::vector<std::string>{"g"});
    QVERIFY(manager->findGroup("g")->curvesChanged());
    QCOMPARE(manager->getCurve("n")->yData(), std::vector<double>{2});
}

void tst_OrvexCurveJson::repeatedIdsAndOddValues()
{
    const QByteArray file = R"({"groups": [
        {"id": "a", "visible": false, "curves": [{"id": "x", "title": "first", "lineStyle": 99},
                                                 {"id": "x", "title": "second", "lineStyle": 3,
                                                  "X": [1, 2, 3], "Y": [4, 5]}]},
        {"id": "a", "visible": true, "customSymbol": "sq", "curves": [{"id": "y", "X": ["t", null], "Y": [1, 2]}]}],
        "currentGroupId": "nowhere"})";
    auto manager = makeManager();
    QVERIFY(manager->importFromBytes(file));
    QCOMPARE(manager->groupIds(), std::vector<std::string>{"a"});
    const auto group = manager->findGroup("a");
    QVERIFY(group->visible());
    QCOMPARE(group->customSymbol(), std::string("sq"));
    QCOMPARE(group->curveIds(), (std::vector<std::string>{"x", "y"}));
    const auto x = group->getCurve("x");
    QCOMPARE(x->title(), std::string("second"));
    QCOMPARE(x->lineStyle(), Qt::DotLine);
    QCOMPARE(x->xData(), (std::vector<double>{1, 2}));
    QCOMPARE(group->getCurve("y")->xData(), (std::vector<double>{0, 0}));
    QCOMPARE(manager->currentGroupId(), std::string("nowhere"));
    QVERIFY(!manager->getCurrentGroup());

    QVERIFY(manager->importFromBytes((oneCurveFile({{"id", "z"}, {"lineStyle", 99}}))));
    QCOMPARE(manager->getCurve("z")->lineStyle(), Qt::SolidLine);
}

void tst_OrvexCurveJson::failureMessages_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QByteArray>("fileContent"); // empty: no file
    QTest::addColumn<QByteArray>("message");

    QTest::newRow("export into a missing folder")
        << "export" << QByteArray()
        << nbsp("Cannot open file for writing: ");
    QTest::newRow("import of a missing file")
        << "import" << QByteArray()
        << nbsp("Cannot open file for reading: \n");
    QTest::newRow("import of text")
        << "import" << QByteArray("this is not JSON")
        << nbsp("Failed to parse JSON file\n");
    // Cut off inside nested containers, with a key given twice.
    QTest::newRow("import of a cut-off document")
        << "import" << QByteArray(R"({"groups":[{"id":"g","curves":[{"id":"c","Y":[1,2,3],"Y":[-3)")
        << nbsp("Failed to parse JSON file\n");
}

void tst_OrvexCurveJson::failureMessages()
{
    QFETCH(QString, operation);
    QFETCH(QByteArray, fileContent);
    QFETCH(QByteArray, message);

    QTemporaryDir dir;
    QString path = dir.filePath("missing/curves.json");
    if (!fileContent.isEmpty()) {
        path = dir.filePath("bad.json");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(fileContent);
    }
    auto manager = sampleModel();
    const QByteArray before = manager->exportToBytes();
    CerrCapture capture;
    if (operation == "export") {
        QVERIFY(!manager->exportData(path));
        QVERIFY(!QFile::exists(path));
        QFile probe(path);
        QVERIFY(!probe.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(capture.text(), message + probe.errorString().toUtf8() + "\n");
    } else {
        QVERIFY(!manager->importData(path));
        QCOMPARE(capture.text(), message);
    }
    QCOMPARE(manager->exportToBytes(), before);
}

void tst_OrvexCurveJson::notJsonLeavesModel_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("empty") << QByteArray() << false;
    // Documents that parse replace the model, even when they hold nothing.
    QTest::newRow("array document") << QByteArray("[1, 2]") << true;
    QTest::newRow("groups not an array") << QByteArray(R"({"groups": 5})") << true;
}

void tst_OrvexCurveJson::notJsonLeavesModel()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    auto manager = sampleModel();
    const QByteArray before = manager->exportToBytes();
    QCOMPARE(manager->importFromBytes(bytes), accepted);
    if (accepted)
        QVERIFY(manager->groupIds().empty());
    else
        QCOMPARE(manager->exportToBytes(), before);
}

QTEST_MAIN(tst_OrvexCurveJson)
#include "tst_orvexcurvejson.moc"
