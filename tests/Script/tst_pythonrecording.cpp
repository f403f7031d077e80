#include "Script/OrvexQtUIBasePythonUtility.h"

#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include <functional>

using namespace Gui::Python;
using Gui::Widget::MarkerType;

using Recording = std::function<void()>;
Q_DECLARE_METATYPE(Recording)
Q_DECLARE_METATYPE(std::vector<std::string>)

namespace {
// Records what it is handed; with @p takesImport it sets its imported flag on the import line.
class Host : public OrvexQtUIBaseInterface
{
public:
    explicit Host(bool takesImport = true) : m_takesImport(takesImport) {}

    bool canRecord() override { return recording; }
    void addRecordScript(const std::vector<std::string>& statements) override
    {
        batches.push_back(statements);
        if (m_takesImport && statements == std::vector<std::string>{"import pelo3dqtui"})
            setImported(true);
    }

    QStringList all() const
    {
        QStringList lines;
        for (const auto& batch : batches)
            for (const auto& s : batch)
                lines << QString::fromStdString(s);
        return lines;
    }

    bool recording = true;
    std::vector<std::vector<std::string>> batches;

private:
    bool m_takesImport;
};

QtUIBasePythonRecordManager* recorder()
{
    return QtUIBasePythonRecordManager::instance();
}

using Props = std::unordered_map<std::string, std::string>;

// True when python3 parses @p input as a module.
bool pythonParses(const QByteArray& input)
{
    QProcess python;
    python.start("python3", {"-c", "import ast, sys; ast.parse(sys.stdin.read())"});
    if (!python.waitForStarted())
        return false;
    python.write(input);
    python.closeWriteChannel();
    return python.waitForFinished(30000) && python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0;
}

const QStringList kAwkwardTitles = {
    "plain", "it's", "say \"hi\"", "C:\\temp\\new\\file.json", "two\nlines", "trailing backslash\\",
    "'''", "\"\"\"", QString::fromUtf8("\xC3\xA9t\xC3\xA9 \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80"),
    QString::fromUtf8("nbsp\xC2\xA0line\xE2\x80\xA8sep"),
    QStringLiteral("bell\a nul") + QChar(0) + QStringLiteral(" del\x7f"),
    "{0} {1} }{"};

} // namespace

class tst_PythonRecording : public QObject
{
    Q_OBJECT

