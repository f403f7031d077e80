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

namespace {

QPoint sectionCenter(QHeaderView* header, int logical)
{
    return QPoint(header->sectionViewportPosition(logical) + header->sectionSize(logical) / 2, header->height() / 2);
}

} // namespace

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

    // Visual order of the sections, the sort indicator, the current index
    // and the selected cells, as one comparable line.
    QString state() const
    {
        QStringList order;
        for (int v = 0; v < m_header->count(); ++v)
            order << QString::number(m_header->logicalIndex(v));
        QStringList cells;
        for (const QModelIndex& index : m_selection->selectedIndexes())
            cells << QStringLiteral("%1,%2").arg(index.row()).arg(index.column());
        cells.sort();
        const QModelIndex current = m_selection->currentIndex();
        return QStringLiteral("order %1 sort %2/%3 current %4,%5 selected %6")
            .arg(order.join(QLatin1Char(' ')))
            .arg(m_header->sortIndicatorSection())
            .arg(int(m_header->sortIndicatorOrder()))
            .arg(current.row())
            .arg(current.column())
            .arg(cells.join(QLatin1Char(' ')));
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
        m_log.reset();
        m_fx.reset();
        QCOMPARE(AQScripts::isRecordingDisabled(), false);
    }

    void userOperationsRecord_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("sortListened");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("signalLog");
        QTest::newRow("click, sorting not listened")
            << "click 3" << false
            << QStringList{"header sectionPressed 3", "header sortIndicatorChanged 3 0", "header sectionClicked 3"}
            << QStringList{"header:ASectionPressed(3)", "header:ASectionClicked(3)"};
        // A listened sort writes the click's indicator once more, before the click.
        QTest::newRow("click, sorting listened")
            << "click 4" << true
            << QStringList{"header sectionPressed 4", "header sortIndicatorChanged 4 1",
                           "header sortIndicatorChanged 4 1", "header sectionClicked 4"}
            << QStringList{"header:ASectionPressed(4)", "header:ASortIndicatorChanged(4,DescendingOrder)",
                           "header:ASectionClicked(4)", "header:ASortIndicatorChanged(4,DescendingOrder)"};
        QTest::newRow("double click") << "double 1" << false << QStringList{"header sectionDoubleClicked 1"}
                                      << QStringList{"header:ASectionDoubleClicked(1)"};
        QTest::newRow("context menu") << "menu 2" << false << QStringList{"header customContextMenuRequested 7 5"}
                                      << QStringList{"header:ACustomContextMenuRequested(7;5)"};
        QTest::newRow("section moved") << "move 1" << false << QStringList{"header sectionMoved 1 1 3"}
                                       << QStringList{"header:ASectionMoved(1,1,3)"};
        QTest::newRow("cell clicked: selection then current")
            << "cell 2" << false
            << QStringList{"selection currentChanged current 0 1 previous 2 2",
                           "selection currentRowChanged current 0 1 previous 2 2",
                           "selection currentColumnChanged current 0 1 previous 2 2",
                           "selection selectionChanged selected 0 1 deselected 2 2"}
            << QStringList{"selection:ACurrentChanged(,)", "selection:ACurrentRowChanged(,)",
                           "selection:ACurrentColumnChanged(,)", "selection:ASelectionChanged(,)"};
    }

    void userOperationsRecord()
    {
        QFETCH(QString, operation);
        QFETCH(bool, sortListened);
        QFETCH(QStringList, records);
        QFETCH(QStringList, signalLog);
        m_view->setCurrentIndex(m_model->index(2, 2));
        if (sortListened)
            connect(m_header, &AQHeaderView::ASortIndicatorChanged, this, [] {});
        QCOMPARE(m_header->isSortListened(), sortListened);
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
        const int section = operation.section(' ', 1).toInt();
        const QString verb = operation.section(' ', 0, 0);
        m_fx->startRecording();
        if (verb == "click") {
            QTest::mouseClick(m_header->viewport(), Qt::LeftButton, {}, sectionCenter(m_header, section));
        } else if (verb == "double") {
            QTest::mouseDClick(m_header->viewport(), Qt::LeftButton, {}, sectionCenter(m_header, section));
        } else if (verb == "menu") {
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(7, 5));
            QApplication::sendEvent(m_header->viewport(), &event);
        } else if (verb == "move") {
            m_header->moveSection(section, 3);
        } else {
            QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {},
                              m_view->visualRect(m_model->index(0, 1)).center());
        }
        const QStringList recorded = m_fx->stopRecording();
        QCOMPARE(recorded, records);
        QCOMPARE(m_log->entries(), signalLog);
        QCOMPARE(permissions, QStringList{verb == "cell" ? "off" : "on"});
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
        const QStringList currentSignals{"selection:ACurrentChanged(,)", "selection:ACurrentRowChanged(,)",
                                         "selection:ACurrentColumnChanged(,)"};
        row("selection currentChanged current 3 0 previous 0 0", "order 0 1 2 3 4 sort 4/0 current 3,0 selected 2,2",
            currentSignals);
        row("selection currentColumnChanged current 2 4 previous 9 9",
            "order 0 1 2 3 4 sort 4/0 current 2,4 selected 2,2",
            {"selection:ACurrentChanged(,)", "selection:ACurrentColumnChanged(,)"});
        row("selection currentChanged current 3", untouched, {});
        row("selection selectionChanged selected 0 1 deselected 2 2",
            "order 0 1 2 3 4 sort 4/0 current 2,2 selected 0,1", {"selection:ASelectionChanged(,)",
                                                                 "selection:ASelectionChanged(,)"});
        // Deselections come first, so a cell in both halves ends selected.
        row("selection selectionChanged selected 1 1 2 2 deselected 2 2",
            "order 0 1 2 3 4 sort 4/0 current 2,2 selected 1,1 2,2",
            {"selection:ASelectionChanged(,)", "selection:ASelectionChanged(,)", "selection:ASelectionChanged(,)"});
        row("selection selectionChanged deselected 2 2", "order 0 1 2 3 4 sort 4/0 current 2,2 selected ",
            {"selection:ASelectionChanged(,)"});
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
        QStringList permissions;
        connect(m_header, &AQHeaderView::ASectionClicked, this,
                [&] { permissions << (AQScripts::isRecordingDisabled() ? "off" : "on"); });
        QVERIFY(m_fx->replay({line}));
        QCOMPARE(m_fx->fixedScriptReport(), QString());
        QCOMPARE(state(), after);
        QCOMPARE(m_log->entries(), signalLog);
        QVERIFY(!permissions.contains("on"));
    }

    void unscriptableRecordsNothingAndIsNotFound()
    {
        auto* plainHeader = new AQHeaderView("plainHeader", Qt::Horizontal, m_fx->root(), false);
        auto* plainSelection = new AQItemSelectionModel("plainSelection", m_model, m_fx->root(), false);
        connect(plainHeader, &AQHeaderView::ASortIndicatorChanged, this, [] {});
        QVERIFY(!plainHeader->isSortListened());
        m_view->setHorizontalHeader(plainHeader);
        m_view->setSelectionModel(plainSelection);
        m_fx->startRecording();
        QTest::mouseClick(plainHeader->viewport(), Qt::LeftButton, {}, sectionCenter(plainHeader, 1));
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, {}, m_view->visualRect(m_model->index(1, 1)).center());
        QCOMPARE(m_fx->stopRecording(), QStringList());
        QCOMPARE(AQObjects::find(plainHeader), -1);
        QCOMPARE(AQObjects::find(plainSelection), -1);
        QVERIFY(m_fx->replay({"plainSelection currentChanged current 0 0 previous 1 1"}));
        QVERIFY(m_fx->fixedScriptReport().contains("plainSelection"));
        QCOMPARE(plainSelection->currentIndex(), m_model->index(1, 1));
    }
};

QTEST_MAIN(tst_HeaderSelection)
#include "tst_headerselection.moc"
