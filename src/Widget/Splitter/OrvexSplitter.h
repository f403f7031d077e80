#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"
#include "Settings/WidgetStateSettings.h"

#include <QSplitter>

namespace Gui::Widget {

/**
 * A QSplitter whose handle positions persist and whose handle drags are
 * recorded.
 *
 * Persistence: the splitter's state (QSplitter::saveState()) lies in the
 * user's settings store under "<class name>/<name>" (the class name as its meta-object has it), key "state" (see
 * QtUIBase::WidgetStateSettings): restored when first shown, saved when the
 * user has dragged a handle and when hidden, untouched while a script
 * records or replays. RestoreDefaultSettings() puts the handles back where
 * they were before the first restore.
 *
 * Scriptable (when built with scriptable true, under its name): a drag
 * records one "splitterMoved" line when the handle is released, with the
 * handle's final position and its index in decimal (as QSplitter's own
 * signal has them), then emits ASplitterMoved() with recording
 * suppressed; the positions passed through during the drag are not
 * recorded. Replay of "splitterMoved" with two integers moves that handle
 * there; other records are ignored.
 */
class ORVEXQTUIBASE_EXPORT OrvexSplitter : public QSplitter,
                                           public QtUIBase::IAQScriptable,
                                           public QtUIBase::WidgetStateSettings
{
    Q_OBJECT

public:
    OrvexSplitter(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable);
    ~OrvexSplitter() override;

    void scriptReplay(const QString& signal, const QStringList& args) override;

    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;
    void RestoreDefaultSettings() override;

Q_SIGNALS:
    void ASplitterMoved(int pos, int index);

protected:
    QSplitterHandle* createHandle() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    friend class OrvexSplitterHandle;
    void handleDragStarted();
    void handleDragFinished();
    void noteMove(int pos, int index);

    bool m_scriptable = false;
    bool m_dragging = false;
    int m_movedPos = -1;
    int m_movedIndex = -1;
    QByteArray m_defaultState;
};

} // namespace Gui::Widget
