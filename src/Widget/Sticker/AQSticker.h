#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QFrame>
#include <QPointer>

namespace QtUIBase {

/**
 * A note pinned over a view: a small frame, child of the view, kept at one
 * of the view's corners (the top right by default, 8 pixels in) as the
 * view is resized, and raised above the view's other children. The view is
 * the sticker's parent widget, also after setParent() (so a sticker can be
 * registered under a page and then pinned over a view on it).
 *
 * The user may drag the sticker elsewhere with the left mouse button; it
 * then stays at that offset from its corner, and never leaves the view.
 * Closing hides it (AQDefaultStickerWidget has a close button for that).
 *
 * Scriptable (when built with scriptable true, under its name): a drag
 * records "moved" with the new offset from the corner, x and y in decimal,
 * when the button is released; closing records "closed" without
 * arguments. Each then emits AMoved() or AClosed() with recording
 * suppressed. Replay of "moved" with two integers puts the sticker at that
 * offset; "closed" hides it. setOffset(), show() and hide() are the
 * program's own and record nothing.
 */
class ORVEXQTUIBASE_EXPORT AQSticker : public QFrame, public IAQScriptable
{
    Q_OBJECT

public:
    AQSticker(const QString& name, QWidget* parent, bool scriptable);
    ~AQSticker() override;

    Qt::Corner corner() const { return m_corner; }
    void setCorner(Qt::Corner corner);
    int margin() const { return m_margin; }
    void setMargin(int margin);
    /// Where the sticker is relative to its pinned place at the corner.
    QPoint offset() const { return m_offset; }
    void setOffset(const QPoint& offset);

    /// Shows @p content inside the sticker, taking ownership; a previous
    /// content widget is deleted.
    void setContentWidget(QWidget* content);
    QWidget* contentWidget() const { return m_content; }

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AMoved(const QPoint& offset);
    void AClosed();

public Q_SLOTS:
    /// Closes the sticker as the user does (recorded).
    void handleClosedSignal();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The pinned place at the corner, for the sticker's current size.
    QPoint pinnedPosition() const;
    /// Moves to the pinned place plus the offset, kept inside the view.
    void place();
    void watchView();

    Qt::Corner m_corner = Qt::TopRightCorner;
    int m_margin = 8;
    QPoint m_offset;
    QPointer<QWidget> m_content;
    QPointer<QWidget> m_view; ///< the parent whose resizes are watched
    bool m_scriptable = false;
    bool m_dragging = false;
    QPoint m_dragStart;
    QPoint m_offsetAtPress;
};

} // namespace QtUIBase
