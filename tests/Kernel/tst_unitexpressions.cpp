#include <Kernel/Base/StringUtil.h>
#include <Kernel/DM/Expression.h>
#include <Kernel/DM/NumberExpression.h>
#include <Kernel/DM/ParserContext.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>
#include <Kernel/UnitSettings.h>

#include <QtTest>

using namespace Kernel;
using namespace Kernel::DM;

namespace {

std::string nested(const std::string& open, const std::string& middle, const std::string& close, int depth)
{
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += open;
    text += middle;
    for (int i = 0; i < depth; ++i)
        text += close;
    return text;
}

} // namespace

/// The expression checker and the unit catalogue of the platform library.
class tst_UnitExpressions : public QObject
{
    Q_OBJECT

    ParserContext m_context;

private Q_SLOTS:
    void initTestCase()
    {
        m_context.declare({"L", Quantity::get(Quantity::Kind::Length)});
        m_context.declare({"f0", Quantity::get(Quantity::Kind::Frequency)});
        m_context.declare({"n", Quantity::NoneUnitQuantity()});
    }

    void dimensions_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("dimension"); // empty: invalid
        // Sums: one dimension, any units of it.
        QTest::newRow("same dimension, other units") << "1 m + 3 mm" << "m";
        QTest::newRow("different dimensions") << "2 mm + 3 s" << "";
        QTest::newRow("length minus number") << "2 mm - 3" << "";
        QTest::newRow("parameter and unit") << "2*L + 3 mm" << "m";
        QTest::newRow("parameter of other kind") << "L + f0" << "";
        QTest::newRow("plain names") << "2*n + 1" << "1";
        // Juxtaposition binds tighter than * and /.
        QTest::newRow("quantity over quantity") << "3 mm / 2 s" << "m.s-1";
        QTest::newRow("juxtaposed units divide together") << "1/2 m" << "m-1";
        QTest::newRow("no blank needed") << "5mm+2.5um" << "m";
        QTest::newRow("parenthesised factor") << "2 (L + 1 cm) / 4 ns" << "m.s-1";
        QTest::newRow("unit with power suffix") << "3 m2" << "m2";
        QTest::newRow("derived units") << "kg m^2 s^-3 / A" << "m2.kg.s-3.A-1";
        QTest::newRow("frequency from time") << "1/(2 ns) + f0" << "s-1";
        QTest::newRow("prefixes and UTF-8 symbols") << "5 µm + 1 GHz^-1 * 3e8 m/s" << "m";
        QTest::newRow("binary minus after a number") << "2 -3 mm" << "";
        // Powers.
        QTest::newRow("right-associative power") << "2^3^2 m" << "m";
        QTest::newRow("negative exponent") << "m^-2 s" << "m-2.s";
        QTest::newRow("whole root") << "(4 m^2)^0.5" << "m";
        QTest::newRow("no whole root") << "m^0.5" << "";
        QTest::newRow("unit to a name's power") << "m^n" << "";
        QTest::newRow("number to a name's power") << "2^n" << "1";
        QTest::newRow("exponent with a dimension") << "2^(3 m)" << "";
        QTest::newRow("power out of range") << "m^300" << "";
        // Angles are dimensionless.
        QTest::newRow("degrees plus number") << "30 deg + 1" << "rad";
        QTest::newRow("angular speed is a frequency") << "2 rad/s + 1 Hz" << "s-1.rad";
        // Temperatures on a scale with an origin.
        QTest::newRow("point plus difference") << "20 degC + 5 K" << "K";
        QTest::newRow("two points differ") << "30 degC - 20 degF" << "K";
        QTest::newRow("two points do not add") << "20 degC + 30 degC" << "";
        QTest::newRow("difference minus point") << "5 K - 20 degC" << "";
        QTest::newRow("point times a number") << "-2 * 20 degC" << "K";
        QTest::newRow("point times a unit") << "20 degC * m" << "";
        QTest::newRow("point over time") << "degC / s" << "";
        QTest::newRow("point squared") << "degC^2" << "";
        QTest::newRow("kelvin is an amount") << "2 K * 3 m" << "m.K";
        // Syntax and values.
        QTest::newRow("empty") << "" << "";
        QTest::newRow("blanks only") << " \t " << "";
        QTest::newRow("unknown name") << "3 foo" << "";
        QTest::newRow("trailing operator") << "3 mm *" << "";
        QTest::newRow("unbalanced") << "(1 + 2" << "";
        QTest::newRow("stray parenthesis") << "1 + 2)" << "";
        QTest::newRow("stray character") << "1 # 2" << "";
        QTest::newRow("malformed UTF-8") << QString::fromLatin1("5 \xff") << "";
        QTest::newRow("division by zero") << "1 mm / (2 - 2)" << "";
        QTest::newRow("overflowing literal") << "1e999 m" << "";
        QTest::newRow("overflowing product") << "1e300 * 1e300" << "";
        QTest::newRow("exponent needs digits") << "2em" << "";
        QTest::newRow("leading point, signs") << "-.5 + +2." << "1";
    }

    void dimensions()
    {
        QFETCH(QString, expression);
        QFETCH(QString, dimension);
        const ExpressionCheck check = checkExpression(m_context, expression.toStdString());
        QCOMPARE(QString::fromStdString(check.dimension), dimension);
        QCOMPARE(check.valid, !dimension.isEmpty());
        QCOMPARE(check.message.empty(), check.valid);
    }

    void declaredNameWinsOverUnit_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("dimension");
        QTest::newRow("three times the parameter") << "3 m" << "1";
        QTest::newRow("prefixed unit untouched") << "3 mm" << "m";
        QTest::newRow("sum with a length") << "m + 1 mm" << "";
    }

    void declaredNameWinsOverUnit()
    {
        QFETCH(QString, expression);
        QFETCH(QString, dimension);
        ParserContext context(&m_context);
        context.declare({"m", Quantity::NoneUnitQuantity()});
        QVERIFY(ParserContext::hidesUnit("m"));
        QVERIFY(!ParserContext::hidesUnit("n"));
        QCOMPARE(QString::fromStdString(checkExpression(context, expression.toStdString()).dimension), dimension);
    }

    void constraint_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("unit"); // catalogue symbol; "-" for none
        QTest::addColumn<bool>("valid");
        QTest::newRow("inches for millimetres") << "2 in + L" << "mm" << true;
        QTest::newRow("seconds for millimetres") << "2 s" << "mm" << false;
        QTest::newRow("velocity") << "3 mm / 2 s" << "km/h" << true;
        QTest::newRow("pressure") << "2 bar - 3 psi" << "Pa" << true;
        QTest::newRow("power") << "3 V * 2 mA" << "mW" << true;
        QTest::newRow("temperature point") << "68 degF - 5 K" << "degC" << true;
        QTest::newRow("mass") << "2 lb + 1 g" << "kg" << true;
        QTest::newRow("angle from a number") << "3.14" << "deg" << true;
        QTest::newRow("number without constraint") << "2*n" << "-" << true;
        QTest::newRow("length without constraint") << "2*L" << "-" << false;
        QTest::newRow("length for plain numbers") << "2 mm" << "" << false;
        QTest::newRow("invalid stays invalid") << "2 mm +" << "mm" << false;
    }

    void constraint()
    {
        QFETCH(QString, expression);
        QFETCH(QString, unit);
        QFETCH(bool, valid);
        const Unit* constraint = unit == QLatin1String("-") ? nullptr : Unit::fromSymbol(unit.toStdString());
        QVERIFY(unit == QLatin1String("-") || constraint);
        QCOMPARE(isExpressionValid(m_context, expression.toStdString(), constraint), valid);
    }

    void nesting_data()
    {
        QTest::addColumn<QString>("open");
        QTest::addColumn<QString>("middle");
        QTest::addColumn<QString>("close");
        QTest::newRow("parentheses") << "(" << "1 mm" << ")";
        QTest::newRow("signs") << "-" << "1 mm" << "";
        QTest::newRow("powers") << "1^" << "1" << "";
    }

    void nesting()
    {
        QFETCH(QString, open);
        QFETCH(QString, middle);
        QFETCH(QString, close);
        const auto check = [&](int depth) {
            return checkExpression(m_context, nested(open.toStdString(), middle.toStdString(), close.toStdString(), depth));
        };
        QVERIFY(check(MaxExpressionNesting - 1).valid);
        const ExpressionCheck tooDeep = check(MaxExpressionNesting + 1);
        QVERIFY(!tooDeep.valid);
        QCOMPARE(QString::fromStdString(tooDeep.message), QStringLiteral("expression nested too deeply"));
        QVERIFY(!check(100000).valid); // and no stack overflow
    }

    void catalogue()
    {
        const UnitSettings settings;
        for (const Quantity* quantity : Quantity::all()) {
            const Unit* si = Unit::predefinedUnit(*quantity);
            QCOMPARE(&si->quantity(), quantity);
            QCOMPARE(&settings.getDefaultUnit(si)->quantity(), quantity);
            for (const Unit* unit : quantity->units()) {
                QVERIFY2(unit->handle(), unit->symbol().c_str());
                QCOMPARE(Unit::fromSymbol(unit->symbol()), unit);
                // The name shown is a valid expression of its quantity.
                if (!unit->symbol().empty())
                    QVERIFY2(isExpressionValid(m_context, "2 " + unit->symbol(), si), unit->symbol().c_str());
            }
        }
        QCOMPARE(Quantity::all().size(), std::size_t(12));
        QCOMPARE(Quantity::predefinedUnitName(Unit::predefinedUnit(Quantity::NoneUnitQuantity())), std::string());
        QCOMPARE(Quantity::predefinedUnitName(settings.defaultUnit(Quantity::get(Quantity::Kind::Length))),
                 std::string("mm"));
    }

    void text_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("output");
        QTest::newRow("zeros after point") << "zeros" << "2.500" << "2.5";
        QTest::newRow("zeros and point") << "zeros" << "3.000" << "3";
        QTest::newRow("zeros before exponent") << "zeros" << "1.50e+07" << "1.5e+07";
        QTest::newRow("whole number kept") << "zeros" << "100" << "100";
        QTest::newRow("trim") << "trim" << " \t a b \n" << "a b";
        QTest::newRow("quote") << "quote" << "say \"hi\\\"" << "\"say \\\"hi\\\\\\\"\"";
        QTest::newRow("fixed") << "format" << "12345.678" << "12345.678";
        QTest::newRow("significant digits") << "format" << "0.3333333333333333" << "0.333333333333";
        QTest::newRow("small") << "format" << "1e-9" << "1e-09";
        QTest::newRow("big") << "format" << "2.5e20" << "2.5e+20";
        QTest::newRow("negative zero") << "format" << "-0" << "0";
        QTest::newRow("plain number") << "read" << " -2.5e3 " << "-2500";
        QTest::newRow("two numbers") << "read" << "2 3" << "no";
        QTest::newRow("expression") << "read" << "2*3" << "no";
        QTest::newRow("sign only") << "read" << "-" << "no";
    }

    void text()
    {
        QFETCH(QString, operation);
        QFETCH(QString, input);
        QFETCH(QString, output);
        const std::string in = input.toStdString();
        std::string out;
        if (operation == QLatin1String("zeros"))
            out = Base::StringUtil::removeTrailingZeros(in);
        else if (operation == QLatin1String("trim"))
            out = std::string(Base::StringUtil::trim(in));
        else if (operation == QLatin1String("quote"))
            out = Base::StringUtil::quote(in);
        else if (operation == QLatin1String("format"))
            out = Base::StringUtil::formatDouble(input.toDouble());
        else if (double value = 0; NumberExpression::read(in, &value))
            out = Base::StringUtil::formatDouble(value);
        else
            out = "no";
        QCOMPARE(QString::fromStdString(out), output);
    }
};

QTEST_GUILESS_MAIN(tst_UnitExpressions)
#include "tst_unitexpressions.moc"
