#include "ModalCatcher.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QWidget>

ModalCatcher::ModalCatcher(Action action, int timeoutMs)
    : m_action(std::move(action))
    , m_remainingPolls(timeoutMs / 10)
{
    m_timer.setInterval(10);
    connect(&m_timer, &QTimer::timeout, this, &ModalCatcher::poll);
    m_timer.start();
}

void ModalCatcher::poll()
{
    if (--m_remainingPolls < 0) {
        m_timer.stop();
        return;
    }
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible())
        return;
    m_caught = true;
    ++m_count;
    m_title = modal->windowTitle();
    if (auto* box = qobject_cast<QMessageBox*>(modal))
        m_text = box->text();
    if (!m_repeat)
        m_timer.stop();
    if (m_action) {
        m_action(modal);
    } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        dialog->reject();
    } else {
        modal->close();
    }
}
