#include "ASignalLog.h"
#include "ModalCatcher.h"
#include "WrapperFixture.h"

#include <Script/AQScripts.h>
#include <Scriptable/AQContainers.h>
#include <Scriptable/AQItemViews.h>
#include <Scriptable/AQPushButton.h>

#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

using namespace QtUIBase;

namespace {

/// The wrappers of one family on the fixture's root, with the reactions an
/// application would wire to their A signals, built alike for the recording
/// and for the replay. What the reactions do is logged in @c events.
struct Scene
{
    Scene(WrapperFixture& fx, const QString& family);
    /// The widgets go first: their last signals still reach a live scene.
    ~Scene() { qDeleteAll(root->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)); }

    QWidget* root;
    QStringList events;
    AQTableWidget* table = nullptr;
    AQTableView* grid = nullptr;
    AQTabWidget* tabs = nullptr;
    AQTabBar* bar = nullptr;
    AQToolBox* toolbox = nullptr;
    AQGroupBox* group = nullptr;
    AQStackedWidget* stack = nullptr;
    AQScrollArea* scroll = nullptr;
    AQDockWidget* dock = nullptr;
    AQMenuBar* menuBar = nullptr;
    AQMenu* fileMenu = nullptr;
    AQListWidget* parts = nullptr;
    AQListView* listView = nullptr;
    AQListWidget* listWidget = nullptr;
    AQTreeWidget* treeWidget = nullptr;
    AQTreeView* treeView = nullptr;
    AQDisplayFile* viewer = nullptr;
    QPushButton* plainButton = nullptr;

private:
    void buildTables(QVBoxLayout* layout);
    void buildContainers(QVBoxLayout* layout);
    void buildMenus(QVBoxLayout* layout);
    void buildWizard(QVBoxLayout* layout);
    void buildLists(QVBoxLayout* layout);
    void buildTrees(QVBoxLayout* layout);
    void buildFiles(QVBoxLayout* layout);
};

void writeFile(const QString& path, const QString& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

QStandardItemModel* rows(QObject* parent, int count, int columns, const QString& pattern)
{
    auto* model = new QStandardItemModel(count, columns, parent);
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < columns; ++column)
            model->setItem(row, column, new QStandardItem(pattern.arg(row).arg(column)));
    }
    return model;
}

Scene::Scene(WrapperFixture& fx, const QString& family)
    : root(fx.root())
{
    // The log a files session opens lies beside the script, in every checkout.
    writeFile(fx.sandbox().path("solver.log"), "start\nmesh 120 cells\nmesh refined\ndone\n");
    auto* layout = new QVBoxLayout(root);
    const QMap<QString, void (Scene::*)(QVBoxLayout*)> builders{
        {"tables", &Scene::buildTables}, {"containers", &Scene::buildContainers}, {"menus", &Scene::buildMenus},
        {"wizard", &Scene::buildWizard}, {"lists", &Scene::buildLists},           {"trees", &Scene::buildTrees},
        {"files", &Scene::buildFiles}};
    (this->*builders.value(family))(layout);
}

void Scene::buildTables(QVBoxLayout* layout)
{
    table = new AQTableWidget("table", root, true);
    table->setRowCount(3);
    table->setColumnCount(3);
    table->setHorizontalHeaderLabels({"Name", "Value", "Unit"});
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            table->setItem(row, column, new QTableWidgetItem(QString("r%1c%2").arg(row).arg(column)));
        table->item(row, 2)->setCheckState(Qt::Unchecked);
    }
    // The application keeps the check boxes as the clicks report them
    // (replay does not set them itself).
    QObject::connect(table, &AQTableWidget::ACellClicked, root, [t = table](int row, int column, int state) {
        if (column == 2)
            t->item(row, column)->setCheckState(Qt::CheckState(state));
    });
    grid = new AQTableView("grid", root, true);
    auto* model = rows(grid, 4, 3, "p%1-%2");
    model->setHorizontalHeaderLabels({"Port", "Impedance", "Phase"});
    grid->setModel(model);
    QObject::connect(grid, &AQTableView::AClicked, root, [] {});
    layout->addWidget(table);
    layout->addWidget(grid);
}

