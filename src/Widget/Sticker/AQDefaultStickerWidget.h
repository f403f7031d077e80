#pragma once

#include "OrvexQtUIBase_export.h"

#include "Widget/Sticker/AQSticker.h"

class QLabel;
class QToolButton;

namespace QtUIBase {

/**
 * The ready-made sticker: a note with a bold title, a word-wrapped text and
 * a close button (the style's title-bar close icon, tooltip "Close") on a
 * pale yellow background, pinned over its parent view like every
 * AQSticker. The text may be rich text; links in it open through the
 * desktop. The close button closes the sticker as the user does, recording
 * "closed" when scriptable; dragging the note records "moved" (see
 * AQSticker).
 */
class ORVEXQTUIBASE_EXPORT AQDefaultStickerWidget : public AQSticker
{
    Q_OBJECT

public:
    AQDefaultStickerWidget(const QString& name, const QString& title, const QString& text, QWidget* parent,
                           bool scriptable);

    QString title() const;
    void setTitle(const QString& title);
    QString text() const;
    void setText(const QString& text);
    QToolButton* closeButton() const { return m_close; }

private:
    QLabel* m_title = nullptr;
    QLabel* m_text = nullptr;
    QToolButton* m_close = nullptr;
};

} // namespace QtUIBase
