#include "Widget/Splitter/OrvexSplitter.h"

#include "Scriptable/AQWrapperSupport_p.h"

#include <QMouseEvent>
#include <QSettings>

namespace Gui::Widget {

using namespace QtUIBase::Wrapper;

namespace {
const QString StateKey = QStringLiteral("state");
}

/// Tells its splitter when a drag starts and, after Qt has made the last
/// move (a non-opaque splitter moves only on release), when it ends.
class OrvexSplitterHandle : public QSplitterHandle
{
public:
    OrvexSplitterHandle(Qt::Orientation orientation, OrvexSplitter* parent)
        : QSplitterHandle(orientation, parent)
        , m_splitter(parent)
    {
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        QSplitterHandle::mousePressEvent(event);
        if (event->button() == Qt::LeftButton)
            m_splitter->handleDragStarted();
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QSplitterHandle::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton)
            m_splitter->handleDragFinished();
    }

private:
    OrvexSplitter* m_splitter;
};

OrvexSplitter::OrvexSplitter(const QString& name, Qt::Orientation orientation, QWidget* parent, bool scriptable)
    : QSplitter(orientation, parent)
    , WidgetStateSettings(name)
{
    m_scriptable = registerIfScriptable(this, name, scriptable);
    connect(this, &QSplitter::splitterMoved, this, &OrvexSplitter::noteMove);
}

OrvexSplitter::~OrvexSplitter() = default;

QSplitterHandle* OrvexSplitter::createHandle()
{
    return new OrvexSplitterHandle(orientation(), this);
}

void OrvexSplitter::noteMove(int pos, int index)
{
    if (!m_dragging)
        return;
    m_movedPos = pos;
    m_movedIndex = index;
}

void OrvexSplitter::handleDragStarted()
{
    m_dragging = true;
    m_movedIndex = -1;
}

void OrvexSplitter::handleDragFinished()
{
    m_dragging = false;
    if (m_movedIndex < 0)
        return; // a click on the handle
    saveWidgetState();
    const int pos = m_movedPos;
    const int index = m_movedIndex;
    if (m_scriptable) {
        recordThenEmit(this, QStringLiteral("splitterMoved"), {decimal(pos), decimal(index)},
                       [&] { Q_EMIT ASplitterMoved(pos, index); });
    }
}

void OrvexSplitter::scriptReplay(const QString& signal, const QStringList& args)
{
    if (signal != QLatin1String("splitterMoved"))
        return;
    const auto values = decimals(args, 2);
    if (!values)
        return;
    const int pos = values->at(0);
    const int index = values->at(1);
    QtUIBase::withRecordingSuppressed([&] {
        moveSplitter(pos, index);
        Q_EMIT ASplitterMoved(pos, index);
    });
}

void OrvexSplitter::RestoreSettings(QSettings& settings)
{
    const QVariant state = settings.value(StateKey);
    if (state.isValid())
        restoreState(state.toByteArray());
}

void OrvexSplitter::SaveSettings(QSettings& settings) const
{
    settings.setValue(StateKey, saveState());
}

void OrvexSplitter::RestoreDefaultSettings()
{
    if (!m_defaultState.isEmpty())
        restoreState(m_defaultState);
}

void OrvexSplitter::showEvent(QShowEvent* event)
{
    if (m_defaultState.isEmpty())
        m_defaultState = saveState();
    restoreWidgetStateOnce();
    QSplitter::showEvent(event);
}

void OrvexSplitter::hideEvent(QHideEvent* event)
{
    saveWidgetState();
    QSplitter::hideEvent(event);
}

} // namespace Gui::Widget
