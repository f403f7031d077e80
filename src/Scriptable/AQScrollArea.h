#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QScrollArea>

namespace QtUIBase {

/**
 * A scriptable QScrollArea that records where it is scrolled to.
 *
 * Each scroll by wheel, keys, arrows or page clicks records "valueChanged"
 * with the horizontal and the vertical scroll-bar values in decimal; a drag
 * of a scroll bar's handle records once, when it is released. Then
 * AValueChanged() is emitted with recording suppressed.
 *
 * Replay of "valueChanged" with exactly two numbers scrolls there and emits
 * AValueChanged(); a position past the scroll range (the contents shrank)
 * scrolls as far as it can and is reported in the fixed-script report.
 *
 * Not scriptable: an ordinary scroll area.
 */
class ORVEXQTUIBASE_EXPORT AQScrollArea : public QScrollArea, public IAQScriptable
{
    Q_OBJECT

public:
    AQScrollArea(const QString& name, QWidget* parent, bool scriptable);
    explicit AQScrollArea(QWidget* parent = nullptr, bool scriptable = true);

    void scriptReplay(const QString& signal, const QStringList& args) override;

Q_SIGNALS:
    void AValueChanged(int horizontal, int vertical);

private Q_SLOTS:
    void handleValueChangedSignal();

private:
    bool dragging() const;

    bool m_replaying = false;
};

} // namespace QtUIBase
