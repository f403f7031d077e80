#pragma once

#include <Scriptable/AQDialogWSettings.h>

class QSpinBox;

/**
 * The gallery's preferences: the pause between replayed lines used when
 * no --interval is given. The dialog keeps its geometry and, when accepted,
 * the pause in the user's settings store (under "PreferencesDialog").
 */
class PreferencesDialog : public QtUIBase::AQDialogWSettings
{
    Q_OBJECT

public:
    explicit PreferencesDialog(QWidget* parent = nullptr);

    int replayPause() const;
    /// The pause stored by the last accepted dialog (200 ms by default).
    static int storedReplayPause();

private:
    void RestoreSettings(QSettings& settings) override;
    void SaveSettings(QSettings& settings) const override;

    QSpinBox* m_pause = nullptr;
};
