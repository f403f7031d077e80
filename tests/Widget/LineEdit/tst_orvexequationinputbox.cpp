#include "WrapperFixture.h"

#include <Kernel/ConsoleMessageFactory.h>
#include <Kernel/DM/Document.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>
#include <Widget/LineEdit/OrvexEquationInputBox.h>

#include <QtTest>

#include <memory>

using namespace QtUIBase;
using Kernel::Quantity;

namespace {

/// Counts the checks a box makes.
class CountingBox : public OrvexEquationInputBox
{
public:
    using OrvexEquationInputBox::OrvexEquationInputBox;
    bool refresh() override
    {
        ++refreshes;
        return OrvexEquationInputBox::refresh();
    }
    int refreshes = 0;
};

/// "black", "red" or "plain" (the palette from before any colouring).
QString colourOf(const QLineEdit* box, const QBrush& plain)
{
    const QBrush text = box->palette().brush(QPalette::Text);
    if (text == plain)
        return QStringLiteral("plain");
    if (text.style() != Qt::DiagCrossPattern)
        return QStringLiteral("wrong brush style");
    return text.color() == Qt::black ? QStringLiteral("black")
        : text.color() == Qt::red    ? QStringLiteral("red")
                                     : text.color().name();
}

} // namespace

/// The equation input box: formatting, checking, colouring and recording.
class tst_OrvexEquationInputBox : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    Kernel::DM::Document m_document;

    CountingBox* makeBox(const QString& unit, bool emptyAllowed = false, bool record = true)
    {
        auto* box = new CountingBox(&m_document, {"n"}, "box", m_fx->root(), emptyAllowed, record);
        if (!unit.isEmpty())
            box->setUnitConstraint(Kernel::Unit::fromSymbol(unit.toStdString()));
        return box;
    }

