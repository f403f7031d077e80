// Feeds arbitrary bytes to the replay engine as a script file, against a
// small window of registered scriptable objects. Any crash, sanitizer report
// or hang (libFuzzer's -timeout) is a finding.
#include <Script/AQObjects.h>
#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQColorDialog.h>
#include <Scriptable/AQContainers.h>
#include <Scriptable/AQDialog.h>
#include <Scriptable/AQDialogButtonBox.h>
#include <Scriptable/AQItemViews.h>
#include <Scriptable/AQMessageBox.h>
#include <Scriptable/AQScriptableLineEdit.h>
#include <Scriptable/AQValueInputs.h>
#include <Settings/AQSettings.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <cstddef>
#include <cstdint>

using namespace QtUIBase;

namespace {

struct Harness
{
    Harness()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Thousands of error boxes a minute: keep the fuzzer's output readable.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        static int argc = 1;
        static char name[] = "fuzz_replay";
        static char* argv[] = {name, nullptr};
        app = new QApplication(argc, argv);
        AQInitializeNonVelmoraScripting("fuzz", true, false);
        scriptPath = dir.filePath(QStringLiteral("input.scr"));
        AQSettings::setUIAScriptPath(scriptPath);

        window = new QWidget;
        AQObjects::add(window, QStringLiteral("Window"));
        auto* action = new AQAction(QStringLiteral("Action"), QStringLiteral("Action"), window, true);
        action->setCheckable(true);
        QObject::connect(action, &AQAction::ATriggered, [] {});
        auto* plain = new AQAction(QStringLiteral("Plain"), QStringLiteral("Plain"), window, true);
        QObject::connect(plain, &AQAction::ATriggered, [] {});
        auto* edit = new AQScriptableLineEdit(QStringLiteral("Edit"), window, true);
        QObject::connect(edit, &AQScriptableLineEdit::ATextChanged, [](const QString&) {});
        new AQScriptableLineEdit(QStringLiteral("SimulationCommand_button"), window, true);
        auto* dialog = new QDialog(window);
        AQObjects::add(dialog, QStringLiteral("Dialog"));
        new AQScriptableLineEdit(QStringLiteral("Field"), dialog, true);

        // One of each value input and button, listened to as an application
        // would, so the lazily connected paths run too.
        auto* push = new AQPushButton(QStringLiteral("Push"), QStringLiteral("Push"), window, true);
        push->setCheckable(true);
        QObject::connect(push, &AQPushButton::AToggled, [](bool) {});
        QObject::connect(push, &AQPushButton::APressed, [] {});
        QObject::connect(push, &AQPushButton::AReleased, [] {});
        new AQCheckBox(QStringLiteral("Check"), QStringLiteral("Check"), window, true);
        new AQRadioButton(QStringLiteral("Radio"), QStringLiteral("Radio"), window, true);
        auto* tool = new AQToolButton(QStringLiteral("Tool"), window, true);
        tool->setCheckable(true);
        auto* combo = new AQComboBox(QStringLiteral("Combo"), window, true);
        combo->addItems({QStringLiteral("Copper"), QStringLiteral("FR-4"), QStringLiteral("Air gap")});
        combo->setEditable(true);
        new AQSpinBox(window, QStringLiteral("Spin"), true);
        new AQDoubleSpinBox(QStringLiteral("Double"), QString(), window, true);
        auto* slider = new AQSlider(QStringLiteral("Slider"), Qt::Horizontal, window, true);
        QObject::connect(slider, &AQSlider::AValueChanged, [](int) {});
        new AQTextEdit(QStringLiteral("Text"), QString(), window, true);
        auto* label = new AQLabel(QStringLiteral("Label"), QStringLiteral("<a href=x>x</a>"), window, {}, true);
        QObject::connect(label, &AQLabel::ALinkActivated, [](const QString&) {});
        QObject::connect(label, &AQLabel::ACustomContextMenuRequested, [](const QPoint&) {});

