#include "PreferencesDialog.h"

#include <Settings/AQSettings.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace {
const QString PauseKey = QStringLiteral("replayPause");
constexpr int DefaultPause = 200;
} // namespace

PreferencesDialog::PreferencesDialog(QWidget* parent)
    : AQDialogWSettings(QStringLiteral("Preferences"), parent)
{
    setWindowTitle(tr("Preferences"));
    m_pause = new QSpinBox(this);
    m_pause->setRange(0, 5000);
    m_pause->setSingleStep(100);
    m_pause->setSuffix(tr(" ms"));
    m_pause->setValue(DefaultPause);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout(this);
    form->addRow(tr("Pause between replayed lines:"), m_pause);
    form->addRow(buttons);
}

int PreferencesDialog::replayPause() const
{
    return m_pause->value();
}

int PreferencesDialog::storedReplayPause()
{
    QtUIBase::AQSettings settings(QStringLiteral("Main"));
    settings.beginGroup(QStringLiteral("PreferencesDialog"));
    return settings.value(PauseKey, DefaultPause).toInt();
}

void PreferencesDialog::RestoreSettings(QSettings& settings)
{
    m_pause->setValue(settings.value(PauseKey, DefaultPause).toInt());
}

void PreferencesDialog::SaveSettings(QSettings& settings) const
{
    settings.setValue(PauseKey, m_pause->value());
}
