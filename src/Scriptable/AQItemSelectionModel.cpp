#include "Scriptable/AQItemSelectionModel.h"

#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

namespace {

QStringList currentArguments(const QModelIndex& current, const QModelIndex& previous)
{
    return {QStringLiteral("current"),  decimal(current.row()),  decimal(current.column()),
            QStringLiteral("previous"), decimal(previous.row()), decimal(previous.column())};
}

void appendIndexes(QStringList& args, const QString& word, const QItemSelection& selection)
{
    const QModelIndexList indexes = selection.indexes();
    if (indexes.isEmpty())
        return;
    args << word;
    for (const QModelIndex& index : indexes)
        args << decimal(index.row()) << decimal(index.column());
}

} // namespace

AQItemSelectionModel::AQItemSelectionModel(const QString& name, QAbstractItemModel* model, QObject* parent,
                                           bool scriptable)
    : QItemSelectionModel(model, parent)
    , m_scriptable(scriptable)
{
    if (!registerIfScriptable(this, name, scriptable))
        return;
    connect(this, &QItemSelectionModel::currentChanged, this, &AQItemSelectionModel::handleCurrentChanged);
    connect(this, &QItemSelectionModel::currentColumnChanged, this, &AQItemSelectionModel::handleCurrentColumnChanged);
    connect(this, &QItemSelectionModel::currentRowChanged, this, &AQItemSelectionModel::handleCurrentRowChanged);
    connect(this, &QItemSelectionModel::selectionChanged, this, &AQItemSelectionModel::handleSelectionChanged);
}

void AQItemSelectionModel::handleCurrentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    recordThenEmit(this, QStringLiteral("currentChanged"), currentArguments(current, previous),
                   [&] { Q_EMIT ACurrentChanged(current, previous); });
}

void AQItemSelectionModel::handleCurrentRowChanged(const QModelIndex& current, const QModelIndex& previous)
{
    recordThenEmit(this, QStringLiteral("currentRowChanged"), currentArguments(current, previous),
                   [&] { Q_EMIT ACurrentRowChanged(current, previous); });
}

void AQItemSelectionModel::handleCurrentColumnChanged(const QModelIndex& current, const QModelIndex& previous)
{
    recordThenEmit(this, QStringLiteral("currentColumnChanged"), currentArguments(current, previous),
                   [&] { Q_EMIT ACurrentColumnChanged(current, previous); });
}

void AQItemSelectionModel::handleSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QStringList args;
    appendIndexes(args, QStringLiteral("selected"), selected);
    appendIndexes(args, QStringLiteral("deselected"), deselected);
    recordThenEmit(this, QStringLiteral("selectionChanged"), args,
                   [&] { Q_EMIT ASelectionChanged(selected, deselected); });
}

void AQItemSelectionModel::applyPairs(const QStringList& args, int begin, int end,
                                      QItemSelectionModel::SelectionFlags command)
{
    for (int i = begin; i + 1 < end; i += 2)
        select(model()->index(args.at(i).toInt(), args.at(i + 1).toInt()), command);
}

void AQItemSelectionModel::scriptReplay(const QString& signal, const QStringList& args)
{
    if (!model())
        return;
    AQRecordingGuard suppressed;
    if (signal == QLatin1String("currentChanged") || signal == QLatin1String("currentRowChanged")
        || signal == QLatin1String("currentColumnChanged")) {
        if (args.size() >= 3)
            setCurrentIndex(model()->index(args.at(1).toInt(), args.at(2).toInt()), QItemSelectionModel::Current);
    } else if (signal == QLatin1String("selectionChanged")) {
        const int selectedAt = args.indexOf(QStringLiteral("selected"));
        const int deselectedAt = args.indexOf(QStringLiteral("deselected"));
        if (deselectedAt >= 0)
            applyPairs(args, deselectedAt + 1, args.size(), QItemSelectionModel::Deselect);
        if (selectedAt >= 0)
            applyPairs(args, selectedAt + 1, deselectedAt >= 0 ? deselectedAt : args.size(),
                       QItemSelectionModel::Select);
    }
}

} // namespace QtUIBase