        // Buttons whose reactions open modal dialogs that pull their own
        // lines, or ask a question answered by a fill-in.
        auto* openDialog = new AQPushButton(QStringLiteral("OpenDialog"), QStringLiteral("Open"), window, true);
        QObject::connect(openDialog, &AQPushButton::AClicked, window, [this] {
            auto* modal = new AQDialog(QStringLiteral("Modal"), window, {}, true);
            new AQScriptableLineEdit(QStringLiteral("Name"), modal, true);
            auto* box = new AQDialogButtonBox(QStringLiteral("Buttons"), QDialogButtonBox::Ok | QDialogButtonBox::Cancel,
                                              Qt::Horizontal, modal, true);
            QObject::connect(box, &AQDialogButtonBox::AAccepted, modal, &QDialog::accept);
            QObject::connect(box, &AQDialogButtonBox::ARejected, modal, &QDialog::reject);
            modal->exec();
            delete modal;
        });
        auto* pickColour = new AQPushButton(QStringLiteral("PickColour"), QStringLiteral("Colour"), window, true);
        QObject::connect(pickColour, &AQPushButton::AClicked, window, [this] {
            auto* colours = new AQColorDialog(QStringLiteral("Colours"), window, true);
            QPointer<AQColorDialog> guard(colours);
            colours->exec();
            delete guard.data();
        });
        auto* ask = new AQPushButton(QStringLiteral("Ask"), QStringLiteral("Ask"), window, true);
        QObject::connect(ask, &AQPushButton::AClicked, window, [this] {
            AQMessageBox::question(window, QStringLiteral("Question"), QStringLiteral("Overwrite?"),
                                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No, true);
            AQInputDialog::getText(window, QStringLiteral("Name"), QStringLiteral("Name:"), QLineEdit::Normal,
                                   QString(), nullptr, {}, {}, true);
        });

        addFamilies();

        // Error boxes are modal: close each one as soon as it shows, and
        // finish any simulation the script starts.
        closer = new QTimer;
        closer->setInterval(0);
        QObject::connect(closer, &QTimer::timeout, [] {
            if (QWidget* modal = QApplication::activeModalWidget())
                modal->close();
            AQScripts::setSimualationStatus(true);
        });
        closer->start();
    }

