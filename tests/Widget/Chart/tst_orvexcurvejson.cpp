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

// @p text with every space made a no-break space, as the messages are written.
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
    a->setCurveType(OrvexCurveType::Bar); // not written

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

QString describe(const OrvexCurve& c)
{
    return QStringList{QString::fromStdString(c.id()), QString::fromStdString(c.title()),
                       QString::fromStdString(c.suffix()), QString::number(c.lineStyle()),
                       QString::number(c.width()), QString::number(c.visible()), QString::number(c.barWidth()),
                       QString::fromStdString(c.xUnit() + "|" + c.yUnit() + "|" + c.xLabel() + "|" + c.yLabel())}
        .join(QLatin1Char('|'));
}

} // namespace

class tst_OrvexCurveJson : public QObject
{
    Q_OBJECT

private slots:
    void roundTripThroughFile();
    void writtenKeys();
    void importReplacesModel();
    void importFailures_data();
    void importFailures();
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
    QCOMPARE(target->getCurrentGroup(), target->findGroup("hidden"));
    QVERIFY(!target->getCurve("to be replaced"));
    for (const auto& group : source->getAllGroups(false)) {
        const auto copy = target->findGroup(group->id());
        QVERIFY(copy);
        QCOMPARE(copy->visible(), group->visible());
        QCOMPARE(copy->customSymbol(), group->customSymbol());
        QCOMPARE(copy->curveIds(), group->curveIds());
        for (const auto& curve : group->getAllCurves(false)) {
            const auto read = copy->getCurve(curve->id());
            QCOMPARE(describe(*read), describe(*curve));
            QCOMPARE(read->xData(OrvexCurveDataType::RawData), curve->xData(OrvexCurveDataType::RawData));
            QCOMPARE(read->yData(OrvexCurveDataType::RawData), curve->yData(OrvexCurveDataType::RawData));
            QCOMPARE(read->curveType(), OrvexCurveType::Line);
        }
    }
    // Colours are not in the file: the palette hands them out again.
    source->getCurve("a")->setColor(Qt::black);
    QCOMPARE(target->getCurve("a")->color(), OrvexCurve::paletteColor(0));
    QCOMPARE(target->getCurve("b")->color(), OrvexCurve::paletteColor(1));
    QCOMPARE(target->getCurve("c")->color(), OrvexCurve::paletteColor(0));

    // Writing the imported model gives the same file again.
    QFile first(path);
    QVERIFY(first.open(QIODevice::ReadOnly));
    QCOMPARE(target->exportToBytes(), first.readAll());
}

void tst_OrvexCurveJson::writtenKeys()
{
    const QJsonObject root = QJsonDocument::fromJson(sampleModel()->exportToBytes()).object();
    QCOMPARE(root.keys(), QStringList({"currentGroupId", "groups"}));
    const QJsonObject group = root["groups"].toArray().at(0).toObject();
    QCOMPARE(group.keys(), QStringList({"curves", "customSymbol", "id", "visible"}));
    QStringList expected{"id",    "title", "suffix", "lineStyle", "width",  "visible", "barWidth",
                         "xUnit", "yUnit", "xLabel", "yLabel",    "X",      "Y"};
    expected.sort();
    QCOMPARE(group["curves"].toArray().at(0).toObject().keys(), expected);

    // Writing into a missing folder fails with the system's reason and leaves no file.
    QTemporaryDir dir;
    const QString path = dir.filePath("missing/curves.json");
    CerrCapture capture;
    QVERIFY(!sampleModel()->exportData(path));
    QVERIFY(!QFile::exists(path));
    QFile probe(path);
    QVERIFY(!probe.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(capture.text(), nbsp("Cannot open file for writing: ") + probe.errorString().toUtf8() + "\n");
}

void tst_OrvexCurveJson::importReplacesModel()
{
    auto manager = sampleModel();
    const auto oldCurve = manager->getCurve("a");
    int oldDeleted = 0;
    connect(oldCurve.get(), &OrvexCurve::beforeCurveDeleted, this, [&] { ++oldDeleted; });
    QSignalSpy currentChanges(manager.get(), &OrvexCurveManager::currentGroupChanged);
    // Repeated ids: the later group's flags win and its curves join; a later curve replaces an earlier one.
    QVERIFY(manager->importFromBytes(R"({"groups": [
        {"id": "a", "visible": false, "curves": [{"id": "x", "title": "first", "lineStyle": 99},
                                                 {"id": "x", "title": "second", "lineStyle": 3, "curveType": 2,
                                                  "X": [1, 2, 3], "Y": [4, 5]}]},
        {"id": "a", "visible": true, "customSymbol": "sq",
         "curves": [{"id": "y", "lineStyle": 99, "X": ["t", null], "Y": [1, 2]}]}],
        "currentGroupId": "nowhere"})"));
    QCOMPARE(oldDeleted, 1);
    QVERIFY(oldCurve->group().expired());
    QCOMPARE(currentChanges.count(), 1);
    QCOMPARE(manager->groupIds(), std::vector<std::string>{"a"});
    const auto group = manager->findGroup("a");
    QVERIFY(group->visible());
    QCOMPARE(group->customSymbol(), std::string("sq"));
    QCOMPARE(group->curveIds(), (std::vector<std::string>{"x", "y"}));
    // The change flag of a visible curve can only come from an emitted dataChanged().
    QVERIFY(group->curvesChanged());
    const auto x = group->getCurve("x");
    QCOMPARE(x->title(), std::string("second"));
    QCOMPARE(x->lineStyle(), Qt::DotLine);
    QCOMPARE(x->curveType(), OrvexCurveType::Line);
    QCOMPARE(x->xData(), (std::vector<double>{1, 2}));
    QCOMPARE(group->getCurve("y")->xData(), (std::vector<double>{0, 0}));
    QCOMPARE(group->getCurve("y")->lineStyle(), Qt::SolidLine);
    QCOMPARE(manager->currentGroupId(), std::string("nowhere"));
    QVERIFY(!manager->getCurrentGroup());

    // Documents that parse replace the model, even when they hold nothing.
    QVERIFY(manager->importFromBytes("[1, 2]"));
    QVERIFY(manager->groupIds().empty());
}

void tst_OrvexCurveJson::importFailures_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no file
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("missing file") << QByteArray() << nbsp("Cannot open file for reading: \n");
    QTest::newRow("empty file") << QByteArray("") << nbsp("Failed to parse JSON file\n");
    // Cut off inside nested containers, with a key given twice.
    QTest::newRow("cut-off document") << QByteArray(R"({"groups":[{"id":"g","curves":[{"id":"c","Y":[1,2,3],"Y":[-3)")
                                      << nbsp("Failed to parse JSON file\n");
}

void tst_OrvexCurveJson::importFailures()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    const QString path = dir.filePath("curves.json");
    if (!content.isNull()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    auto manager = sampleModel();
    const QByteArray before = manager->exportToBytes();
    CerrCapture capture;
    QVERIFY(!manager->importData(path));
    QTEST(capture.text(), "message");
    QCOMPARE(manager->exportToBytes(), before);
}

QTEST_MAIN(tst_OrvexCurveJson)
#include "tst_orvexcurvejson.moc"
