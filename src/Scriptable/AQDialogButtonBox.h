#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QPushButton>

namespace QtUIBase {

/**
 * A scriptable QDialogButtonBox.
 *
 * Records "accepted", "rejected" and "helpRequested" without arguments and
 * "clicked" with the standard button's name ("Ok", "Cancel", ...; a button
 * that is no standard button is "NoButton"). The application connects to
 * AAccepted(), ARejected(), AHelpRequested() and AClicked(), which are
 * emitted with recording suppressed.
 *
 * Replay emits the A signals without clicking anything: "clicked" passes
 * the named standard button (null for an unknown name).
 *
 * Not scriptable: nothing is registered or recorded and the A signals are
 * not emitted by user operations.
 */
class ORVEXQTUIBASE_EXPORT AQDialogButtonBox : public QDialogButtonBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQDialogButtonBox(const QString& name, QDialogButtonBox::StandardButtons buttons,
                      Qt::Orientation orientation, QWidget* parent, bool scriptable);
    /// Horizontal, scriptable.
    explicit AQDialogButtonBox(const QString& name, QDialogButtonBox::StandardButtons buttons = {},
                               QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;
    bool isScriptable() const { return m_scriptable; }

Q_SIGNALS:
    void AAccepted();
    void ARejected();
    void AHelpRequested();
    void AClicked(QAbstractButton* button);

private Q_SLOTS:
    void handleAcceptedSignal();
    void handleRejectedSignal();
    void handleHelpRequestedSignal();
    void handleClickedSignal(QAbstractButton* button);

private:
    bool m_scriptable = false;
    bool m_flag = false; // kept for hosts; not read by the box
};

} // namespace QtUIBase
