#include "MenusWizardPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQAction.h>
#include <Scriptable/AQContainers.h>
#include <Scriptable/AQItemViews.h>
#include <Scriptable/AQPushButton.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace QtUIBase;

MenusWizardPage::MenusWizardPage(QWidget* parent)
    : QWidget(parent)
    , m_activity(new GalleryActivity(this))
{
    AQObjects::add(this, QStringLiteral("MenusWizard"));
    auto* layout = new QVBoxLayout(this);

    m_ports = new AQListWidget(QStringLiteral("portList"), this, true);
    m_ports->addItems({tr("Port 1"), tr("Port 2")});
    m_ports->setContextMenuPolicy(Qt::CustomContextMenu);
    m_portMenu = new AQMenu(QStringLiteral("portMenu"), this, true);
    AQMenu* kind = m_portMenu->addMenu(tr("Kind"));
    for (const QString& text : {tr("Lumped"), tr("Waveguide"), tr("Discrete")})
        kind->addAction(text);
    m_portMenu->addAction(tr("Rename"));
    connect(m_ports, &AQListWidget::ACustomContextMenuRequested, this, [this](QListWidgetItem* port) {
        const QPoint at = m_ports->viewport()->mapToGlobal(m_ports->visualItemRect(port).center());
        if (QAction* chosen = m_portMenu->exec(at))
            m_activity->add(tr("%1: %2").arg(port->text(), chosen->text()));
    });
    buildMenuBar();

    auto* wizardButton = new AQPushButton(QStringLiteral("wizardButton"), tr("New project..."), this, true);
    connect(wizardButton, &AQPushButton::AClicked, this, &MenusWizardPage::runWizard);

    auto* holder = new QWidget(this);
    AQObjects::add(holder, QStringLiteral("dockHolder"));
    auto* dock = new AQDockWidget(QStringLiteral("propertiesDock"), holder, {}, true);
    dock->setWindowTitle(tr("Properties"));
    dock->setWidget(new QLabel(tr("Port 1: 50 Ohm\nPort 2: 50 Ohm")));
    (new QVBoxLayout(holder))->addWidget(dock);
    auto* showDock = new QPushButton(tr("Show properties"), this);
    connect(showDock, &QPushButton::clicked, dock, &QWidget::show);
    connect(dock, &QDockWidget::visibilityChanged, this,
            [this](bool visible) { m_activity->add(visible ? tr("Properties shown") : tr("Properties hidden")); });

    auto* row = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(tr("Ports (right-click for the port menu):")));
    left->addWidget(m_ports);
    left->addWidget(wizardButton);
    left->addWidget(showDock);
    row->addLayout(left, 2);
    row->addWidget(holder, 2);
    row->addWidget(m_activity, 2);
    layout->addLayout(row);
}

void MenusWizardPage::buildMenuBar()
{
    auto* bar = new AQMenuBar(QStringLiteral("pageMenuBar"), this, true);
    auto* model = new AQMenu(QStringLiteral("modelMenu"), tr("Model"), this, true);
    model->addAction(QStringLiteral("addPortAction"), tr("Add port"));
    model->addAction(QStringLiteral("removePortAction"), tr("Remove port"));
    AQMenu* units = model->addMenu(tr("Length unit"));
    for (const QString& unit : {tr("mm"), tr("mil")})
        units->addAction(unit);
    bar->addAQMenu(model);
    connect(model, &AQMenu::ATriggered, this, [this](QAction* action) {
        if (!action)
            return;
        if (action->objectName() == QLatin1String("addPortAction"))
            m_ports->addItem(tr("Port %1").arg(m_ports->count() + 1));
        else if (action->objectName() == QLatin1String("removePortAction") && m_ports->count() > 0)
            delete m_ports->takeItem(m_ports->count() - 1);
        m_activity->add(tr("Model menu: %1").arg(action->text()));
    });
    connect(units, &AQMenu::ATriggered, this,
            [this](QAction* unit) { m_activity->add(tr("Units: %1").arg(unit ? unit->text() : QString())); });
    layout()->setMenuBar(bar);
}

void MenusWizardPage::runWizard()
{
    // Deleted by a replayed finish or close: hold it guarded.
    QPointer<AQWizard> wizard = new AQWizard(QStringLiteral("projectWizard"), this);
    wizard->setWindowTitle(tr("New project"));
    auto* name = new AQWizardPage(QStringLiteral("namePage"));
    name->setTitle(tr("Project"));
    auto* nameEdit = new QLineEdit(tr("patch_antenna"), name);
    (new QFormLayout(name))->addRow(tr("Name:"), nameEdit);
    auto* solver = new AQWizardPage(QStringLiteral("solverPage"));
    solver->setTitle(tr("Solver"));
    (new QVBoxLayout(solver))->addWidget(new QLabel(tr("Frequency domain, 1 to 10 GHz.")));
    auto* summary = new AQWizardPage(QStringLiteral("summaryPage"));
    summary->setTitle(tr("Summary"));
    (new QVBoxLayout(summary))->addWidget(new QLabel(tr("The project is created with these settings.")));
    for (QWizardPage* page : {static_cast<QWizardPage*>(name), static_cast<QWizardPage*>(solver),
                              static_cast<QWizardPage*>(summary)})
        wizard->addPage(page);
    connect(wizard, &AQWizard::AcurrentIdChanged, this, [this, wizard](int id) {
        if (wizard && id >= 0)
            m_activity->add(tr("Wizard page: %1").arg(wizard->page(id)->title()));
    });
    const int result = wizard->exec();
    m_activity->add(result == QDialog::Accepted ? tr("Project created") : tr("Wizard cancelled"));
    delete wizard.data();
}
