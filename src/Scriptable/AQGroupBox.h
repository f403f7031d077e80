#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QGroupBox>

namespace QtUIBase {

/**
 * A scriptable QGroupBox: a click on the check box of a checkable group
 * box records "clicked" with "yes" or "no" (the new checked state) and
 * emits AClicked() with recording suppressed.
 *
 * Replay of "clicked" with one argument sets the box checked for "yes" and
 * unchecked for any other word, then emits AClicked().
 *
 * Not scriptable: an ordinary group box.
 */
class ORVEXQTUIBASE_EXPORT AQGroupBox : public QGroupBox, public IAQScriptable
{
    Q_OBJECT

public:
    AQGroupBox(const QString& name, const QString& title, QWidget* parent, bool scriptable);
    AQGroupBox(const QString& name, QWidget* parent, bool scriptable);
    explicit AQGroupBox(QWidget* parent = nullptr, bool scriptable = true);

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AClicked(bool checked);

private Q_SLOTS:
    void handleClickedSignal(bool checked);

private:
    void init(const QString& name, bool scriptable);
};

} // namespace QtUIBase
