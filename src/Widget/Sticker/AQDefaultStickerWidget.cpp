#include "Widget/Sticker/AQDefaultStickerWidget.h"

#include <QGridLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace QtUIBase {

AQDefaultStickerWidget::AQDefaultStickerWidget(const QString& name, const QString& title, const QString& text,
                                               QWidget* parent, bool scriptable)
    : AQSticker(name, parent, scriptable)
{
    QPalette note = palette();
    note.setColor(QPalette::Window, QColor(255, 249, 196));
    note.setColor(QPalette::WindowText, QColor(60, 52, 20));
    setPalette(note);

    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(0, 0, 0, 0);
    m_title = new QLabel(title, content);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_close = new QToolButton(content);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setToolTip(tr("Close"));
    m_close->setAutoRaise(true);
    m_close->setCursor(Qt::ArrowCursor);
    m_text = new QLabel(text, content);
    m_text->setWordWrap(true);
    m_text->setOpenExternalLinks(true);
    m_text->setMinimumWidth(160);
    m_text->setMaximumWidth(260);
    grid->addWidget(m_title, 0, 0);
    grid->addWidget(m_close, 0, 1, Qt::AlignRight | Qt::AlignTop);
    grid->addWidget(m_text, 1, 0, 1, 2);
    connect(m_close, &QToolButton::clicked, this, &AQSticker::handleClosedSignal);
    setContentWidget(content);
}

QString AQDefaultStickerWidget::title() const
{
    return m_title->text();
}

void AQDefaultStickerWidget::setTitle(const QString& title)
{
    m_title->setText(title);
    adjustSize();
}

QString AQDefaultStickerWidget::text() const
{
    return m_text->text();
}

void AQDefaultStickerWidget::setText(const QString& text)
{
    m_text->setText(text);
    adjustSize();
}

} // namespace QtUIBase
