#include "Widget/Filter/OrvexFilterHeaderView.h"

#include "Widget/Filter/AQFilterComboBox.h"
#include "Widget/Filter/AQFilterLineEdit.h"

#include <QSignalBlocker>

namespace Gui::Widget {

OrvexFilterHeaderView::OrvexFilterHeaderView(const QString& name, QWidget* parent, bool scriptable)
    : AQFilterHeaderView(name, parent, scriptable)
{
    connect(this, &AQFilterHeaderView::filterChanged, this, &OrvexFilterHeaderView::showOnly);
}

QString OrvexFilterHeaderView::patternFor(const QString& text, int) const
{
    return text;
}

void OrvexFilterHeaderView::showOnly(int column, const QString& text)
{
    const QString all = QStringLiteral("*");
    if (text.isEmpty() || text == all)
        return;
    const auto& drops = filters();
    for (int i = 0; i < drops.size(); ++i) {
        QtUIBase::AQFilterLineEdit* edit = drops.at(i)->filterLineEdit();
        if (i == column || edit->text() == all)
            continue;
        // Unannounced and unrecorded: the proxy has dropped that filter already.
        const QSignalBlocker blockBox(drops.at(i));
        const QSignalBlocker blockEdit(edit);
        edit->setTextInternal(all);
    }
}

} // namespace Gui::Widget
