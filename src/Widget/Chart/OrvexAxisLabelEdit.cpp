#include "Widget/Chart/OrvexAxisLabelEdit.h"

#include "Widget/Chart/OrvexChartView.h"

#include <QKeyEvent>

namespace Gui::Widget {

OrvexAxisLabelEdit::OrvexAxisLabelEdit(OrvexChartView* view) : QLineEdit(view->viewport()), m_view(view)
{
    hide();
    connect(this, &QLineEdit::returnPressed, this, &OrvexAxisLabelEdit::commit);
}

void OrvexAxisLabelEdit::editAxis(Qt::Orientation axis)
{
    m_axis = axis;
    const QRectF area = m_view->plotArea();
    const QRect viewArea = m_view->mapFromScene(area).boundingRect();
    const int width = 200;
    const int height = sizeHint().height();
    if (axis == Qt::Horizontal)
        setGeometry(viewArea.center().x() - width / 2, m_view->viewport()->height() - height - 2, width, height);
    else
        setGeometry(2, viewArea.center().y() - height / 2, width, height);
    setText(QString::fromStdString(axis == Qt::Horizontal ? m_view->xLabel() : m_view->yLabel()));
    selectAll();
    show();
    setFocus();
}

void OrvexAxisLabelEdit::commit()
{
    if (!isVisible())
        return;
    hide();
    if (m_axis == Qt::Horizontal)
        m_view->setXLabel(text().toStdString());
    else
        m_view->setYLabel(text().toStdString());
}

void OrvexAxisLabelEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        hide();
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void OrvexAxisLabelEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    commit();
}

} // namespace Gui::Widget
