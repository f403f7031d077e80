#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QColorDialog>

namespace QtUIBase {

/**
 * A scriptable QColorDialog.
 *
 * Records "currentColorChanged" (red, green and blue as three decimal
 * arguments), "accepted" and "rejected", each followed by its A signal with
 * recording suppressed. Its handlers allow recording first, so the dialog's
 * operations are recorded even when the code that opened it runs with
 * recording suppressed (as a reaction to an A signal does).
 *
 * exec() during a replay shows the dialog and pulls the following script
 * lines itself until an "accepted" line closes it, the script runs out or
 * the replay is stopped; a "rejected" line does not end the loop. During a
 * replay exec() answers 1, and when the script runs out while the replay is
 * still active the dialog deletes itself (later): allocate it on the heap
 * and hold it through a QPointer.
 *
 * The Qt widget dialog is always used (never a native one), so that every
 * operation goes through the signals above.
 */
class ORVEXQTUIBASE_EXPORT AQColorDialog : public QColorDialog, public IAQScriptable
{
    Q_OBJECT

public:
    AQColorDialog(const QString& name, const QColor& initial, QWidget* parent, bool scriptable);
    AQColorDialog(const QString& name, QWidget* parent, bool scriptable);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    int exec() override;

Q_SIGNALS:
    void AAccepted();
    void ACurrentColorChanged(const QColor& color);
    void ARejected();

protected:
    /// Replays the next command of the script for this modal dialog; false
    /// when nothing was left to read.
    virtual bool processNextScriptCommand();

private Q_SLOTS:
    void handleAcceptedSignal();
    void handleCurrentColorChangedSignal(const QColor& color);
    void handleRejectedSignal();

private:
    void init(const QString& name, bool scriptable);
    int runReplayLoop();

    bool m_finished = false;
    int m_result = 1;
    // Counts handler runs, so replay can tell whether a Qt call already
    // reported its A signal.
    int m_handled = 0;
};

} // namespace QtUIBase
