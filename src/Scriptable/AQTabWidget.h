#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QTabWidget>

namespace QtUIBase {

/**
 * A scriptable QTabWidget that names pages by their tab text.
 *
 * Records "currentChanged" with the text of the tab made current, then
 * emits ACurrentChanged() with recording suppressed. A context-menu request
 * (custom context-menu policy) over the widget records
 * "customContextMenuRequested" with the index of the tab under the point and
 * emits ACustomContextMenuRequested() with recording allowed, so that the
 * menu it opens records its own choice; a request at (0,0) is ignored.
 *
 * Replay of "currentChanged" makes the first tab with that text current;
 * a text that no tab has changes nothing and is reported in the
 * fixed-script report. Replay of "customContextMenuRequested" with two
 * numbers emits the request at that point; with one, it makes that tab
 * current and emits the request at (-123456, -123456), the point that
 * stands for no position.
 *
 * addTab() also makes the tab widget the registry parent of a registered
 * page, so the page's widgets are named under the tab widget.
 */
class ORVEXQTUIBASE_EXPORT AQTabWidget : public QTabWidget, public IAQScriptable
{
    Q_OBJECT

public:
    AQTabWidget(const QString& name, QWidget* parent, bool scriptable);
    explicit AQTabWidget(QWidget* parent = nullptr, bool scriptable = true);

    int addTab(QWidget* page, const QString& label);
    int addTab(QWidget* page, const QIcon& icon, const QString& label);

    void scriptReplay(const QString& signal, const QStringList& args) override;

    /// The point of a replayed context-menu request that has none.
    static QPoint noPosition() { return QPoint(-123456, -123456); }

Q_SIGNALS:
    void ACurrentChanged(int index);
    void ACustomContextMenuRequested(const QPoint& pos);

private Q_SLOTS:
    void handleCurrentChangedSignal(int index);
    void handleCustomContextSignal(const QPoint& pos);

private:
    void adoptPage(QWidget* page);
};

} // namespace QtUIBase
