#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QSlider>

namespace QtUIBase {

/**
 * A scriptable QSlider that records a drag once, with its final value.
 *
 * Values are recorded as "valueChanged" with the decimal value, and only
 * while something listens to AValueChanged(). Keyboard steps, wheel steps
 * and clicks record each value; a drag records nothing while it moves and
 * one value when it is released. AValueChanged() is emitted, recording
 * suppressed, for every value change, and once more at the end of a drag
 * that changed the value.
 *
 * A left click beside the handle moves the slider straight to the clicked
 * position (rather than a page step towards it); with
 * setSnapClickToPageStep(true) the value is rounded to the nearest multiple
 * of the page step. Replay of "valueChanged" sets the value (0 for a word
 * that is not a number).
 */
class ORVEXQTUIBASE_EXPORT AQSlider : public QSlider, public IAQScriptable
{
    Q_OBJECT

public:
    AQSlider(const QString& name, QWidget* parent, bool scriptable);
    AQSlider(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable);
    /// Registers under the empty name (keeping the object name), scriptable.
    explicit AQSlider(QWidget* parent = nullptr);

    void scriptReplay(const QString& signal, const QStringList& args) override;

    void setSnapClickToPageStep(bool snap) { m_snapClickToPageStep = snap; }
    bool isSnapClickToPageStep() const { return m_snapClickToPageStep; }

Q_SIGNALS:
    void AValueChanged(int value);

protected:
    void connectNotify(const QMetaMethod& signal) override;
    void mousePressEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void handleSliderPressedSignal();
    void handleSliderReleasedSignal();
    void handleValueChangedSignal(int value);

private:
    static constexpr int NoDrag = 2147483647;

    void init(const QString& name);
    bool dragInProgress() const { return m_valueAtPress != NoDrag; }
    /// The value under a click at @p pos, before any snapping.
    int valueAt(const QPoint& pos, const QRect& handle) const;

    bool m_valueChangedListened = false;
    bool m_scriptable = false;
    int m_valueAtPress = NoDrag;
    bool m_snapClickToPageStep = false;
};

} // namespace QtUIBase