private Q_SLOTS:
    void initTestCase() { m_document.parserContext().declare({"L", Quantity::get(Quantity::Kind::Length)}); }
    void init() { m_fx = std::make_unique<WrapperFixture>(); }
    void cleanup() { m_fx.reset(); }

    void typingColours_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<bool>("emptyAllowed");
        QTest::addColumn<QStringList>("steps"); // text to type, or "<n" for n backspaces
        QTest::addColumn<QStringList>("colours");
        QTest::addColumn<QList<bool>>("valid");
        QTest::newRow("length: red while incomplete, then black")
            << "mm" << false << QStringList{"2*", "L", " + 3 s", "<1", "<1", "mm"}
            << QStringList{"red", "black", "red", "red", "red", "black"} << QList<bool>{false, true, false, false, false, true};
        QTest::newRow("bare number takes the unit") << "GHz" << false << QStringList{"2.4", "e", "<1"}
                                                    << QStringList{"black", "red", "black"} << QList<bool>{true, false, true};
        QTest::newRow("declared name is a plain number")
            << "" << false << QStringList{"2*n", " mm", "<3"} << QStringList{"black", "red", "black"}
            << QList<bool>{true, false, true};
        QTest::newRow("emptying restores the palette")
            << "mm" << false << QStringList{"x", "<1"} << QStringList{"red", "plain"} << QList<bool>{false, false};
        QTest::newRow("empty allowed") << "mm" << true << QStringList{"x", "<1"} << QStringList{"red", "plain"}
                                       << QList<bool>{false, true};
    }

    void typingColours()
    {
        QFETCH(QString, unit);
        QFETCH(bool, emptyAllowed);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, colours);
        QFETCH(QList<bool>, valid);
        CountingBox* box = makeBox(unit, emptyAllowed);
        const QBrush plain = box->palette().brush(QPalette::Text);
        m_fx->showActive();
        box->setFocus();
        for (int i = 0; i < steps.size(); ++i) {
            if (steps[i].startsWith('<')) {
                for (int n = steps[i].mid(1).toInt(); n > 0; --n)
                    QTest::keyClick(box, Qt::Key_Backspace);
            } else {
                QTest::keyClicks(box, steps[i]);
            }
            QCOMPARE(colourOf(box, plain), colours[i]);
            QCOMPARE(box->isExpressionValid(), valid[i]);
        }
    }

    void formattedText_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("valid");
        QTest::newRow("number under millimetres") << "mm" << "5" << "5 mm" << true;
        QTest::newRow("zeros dropped, blanks ignored") << "mm" << " 2.50 " << "2.5 mm" << true;
        QTest::newRow("negative") << "degC" << "-40" << "-40 degC" << true;
        QTest::newRow("tiny") << "m" << "1e-9" << "1e-09 m" << true;
        QTest::newRow("expression unchanged") << "mm" << "2*L" << "2*L" << true;
        QTest::newRow("with unit unchanged") << "mm" << "5 s" << "5 s" << false;
        QTest::newRow("no constraint") << "" << "5" << "5" << true;
    }

    void formattedText()
    {
        QFETCH(QString, unit);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(bool, valid);
        CountingBox* box = makeBox(unit);
        box->setText(typed);
        QCOMPARE(box->QLineEdit::text(), shown);
        QCOMPARE(box->text(), shown);
        QCOMPARE(box->isExpressionValid(), valid);
        const int refreshes = box->refreshes;
        box->setText(typed); // shown already: not checked again
        QCOMPARE(box->refreshes, refreshes);
    }

    void tooltipAndPlaceholder_data()
    {
        QTest::addColumn<QString>("constraint"); // "unit:<symbol>", "quantity:<kind>" or "none"
        QTest::addColumn<QString>("toolTip");
        QTest::addColumn<QString>("placeholder");
        QTest::newRow("none") << "none" << "Input an expression without unit" << "";
        QTest::newRow("millimetres") << "unit:mm" << "Input an expression with unit: mm" << "mm";
        QTest::newRow("plain numbers' unit") << "unit:" << "Input an expression without unit" << "";
        QTest::newRow("frequency: document default") << "quantity:2" << "Input an expression with unit: GHz" << "GHz";
        QTest::newRow("temperature: document default") << "quantity:8" << "Input an expression with unit: degC"
                                                       << "degC";
    }

    void tooltipAndPlaceholder()
    {
        QFETCH(QString, constraint);
        QFETCH(QString, toolTip);
        QFETCH(QString, placeholder);
        OrvexEquationInputBox box(&m_document, {}, "box", nullptr, false, false);
        const QString value = constraint.section(':', 1);
        if (constraint.startsWith("unit:"))
            box.setUnitConstraint(Kernel::Unit::fromSymbol(value.toStdString()));
        else if (constraint.startsWith("quantity:"))
            box.setUnitConstraint(&Quantity::get(Quantity::Kind(value.toInt())));
        box.setUnitConstraint(static_cast<const Quantity*>(nullptr)); // changes nothing
        QCOMPARE(box.toolTip(), toolTip);
        QCOMPARE(box.placeholderText(), placeholder);
    }

    void recordsTypedTextAndReplaysIt()
    {
        CountingBox* box = makeBox("mm");
        QSignalSpy lost(box, &OrvexEquationInputBox::focusLost);
        auto* other = new QLineEdit(m_fx->root());
        other->move(0, 40);
        m_fx->showActive();
        box->setFocus();
        m_fx->startRecording();
        QTest::keyClicks(box, "2");
        other->setFocus();
        QTRY_COMPARE(lost.count(), 1);
        QCOMPARE(m_fx->stopRecording(), QStringList{"box editingFinished 2"});
        QVERIFY(m_fx->replay({"box editingFinished \"2 s\""}));
        QCOMPARE(box->text(), QStringLiteral("2 s"));
        QVERIFY(!box->isExpressionValid());
    }

    void nullDocumentIsAnAssertion()
    {
        std::string reported;
        auto& console = Kernel::ConsoleMessageFactory::get();
        auto previous = console.setHandler([&](auto, const std::string& text) { reported = text; });
        OrvexEquationInputBox box(nullptr, {"n"}, "box", nullptr, false, false);
        console.setHandler(previous);
        QVERIFY(QString::fromStdString(reported).startsWith(
            "Assertion failed: project != nullptr (Widget/LineEdit/OrvexEquationInputBox:"));
        // Still usable: its own names and the default unit settings.
        box.setUnitConstraint(&Quantity::get(Quantity::Kind::Length));
        box.setText("2*n");
        QVERIFY(!box.isExpressionValid());
        box.setText("2*n mm");
        QVERIFY(box.isExpressionValid());
    }
};

QTEST_MAIN(tst_OrvexEquationInputBox)
#include "tst_orvexequationinputbox.moc"