void Scene::buildContainers(QVBoxLayout* layout)
{
    tabs = new AQTabWidget("tabs", root, true);
    tabs->setContextMenuPolicy(Qt::CustomContextMenu);
    for (const char* page : {"Mesh", "Ports", "Solver"})
        tabs->addTab(new QWidget, page);
    bar = new AQTabBar("bar", root, true);
    for (const char* tab : {"A", "B", "C"})
        bar->addTab(tab);
    toolbox = new AQToolBox(root);
    toolbox->setObjectName("toolbox");
    for (const char* page : {"Geometry", "Materials", "Boundaries", "Materials"})
        toolbox->addItem(new QWidget, page);
    QObject::connect(toolbox, &QToolBox::currentChanged, root, [this](int i) { events << QString("toolbox %1").arg(i); });
    group = new AQGroupBox("group", "Adaptive", root, true);
    group->setCheckable(true);
    stack = new AQStackedWidget("stack", root, true);
    for (int page = 0; page < 3; ++page)
        stack->addWidget(new QWidget);
    plainButton = new QPushButton("Next page", root);
    QObject::connect(plainButton, &QPushButton::clicked, stack,
                     [s = stack] { s->requestCurrentIndex((s->currentIndex() + 1) % s->count()); });
    scroll = new AQScrollArea("scroll", root, true);
    auto* big = new QWidget;
    big->setFixedSize(800, 900);
    scroll->setWidget(big);
    scroll->setFixedHeight(120);
    dock = new AQDockWidget("dock", root, {}, true);
    dock->setWidget(new QWidget);
    QObject::connect(dock, &QDockWidget::visibilityChanged, root,
                     [this](bool visible) { events << (visible ? "dock shown" : "dock hidden"); });
    for (QWidget* w : std::initializer_list<QWidget*>{tabs, bar, toolbox, group, stack, plainButton, scroll, dock})
        layout->addWidget(w);
}

void Scene::buildMenus(QVBoxLayout* layout)
{
    menuBar = new AQMenuBar("menuBar", root, true);
    fileMenu = new AQMenu("fileMenu", "File", root, true);
    fileMenu->addAction("openAction", "Open");
    fileMenu->addAction("saveAction", "Save");
    menuBar->addAQMenu(fileMenu);
    QObject::connect(fileMenu, &AQMenu::ATriggered, root,
                     [this](QAction* a) { events << "menu " + (a ? a->text() : QString("null")); });

    // A context menu on a list: its choice renames the item.
    parts = new AQListWidget("parts", root, true);
    parts->addItems({"Patch", "Substrate"});
    parts->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* partMenu = new AQMenu("partMenu", root, true);
    partMenu->addAction("Rename");
    partMenu->addMenu("Material")->addAction("Copper");
    QObject::connect(parts, &AQListWidget::ACustomContextMenuRequested, root,
                     [this, partMenu](QListWidgetItem* item) {
                         QAction* chosen = partMenu->exec(parts->visualItemRect(item).center());
                         if (chosen)
                             item->setText(item->text() + " (" + chosen->text() + ")");
                     });

    // Six nested menus: the choice is looked for five deep.
    auto* deepButton = new AQPushButton("deepButton", "Deep", root, true);
    auto* deep = new AQMenu("deep", root, true);
    QMenu* level = deep;
    for (int depth = 1; depth <= 6; ++depth) {
        QAction* action = level->addAction(QString("Deep%1").arg(depth));
        action->setProperty("depth", depth);
        QObject::connect(action, &QAction::triggered, root, [this, depth] { events << QString("ran %1").arg(depth); });
        if (depth < 6)
            level = level->addMenu(QString("Level%1").arg(depth + 1));
    }
    QObject::connect(deepButton, &AQPushButton::AClicked, root, [this, deep] {
        QAction* chosen = deep->exec();
        events << "chose " + (chosen ? chosen->text() + (chosen->property("depth").isValid() ? "" : " (new)") : "nothing");
    });
    layout->setMenuBar(menuBar);
    for (QWidget* w : std::initializer_list<QWidget*>{parts, deepButton})
        layout->addWidget(w);
}

void Scene::buildWizard(QVBoxLayout* layout)
{
    auto* run = new AQPushButton("runWizard", "Run", root, true);
    QObject::connect(run, &AQPushButton::AClicked, root, [this] {
        QPointer<AQWizard> wizard = new AQWizard("wizard", root);
        for (const char* page : {"p1", "p2", "p3"})
            wizard->addPage(new AQWizardPage(page));
        wizard->setOption(QWizard::HaveCustomButton1);
        QObject::connect(wizard, &AQWizard::AcustomButtonClicked, root,
                         [this](int which) { events << QString("custom %1").arg(which); });
        QObject::connect(wizard, &AQWizard::ACloseWizard, root, [this] { events << "close"; });
        QObject::connect(wizard, &AQWizard::AcurrentIdChanged, root, [this](int id) { events << QString("page %1").arg(id); });
        const int result = wizard->exec();
        events << QString("result %1").arg(result);
        delete wizard.data();
    });
    layout->addWidget(run);
}

