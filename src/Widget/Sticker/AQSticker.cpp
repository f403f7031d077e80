#include "Widget/Sticker/AQSticker.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace QtUIBase {

using namespace Wrapper;

AQSticker::AQSticker(const QString& name, QWidget* parent, bool scriptable)
    : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setCursor(Qt::OpenHandCursor);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 6);
    watchView();
    m_scriptable = registerIfScriptable(this, name, scriptable);
}

AQSticker::~AQSticker() = default;

void AQSticker::setCorner(Qt::Corner corner)
{
    m_corner = corner;
    place();
}

void AQSticker::setMargin(int margin)
{
    m_margin = margin;
    place();
}

void AQSticker::setOffset(const QPoint& offset)
{
    m_offset = offset;
    place();
}

void AQSticker::setContentWidget(QWidget* content)
{
    delete m_content;
    m_content = content;
    if (content)
        layout()->addWidget(content);
    adjustSize();
    place();
}

QPoint AQSticker::pinnedPosition() const
{
    const QWidget* view = parentWidget();
    if (!view)
        return pos();
    const bool right = m_corner == Qt::TopRightCorner || m_corner == Qt::BottomRightCorner;
    const bool bottom = m_corner == Qt::BottomLeftCorner || m_corner == Qt::BottomRightCorner;
    return QPoint(right ? view->width() - width() - m_margin : m_margin,
                  bottom ? view->height() - height() - m_margin : m_margin);
}

void AQSticker::place()
{
    const QWidget* view = parentWidget();
    if (!view)
        return;
    QPoint target = pinnedPosition() + m_offset;
    target.setX(qBound(0, target.x(), qMax(0, view->width() - width())));
    target.setY(qBound(0, target.y(), qMax(0, view->height() - height())));
    move(target);
    raise();
}

void AQSticker::watchView()
{
    if (m_view == parentWidget())
        return;
    if (m_view)
        m_view->removeEventFilter(this);
    m_view = parentWidget();
    if (m_view)
        m_view->installEventFilter(this);
}

bool AQSticker::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange) {
        watchView();
        place();
    }
    return QFrame::event(event);
}

bool AQSticker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QFrame::eventFilter(watched, event);
}

void AQSticker::showEvent(QShowEvent* event)
{
    QFrame::showEvent(event);
    place();
}

void AQSticker::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    place(); // a pin at the right or bottom keeps its edge there
}

void AQSticker::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QFrame::mousePressEvent(event);
        return;
    }
    m_dragging = true;
    m_dragStart = event->globalPos();
    m_offsetAtPress = m_offset;
    setCursor(Qt::ClosedHandCursor);
    event->accept();
}

void AQSticker::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging) {
        QFrame::mouseMoveEvent(event);
        return;
    }
    m_offset = m_offsetAtPress + event->globalPos() - m_dragStart;
    place();
}

void AQSticker::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        QFrame::mouseReleaseEvent(event);
        return;
    }
    m_dragging = false;
    setCursor(Qt::OpenHandCursor);
    // Keep what the view allowed: dragging against an edge does not build up
    // an offset that a larger view would show.
    m_offset = pos() - pinnedPosition();
    if (m_offset == m_offsetAtPress || !m_scriptable)
        return;
    const QPoint offset = m_offset;
    recordThenEmit(this, QStringLiteral("moved"), {decimal(offset.x()), decimal(offset.y())},
                   [&] { Q_EMIT AMoved(offset); });
}

void AQSticker::handleClosedSignal()
{
    hide();
    if (m_scriptable)
        recordThenEmit(this, QStringLiteral("closed"), {}, [this] { Q_EMIT AClosed(); });
}

void AQSticker::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal == QLatin1String("moved")) {
        const auto values = decimals(args, 2);
        if (!values)
            return;
        const QPoint offset(values->at(0), values->at(1));
        withRecordingSuppressed([&] {
            setOffset(offset);
            Q_EMIT AMoved(offset);
        });
    } else if (signal == QLatin1String("closed") && args.isEmpty()) {
        withRecordingSuppressed([this] {
            hide();
            Q_EMIT AClosed();
        });
    }
}

} // namespace QtUIBase
