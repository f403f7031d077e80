#include "Widget/Splitter/OrvexHSplitter.h"

namespace Gui::Widget {

OrvexHSplitter::OrvexHSplitter(const QString& name, QWidget* parent, bool scriptable)
    : OrvexSplitter(name, Qt::Horizontal, parent, scriptable)
{
}

} // namespace Gui::Widget
