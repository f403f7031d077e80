#include "ASignalLog.h"
#include "WrapperFixture.h"

#include <Script/AQObjects.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQHeaderView.h>
#include <Scriptable/AQItemSelectionModel.h>

#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include <memory>

using namespace QtUIBase;

/// The scriptable header view and selection model on a 4 x 5 table.
class tst_HeaderSelection : public QObject
{
    Q_OBJECT

    std::unique_ptr<WrapperFixture> m_fx;
    std::unique_ptr<ASignalLog> m_log;
    QStandardItemModel* m_model = nullptr;
    QTableView* m_view = nullptr;
    AQHeaderView* m_header = nullptr;
    AQItemSelectionModel* m_selection = nullptr;

    // Visual order, sort indicator, current index and selected cells.
    QString state() const
    {
        QString text = "order";
        for (int v = 0; v < m_header->count(); ++v)
            text += QStringLiteral(" %1").arg(m_header->logicalIndex(v));
        const QModelIndex current = m_selection->currentIndex();
        text += QStringLiteral(" sort %1/%2 current %3,%4 selected").arg(m_header->sortIndicatorSection())
                    .arg(int(m_header->sortIndicatorOrder())).arg(current.row()).arg(current.column());
        QModelIndexList cells = m_selection->selectedIndexes();
        std::sort(cells.begin(), cells.end());
        for (const QModelIndex& index : cells)
            text += QStringLiteral(" %1,%2").arg(index.row()).arg(index.column());
        return text;
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<Qt::SortOrder>(); }

    void init()
    {
        m_fx = std::make_unique<WrapperFixture>();
        m_log = std::make_unique<ASignalLog>();
        m_model = new QStandardItemModel(4, 5, m_fx->root());
        m_view = new QTableView(m_fx->root());
        m_view->setModel(m_model);
        m_header = new AQHeaderView("header", Qt::Horizontal, m_fx->root(), true);
        m_header->setSectionsClickable(true);
        m_header->setSortIndicatorShown(true);
        m_header->setSortIndicator(4, Qt::AscendingOrder);
        m_header->setContextMenuPolicy(Qt::CustomContextMenu);
        m_view->setHorizontalHeader(m_header);
        m_selection = new AQItemSelectionModel("selection", m_model, m_fx->root(), true);
        m_view->setSelectionModel(m_selection);
        m_view->setSelectionMode(QAbstractItemView::SingleSelection);
        m_fx->showActive(QSize(600, 300));
        m_view->resize(600, 300);
    }

    void cleanup()
    {
        m_fx.reset();
        QCOMPARE(AQScripts::isRecordingDisabled(), false);
    }

