#include "Widget/Indicator/OrvexEncryptionIndicatorWidget.h"

#include <QEvent>
#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>

namespace Gui::Widget {

namespace {
const QColor EncryptedColor(46, 125, 50);
constexpr int Spacing = 4;
} // namespace

OrvexEncryptionIndicatorWidget::OrvexEncryptionIndicatorWidget(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateToolTip();
}

void OrvexEncryptionIndicatorWidget::setEncrypted(bool encrypted)
{
    if (encrypted == m_encrypted)
        return;
    m_encrypted = encrypted;
    updateToolTip();
    updateGeometry();
    update();
    Q_EMIT encryptedChanged(encrypted);
}

void OrvexEncryptionIndicatorWidget::setFileName(const QString& fileName)
{
    m_fileName = fileName;
    updateToolTip();
}

void OrvexEncryptionIndicatorWidget::setTextVisible(bool visible)
{
    m_textVisible = visible;
    updateGeometry();
    update();
}

QString OrvexEncryptionIndicatorWidget::label() const
{
    return m_encrypted ? tr("Encrypted") : tr("Not encrypted");
}

void OrvexEncryptionIndicatorWidget::updateToolTip()
{
    QString tip;
    if (m_fileName.isEmpty()) {
        tip = m_encrypted ? tr("The model file is encrypted") : tr("The model file is not encrypted");
    } else {
        const QString name = QFileInfo(m_fileName).fileName();
        tip = m_encrypted ? tr("Model file %1 is encrypted").arg(name) : tr("Model file %1 is not encrypted").arg(name);
    }
    setToolTip(tip);
    setAccessibleName(label());
    setAccessibleDescription(tip);
}

int OrvexEncryptionIndicatorWidget::lockSize() const
{
    return qMax(12, fontMetrics().height());
}

QSize OrvexEncryptionIndicatorWidget::sizeHint() const
{
    int width = lockSize();
    if (m_textVisible)
        width += Spacing + fontMetrics().horizontalAdvance(label());
    return QSize(width, lockSize());
}

void OrvexEncryptionIndicatorWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

void OrvexEncryptionIndicatorWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal s = lockSize();
    const qreal top = (height() - s) / 2.0;
    const QColor colour = m_encrypted ? EncryptedColor : palette().color(QPalette::Disabled, QPalette::WindowText);

    // Body in the lower half, shackle above it; an open lock lifts the
    // shackle and frees its right leg.
    const QRectF body(s * 0.15, top + s * 0.45, s * 0.7, s * 0.5);
    const qreal lift = m_encrypted ? 0.0 : s * 0.15;
    const QRectF shackle(s * 0.28, top + s * 0.08 - lift, s * 0.44, s * 0.6);
    QPen pen(colour, qMax(1.5, s / 9.0));
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    QPainterPath arc;
    arc.moveTo(shackle.left(), body.top());
    arc.lineTo(shackle.left(), shackle.center().y());
    arc.arcTo(shackle.left(), shackle.top(), shackle.width(), shackle.width(), 180, -180);
    arc.lineTo(shackle.right(), m_encrypted ? body.top() : shackle.center().y() + s * 0.05);
    painter.drawPath(arc);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(body, s * 0.08, s * 0.08);
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawEllipse(QPointF(body.center().x(), body.center().y() - s * 0.03), s * 0.06, s * 0.06);

    if (m_textVisible) {
        painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
        const QRectF text(s + Spacing, 0, width() - s - Spacing, height());
        painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, label());
    }
}

} // namespace Gui::Widget
