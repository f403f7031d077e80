#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QStackedWidget>

namespace QtUIBase {

/**
 * A scriptable QStackedWidget whose page changes requested through
 * ASetCurrentIndex() are recorded.
 *
 * A stack has no user operation of its own: the application switches pages
 * in reaction to something. When that something is not itself scriptable,
 * the application emits ASetCurrentIndex() (or calls
 * requestCurrentIndex()): the stack records "setCurrentIndex" with the
 * index in decimal and shows that page with recording suppressed. Pages
 * changed with setCurrentIndex() directly are not recorded (they follow
 * from an operation that is).
 *
 * Replay of "setCurrentIndex" with at least one argument emits
 * ASetCurrentIndex() with it, which shows the page; an index that names no
 * page changes nothing and is reported in the fixed-script report.
 *
 * Not scriptable: ASetCurrentIndex() still shows the page, unrecorded.
 */
class ORVEXQTUIBASE_EXPORT AQStackedWidget : public QStackedWidget, public IAQScriptable
{
    Q_OBJECT

public:
    AQStackedWidget(const QString& name, QWidget* parent, bool scriptable);
    explicit AQStackedWidget(QWidget* parent = nullptr, bool scriptable = true);

    void scriptReplay(const QString& signal, const QStringList& args) override;

public Q_SLOTS:
    /// Emits ASetCurrentIndex(@p index): a recorded page change.
    void requestCurrentIndex(int index) { Q_EMIT ASetCurrentIndex(index); }

Q_SIGNALS:
    void ASetCurrentIndex(int index);

private Q_SLOTS:
    void handleSetCurrentIndexSignal(int index);
};

} // namespace QtUIBase
