#include "Widget/LineEdit/OrvexEquationInputBox.h"

#include <Kernel/Base/StringUtil.h>
#include <Kernel/ConsoleMessageFactory.h>
#include <Kernel/DM/ConstantExpression.h>
#include <Kernel/DM/Expression.h>
#include <Kernel/DM/IDocument.h>
#include <Kernel/DM/NumberExpression.h>
#include <Kernel/DM/ParserContext.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>
#include <Kernel/UnitSettings.h>
#include <Kernel/VSUtil.h>

namespace QtUIBase {

OrvexEquationInputBox::OrvexEquationInputBox(Kernel::DM::IDocument* document, const std::set<std::string>& names,
                                             const QString& name, QWidget* parent, bool emptyAllowed, bool record)
    : AQScriptableLineEdit(name, parent, record)
    , m_document(document)
    , m_names(names)
    , m_emptyAllowed(emptyAllowed)
{
    Kernel::ConsoleMessageFactory::get().Assert(document != nullptr, "project != nullptr",
                                                "Widget/LineEdit/OrvexEquationInputBox", __LINE__);
    m_parserContext
        = std::make_shared<Kernel::DM::ParserContext>(document ? &document->parserContext() : nullptr);
    for (const std::string& constant : m_names)
        m_parserContext->declare(Kernel::DM::ConstantExpression(constant, Kernel::Quantity::NoneUnitQuantity()));
    setUnitConstraint(static_cast<const Kernel::Unit*>(nullptr));

    // ATextChanged is only emitted by a recording line edit; a box that does
    // not record still checks every change.
    if (record)
        connect(this, &AQScriptableLineEdit::ATextChanged, this, &OrvexEquationInputBox::handleExpressionChanged);
    else
        connect(this, &QLineEdit::textChanged, this, &OrvexEquationInputBox::handleExpressionChanged);
    installEventFilter(this);
}

OrvexEquationInputBox::~OrvexEquationInputBox() = default;

void OrvexEquationInputBox::setUnitConstraint(const Kernel::Unit* unit)
{
    m_unit = unit;
    const QString unitName = QString::fromStdString(Kernel::Quantity::predefinedUnitName(unit));
    if (!unitName.isEmpty()) {
        setToolTip(tr("Input an expression with unit: ") + unitName);
        setPlaceholderText(unitName);
    } else {
        setToolTip(tr("Input an expression without unit"));
        setPlaceholderText(QString());
    }
}

void OrvexEquationInputBox::setUnitConstraint(const Kernel::Quantity* quantity)
{
    if (!quantity)
        return;
    const Kernel::UnitSettings& settings = Kernel::VSUtil::unitSettings(m_document);
    setUnitConstraint(settings.getDefaultUnit(Kernel::Unit::predefinedUnit(*quantity)));
}

QString OrvexEquationInputBox::getFormattedText(const QString& text) const
{
    const std::string unitName = Kernel::Quantity::predefinedUnitName(m_unit);
    double number = 0.0;
    if (unitName.empty() || !Kernel::DM::NumberExpression::read(text.toStdString(), &number))
        return text;
    return QString::fromStdString(Kernel::Base::StringUtil::formatDouble(number) + ' ' + unitName);
}

void OrvexEquationInputBox::setText(const QString& text)
{
    const QString formatted = getFormattedText(text);
    if (formatted == QLineEdit::text())
        return;
    QLineEdit::setText(formatted);
    refresh();
}

QString OrvexEquationInputBox::text() const
{
    return getFormattedText(QLineEdit::text());
}

bool OrvexEquationInputBox::refresh()
{
    const QString current = text();
    m_valid = current.isEmpty() ? m_emptyAllowed
                                : Kernel::DM::isExpressionValid(*m_parserContext, current.toStdString(), m_unit);
    if (!current.isEmpty()) {
        if (!m_savedPalette)
            m_savedPalette = palette();
        QPalette coloured = *m_savedPalette;
        coloured.setBrush(QPalette::Text, QBrush(m_valid ? Qt::black : Qt::red, Qt::DiagCrossPattern));
        setPalette(coloured);
    } else if (m_savedPalette) {
        setPalette(*m_savedPalette);
    }
    update();
    return m_valid;
}

void OrvexEquationInputBox::handleExpressionChanged()
{
    refresh();
}

void OrvexEquationInputBox::focusOutEvent(QFocusEvent* event)
{
    AQScriptableLineEdit::focusOutEvent(event);
    Q_EMIT focusLost();
}

bool OrvexEquationInputBox::eventFilter(QObject* watched, QEvent* event)
{
    return QObject::eventFilter(watched, event);
}

} // namespace QtUIBase
