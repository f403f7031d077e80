#include "Scriptable/AQWrapperSupport_p.h"

#include "Script/AQScriptBackend.h"
#include "Script/AQScriptEngine_p.h"
#include "Settings/AQSettings.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QTextStream>

namespace QtUIBase {
namespace Wrapper {

namespace {
const QChar PathSeparator = QLatin1Char('|');
}

int execDuringReplay(QDialog* dialog, const bool& finished, const int& result, const std::function<bool()>& next,
                     const std::function<int()>& runInteractively)
{
    dialog->setWindowModality(Qt::ApplicationModal);
    AQScripts::forceRecordingAllowed(true);
    dialog->show();

    // A replayed line may delete the dialog; the guard notices.
    const QPointer<QDialog> self(dialog);
    while (self && !finished) {
        // A stopped replay closes the script, so the next read comes back
        // empty; testing the state as well keeps a host engine from spinning.
        if (!AQIsScriptReplayActive() || !next())
            break;
        Pvt::pauseAfterCommand();
    }
    if (!self)
        return 1;
    if (finished)
        return result;
    if (AQIsScriptRecordActive())
        return runInteractively();

    const QString note = QStringLiteral("erro info:") + dialog->objectName()
        + QStringLiteral(" dialog can not execute success and force to close just for next line script");
    AQCloseJrlScriptFile(QStringLiteral("<font color=red>%1").arg(note));
    dialog->hide();
    return 1;
}

QString scriptFolder()
{
    QString script = AQGetScriptFileName();
    if (script.isEmpty())
        script = AQSettings::getUIAScriptPath();
    return script.isEmpty() ? QString() : QFileInfo(script).absolutePath();
}

QString toScriptRelative(const QString& path)
{
    const QString folder = scriptFolder();
    if (folder.isEmpty() || path.isEmpty())
        return path;
    // Compare resolved paths too: a dialog may hand back a path through a
    // link to the script's folder.
    const QFileInfo info(path);
    for (const QString& base : {folder, QFileInfo(folder).canonicalFilePath()}) {
        for (const QString& candidate : {QDir::cleanPath(info.absoluteFilePath()), info.canonicalFilePath()}) {
            if (base.isEmpty() || candidate.isEmpty())
                continue;
            if (candidate == base)
                return QStringLiteral(".");
            if (candidate.startsWith(base + QLatin1Char('/')))
                return candidate.mid(base.size() + 1);
        }
    }
    return path;
}

QString fromScriptRelative(const QString& path)
{
    const QString folder = scriptFolder();
    if (path.isEmpty() || folder.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    return QDir::cleanPath(QDir(folder).filePath(path));
}

void showError(QWidget* parent, const QString& text)
{
    if (AQIsScriptReplayActive()) {
        AQScripts::addNeedFixedScriptOperation(QString(), parent ? parent->objectName() : QString(), text);
        return;
    }
    QMessageBox::critical(parent, QObject::tr("Error"), text, QMessageBox::Ok);
}

QString itemPath(const QModelIndex& index)
{
    QStringList parts;
    for (QModelIndex i = index.sibling(index.row(), 0); i.isValid(); i = i.parent())
        parts.prepend(i.data(Qt::DisplayRole).toString());
    return parts.join(PathSeparator);
}

QModelIndex findItemPath(const QAbstractItemModel* model, const QString& path)
{
    if (!model || path.isEmpty())
        return QModelIndex();
    QModelIndex parent;
    const QStringList parts = path.split(PathSeparator);
    for (const QString& part : parts) {
        QModelIndex found;
        const int rows = model->rowCount(parent);
        for (int row = 0; row < rows && !found.isValid(); ++row) {
            const QModelIndex child = model->index(row, 0, parent);
            if (child.data(Qt::DisplayRole).toString() == part)
                found = child;
        }
        if (!found.isValid())
            return QModelIndex();
        parent = found;
    }
    return parent;
}

namespace {

QString checkMark(const QModelIndex& index)
{
    const QVariant state = index.data(Qt::CheckStateRole);
    if (!state.isValid())
        return QString();
    switch (state.toInt()) {
    case Qt::Checked:
        return QStringLiteral("[x] ");
    case Qt::PartiallyChecked:
        return QStringLiteral("[-] ");
    default:
        return QStringLiteral("[ ] ");
    }
}

void writeRows(QTextStream& out, const QAbstractItemModel* model, const QModelIndex& parent, int depth,
               const std::function<bool(const QModelIndex&)>& isExpanded)
{
    const int rows = model->rowCount(parent);
    const int columns = model->columnCount(parent);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex first = model->index(row, 0, parent);
        const bool branch = model->hasChildren(first);
        const bool open = branch && isExpanded(first);
        QStringList texts;
        for (int column = 0; column < columns; ++column) {
            const QModelIndex cell = model->index(row, column, parent);
            texts << checkMark(cell) + cell.data(Qt::DisplayRole).toString();
        }
        out << QString(depth * 2, QLatin1Char(' ')) << (branch ? (open ? "- " : "+ ") : "  ")
            << texts.join(QLatin1Char('\t')) << '\n';
        if (branch)
            writeRows(out, model, first, depth + 1, isExpanded);
    }
}

} // namespace

void dumpItems(const QString& name, const QAbstractItemModel* model,
               const std::function<bool(const QModelIndex&)>& isExpanded)
{
    const bool recording = AQIsScriptRecordActive();
    if (!model || (!recording && !AQIsScriptReplayActive()))
        return;
    const QString folder = scriptFolder();
    if (folder.isEmpty())
        return;
    const QString script = AQSettings::getUIAScriptPath();
    const auto counts = recording ? AQSettings::getUIARecordCount() : AQSettings::getUIAReplayCount();
    const int runCount = qMax(1, counts.value(script).value(0));

    // Dumps of one name are numbered within one run.
    static QHash<QString, int> sequence;
    const QString run = QStringLiteral("%1|%2|%3|%4").arg(recording).arg(script, name).arg(runCount);
    const int n = ++sequence[run];

    QDir dir(folder + (recording ? QStringLiteral("/DumpRecord") : QStringLiteral("/DumpReplay")));
    if (!dir.exists() && !dir.mkpath(QStringLiteral(".")))
        return;
    QFile file(dir.filePath(QStringLiteral("%1_%2_%3.txt").arg(name).arg(runCount).arg(n)));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return;
    QTextStream out(&file);
    writeRows(out, model, QModelIndex(), 0, isExpanded);
}

} // namespace Wrapper
} // namespace QtUIBase
