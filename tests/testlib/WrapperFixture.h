#pragma once

#include "ScriptSandbox.h"

#include <QStringList>
#include <QWidget>

#include <memory>

/**
 * A registered top-level widget "Root" in a script sandbox, for tests that
 * record what a user does to wrappers placed on it and replay scripts
 * against them. Records are compared without their "QtSignal Root " head:
 * a line "QtSignal Root box clicked true" reads "box clicked true".
 */
class WrapperFixture
{
public:
    /// @p journal: journal into the sandbox's "journal.jrl".
    explicit WrapperFixture(bool journal = false);
    ~WrapperFixture();

    QWidget* root() const { return m_root.get(); }
    ScriptSandbox& sandbox() { return *m_sandbox; }

    /// Shows the root (resized to @p size) and waits until it is the active
    /// window, so clicks move the focus and focus-out events arrive.
    void showActive(const QSize& size = QSize(400, 300));

    void startRecording();
    /// Stops recording and answers the records written since the start,
    /// without the head "QtSignal Root ".
    QStringList stopRecording();

    /// Replays a script of @p body lines at interval 0; each line not
    /// starting with "QtSignal" or "QtFillin" gets the head
    /// "QtSignal Root ".
    bool replay(const QStringList& body);
    /// The fixed-script report of the last replay (empty when none).
    QString fixedScriptReport() const;

private:
    std::unique_ptr<ScriptSandbox> m_sandbox;
    std::unique_ptr<QWidget> m_root;
};
