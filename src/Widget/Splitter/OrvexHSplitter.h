#pragma once

#include "Widget/Splitter/OrvexSplitter.h"

namespace Gui::Widget {

/**
 * An OrvexSplitter laying its widgets out side by side (Qt::Horizontal). Its
 * handle positions persist under "Gui::Widget::OrvexHSplitter/<name>".
 */
class ORVEXQTUIBASE_EXPORT OrvexHSplitter : public OrvexSplitter
{
    Q_OBJECT

public:
    OrvexHSplitter(const QString& name, QWidget* parent, bool scriptable);
};

} // namespace Gui::Widget
