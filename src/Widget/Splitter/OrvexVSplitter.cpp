#include "Widget/Splitter/OrvexVSplitter.h"

namespace Gui::Widget {

OrvexVSplitter::OrvexVSplitter(const QString& name, QWidget* parent, bool scriptable)
    : OrvexSplitter(name, Qt::Vertical, parent, scriptable)
{
}

} // namespace Gui::Widget
