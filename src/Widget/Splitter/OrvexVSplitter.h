#pragma once

#include "Widget/Splitter/OrvexSplitter.h"

namespace Gui::Widget {

/**
 * An OrvexSplitter laying its widgets out one above the other (Qt::Vertical). Its
 * handle positions persist under "Gui::Widget::OrvexVSplitter/<name>".
 */
class ORVEXQTUIBASE_EXPORT OrvexVSplitter : public OrvexSplitter
{
    Q_OBJECT

public:
    OrvexVSplitter(const QString& name, QWidget* parent, bool scriptable);
};

} // namespace Gui::Widget
