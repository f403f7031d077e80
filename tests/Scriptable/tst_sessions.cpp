#include "ASignalLog.h"
#include "WrapperFixture.h"

#include <Script/AQScripts.h>
#include <Scriptable/AQTableView.h>
#include <Scriptable/AQTableWidget.h>

#include <QStandardItemModel>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

using namespace QtUIBase;

namespace {

/// One of each wrapper of a family on the fixture's root, built alike for
/// the recording and for the replay.
struct Scene
{
    Scene(QWidget* root, const QString& family);

    QWidget* root;
    AQTableWidget* table = nullptr;
    AQTableView* grid = nullptr;
};

Scene::Scene(QWidget* r, const QString& family)
    : root(r)
{
    auto* layout = new QVBoxLayout(root);
    if (family == "tables") {
        table = new AQTableWidget("table", root, true);
        table->setRowCount(3);
        table->setColumnCount(3);
        table->setHorizontalHeaderLabels({"Name", "Value", "Unit"});
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column)
                table->setItem(row, column, new QTableWidgetItem(QString("r%1c%2").arg(row).arg(column)));
            table->item(row, 2)->setFlags(table->item(row, 2)->flags() | Qt::ItemIsUserCheckable);
            table->item(row, 2)->setCheckState(Qt::Unchecked);
        }
        // The application keeps the check boxes of the last column as the
        // clicks report them (replay does not set them itself).
        QObject::connect(table, &AQTableWidget::ACellClicked, root, [t = table](int row, int column, int state) {
            if (column == 2)
                t->item(row, column)->setCheckState(Qt::CheckState(state));
        });
        grid = new AQTableView("grid", root, true);
        auto* model = new QStandardItemModel(4, 3, grid);
        model->setHorizontalHeaderLabels({"Port", "Impedance", "Phase"});
        for (int row = 0; row < 4; ++row) {
            for (int column = 0; column < 3; ++column)
                model->setItem(row, column, new QStandardItem(QString("p%1-%2").arg(row).arg(column)));
        }
        grid->setModel(model);
        QObject::connect(grid, &AQTableView::AClicked, root, [] {});
        layout->addWidget(table);
        layout->addWidget(grid);
    }
}

QString cells(const QModelIndexList& indexes)
{
    QStringList texts;
    for (const QModelIndex& index : indexes)
        texts << index.data().toString();
    texts.sort();
    return texts.join(',');
}

QString viewState(const QAbstractItemView* view)
{
    return QString("current=%1 selected=%2").arg(view->currentIndex().data().toString(),
                                                 cells(view->selectionModel()->selectedIndexes()));
}

void clickCell(QAbstractItemView* view, int row, int column, Qt::KeyboardModifiers modifiers = {})
{
    const QModelIndex index = view->model()->index(row, column);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, view->visualRect(index).center());
}

// Press, release, double click and release, as a mouse sends them.
void doubleClick(QWidget* widget, const QPoint& pos)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, pos);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, pos);
}

void doubleClickCell(QAbstractItemView* view, int row, int column)
{
    doubleClick(view->viewport(), view->visualRect(view->model()->index(row, column)).center());
}

void typeIntoEditor(const QString& text)
{
    QWidget* editor = QApplication::focusWidget();
    QVERIFY(editor);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The delegate commits on the next turn of the event loop.
    QTRY_VERIFY(QApplication::focusWidget() != editor);
}

using Session = std::function<void(Scene&)>;
using State = std::function<QString(Scene&)>;

} // namespace

Q_DECLARE_METATYPE(Session)
Q_DECLARE_METATYPE(State)