void Scene::buildLists(QVBoxLayout* layout)
{
    listView = new AQListView("listView", root, true);
    auto* model = rows(listView, 0, 1, "");
    for (const char* text : {"Alpha", "Beta", "Gamma", "Delta"})
        model->appendRow(new QStandardItem(text));
    model->item(3)->setCheckable(true);
    model->item(3)->setCheckState(Qt::Unchecked);
    listView->setModel(model);
    listView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QObject::connect(listView, &AQListView::AClicked, root, [] {});
    QObject::connect(listView, &AQListView::ADataChanged, root, [this](const QModelIndex& index) {
        events << QString("data %1 %2").arg(index.data().toString()).arg(index.data(Qt::CheckStateRole).toInt());
    });
    listWidget = new AQListWidget("listWidget", root, true);
    listWidget->addItems({"Red", "Green", "Blue", "Green"});
    for (int row = 0; row < 4; ++row)
        listWidget->item(row)->setFlags(listWidget->item(row)->flags() | Qt::ItemIsEditable);
    listWidget->item(1)->setCheckState(Qt::Unchecked);
    QObject::connect(listWidget, &AQListWidget::AItemClicked, root, [] {});
    QObject::connect(listWidget, &AQListWidget::AItemChanged, root, [this](QListWidgetItem* item) {
        events << QString("item %1 %2").arg(item->text()).arg(item->checkState());
    });
    layout->addWidget(listView);
    layout->addWidget(listWidget);
}

void Scene::buildTrees(QVBoxLayout* layout)
{
    treeWidget = new AQTreeWidget("treeWidget", root, true);
    treeWidget->setHeaderLabels({"Item", "Value"});
    for (const auto& branch : {QStringList{"Geometry", "Box", "Sphere"}, QStringList{"Ports", "Port 1", "Port 2"}}) {
        auto* top = new QTreeWidgetItem(treeWidget, {branch.first(), "-"});
        for (int i = 1; i < branch.size(); ++i)
            new QTreeWidgetItem(top, {branch.at(i), QString::number(i)});
    }
    treeWidget->topLevelItem(1)->child(0)->setCheckState(0, Qt::Unchecked);
    QObject::connect(treeWidget, &AQTreeWidget::AItemClicked, root, [] {});
    treeView = new AQTreeView("treeView", root, true);
    auto* model = new QStandardItemModel(treeView);
    for (const auto& branch : {QStringList{"Mesh", "Coarse", "Fine"}, QStringList{"Solver", "Time domain"}}) {
        auto* top = new QStandardItem(branch.first());
        for (int i = 1; i < branch.size(); ++i)
            top->appendRow(new QStandardItem(branch.at(i)));
        model->appendRow(top);
    }
    treeView->setModel(model);
    layout->addWidget(treeWidget);
    layout->addWidget(treeView);
}

void Scene::buildFiles(QVBoxLayout* layout)
{
    viewer = new AQDisplayFile("viewer", root);
    viewer->show();
    auto* open = new AQPushButton("openButton", "Open", root, true);
    QObject::connect(open, &AQPushButton::AClicked, root, [this] {
        const QString file = AQFileDialog::getOpenFileName(root, "Open log", QDir::tempPath());
        events << "chose " + QFileInfo(file).fileName();
        if (!file.isEmpty())
            viewer->openFile(file);
    });
    auto* create = new AQPushButton("newButton", "New", root, true);
    QObject::connect(create, &AQPushButton::AClicked, root, [this] {
        AQFileNewDialog dialog("newLog", root, "New log", QDir::tempPath(), QString(), "log");
        const bool accepted = dialog.exec() == QDialog::Accepted;
        events << "new " + (accepted ? QFileInfo(dialog.selectedFiles().value(0)).fileName() : QString("none"));
    });
    layout->addWidget(open);
    layout->addWidget(create);
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

/// Every row of a tree: text, "+" when expanded, check state when it has one.
QString treeState(const QTreeView* view, const QModelIndex& parent = QModelIndex())
{
    QStringList texts;
    const QAbstractItemModel* model = view->model();
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        const QVariant check = index.data(Qt::CheckStateRole);
        texts << index.data().toString() + (view->isExpanded(index) ? "+" : "")
                + (check.isValid() ? QString("[%1]").arg(check.toInt()) : "");
        if (model->hasChildren(index))
            texts << "(" + treeState(view, index) + ")";
    }
    return texts.join(' ');
}

