#include "ContainersPage.h"

#include "GalleryActivity.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQContainers.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace QtUIBase;

namespace {
QWidget* note(const QString& text)
{
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    return label;
}
} // namespace

ContainersPage::ContainersPage(QWidget* parent)
    : QWidget(parent)
    , m_activity(new GalleryActivity(this))
{
    AQObjects::add(this, QStringLiteral("Containers"));

    auto* toolbox = new AQToolBox(this);
    toolbox->setObjectName(QStringLiteral("setupToolbox"));
    toolbox->addItem(note(tr("Box 20 x 10 x 1.6 mm, patch 8 x 6 mm.")), tr("Geometry"));
    toolbox->addItem(note(tr("FR-4 substrate, copper traces, air box.")), tr("Materials"));
    toolbox->addItem(note(tr("Open boundaries, one lumped port.")), tr("Boundaries"));
    connect(toolbox, &QToolBox::currentChanged, this,
            [this, toolbox](int i) { m_activity->add(tr("Section: %1").arg(toolbox->itemText(i))); });

    auto* adaptive = new AQGroupBox(QStringLiteral("adaptiveGroup"), tr("Adaptive refinement"), this, true);
    adaptive->setCheckable(true);
    auto* passes = new QSpinBox(adaptive);
    passes->setRange(1, 20);
    passes->setValue(6);
    (new QFormLayout(adaptive))->addRow(tr("Passes:"), passes);
    connect(adaptive, &AQGroupBox::AClicked, this,
            [this](bool on) { m_activity->add(tr("Adaptive refinement %1").arg(on ? tr("on") : tr("off"))); });

    auto* solverBar = new AQTabBar(QStringLiteral("solverBar"), this, true);
    auto* settings = new AQStackedWidget(QStringLiteral("settingsStack"), this, true);
    for (const QString& solver : {tr("Frequency domain"), tr("Time domain"), tr("Eigenmode")}) {
        solverBar->addTab(solver);
        settings->addWidget(note(tr("%1 solver settings.").arg(solver)));
    }
    solverBar->setUsesScrollButtons(false);
    connect(solverBar, &AQTabBar::ACurrentChanged, this, [this, solverBar, settings](int i) {
        // A replayed tab change is reported twice: log the change once.
        if (settings->currentIndex() == i)
            return;
        settings->setCurrentIndex(i);
        m_activity->add(tr("Solver: %1").arg(solverBar->tabText(i)));
    });
    // A plain button: the stack records the page it asks for.
    auto* nextPage = new QPushButton(tr("Next solver page"), this);
    connect(nextPage, &QPushButton::clicked, settings,
            [settings] { settings->requestCurrentIndex((settings->currentIndex() + 1) % settings->count()); });
    connect(settings, &AQStackedWidget::ASetCurrentIndex, this,
            [this](int i) { m_activity->add(tr("Settings page %1").arg(i + 1)); });

    auto* ports = new AQScrollArea(QStringLiteral("portsScroll"), this, true);
    auto* list = new QWidget;
    auto* listLayout = new QVBoxLayout(list);
    for (int port = 1; port <= 40; ++port)
        listLayout->addWidget(new QLabel(tr("Port %1: 50 Ohm").arg(port)));
    ports->setWidget(list);
    ports->setWidgetResizable(true);
    connect(ports, &AQScrollArea::AValueChanged, this,
            [this](int, int y) { m_activity->add(tr("Ports scrolled to %1").arg(y)); });

    auto* left = new QVBoxLayout;
    left->addWidget(toolbox, 2);
    left->addWidget(adaptive);
    left->addWidget(solverBar);
    left->addWidget(settings, 1);
    left->addWidget(nextPage);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addWidget(ports, 2);
    layout->addWidget(m_activity, 2);
}
