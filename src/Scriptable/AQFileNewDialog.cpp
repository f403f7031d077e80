#include "Scriptable/AQFileNewDialog.h"

#include "Scriptable/AQMessageBox.h"

#include <QFileInfo>

namespace QtUIBase {

AQFileNewDialog::AQFileNewDialog(const QString& name, QWidget* parent, const QString& caption,
                                 const QString& directory, const QString& filter, const QString& defaultSuffix,
                                 bool scriptable)
    : AQFileDialog(name, parent, caption, directory, filter, scriptable)
{
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setDefaultSuffix(defaultSuffix);
    // The overwrite question is asked (and recorded) here, not by Qt.
    setOption(DontConfirmOverwrite, true);
}

QStringList AQFileNewDialog::confirm(const QStringList& files)
{
    // Not recorded: the dialog records the confirmed name, which is all a
    // replay needs.
    if (files.isEmpty() || !QFileInfo::exists(files.first()))
        return files;
    const auto answer = AQMessageBox::question(
        this, tr("File Exists"), tr("File %1 already exists. Do you wish to overwrite this file?").arg(files.first()),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No, false);
    return answer == QMessageBox::Yes ? files : QStringList();
}

} // namespace QtUIBase