    void userOperationsRecord_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("sortListened");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("signalLog");
        const auto row = [](const char* name, const char* op, bool listened, const QStringList& records,
                            const QStringList& log) { QTest::newRow(name) << op << listened << records << log; };
        row("click, sorting not listened", "click 3", false,
            {"header sectionPressed 3", "header sortIndicatorChanged 3 0", "header sectionClicked 3"},
            {"header:ASectionPressed(3)", "header:ASectionClicked(3)"});
        // A listened sort writes the click's indicator once more, before the click.
        row("click, sorting listened", "click 4", true,
            {"header sectionPressed 4", "header sortIndicatorChanged 4 1", "header sortIndicatorChanged 4 1",
             "header sectionClicked 4"},
            {"header:ASectionPressed(4)", "header:ASortIndicatorChanged(4,DescendingOrder)", "header:ASectionClicked(4)",
             "header:ASortIndicatorChanged(4,DescendingOrder)"});
        row("double click", "double 1", false, {"header sectionDoubleClicked 1"}, {"header:ASectionDoubleClicked(1)"});
        row("context menu", "menu 2", false, {"header customContextMenuRequested 7 5"},
            {"header:ACustomContextMenuRequested(7;5)"});
        row("section moved", "move 1", false, {"header sectionMoved 1 1 3"}, {"header:ASectionMoved(1,1,3)"});
        // Built with scriptable false: nothing recorded, nothing registered.
        row("unscriptable header and selection", "plain 1", true, {}, {});
        const QString previous = " current 0 1 previous 2 2";
        row("cell clicked: current, then selection", "cell 2", false,
            {"selection currentChanged" + previous, "selection currentRowChanged" + previous,
             "selection currentColumnChanged" + previous, "selection selectionChanged selected 0 1 deselected 2 2"},
            {"selection:ACurrentChanged(,)", "selection:ACurrentRowChanged(,)", "selection:ACurrentColumnChanged(,)",
             "selection:ASelectionChanged(,)"});
    }

    void userOperationsRecord()
    {
        QFETCH(QString, operation);
        QFETCH(bool, sortListened);
        QFETCH(QStringList, records);
        QFETCH(QStringList, signalLog);
        const int section = operation.section(' ', 1).toInt();
        const QString verb = operation.section(' ', 0, 0);
        if (verb == "plain") {
            m_header = new AQHeaderView("plainHeader", Qt::Horizontal, m_fx->root(), false);
            m_selection = new AQItemSelectionModel("plainSelection", m_model, m_fx->root(), false);
            m_view->setHorizontalHeader(m_header);
            m_view->setSelectionModel(m_selection);
        }
        m_view->setCurrentIndex(m_model->index(2, 2));
        if (sortListened)
            connect(m_header, &AQHeaderView::ASortIndicatorChanged, this, [] {});
        QCOMPARE(m_header->isSortListened(), sortListened && verb != "plain");
        // Watching the sort signal would count as listening to it.
        m_log->watch(m_header, sortListened ? QStringList() : QStringList{"ASortIndicatorChanged"});
        m_log->watch(m_selection);
        // What the application does in reaction to the header is recorded
        // too; reactions to the selection model are not.
        QStringList permissions;
        const auto permission = [&] { permissions << (AQScripts::isRecordingDisabled() ? "off" : "on"); };
        connect(m_header, &AQHeaderView::ASectionClicked, this, permission);
        connect(m_header, &AQHeaderView::ASectionDoubleClicked, this, permission);
        connect(m_header, &AQHeaderView::ASectionMoved, this, permission);
        connect(m_header, &AQHeaderView::ACustomContextMenuRequested, this, permission);
        connect(m_selection, &AQItemSelectionModel::ACurrentChanged, this, permission);
        const auto center = [this](int logical) {
            return QPoint(m_header->sectionViewportPosition(logical) + 10, m_header->height() / 2);
        };
        m_fx->startRecording();
        if (verb == "click" || verb == "plain") {
            QTest::mouseClick(m_header->viewport(), Qt::LeftButton, {}, center(section));
        } else if (verb == "double") {
            QTest::mouseDClick(m_header->viewport(), Qt::LeftButton, {}, center(section));
        } else if (verb == "menu") {
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(7, 5));
            QApplication::sendEvent(m_header->viewport(), &event);
        } else if (verb == "move") {
            m_header->moveSection(section, 3);
        }
        if (verb == "cell" || verb == "plain")
            QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, m_view->visualRect(m_model->index(0, 1)).center());
        QCOMPARE(m_fx->stopRecording(), records);
        QCOMPARE(m_log->entries(), signalLog);
        QCOMPARE(permissions, verb == "plain" ? QStringList() : QStringList{verb == "cell" ? "off" : "on"});
        QCOMPARE(AQObjects::find(m_selection) < 0, verb == "plain");
    }

    void replay_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QStringList>("signalLog");
        const QString untouched = "order 0 1 2 3 4 sort 4/0 current 2,2 selected 2,2";
        const auto row = [&](const char* line, const QString& after, const QStringList& log) {
            QTest::newRow(line) << line << after << log;
        };
        // Header replay reports the operation; only a move changes the header.
        row("header sectionClicked 3", untouched, {"header:ASectionClicked(3)"});
        row("header sectionClicked", untouched, {});
        row("header sectionDoubleClicked 2", untouched, {"header:ASectionDoubleClicked(2)"});
        row("header sectionPressed 1 9", untouched, {"header:ASectionPressed(1)"});
        row("header sectionMoved 1 1 3", "order 0 2 3 1 4 sort 4/0 current 2,2 selected 2,2",
            {"header:ASectionMoved(1,1,3)"});
        row("header sectionMoved 1 3", untouched, {});
        row("header sectionMoved 1 1 3 4", untouched, {});
        row("header customContextMenuRequested 5 7", untouched, {"header:ACustomContextMenuRequested(5;7)"});
        row("header customContextMenuRequested 5", untouched, {});
        row("header sortIndicatorChanged 2 1", untouched, {"header:ASortIndicatorChanged(2,DescendingOrder)"});
        row("header sortIndicatorChanged 2", untouched, {});
        row("header SectionClicked 3", untouched, {});
        const QString at = "order 0 1 2 3 4 sort 4/0 current ";
        const QString changed = "selection:ASelectionChanged(,)";
        row("selection currentChanged current 3 0 previous 0 0", at + "3,0 selected 2,2",
            {"selection:ACurrentChanged(,)", "selection:ACurrentRowChanged(,)", "selection:ACurrentColumnChanged(,)"});
        row("selection currentColumnChanged current 2 4 previous 9 9", at + "2,4 selected 2,2",
            {"selection:ACurrentChanged(,)", "selection:ACurrentColumnChanged(,)"});
        row("selection currentChanged current 3", untouched, {});
        row("selection selectionChanged selected 0 1 deselected 2 2", at + "2,2 selected 0,1", {changed, changed});
        // Deselections come first, so a cell in both halves ends selected.
        row("selection selectionChanged selected 1 1 2 2 deselected 2 2", at + "2,2 selected 1,1 2,2",
            {changed, changed, changed});
        row("selection selectionChanged deselected 2 2", at + "2,2 selected", {changed});
        row("selection selectionChanged", untouched, {});
    }

    void replay()
    {
        QFETCH(QString, line);
        QFETCH(QString, after);
        QFETCH(QStringList, signalLog);
        m_view->setSelectionMode(QAbstractItemView::MultiSelection);
        m_selection->setCurrentIndex(m_model->index(2, 2), QItemSelectionModel::ClearAndSelect);
        m_log->watch(m_header);
        m_log->watch(m_selection);
        bool recordingAllowed = false;
        connect(m_header, &AQHeaderView::ASectionClicked, this,
                [&] { recordingAllowed = !AQScripts::isRecordingDisabled(); });
        QVERIFY(m_fx->replay({line}));
        QCOMPARE(m_fx->fixedScriptReport(), QString());
        QCOMPARE(state(), after);
        QCOMPARE(m_log->entries(), signalLog);
        QVERIFY(!recordingAllowed);
    }
};

QTEST_MAIN(tst_HeaderSelection)
#include "tst_headerselection.moc"
