#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQComboBox.h"

namespace QtUIBase {

class AQAction;
class AQFilterLineEdit;

/**
 * The drop-down under one section of an AQFilterHeaderView.
 *
 * Editable, without completer, showing at most 8 items (the filter
 * history), with an AQFilterLineEdit named after the drop-down plus "_text"
 * that reads "*" when new. Text columns take typed wildcard text; the
 * Real, Integer, Region, PassFail and OnOff kinds are read-only and filled
 * through the filter dialog; Disabled disables the drop-down. Kinds of 7
 * and more leave the line edit's read-only state alone.
 *
 * The history holds the texts offered by saveFilter() (filters chosen in
 * the dialog, or listed by the host); typed text is not added, so a
 * replayed session rebuilds exactly the history it recorded. Its context
 * menu opens with "Clear Filter" (an AQAction named after the drop-down
 * plus "_clearFilter", recorded and replayed as "triggered").
 */
class ORVEXQTUIBASE_EXPORT AQFilterComboBox : public AQComboBox
{
    Q_OBJECT

public:
    AQFilterComboBox(int kind, const QString& name, QWidget* parent);

    int kind() const { return m_kind; }
    /// Stores @p kind here and in the line edit and applies its editing state.
    void setKind(int kind);
    AQFilterLineEdit* filterLineEdit() const { return m_lineEdit; }
    AQAction* clearFilterAction() const { return m_clearFilter; }

public Q_SLOTS:
    /// Adds @p text to the history unless an item reads exactly so.
    void saveFilter(const QString& text);
    /// Empties the text and deselects any history item.
    void clearFilter();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    int m_kind;
    AQFilterLineEdit* m_lineEdit = nullptr;
    AQAction* m_clearFilter = nullptr;
};

} // namespace QtUIBase
