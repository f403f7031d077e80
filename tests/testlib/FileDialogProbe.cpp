#include "FileDialogProbe.h"

#include "CerrCapture.h"
#include "ModalCatcher.h"

#include <QDir>
#include <QTemporaryDir>

FileDialogProbe FileDialogProbe::run(const std::function<void()>& call)
{
    FileDialogProbe probe;
    QTemporaryDir dir;
    probe.startFolder = QDir(dir.path()).absolutePath();
    const QString oldCurrent = QDir::currentPath();
    QDir::setCurrent(dir.path());
    ModalCatcher catcher([&](QWidget* widget) {
        if (auto* dialog = qobject_cast<QFileDialog*>(widget)) {
            probe.filters = dialog->nameFilters();
            probe.mode = dialog->fileMode();
            probe.folder = dialog->directory().absolutePath();
            dialog->reject();
        }
    });
    {
        CerrCapture capture;
        call();
        probe.cerr = capture.text();
    }
    QDir::setCurrent(oldCurrent);
    probe.caught = catcher.caught();
    probe.title = catcher.title();
    probe.files = QDir(dir.path()).entryList(QDir::Files);
    return probe;
}
