#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QWizardPage>

namespace QtUIBase {

/**
 * A scriptable QWizardPage: each change of the page's completeness records
 * "completedChanged" (no arguments) and emits ACompleteChanged() with
 * recording suppressed. Replay records it again (the engine drops the
 * record while replaying) and emits ACompleteChanged().
 *
 * Added to an AQWizard, the page is named under the wizard.
 */
class ORVEXQTUIBASE_EXPORT AQWizardPage : public QWizardPage, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQWizardPage(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    /// Connects completeChanged(); the scriptable constructor does it.
    void initPage();
    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void ACompleteChanged();

private Q_SLOTS:
    void handleCompletedChangedSignal();
};

} // namespace QtUIBase
