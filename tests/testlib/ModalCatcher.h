#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

/**
 * Closes the next modal widget that appears (a message box or a dialog) and
 * remembers its title and, for a message box, its text. Tests arm it before
 * the call that opens the modal widget, so no test hangs on a box; an
 * optional action runs on the widget instead of simply closing it.
 *
 *     ModalCatcher catcher;
 *     engineCallThatShowsAnError();
 *     QCOMPARE(catcher.title(), "Error");
 */
class ModalCatcher : public QObject
{
    Q_OBJECT

public:
    using Action = std::function<void(QWidget*)>;

    /// Starts watching at once; polls every 10 ms for at most @p timeoutMs.
    explicit ModalCatcher(Action action = Action(), int timeoutMs = 10000);

    bool caught() const { return m_caught; }
    int count() const { return m_count; }
    QString title() const { return m_title; }
    QString text() const { return m_text; }
    /// Keep catching after the first widget (every widget gets the action).
    void setRepeat(bool repeat) { m_repeat = repeat; }

private:
    void poll();

    Action m_action;
    QTimer m_timer;
    int m_remainingPolls = 0;
    bool m_caught = false;
    bool m_repeat = false;
    int m_count = 0;
    QString m_title;
    QString m_text;
};