    Host m_host;

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<std::vector<std::string>>(); }

    void init()
    {
        m_host.batches.clear();
        m_host.recording = true;
        recorder()->clear();
        recorder()->setInterface(&m_host);
    }

    void cleanup()
    {
        recorder()->setInterface(nullptr);
        recorder()->clear();
    }

    void statementForms_data()
    {
        QTest::addColumn<Recording>("record");
        QTest::addColumn<QStringList>("statements");

        QTest::newRow("curve") << Recording([] { QtUIPysUtils::getCurve("Curve_1", "Chart_1", "'c1'"); })
                               << QStringList{"Curve_1=Chart_1.get_curve('c1')"};
        QTest::newRow("marker at (1.5, 2)")
            << Recording([] {
                   QtUIPysUtils::addMarker("", "Chart_1", "'Marker_1'", QPointF(1.5, 2), MarkerType::PointMarker,
                                           Gui::Widget::Circle);
               })
            << QStringList{"Chart_1.add_marker('Marker_1', [1.500000,2.000000], pelo3dqtui.MarkerType.PointMarker, "
                           "pelo3dqtui.MarkerSymbol.Circle)"};
        QTest::newRow("line marker, negative, owner first")
            << Recording([] {
                   QtUIPysUtils::addMarker("window", "Chart_2", "'h'", QPointF(-0.25, 1e-7),
                                           MarkerType::HorizontalLineMarker, Gui::Widget::None);
               })
            << QStringList{"Chart_2=window.get_chart_view()",
                           "Chart_2.add_marker('h', [-0.250000,0.000000], pelo3dqtui.MarkerType.HorizontalLineMarker, "
                           "pelo3dqtui.MarkerSymbol.None)"};
        QTest::newRow("export") << Recording([] { QtUIPysUtils::exportToFile("Chart_1", "'out.json'"); })
                                << QStringList{"Chart_1.export_to('out.json')"};
        QTest::newRow("import")
            << Recording([] { QtUIPysUtils::importFromFiles("Chart_1", {"'a.csv'", "'b.csv'"}); })
            << QStringList{"Chart_1.import_from(['a.csv', 'b.csv'])"};
        QTest::newRow("reset") << Recording([] { QtUIPysUtils::reset("Chart_1"); }) << QStringList{"Chart_1.reset()"};
        QTest::newRow("one property") << Recording([] { QtUIPysUtils::setProperty("c", "'color'", "'red'"); })
                                      << QStringList{"c.set_properties({'color' : 'red'})"};
        QTest::newRow("curve properties")
            << Recording([] { QtUIPysUtils::setCurveProperties("Chart_1", "'c1'", Props{{"'width'", "2"}}); })
            << QStringList{"Chart_1.get_curve('c1').set_properties({'width' : 2})"};
        QTest::newRow("marker property")
            << Recording([] { QtUIPysUtils::setMarkerProperty("Chart_1", "'m'", "'weight'", "1.5"); })
            << QStringList{"Chart_1.get_marker('m').set_properties({'weight' : 1.5})"};
        QTest::newRow("commands")
            << Recording([] { QtUIPysUtils::addCmdContent(std::vector<std::string>{"a = 1", "b = a"}); })
                                  << QStringList{"a = 1", "b = a"};
    }

    void statementForms()
    {
        QFETCH(Recording, record);
        QFETCH(QStringList, statements);

        QSignalSpy emitted(recorder(), &QtUIBasePythonRecordManager::emitContents);
        record();
        // The shared host has taken the import line in some earlier row or here.
        QStringList lines = m_host.all();
        lines.removeAll("import pelo3dqtui");
        QCOMPARE(lines, statements);
        QCOMPARE(emitted.count(), 1);
        QVERIFY(recorder()->contents().empty());
    }

    void waitWhileHostRefuses()
    {
        Host host;
        QSignalSpy emitted(recorder(), &QtUIBasePythonRecordManager::emitContents);
        recorder()->submitContent(); // nothing to send
        QVERIFY(m_host.batches.empty());
        recorder()->setInterface(nullptr);
        QtUIPysUtils::reset("A");
        QtUIPysUtils::reset("B");
        QCOMPARE(recorder()->contents(), (std::vector<std::string>{"A.reset()", "B.reset()"}));

        recorder()->setInterface(&host);
        host.recording = false;
        QtUIPysUtils::reset("C");
        QCOMPARE(recorder()->contents().size(), std::size_t(3));
        QVERIFY(host.batches.empty());
        QCOMPARE(emitted.count(), 0);

        host.recording = true;
        QtUIPysUtils::reset("D");
        QCOMPARE(host.batches.size(), std::size_t(2));
        QCOMPARE(host.batches[0], std::vector<std::string>{"import pelo3dqtui"});
        const std::vector<std::string> all{"A.reset()", "B.reset()", "C.reset()", "D.reset()"};
        QCOMPARE(host.batches[1], all);
        QCOMPARE(emitted.count(), 1);
        QVERIFY(recorder()->contents().empty());
    }

    void importLinePerHostFlag_data()
    {
        QTest::addColumn<bool>("takesImport");
        QTest::addColumn<int>("importLines");
        QTest::newRow("host keeps its flag") << true << 1;
        QTest::newRow("host never sets its flag") << false << 3;
    }

    void importLinePerHostFlag()
    {
        QFETCH(bool, takesImport);
        QFETCH(int, importLines);
        Host host(takesImport);
        recorder()->setInterface(&host);
        for (const char* chart : {"A", "B", "C"})
            QtUIPysUtils::reset(chart);
        QCOMPARE(host.all().count("import pelo3dqtui"), importLines);
        QCOMPARE(host.all().filter("reset").size(), 3);
        QCOMPARE(host.all().constFirst(), QStringLiteral("import pelo3dqtui"));
    }

    void enumNames_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QStringList>("names"); // by value from 0
        QTest::newRow("PlotType") << "PlotType" << QStringList{"RectangleBrokenLine", "RectangleBar", "Polar"};
        QTest::newRow("MarkerType") << "MarkerType"
                                    << QStringList{"PointMarker", "HorizontalLineMarker", "VerticalLineMarker"};
        QTest::newRow("MarkerSymbol") << "MarkerSymbol"
                                      << QStringList{"Diamond", "Triangle", "InvertedTriangle", "Rectangle", "Circle",
                                                     "HorizontalLine", "VerticalLine", "Cross", "Plus", "BackwardSlash",
                                                     "ForwardSlash", "None"};
    }

    void enumNames()
    {
        QFETCH(QString, type);
        QFETCH(QStringList, names);
        for (int v = 0; v < names.size(); ++v)
            QCOMPARE(QString::fromStdString(QtUIPythonEnumMap::Instance().pythonText(type.toStdString(), v)),
                     "pelo3dqtui." + type + "." + names[v]);
    }

    void pyString_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("literal");

        QTest::newRow("plain") << QByteArray("Curve 1") << QByteArray("'Curve 1'");
        QTest::newRow("quotes") << QByteArray("it's \"x\"") << QByteArray(R"('it\'s "x"')");
        QTest::newRow("backslashes") << QByteArray(R"(C:\new\)") << QByteArray(R"('C:\\new\\')");
        QTest::newRow("line ends and tab") << QByteArray("a\nb\r\tc") << QByteArray(R"('a\nb\r\tc')");
        QTest::newRow("control and delete") << QByteArray("\x01\x1f\x7f", 3) << QByteArray(R"('\x01\x1f\x7f')");
        QTest::newRow("latin") << QByteArray("\xC3\xA9") << QByteArray(R"('\xe9')");
        QTest::newRow("CJK") << QByteArray("\xE4\xB8\xAD") << QByteArray(R"('\u4e2d')");
        QTest::newRow("emoji") << QByteArray("\xF0\x9F\x98\x80") << QByteArray(R"('\U0001f600')");
        QTest::newRow("stray byte") << QByteArray("a\xFFz") << QByteArray(R"('a\xffz')");
        QTest::newRow("cut sequence") << QByteArray("\xE4\xB8") << QByteArray(R"('\xe4\xb8')");
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80") << QByteArray(R"('\xed\xa0\x80')");
        QTest::newRow("beyond U+10FFFF") << QByteArray("\xF4\x90\x80\x80") << QByteArray(R"('\xf4\x90\x80\x80')");
    }

    void pyString()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, literal);
        QCOMPARE(QByteArray::fromStdString(QtUIPysUtils::pyString(text.toStdString())), literal);
    }

    void recordedStatementsParse()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty())
            QSKIP("python3 is not on this machine");
        QSignalSpy emitted(recorder(), &QtUIBasePythonRecordManager::emitContents);
        for (const QString& title : kAwkwardTitles) {
            const std::string t = QtUIPysUtils::pyString(title.toStdString());
            QtUIPysUtils::setCurveProperties("Chart_1", t, Props{{"'title'", t}, {"'suffix'", t}});
            QtUIPysUtils::getCurve("Curve_1", "Chart_1", t);
            QtUIPysUtils::exportToFile("Chart_1", t);
            QtUIPysUtils::importFromFiles("Chart_1", {t, t});
            QtUIPysUtils::addMarker("window", "Chart_1", t, QPointF(-1e300, 3.25), MarkerType::VerticalLineMarker,
                                    Gui::Widget::ForwardSlash);
            QtUIPysUtils::setMarkerProperty("Chart_1", t, "'label'", t);
        }
        QtUIPysUtils::addCmdContent(QtUIPysUtils::pyString("\xFF\xFE raw bytes"));
        QCOMPARE(emitted.count(), kAwkwardTitles.size() * 6 + 1);

        QVERIFY2(pythonParses(m_host.all().join('\n').toUtf8()), "python3 could not parse the recorded statements");
        QVERIFY(!pythonParses("x.get_curve('it's')")); // the check can fail
    }
};

QTEST_MAIN(tst_PythonRecording)
#include "tst_pythonrecording.moc"
