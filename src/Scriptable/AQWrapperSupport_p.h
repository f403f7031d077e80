#pragma once

// The pieces every scriptable wrapper shares: registration, the
// record-then-emit step of the handler slots and the fixed argument words.
// Not installed: only the wrappers' own sources use it.

#include "Script/AQObjects.h"
#include "Script/AQRecordingGuard.h"
#include "Script/AQScripts.h"
#include "Scriptable/AQScriptableLineEdit.h"

#include <QCheckBox>
#include <QItemSelectionModel>
#include <QMetaMethod>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <optional>
#include <utility>

class QAbstractItemModel;
class QDialog;
class QModelIndex;
class QWidget;

namespace QtUIBase {
namespace Wrapper {

/// Registers @p object under @p name when @p scriptable; answers @p scriptable
/// so constructors can go on to connect their signals.
inline bool registerIfScriptable(QObject* object, const QString& name, bool scriptable)
{
    if (scriptable)
        AQObjects::add(object, name);
    return scriptable;
}

/// Hands one operation to the engine, which decides whether it is written,
/// then runs @p emitSignal with recording suppressed: whatever the
/// application does in reaction is redone by replaying this one record, so
/// it must not be recorded again.
template <typename Emit>
void recordThenEmit(const QObject* object, const QString& signal, const QStringList& args, Emit&& emitSignal)
{
    AQScripts::recordSignal(object, signal, args);
    withRecordingSuppressed(std::forward<Emit>(emitSignal));
}

/// Text typed into a line edit and not yet committed is recorded before the
/// operation that is about to use it.
inline void flushPendingLineEdit()
{
    if (AQScriptableLineEdit* edit = AQScripts::getLineEditToRecord())
        edit->emitEditingFinished(false);
}

/// A replayed line that names a target the widget no longer has (an item
/// text, a page, an action): the widget leaves its state alone and the line
/// goes to the fixed-script report, like a line whose object is gone, so a
/// tester sees what to re-record.
inline void reportStaleLine(const QObject* object, const QString& signal, const QStringList& args)
{
    const int id = AQObjects::find(object);
    const QString name = AQObjects::getObjectInstanceName(id);
    const QObject* parent = AQObjects::getParentObjectPtr(id);
    const QString parentName = parent ? AQObjects::getObjectInstanceName(AQObjects::find(parent)) : name;
    const QString head = QStringLiteral("QtSignal %1 %2 %3").arg(parentName.isEmpty() ? name : parentName, name, signal);
    AQScripts::addNeedFixedScriptOperation(parentName, name,
                                           AQScripts::buildLines(head, args, &AQScripts::encodeArgument)
                                               .join(QLatin1Char('\n')));
}

/// A recorded fill-in that names a choice @p object no longer offers.
inline void reportStaleFillin(const QObject* object, const QString& value)
{
    AQScripts::addNeedFixedScriptOperation(QString(), object->objectName(), QStringLiteral("QtFillin ") + value);
}

/// Whether an item shows a check box the user can click: Qt gives table
/// and list items the user-checkable flag by default, but only items with
/// a check state draw the box.
inline bool showsUserCheckBox(Qt::ItemFlags flags, const QVariant& checkState)
{
    return flags.testFlag(Qt::ItemIsUserCheckable) && checkState.isValid();
}

/// Reads a decimal argument; @p ok tells whether it was one.
inline int toInt(const QString& text, bool* ok = nullptr)
{
    return text.toInt(ok, 10);
}

/// Section of a header named @p text in a record: the first of @p count
/// sections whose header text equals it, else @p text read as a number,
/// else -1. Table wrappers name rows and columns this way so that a script
/// survives a change of column order.
inline int findSection(int count, const std::function<QString(int)>& headerText, const QString& text)
{
    for (int section = 0; section < count; ++section) {
        if (headerText(section) == text)
            return section;
    }
    bool ok = false;
    const int number = toInt(text, &ok);
    return ok ? number : -1;
}

template <typename Signal>
bool isSignal(const QMetaMethod& method, Signal signal)
{
    return method == QMetaMethod::fromSignal(signal);
}

// Argument words of script lines; replay compares them case-sensitively.
inline QString onOff(bool on) { return on ? QStringLiteral("on") : QStringLiteral("off"); }
inline QString trueFalse(bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); }
/// "on" for a checked button; an unchecked one writes no argument at all.
inline QStringList onOrNothing(bool on) { return on ? QStringList{QStringLiteral("on")} : QStringList(); }
inline QString decimal(int value) { return QString::number(value); }
inline QString shortDouble(double value) { return QString::number(value, 'g', 6); }

/// The decimal integers of a replayed record when it has exactly @p count
/// arguments and each is one; nothing otherwise, and the record is ignored.
inline std::optional<QVector<int>> decimals(const QStringList& args, int count)
{
    if (args.size() != count)
        return std::nullopt;
    QVector<int> values;
    for (const QString& word : args) {
        bool ok = false;
        values.append(toInt(word, &ok));
        if (!ok)
            return std::nullopt;
    }
    return values;
}

/// Replay of the two check-box wrappers: "clicked" sets the box checked
/// for "true" and unchecked for any other word and reports the click;
/// "stateChanged" sets the state only (AStateChanged follows from Qt's own
/// stateChanged); other signals and argument counts are ignored.
template <typename EmitClicked>
void replayCheckBox(QCheckBox* box, const QString& signal, const QStringList& args, EmitClicked&& emitClicked)
{
    if (args.size() != 1)
        return;
    if (signal == QLatin1String("clicked")) {
        const bool checked = args.first() == QLatin1String("true");
        withRecordingSuppressed([&] {
            box->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
            emitClicked(checked);
        });
    } else if (signal == QLatin1String("stateChanged")) {
        const QString& word = args.first();
        Qt::CheckState state = Qt::Checked;
        if (word == QLatin1String("Unchecked"))
            state = Qt::Unchecked;
        else if (word == QLatin1String("PartiallyChecked"))
            state = Qt::PartiallyChecked;
        withRecordingSuppressed([&] { box->setCheckState(state); });
    }
}

/// Replay of "valueChanged" on a spin box: sets a value that @p read
/// converts (it answers false for text that is not a number). Return in a
/// spin box reports its value even when unchanged, and that report was
/// recorded, so an unchanged value is reported through @p report as well.
template <typename Box, typename Read, typename Report>
void replaySpinValue(Box* box, const QString& signal, const QStringList& args, Read&& read, Report&& report)
{
    if (signal != QLatin1String("valueChanged") || args.isEmpty())
        return;
    bool ok = false;
    const auto value = read(args.first(), &ok);
    if (!ok)
        return;
    withRecordingSuppressed([&] {
        const auto before = box->value();
        box->setValue(value);
        if (box->value() == before)
            report(before);
    });
}

/// Points a view's current-cell and selection handlers at the selection
/// model it has now (none when @p record is false), dropping those made to
/// its former one. Views record through their own handlers, not through a
/// scriptable selection model.
template <typename View>
void watchSelectionModel(View* view, QVector<QMetaObject::Connection>& connections, QItemSelectionModel* model,
                         bool record, void (View::*current)(const QModelIndex&), void (View::*selection)())
{
    for (const QMetaObject::Connection& connection : qAsConst(connections))
        QObject::disconnect(connection);
    connections.clear();
    if (!record || !model)
        return;
    connections << QObject::connect(model, &QItemSelectionModel::currentChanged, view, current)
                << QObject::connect(model, &QItemSelectionModel::selectionChanged, view, selection);
}

/// The replay half of a modal dialog's exec(): shows @p dialog
/// application-modal and replays the following script commands through
/// @p next until the dialog finishes (its finished() handler sets
/// @p finished and @p result). When the script runs out first, the dialog
/// runs interactively (@p runInteractively) while a recording is active;
/// otherwise the journal gets a note and the dialog is hidden, answering 1,
/// so nothing waits for a person. A replayed line may delete the dialog:
/// the answer is then 1.
int execDuringReplay(QDialog* dialog, const bool& finished, const int& result, const std::function<bool()>& next,
                     const std::function<int()>& runInteractively);

/// The folder of the script being recorded or replayed ("" when none).
QString scriptFolder();
/// @p path relative to the script's folder when it lies inside it, so a
/// recorded session replays from another checkout; other paths unchanged.
QString toScriptRelative(const QString& path);
/// A path read from a script: relative ones are taken from the folder of
/// the script being replayed.
QString fromScriptRelative(const QString& path);

/// The one place where wrappers tell the user about a failure. During a
/// replay nobody is there to answer a box: the text goes to the journal and
/// the fixed-script report instead.
void showError(QWidget* parent, const QString& text);

/// Item path of @p index: the column-0 display texts from the top level
/// down to its row, joined by "|", so a script survives a re-sort.
QString itemPath(const QModelIndex& index);
/// The row named by an item path (column 0), or an invalid index: at each
/// level the first child whose text equals the part.
QModelIndex findItemPath(const QAbstractItemModel* model, const QString& path);
/// Writes the items of @p model as indented text lines into "DumpRecord"
/// (while recording) or "DumpReplay" (while replaying) beside the script,
/// named "<name>_<record or replay count>_<n>.txt" with n counting the
/// dumps of @p name in this run; @p isExpanded marks expanded rows. Does
/// nothing outside a recording or replay.
void dumpItems(const QString& name, const QAbstractItemModel* model,
               const std::function<bool(const QModelIndex&)>& isExpanded);

} // namespace Wrapper
} // namespace QtUIBase