QString listTexts(const QAbstractItemModel* model)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        const QVariant check = index.data(Qt::CheckStateRole);
        texts << index.data().toString() + (check.isValid() ? QString("[%1]").arg(check.toInt()) : "");
    }
    return texts.join(',');
}

void clickAt(QWidget* widget, const QPoint& pos, Qt::KeyboardModifiers modifiers = {})
{
    QTest::mouseClick(widget, Qt::LeftButton, modifiers, pos);
}

void clickCell(QAbstractItemView* view, int row, int column, Qt::KeyboardModifiers modifiers = {})
{
    clickAt(view->viewport(), view->visualRect(view->model()->index(row, column)).center(), modifiers);
}

// Press, release, double click and release, as a mouse sends them.
void doubleClickCell(QAbstractItemView* view, int row, int column)
{
    const QPoint pos = view->visualRect(view->model()->index(row, column)).center();
    clickAt(view->viewport(), pos);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, pos);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, pos);
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

/// What the window system delivers for a right click (QTest has no helper).
void rightClick(QWidget* widget, const QPoint& pos)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, widget->mapToGlobal(pos));
    QApplication::sendEvent(widget, &event);
}

/// Clicks through the popup menus that open next: each text of @p path in
/// the popup showing then, submenus first, the action last.
void choosePopupLater(const QStringList& path)
{
    auto* timer = new QTimer;
    auto remaining = std::make_shared<QStringList>(path);
    auto polls = std::make_shared<int>(500);
    QObject::connect(timer, &QTimer::timeout, [timer, remaining, polls] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (--*polls < 0 && menu)
            menu->close();
        if (!menu || remaining->isEmpty() || *polls < 0) {
            if (*polls < 0 || remaining->isEmpty())
                timer->deleteLater();
            return;
        }
        const auto actions = menu->actions();
        for (QAction* action : actions) {
            if (action->text() != remaining->first())
                continue;
            QTest::mouseMove(menu, menu->actionGeometry(action).center());
            clickAt(menu, menu->actionGeometry(action).center());
            remaining->removeFirst();
            return;
        }
    });
    timer->start(10);
}

/// The text dumps a tree wrote into @p folder, by file name.
QMap<QString, QString> dumps(const QString& folder)
{
    QMap<QString, QString> texts;
    const QDir dir(folder);
    const QStringList files = dir.entryList({"*.txt"}, QDir::Files);
    for (const QString& file : files)
        texts.insert(file, ScriptSandbox::readAll(dir.filePath(file)));
    return texts;
}

