#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQScriptableLineEdit.h"

#include <QPalette>

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace Kernel {
class Quantity;
class Unit;
namespace DM {
class IDocument;
class ParserContext;
} // namespace DM
} // namespace Kernel

namespace QtUIBase {

/**
 * A line edit for a value typed as an expression with units, such as
 * "2*L + 3 mm": it checks the text as it is typed against a required unit
 * and shows it black when valid, red when not.
 *
 * Names: the document's parameters, and the names given at construction,
 * which are plain numbers here (they hide a document parameter of the same
 * name). The checking itself is the platform's Kernel::DM::isExpressionValid.
 *
 * Unit constraint: none by default, which asks for a plain number; the
 * tooltip then reads "Input an expression without unit" and there is no
 * placeholder. With a unit named "mm" the tooltip reads "Input an
 * expression with unit: mm" and the placeholder is "mm"; a bare number
 * then stands for that unit: text() and setText() turn "5" into "5 mm"
 * (the number with at most Kernel::Base::SysConstants::doubleMaxDecimals()
 * decimals, a blank, the unit name).
 *
 * Colouring: every check of a non-empty text sets the palette's Text brush
 * to black or red with the Qt::DiagCrossPattern style; the palette the box
 * had before its first colouring comes back when the text is emptied.
 * Setting the text it already shows does nothing.
 *
 * The bool option at construction, emptyAllowed, makes an empty box a valid
 * entry (an optional value); otherwise an empty box is invalid, though not
 * coloured. A null document is reported as the failed assertion "project
 * != nullptr" through the console message factory; the box then knows no
 * parameters and uses the default unit settings.
 *
 * Recording is AQScriptableLineEdit's: "editingFinished" with the text as
 * typed. A box built with record false still checks as it is typed.
 */
class ORVEXQTUIBASE_EXPORT OrvexEquationInputBox : public AQScriptableLineEdit
{
    Q_OBJECT

public:
    OrvexEquationInputBox(Kernel::DM::IDocument* document, const std::set<std::string>& names, const QString& name,
                          QWidget* parent, bool emptyAllowed, bool record);
    ~OrvexEquationInputBox() override;

    void setUnitConstraint(const Kernel::Unit* unit);
    /// The document's default unit for @p quantity; null changes nothing.
    void setUnitConstraint(const Kernel::Quantity* quantity);
    const Kernel::Unit* unitConstraint() const { return m_unit; }

    /// Shows the formatted @p text and checks it, unless it is shown already.
    void setText(const QString& text);
    /// The formatted form of the text shown.
    QString text() const;
    /// "5" becomes "5 mm" under a millimetre constraint; anything else,
    /// and any text without a named unit constraint, stays as it is.
    QString getFormattedText(const QString& text) const;

    /// Checks the text, colours it and answers whether it is valid.
    virtual bool refresh();
    bool isExpressionValid() const { return m_valid; }
    void setExpressionValid(bool valid) { m_valid = valid; }
    bool isEmptyAllowed() const { return m_emptyAllowed; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void focusLost();

public Q_SLOTS:
    void handleExpressionChanged();

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    Kernel::DM::IDocument* m_document;
    std::shared_ptr<Kernel::DM::ParserContext> m_parserContext;
    std::set<std::string> m_names;
    const Kernel::Unit* m_unit = nullptr;
    bool m_valid = true;
    std::optional<QPalette> m_savedPalette;
    bool m_emptyAllowed;
};

} // namespace QtUIBase