    // One of each container, menu, wizard, item view and file dialog, with
    // the listeners and reactions that make their lazily connected and
    // fill-in paths run.
    void addFamilies()
    {
        auto* tabs = new AQTabWidget(QStringLiteral("Tabs"), window, true);
        for (const char* page : {"Mesh", "Ports", "Solver"})
            tabs->addTab(new QWidget, QString::fromLatin1(page));
        auto* bar = new AQTabBar(QStringLiteral("Bar"), window, true);
        bar->addTab(QStringLiteral("A"));
        bar->addTab(QStringLiteral("B"));
        auto* toolbox = new AQToolBox(window);
        toolbox->setObjectName(QStringLiteral("Tools"));
        toolbox->addItem(new QWidget, QStringLiteral("Geometry"));
        toolbox->addItem(new QWidget, QStringLiteral("Materials"));
        auto* group = new AQGroupBox(QStringLiteral("Group"), QStringLiteral("Group"), window, true);
        group->setCheckable(true);
        auto* stack = new AQStackedWidget(QStringLiteral("Stack"), window, true);
        stack->addWidget(new QWidget);
        stack->addWidget(new QWidget);
        auto* scroll = new AQScrollArea(QStringLiteral("Scroll"), window, true);
        auto* big = new QWidget;
        big->resize(600, 600);
        scroll->setWidget(big);
        // A replayed dock close closes the dock's parent: give it its own.
        auto* dockHolder = new QWidget(window);
        AQObjects::add(dockHolder, QStringLiteral("DockHolder"));
        new AQDockWidget(QStringLiteral("Dock"), dockHolder, {}, true);

        auto* menu = new AQMenu(QStringLiteral("Menu"), QStringLiteral("Menu"), window, true);
        menu->addAction(QStringLiteral("MenuOpen"), QStringLiteral("Open"));
        QMenu* level = menu;
        for (int depth = 1; depth <= 6; ++depth)
            level = level->addMenu(QStringLiteral("Level%1").arg(depth));
        level->addAction(QStringLiteral("Deep"));
        QObject::connect(menu, &AQMenu::ATriggered, [](QAction*) {});
        auto* menuBar = new AQMenuBar(QStringLiteral("MenuBar"), window, true);
        menuBar->addAQMenu(menu);
        auto* popup = new AQPushButton(QStringLiteral("Popup"), QStringLiteral("Popup"), window, true);
        QObject::connect(popup, &AQPushButton::AClicked, menu, [menu] { menu->exec(QPoint(10, 10)); });

        auto* runWizard = new AQPushButton(QStringLiteral("RunWizard"), QStringLiteral("Wizard"), window, true);
        QObject::connect(runWizard, &AQPushButton::AClicked, window, [this] {
            QPointer<AQWizard> wizard = new AQWizard(QStringLiteral("Wizard"), window);
            for (const char* page : {"Page1", "Page2", "Page3"})
                wizard->addPage(new AQWizardPage(QString::fromLatin1(page)));
            wizard->exec();
            delete wizard.data();
        });

        auto* table = new AQTableWidget(QStringLiteral("Table"), window, true);
        table->setRowCount(3);
        table->setColumnCount(2);
        table->setHorizontalHeaderLabels({QStringLiteral("Name"), QString()});
        for (int row = 0; row < 3; ++row) {
            table->setItem(row, 0, new QTableWidgetItem(QStringLiteral("r%1").arg(row)));
            table->setItem(row, 1, new QTableWidgetItem(QStringLiteral("v%1").arg(row)));
            table->item(row, 1)->setCheckState(Qt::Checked);
        }
        QObject::connect(table, &AQTableWidget::ACellClicked, [](int, int, int) {});
        QObject::connect(table, &AQTableWidget::AItemClicked, [](QTableWidgetItem*) {});
        QObject::connect(table, &AQTableWidget::ACellDoubleClicked, [](int, int) {});
        auto* model = new QStandardItemModel(3, 2, window);
        for (int row = 0; row < 3; ++row) {
            auto* item = new QStandardItem(QStringLiteral("Item%1").arg(row));
            item->setCheckable(true);
            item->appendRow(new QStandardItem(QStringLiteral("Child%1").arg(row)));
            model->setItem(row, 0, item);
        }
        auto* tableView = new AQTableView(QStringLiteral("TableView"), window, true);
        tableView->setModel(model);
        QObject::connect(tableView, &AQTableView::AClicked, [](const QModelIndex&) {});
        auto* listView = new AQListView(QStringLiteral("ListView"), window, true);
        listView->setModel(model);
        QObject::connect(listView, &AQListView::AClicked, [](const QModelIndex&) {});
        auto* list = new AQListWidget(QStringLiteral("List"), window, true);
        list->addItems({QStringLiteral("Red"), QStringLiteral("Green")});
        list->item(1)->setCheckState(Qt::Unchecked);
        QObject::connect(list, &AQListWidget::AItemClicked, [](QListWidgetItem*) {});
        auto* treeView = new AQTreeView(QStringLiteral("TreeView"), window, true);
        treeView->setModel(model);
        auto* tree = new AQTreeWidget(QStringLiteral("Tree"), window, true);
        auto* top = new QTreeWidgetItem(tree, {QStringLiteral("Ports")});
        new QTreeWidgetItem(top, {QStringLiteral("Port 1")});
        top->child(0)->setCheckState(0, Qt::Unchecked);
        QObject::connect(tree, &AQTreeWidget::AItemClicked, [](QTreeWidgetItem*, int) {});

        // Questions answered by fill-ins: files and folders, then a viewer.
        auto* viewer = new AQDisplayFile(QStringLiteral("Viewer"), window);
        viewer->setAlwaysOnDialog(true);
        auto* pick = new AQPushButton(QStringLiteral("Pick"), QStringLiteral("Pick"), window, true);
        // A replayed close deletes the viewer (it is not modal).
        QObject::connect(pick, &AQPushButton::AClicked, window, [this, viewer = QPointer<AQDisplayFile>(viewer)] {
            const QStringList files = AQFileDialog::getOpenFileNames(window);
            AQFileDialog::getExistingDirectory(window);
            if (viewer && !files.isEmpty())
                viewer->openFile(files.first());
        });
        AQScripts::forceRecordingAllowed(true);
    }

    QApplication* app = nullptr;
    QTemporaryDir dir;
    QString scriptPath;
    QWidget* window = nullptr;
    QTimer* closer = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Harness harness;
    {
        QFile file(harness.scriptPath);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    AQOpenScriptFileForReplay(harness.scriptPath, 0, 2);
    // The report file grows with every unknown object; keep it small.
    QFile::remove(AQScripts::fixedScriptFilePath());
    QDir(harness.dir.filePath(QStringLiteral("DumpReplay"))).removeRecursively();
    AQScripts::getFixedScriptFile().close();
    AQResetReplayState();
    AQScripts::forceRecordingAllowed(true);
    // Dialogs abandoned by a script that ran out delete themselves later.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
