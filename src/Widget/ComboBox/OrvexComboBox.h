#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQComboBox.h"

namespace Gui::Widget {

/**
 * A scriptable combo box (it records and replays as QtUIBase::AQComboBox)
 * whose popup is as wide as its longest item, so long item texts such as
 * material or port names are never cut off, even in a narrow box, whatever
 * the style (some fit the popup to its items already, others keep it as
 * wide as the box). The popup is never narrower than the box and never
 * wider than the screen it opens on.
 */
class ORVEXQTUIBASE_EXPORT OrvexComboBox : public QtUIBase::AQComboBox
{
    Q_OBJECT

public:
    OrvexComboBox(const QString& name, QWidget* parent, bool scriptable);

    /// Width the popup needs to show every item whole.
    int popupWidthHint() const;
    void showPopup() override;
};

} // namespace Gui::Widget