using Session = std::function<void(Scene&, WrapperFixture&)>;
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
            << Session([](Scene& s, WrapperFixture&) {
                   clickCell(s.table, 1, 1);
                   clickCell(s.table, 2, 0, Qt::ControlModifier);
                   doubleClickCell(s.table, 1, 1);
                   typeIntoEditor("42");
               })
            << QStringList{"table itemSelectionChanged 1 Value",
                           "table cellClicked 1 Value 1 1",
                           "table itemSelectionChanged 1 Value 2 Name",
                           "table cellClicked 2 Name 2 0",
                           "table itemSelectionChanged 1 Value",
                           "table cellClicked 1 Value 1 1",
                           "table itemDoubleClicked 1 Value",
                           "table itemChanged 1 Value 42",
                           "table cellChanged 1 Value 1 1"}
            << tableState << "current=42 selected=42 checks=0,0,0 r1c1=42";
        QTest::newRow("table widget: check box, every row")
            << "tables"
            << Session([](Scene& s, WrapperFixture&) {
                   s.table->setSelectionBehavior(QAbstractItemView::SelectRows);
                   const QRect cell = s.table->visualItemRect(s.table->item(0, 2));
                   clickAt(s.table->viewport(), cell.topLeft() + QPoint(10, cell.height() / 2));
                   QTest::keyClick(s.table, Qt::Key_A, Qt::ControlModifier);
               })
            << QStringList{"table itemChanged 0 Unit r0c2", "table cellChanged 0 Unit 0 2 2",
                           "table cellClicked 0 Unit 0 2 2", "table selectAll"}
            // A press on the check box leaves the current cell alone; replay
            // makes the clicked cell current.
            << State([=](Scene& s) { return tableState(s).section(' ', 1); })
            << "selected=r0c0,r0c1,r0c2,r1c0,r1c1,r1c2,r2c0,r2c1,r2c2 checks=2,0,0 r1c1=r1c1";
        QTest::newRow("table view: click, shift-down, control-click")
            << "tables"
            << Session([](Scene& s, WrapperFixture&) {
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

        QTest::newRow("containers: tab, tab bar, tool box, group, stack, scroll")
            << "containers"
            << Session([](Scene& s, WrapperFixture&) {
                   clickAt(s.tabs->tabBar(), s.tabs->tabBar()->tabRect(2).center());
                   clickAt(s.bar, s.bar->tabRect(1).center());
                   for (QAbstractButton* page : s.toolbox->findChildren<QAbstractButton*>()) {
                       if (page->text() == "Boundaries")
                           clickAt(page, page->rect().center());
                   }
                   clickAt(s.group, QPoint(8, 8));
                   clickAt(s.plainButton, s.plainButton->rect().center());
                   QTest::keyClick(s.scroll->verticalScrollBar(), Qt::Key_PageDown);
                   rightClick(s.tabs, QPoint(0, 0));
               })
            << QStringList{"tabs currentChanged Solver", "bar tabBarClicked 1", "bar currentTabChanged 1",
                           "toolbox currentChanged Boundaries", "group clicked no", "stack setCurrentIndex 1",
                           "scroll valueChanged 0 104"}
            << State([](Scene& s) {
                   return QString("%1 %2 %3 %4 %5 %6")
                       .arg(s.tabs->currentIndex())
                       .arg(s.bar->currentIndex())
                       .arg(s.toolbox->currentIndex())
                       .arg(s.group->isChecked())
                       .arg(s.stack->currentIndex())
                       .arg(s.scroll->verticalScrollBar()->value());
               })
            << "2 1 2 0 1 104";
        QTest::newRow("menus: menu bar, context menu two deep")
            << "menus"
            << Session([](Scene& s, WrapperFixture&) {
                   clickAt(s.menuBar, s.menuBar->actionGeometry(s.fileMenu->menuAction()).center());
                   QTRY_VERIFY(s.fileMenu->isVisible());
                   clickAt(s.fileMenu, s.fileMenu->actionGeometry(s.fileMenu->actions().at(1)).center());
                   choosePopupLater({"Material", "Copper"});
                   rightClick(s.parts->viewport(), s.parts->visualItemRect(s.parts->item(1)).center());
               })
            << QStringList{"fileMenu Triggered 1", "QtSignal fileMenu saveAction triggered",
                           "parts customContextMenuRequest Substrate", "QtFillin Copper",
                           // The menu's reaction is recorded too: context-menu signals are not suppressed.
                           "parts itemChanged 1 \"Substrate (Copper)\"", "parts contextMenuRequested 337 31"}
            << State([](Scene& s) { return s.events.join(',') + " " + listTexts(s.parts->model()); })
            << "menu Save Patch,Substrate (Copper)";
        QTest::newRow("wizard: next, back, next, finish")
            << "wizard"
            << Session([](Scene& s, WrapperFixture&) {
                   ModalCatcher catcher([](QWidget* modal) {
                       auto* wizard = qobject_cast<QWizard*>(modal);
                       for (auto button : {QWizard::NextButton, QWizard::BackButton, QWizard::NextButton,
                                           QWizard::NextButton, QWizard::FinishButton})
                           clickAt(wizard->button(button), wizard->button(button)->rect().center());
                   });
                   auto* run = s.root->findChild<QAbstractButton*>("runWizard");
                   clickAt(run, run->rect().center());
                   QVERIFY(catcher.caught());
               })
            << QStringList{"runWizard clicked", "wizard currentIdChanged 1", "wizard currentIdChanged 0",
                           "wizard currentIdChanged 1", "wizard currentIdChanged 2", "wizard clicked FinishButton"}
            << State([](Scene& s) { return s.events.join(','); })
            << "page 0,page 1,page 0,page 1,page 2,result 1";
        QTest::newRow("lists: view clicks, widget click and edit")
            << "lists"
            << Session([](Scene& s, WrapperFixture&) {
                   clickCell(s.listView, 1, 0);
                   clickCell(s.listView, 3, 0, Qt::ControlModifier);
                   clickCell(s.listWidget, 2, 0);
                   doubleClickCell(s.listWidget, 0, 0);
                   typeIntoEditor("Crimson");
               })
            << QStringList{"listView selectionChanged Beta", "listView clicked Beta",
                           "listView selectionChanged Beta Delta", "listView clicked Delta",
                           "listWidget currentRowChanged 2", "listWidget itemSelectionChanged Blue",
                           "listWidget itemClicked Blue", "listWidget currentRowChanged 0",
                           "listWidget itemSelectionChanged Red", "listWidget itemClicked Red",
                           "listWidget itemChanged 0 Crimson"}
            << State([](Scene& s) {
                   // Replayed list-view lines select; they do not move the current row.
                   return viewState(s.listView).section(' ', 1) + " " + viewState(s.listWidget) + " "
                       + listTexts(s.listWidget->model());
               })
            << "selected=Beta,Delta current=Crimson selected=Crimson Crimson,Green[0],Blue,Green";
        QTest::newRow("trees: expand, check, edit")
            << "trees"
            << Session([](Scene& s, WrapperFixture&) {
                   clickCell(s.treeWidget, 1, 0);
                   QTest::keyClick(s.treeWidget, Qt::Key_Right);
                   QTest::keyClick(s.treeWidget, Qt::Key_Down);
                   QTest::keyClick(s.treeWidget, Qt::Key_Space);
                   clickCell(s.treeView, 0, 0);
                   QTest::keyClick(s.treeView, Qt::Key_Right);
                   QTest::keyClick(s.treeView, Qt::Key_Down);
                   QTest::keyClick(s.treeView, Qt::Key_Down);
                   QTest::keyClick(s.treeView, Qt::Key_F2);
                   typeIntoEditor("Finest");
               })
            << QStringList{"treeWidget currentItemChanged Ports",
                           "treeWidget itemSelectionChanged Ports",
                           "treeWidget itemClicked Ports 0",
                           "treeWidget itemExpanded Ports",
                           "treeWidget itemSelectionChanged \"Ports|Port 1\"",
                           "treeWidget currentItemChanged \"Ports|Port 1\"",
                           "treeWidget itemChanged \"Ports|Port 1\" 0 2 \"Port 1\"",
                           "treeView currentChanged Mesh 0",
                           "treeView selectionChanged Mesh 0",
                           "treeView expanded Mesh",
                           "treeView selectionChanged Mesh|Coarse 0",
                           "treeView currentChanged Mesh|Coarse 0",
                           "treeView selectionChanged Mesh|Fine 0",
                           "treeView currentChanged Mesh|Fine 0",
                           "treeView dataChanged Mesh|Fine 0 Finest"}
            << State([](Scene& s) {
                   return treeState(s.treeWidget) + " / " + treeState(s.treeView) + " / "
                       + viewState(s.treeWidget) + " / " + viewState(s.treeView);
               })
            << "Geometry (Box Sphere) Ports+ (Port 1[2] Port 2) / Mesh+ (Coarse Finest) Solver (Time domain) / "
               "current=Port 1 selected=1,Port 1 / current=Finest selected=Finest";
        QTest::newRow("files: open through the file dialog, find, close")
            << "files"
            << Session([](Scene& s, WrapperFixture& fx) {
                   ModalCatcher catcher([&](QWidget* modal) {
                       auto* name = modal->findChild<QLineEdit*>("fileNameEdit");
                       QTest::keyClicks(name, fx.sandbox().path("solver.log"));
                       QTest::keyClick(name, Qt::Key_Return);
                   });
                   auto* open = s.root->findChild<QAbstractButton*>("openButton");
                   clickAt(open, open->rect().center());
                   QVERIFY(catcher.caught());
                   auto* find = s.viewer->findChild<QLineEdit*>();
                   QTest::keyClicks(find, "mesh");
                   QTest::keyClick(find, Qt::Key_Return);
                   QTest::keyClick(find, Qt::Key_Return);
                   s.viewer->close();
               })
            << QStringList{"openButton clicked", "QtFillin solver.log", "viewer find mesh 0", "viewer find mesh 0",
                           "viewer closed"}
            << State([](Scene& s) {
                   return s.events.join(',') + " " + QFileInfo(s.viewer->fileName()).fileName() + " "
                       + s.viewer->selectedText() + " " + QString::number(s.viewer->isVisible());
               })
            << "chose solver.log solver.log mesh 0";
    }

    void recordThenReplay()
    {
        QFETCH(QString, family);
        QFETCH(Session, session);
        QFETCH(QStringList, records);
        QFETCH(State, state);
        QFETCH(QString, expectedState);

        QStringList recorded;
        QMap<QString, QString> recordDumps;
        {
            WrapperFixture fx;
            Scene scene(fx, family);
            fx.showActive(QSize(700, 700));
            fx.startRecording();
            session(scene, fx);
            recorded = fx.stopRecording();
            QCOMPARE(recorded, records);
            QCOMPARE(state(scene), expectedState);
            recordDumps = dumps(fx.sandbox().path("DumpRecord"));
            // Trees dump their rows after each recorded operation.
            QCOMPARE(recordDumps.keys().join(',').count(".txt"), family == "trees" ? 15 : 0);
        }
        WrapperFixture fx;
        Scene scene(fx, family);
        fx.showActive(QSize(700, 700));
        // Replay answers every question from the script: nothing modal may
        // wait for a person.
        ModalCatcher catcher([](QWidget* modal) { modal->close(); });
        QVERIFY(fx.replay(recorded));
        QVERIFY(!catcher.caught());
        QCOMPARE(fx.fixedScriptReport(), QString());
        QCOMPARE(state(scene), expectedState);
        QCOMPARE(dumps(fx.sandbox().path("DumpReplay")), recordDumps);
    }

    void printToPdfHeadless()
    {
        WrapperFixture fx;
        Scene scene(fx, "files");
        QVERIFY(scene.viewer->openFile(fx.sandbox().path("solver.log")));
        QVERIFY(scene.viewer->printToPdf(fx.sandbox().path("solver.pdf")));
        QVERIFY(ScriptSandbox::readAll(fx.sandbox().path("solver.pdf")).startsWith("%PDF"));
    }

    void replayLine_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("signalLog");
        QTest::addColumn<QString>("reported"); // object named in the fixed-script report, or ""

        // The ids' texts are read as numbers: "Value" is column 0.
        QTest::newRow("table cellChanged reads the id") << "tables" << QStringList{"table cellChanged 1 Value 1 1"}
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
        QTest::newRow("view current by header")
            << "tables" << QStringList{"grid currentChanged 3 Phase", "grid currentChanged"}
            << QStringList{"grid:ACurrentChanged(p2-2)", "grid:ACurrentChanged(invalid)"} << "";
        const auto row = [](const char* family, const QStringList& lines, const QStringList& log,
                            const char* reported = "") {
            QTest::newRow(qPrintable(family + QString(": ") + lines.join(" / "))) << family << lines << log << reported;
        };
        // The tab bar reports a replayed current tab twice (signal, then the change).
        row("containers", {"bar currentTabChanged 1"}, {"bar:ACurrentChanged(1)", "bar:ACurrentChanged(1)"});
        row("containers", {"bar currentTabChanged 7"}, {"bar:ACurrentChanged(7)"}, "bar");
        row("containers", {"bar currentTabChanged x", "bar tabBarDoubleClicked 2 1"}, {});
        row("containers", {"bar tabBarDoubleClicked 2", "bar tabBarClicked 0"},
            {"bar:AtabBarDoubleClicked(2)", "bar:AtabBarClicked(0)"});
        row("containers", {"tabs currentChanged Ports"}, {"tabs:ACurrentChanged(1)", "tabs:ACurrentChanged(1)"});
        row("containers", {"tabs currentChanged Nowhere"}, {}, "tabs");
        row("containers", {"tabs customContextMenuRequested 2"},
            {"tabs:ACurrentChanged(2)", "tabs:ACustomContextMenuRequested(-123456;-123456)"});
        row("containers", {"tabs customContextMenuRequested 5 6"}, {"tabs:ACustomContextMenuRequested(5;6)"});
        // Of two pages with one text the later opens.
        row("containers", {"toolbox currentChanged Materials"}, {"toolbox 3"});
        row("containers", {"toolbox currentChanged Nowhere"}, {}, "toolbox");
        row("containers", {"group clicked yes", "group clicked maybe"},
            {"group:AClicked(true)", "group:AClicked(false)"});
        row("containers", {"stack setCurrentIndex 2"}, {"stack:ASetCurrentIndex(2)"});
        row("containers", {"stack setCurrentIndex 9"}, {}, "stack");
        row("containers", {"scroll valueChanged 0 40", "scroll valueChanged 0"}, {"scroll:AValueChanged(0,40)"});
        row("containers", {"scroll valueChanged 0 99999"}, {"scroll:AValueChanged(0,796)"}, "scroll");
        // Replaying a dock's close closes its parent window.
        row("containers", {"dock closeEvent"}, {"dock hidden"});
        row("menus", {"fileMenu Triggered 7"}, {"fileMenu:ATriggered(null)", "menu null"}, "fileMenu");
        row("menus", {"fileMenu Triggered 0"}, {"fileMenu:ATriggered(Open)", "menu Open"});
        row("menus", {"deepButton clicked", "QtFillin Deep5"}, {"deepButton:AClicked(false)", "ran 5", "chose Deep5"});
        row("menus", {"deepButton clicked", "QtFillin Deep1|more"},
            {"deepButton:AClicked(false)", "ran 1", "chose Deep1"});
        row("menus", {"deepButton clicked", "QtFillin Deep6"}, {"deepButton:AClicked(false)", "chose Deep6 (new)"},
            "deep");
        row("menus", {"deepButton clicked", "QtFillin \"\""}, {"deepButton:AClicked(false)", "chose nothing"});
        row("menus", {"parts customContextMenuRequest Ghost"}, {}, "parts");
        // A replayed custom button always reports number 0.
        row("wizard",
            {"runWizard clicked", "wizard clicked customBtn 3", "wizard currentIdChanged 1",
             "wizard clicked FinishButton"},
            {"runWizard:AClicked(false)", "page 0", "custom 0", "page 1", "result 1"});
        row("wizard", {"runWizard clicked", "wizard currentIdChanged 7"},
            {"runWizard:AClicked(false)", "page 0", "page 1", "result 1"}, "wizard");
        row("wizard", {"runWizard clicked", "wizard currentIdChanged -1"},
            {"runWizard:AClicked(false)", "page 0", "close", "page -1", "result 0"});
        row("wizard", {"runWizard clicked", "wizard closed"},
            {"runWizard:AClicked(false)", "page 0", "page -1", "result 0"});
        row("lists", {"listView selectionChanged Beta Ghost Delta"}, {"listView:ASelectionChanged()"}, "listView");
        // Setting the text of a checkable row also toggles its box.
        row("lists", {"listView dataChanged 3 Omega"},
            {"listView:ADataChanged(Omega)", "listView:ADataChanged(Omega)", "data Omega 0", "data Omega 2"});
        row("lists", {"listView dataChanged 9 x", "listView clicked"}, {}, "listView");
        row("lists", {"listView customContextMenuRequest Gamma", "listView contextMenuRequested 3 4"},
            {"listView:ACustomContextMenuRequested(Gamma)", "listView:AContextMenuRequested(3;4)"});
        row("lists", {"listWidget itemChanged 1 Lime"},
            {"listWidget:AItemChanged(Lime)", "listWidget:AItemChanged(Lime)", "item Lime 0", "item Lime 2"});
        // Of two items with one text the first is taken.
        row("lists", {"listWidget itemClicked Green"},
            {"listWidget:AItemSelectionChanged()", "listWidget:ACurrentRowChanged(1)", "listWidget:AItemClicked(Green)"});
        row("lists", {"listWidget currentRowChanged 9"}, {}, "listWidget");
        row("trees", {"treeWidget itemExpanded Geometry"}, {"treeWidget:AItemExpanded(Geometry)"});
        row("trees", {"treeWidget itemChanged Geometry|Box 1 7"}, {"treeWidget:AItemChanged(Box,1)"});
        row("trees", {"treeWidget itemClicked Nowhere|Box 0"}, {}, "treeWidget");
        row("trees", {"treeView expanded Solver", "treeView checkStateChanged Mesh 0 2"},
            {"treeView:AExpanded(Solver)", "treeView:ACheckStateChanged(Mesh)"});
        row("trees", {"treeView collapsed Mesh|Ghost"}, {}, "treeView");
        row("files", {"viewer open missing.log"}, {}, "viewer");
        row("files", {"viewer find zzz 0"}, {"viewer:AFound(false)"});
        row("files", {"newButton clicked", "QtFillin report.log", "newButton clicked", "QtFillin \"\""},
            {"newButton:AClicked(false)", "newButton:AClicked(false)", "new report.log", "new none"});
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
        Scene scene(fx, family);
        fx.showActive(QSize(700, 700));
        ASignalLog log;
        log.watchTree(fx.root());
        scene.events.clear();
        QVERIFY(fx.replay(lines));
        QCOMPARE(log.entries() + scene.events, signalLog);
        const QString report = fx.fixedScriptReport();
        QCOMPARE(report.contains("Please only check " + reported + "\n"), !reported.isEmpty());
    }
};

QTEST_MAIN(tst_Sessions)
#include "tst_sessions.moc"