/// Each widget family driven as a user drives it, recorded, replayed on a
/// fresh window and compared; and replay of hand-written, odd and stale lines.
class tst_Sessions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QCOMPARE(AQScripts::isRecordingDisabled(), false); }

    void recordThenReplay_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<Session>("session");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<State>("state");
        QTest::addColumn<QString>("expectedState");

        const State tableState = [](Scene& s) {
            QStringList checked;
            for (int row = 0; row < 3; ++row)
                checked << QString::number(s.table->item(row, 2)->checkState());
            return viewState(s.table) + " checks=" + checked.join(',') + " r1c1=" + s.table->item(1, 1)->text();
        };
        QTest::newRow("table widget: click, control-click, edit")
            << "tables"
            << Session([](Scene& s) {
                   clickCell(s.table, 1, 1);
                   clickCell(s.table, 2, 0, Qt::ControlModifier);
                   doubleClickCell(s.table, 1, 1);
                   typeIntoEditor("42");
               })
            << QStringList{"table itemSelectionChanged 1 Value",
                           "table cellClicked 1 Value 1 1 0",
                           "table itemSelectionChanged 1 Value 2 Name",
                           "table cellClicked 2 Name 2 0 0",
                           "table itemSelectionChanged 1 Value",
                           "table cellClicked 1 Value 1 1 0",
                           "table itemDoubleClicked 1 Value",
                           "table itemChanged 1 Value 42",
                           "table cellChanged 1 Value 1 1 0"}
            << tableState << "current=42 selected=42 checks=0,0,0 r1c1=42";
        QTest::newRow("table widget: check box, every row")
            << "tables"
            << Session([](Scene& s) {
                   s.table->setSelectionBehavior(QAbstractItemView::SelectRows);
                   const QRect cell = s.table->visualItemRect(s.table->item(0, 2));
                   QTest::mouseClick(s.table->viewport(), Qt::LeftButton, {}, cell.topLeft() + QPoint(10, cell.height() / 2));
                   QTest::keyClick(s.table, Qt::Key_A, Qt::ControlModifier);
               })
            << QStringList{"table itemChanged 0 Unit r0c2",
                           "table cellChanged 0 Unit 0 2 2",
                           "table cellClicked 0 Unit 0 2 2",
                           "table selectAll"}
            // A press on the check box leaves the current cell alone; replay
            // makes the clicked cell current.
            << State([=](Scene& s) { return tableState(s).section(' ', 1); })
            << "selected=r0c0,r0c1,r0c2,r1c0,r1c1,r1c2,r2c0,r2c1,r2c2 checks=2,0,0 r1c1=r1c1";
        QTest::newRow("table view: click, shift-down, control-click")
            << "tables"
            << Session([](Scene& s) {
                   clickCell(s.grid, 1, 0);
                   QTest::keyClick(s.grid, Qt::Key_Down, Qt::ShiftModifier);
                   clickCell(s.grid, 3, 2, Qt::ControlModifier);
               })
            << QStringList{"grid currentChanged 2 Port",
                           "grid selectionChanged 2 Port 2 Port",
                           "grid clicked 2 Port",
                           "grid currentChanged 3 Port",
                           "grid selectionChanged 2 Port 3 Port",
                           "grid currentChanged 4 Phase",
                           "grid selectionChanged 2 Port 3 Port 4 Phase 4 Phase",
                           "grid clicked 4 Phase"}
            << State([](Scene& s) { return viewState(s.grid); }) << "current=p3-2 selected=p1-0,p2-0,p3-2";
    }

    void recordThenReplay()
    {
        QFETCH(QString, family);
        QFETCH(Session, session);
        QFETCH(QStringList, records);
        QFETCH(State, state);
        QFETCH(QString, expectedState);

        QStringList recorded;
        {
            WrapperFixture fx;
            Scene scene(fx.root(), family);
            fx.showActive(QSize(700, 700));
            fx.startRecording();
            session(scene);
            recorded = fx.stopRecording();
            QCOMPARE(recorded, records);
            QCOMPARE(state(scene), expectedState);
        }
        WrapperFixture fx;
        Scene scene(fx.root(), family);
        fx.showActive(QSize(700, 700));
        QVERIFY(fx.replay(recorded));
        QCOMPARE(fx.fixedScriptReport(), QString());
        QCOMPARE(state(scene), expectedState);
    }

    void replayLine_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("signalLog");
        QTest::addColumn<QString>("reported"); // object named in the fixed-script report, or ""

        // The ids' texts are read as numbers: "Value" is column 0.
        QTest::newRow("table cellChanged reads the id") << "tables" << QStringList{"table cellChanged 1 Value 1 1 0"}
                                                        << QStringList{"table:ACellChanged(1,0)"} << "";
        QTest::newRow("table cellClicked") << "tables" << QStringList{"table cellClicked 2 Unit 2 2 2"}
                                           << QStringList{"table:AItemSelectionChanged()", "table:AItemChanged(r2c2)",
                                                         "table:ACellChanged(2,2)", "table:ACellClicked(2,2,2)"}
                                           << "";
        QTest::newRow("table stale id") << "tables" << QStringList{"table itemClicked 7 Value"} << QStringList{}
                                        << "table";
        QTest::newRow("table named row") << "tables" << QStringList{"table itemDoubleClicked A Value"}
                                         << QStringList{} << "table";
        QTest::newRow("table too few") << "tables" << QStringList{"table cellClicked 1 Value 1"} << QStringList{}
                                       << "";
        QTest::newRow("table context") << "tables"
                                       << QStringList{"table customContextMenuRequest 0 Unit",
                                                      "table contextMenuRequested 5 6"}
                                       << QStringList{"table:AItemSelectionChanged()",
                                                      "table:ACustomContextMenuRequested(r0c2)",
                                                      "table:AContextMenuRequested(5;6)"}
                                       << "";
        QTest::newRow("table selection, one stale")
            << "tables" << QStringList{"table itemSelectionChanged 0 Name 9 Name 2 Unit"}
            << QStringList{"table:AItemSelectionChanged()"} << "table";
        QTest::newRow("view stale range") << "tables" << QStringList{"grid selectionChanged 1 Port 9 Phase"}
                                          << QStringList{} << "grid";
        QTest::newRow("view select all") << "tables" << QStringList{"grid selectAll"}
                                         << QStringList{"grid:ASelectionChanged()"} << "";
        QTest::newRow("view current by header") << "tables" << QStringList{"grid currentChanged 3 Phase", "grid currentChanged"}
                                                << QStringList{"grid:ACurrentChanged(p2-2)", "grid:ACurrentChanged(invalid)"}
                                                << "";
        QTest::newRow("view wrong count") << "tables" << QStringList{"grid clicked 1", "grid selectionChanged 1 Port"}
                                          << QStringList{} << "";
    }

    void replayLine()
    {
        QFETCH(QString, family);
        QFETCH(QStringList, lines);
        QFETCH(QStringList, signalLog);
        QFETCH(QString, reported);
        WrapperFixture fx;
        Scene scene(fx.root(), family);
        fx.showActive(QSize(700, 700));
        ASignalLog log;
        log.watchTree(fx.root());
        QVERIFY(fx.replay(lines));
        QCOMPARE(log.entries(), signalLog);
        const QString report = fx.fixedScriptReport();
        QCOMPARE(report.contains("Please only check " + reported + "\n"), !reported.isEmpty());
    }
};

QTEST_MAIN(tst_Sessions)
#include "tst_sessions.moc"
