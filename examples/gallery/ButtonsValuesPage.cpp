#include "ButtonsValuesPage.h"

#include <Script/AQObjects.h>
#include <Scriptable/AQButtons.h>
#include <Scriptable/AQValueInputs.h>

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QVBoxLayout>

using namespace QtUIBase;

namespace {
QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}
} // namespace

ButtonsValuesPage::ButtonsValuesPage(QWidget* parent)
    : QWidget(parent)
{
    // Registered first, so every widget built with the page as its parent is
    // recorded under the page's name.
    AQObjects::add(this, QStringLiteral("ButtonsValues"));

    auto* layout = new QHBoxLayout(this);
    auto* forms = new QVBoxLayout;
    forms->addWidget(buildButtons());
    forms->addWidget(buildValues());
    forms->addStretch();
    layout->addLayout(forms, 3);
    layout->addWidget(buildActivity(), 2);
}

QWidget* ButtonsValuesPage::buildButtons()
{
    auto* box = new QGroupBox(tr("Buttons"), this);
    auto* grid = new QGridLayout(box);

    auto* run = new AQPushButton(QStringLiteral("runButton"), tr("Run sweep"), this, true);
    m_clickCount = new QLabel(tr("Sweeps run: 0"), this);
    connect(run, &AQPushButton::AClicked, this, [this] {
        m_clickCount->setText(tr("Sweeps run: %1").arg(++m_clicks));
        log(tr("Run sweep clicked"));
    });
    grid->addWidget(run, 0, 0);
    grid->addWidget(m_clickCount, 0, 1);

    auto* grid3d = new AQCheckBox(QStringLiteral("gridCheck"), tr("Show mesh grid"), this, true);
    connect(grid3d, &AQCheckBox::AClicked, this, [this](bool on) { log(tr("Mesh grid %1").arg(onOff(on))); });
    auto* adaptive = new AQToggleButton(QStringLiteral("adaptiveToggle"), tr("Adaptive meshing"), this, true);
    connect(adaptive, &AQToggleButton::AClicked, this,
            [this](bool on) { log(tr("Adaptive meshing %1").arg(onOff(on))); });
    grid->addWidget(grid3d, 1, 0);
    grid->addWidget(adaptive, 1, 1);

    auto* solvers = new QWidget(this);
    auto* solverRow = new QHBoxLayout(solvers);
    solverRow->setContentsMargins(0, 0, 0, 0);
    solverRow->addWidget(new QLabel(tr("Solver:"), this));
    const QStringList names{QStringLiteral("Electromagnetic"), QStringLiteral("Thermal"), QStringLiteral("Fluid")};
    for (const QString& name : names) {
        auto* radio = new AQRadioButton(QStringLiteral("solver") + name, name, this, true);
        radio->setChecked(name == names.first());
        connect(radio, &AQRadioButton::AClicked, this, [this, name] { log(tr("Solver: %1").arg(name)); });
        solverRow->addWidget(radio);
    }
    solverRow->addStretch();
    grid->addWidget(solvers, 2, 0, 1, 2);

    auto* tools = new QWidget(this);
    auto* toolRow = new QHBoxLayout(tools);
    toolRow->setContentsMargins(0, 0, 0, 0);
    auto* lock = new AQToolButton(QStringLiteral("lockTool"), this, true);
    lock->setText(tr("Lock view"));
    lock->setCheckable(true);
    connect(lock, &AQToolButton::AClicked, this, [this](bool on) { log(tr("View lock %1").arg(onOff(on))); });
    auto* snap = new AQAction(QStringLiteral("snapAction"), tr("Snap to grid"), this, true);
    snap->setCheckable(true);
    connect(snap, &AQAction::ATriggered, this, [this, snap] { log(tr("Snap to grid %1").arg(onOff(snap->isChecked()))); });
    auto* snapButton = new QToolButton(this);
    snapButton->setDefaultAction(snap);
    m_colour = new AQColorButton(QStringLiteral("colourButton"), QColor(70, 130, 180), this, true);
    m_colour->setMinimumSize(48, 24);
    connect(m_colour, &AQColorButton::AClicked, this, &ButtonsValuesPage::pickColour);
    toolRow->addWidget(lock);
    toolRow->addWidget(snapButton);
    toolRow->addWidget(new QLabel(tr("Port colour:"), this));
    toolRow->addWidget(m_colour);
    toolRow->addStretch();
    grid->addWidget(tools, 3, 0, 1, 2);
    return box;
}

QWidget* ButtonsValuesPage::buildValues()
{
    auto* box = new QGroupBox(tr("Values"), this);
    auto* form = new QFormLayout(box);

    auto* material = new AQComboBox(QStringLiteral("materialCombo"), this, true);
    material->addItems({tr("Copper"), tr("Aluminium"), tr("FR-4"), tr("Air")});
    connect(material, QOverload<const QString&>::of(&AQComboBox::ACurrentIndexChanged), this,
            [this](const QString& text) { log(tr("Material: %1").arg(text)); });
    form->addRow(tr("Material:"), material);

    auto* name = new AQScriptableLineEdit(QStringLiteral("nameEdit"), tr("patch antenna"), this, true);
    connect(name, &AQScriptableLineEdit::AEditingFinished, this,
            [this, name] { log(tr("Model name: %1").arg(name->text())); });
    form->addRow(tr("Model name:"), name);

    auto* cells = new AQSpinBox(this, QStringLiteral("cellsSpin"), true);
    cells->setRange(1, 200);
    cells->setValue(20);
    cells->setSuffix(tr(" cells/λ"));
    connect(cells, &AQSpinBox::AvalueChanged, this, [this](double v) { log(tr("Mesh density: %1").arg(v)); });
    form->addRow(tr("Mesh density:"), cells);

    auto* frequency = new AQDoubleSpinBox(QStringLiteral("frequencySpin"), QString(), this, true);
    frequency->setRange(0.1, 100);
    frequency->setDecimals(3);
    frequency->setValue(2.4);
    frequency->setSuffix(tr(" GHz"));
    connect(frequency, &AQDoubleSpinBox::AvalueChanged, this,
            [this](double v) { log(tr("Frequency: %1 GHz").arg(v)); });
    form->addRow(tr("Frequency:"), frequency);

    auto* sliderRow = new QWidget(this);
    auto* sliderLayout = new QHBoxLayout(sliderRow);
    sliderLayout->setContentsMargins(0, 0, 0, 0);
    auto* accuracy = new AQSlider(QStringLiteral("accuracySlider"), Qt::Horizontal, this, true);
    accuracy->setRange(0, 100);
    accuracy->setValue(40);
    accuracy->setPageStep(10);
    accuracy->setSnapClickToPageStep(true);
    m_sliderValue = new QLabel(QStringLiteral("40 %"), this);
    m_sliderValue->setMinimumWidth(40);
    connect(accuracy, &AQSlider::AValueChanged, this, [this](int v) {
        m_sliderValue->setText(tr("%1 %").arg(v));
        log(tr("Accuracy: %1 %").arg(v), true);
    });
    sliderLayout->addWidget(accuracy);
    sliderLayout->addWidget(m_sliderValue);
    form->addRow(tr("Accuracy:"), sliderRow);

    auto* notes = new AQTextEdit(QStringLiteral("notesEdit"), QString(), this, true);
    notes->setPlaceholderText(tr("Notes for this set-up"));
    notes->setFixedHeight(56);
    connect(notes, &AQTextEdit::ATextChanged, this,
            [this](const QString& text) { log(tr("Notes: %1 line(s)").arg(text.isEmpty() ? 0 : text.count('\n') + 1)); });
    form->addRow(tr("Notes:"), notes);

    auto* projectRow = new QWidget(this);
    auto* projectLayout = new QHBoxLayout(projectRow);
    projectLayout->setContentsMargins(0, 0, 0, 0);
    m_projectName = new QLabel(tr("untitled"), this);
    auto* rename = new AQPushButton(QStringLiteral("renameButton"), tr("Rename..."), this, true);
    connect(rename, &AQPushButton::AClicked, this, &ButtonsValuesPage::askName);
    auto* help = new AQLabel(QStringLiteral("helpLabel"), tr("<a href=\"help:scripts\">About scripts</a>"), this,
                             Qt::WindowFlags(), true);
    help->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(help, &AQLabel::ALinkActivated, this, [this](const QString& link) { log(tr("Link: %1").arg(link)); });
    projectLayout->addWidget(m_projectName, 1);
    projectLayout->addWidget(rename);
    projectLayout->addWidget(help);
    form->addRow(tr("Project:"), projectRow);
    return box;
}

QWidget* ButtonsValuesPage::buildActivity()
{
    auto* box = new QGroupBox(tr("Activity"), this);
    auto* layout = new QVBoxLayout(box);
    m_activity = new QListWidget(this);
    m_activity->setObjectName(QStringLiteral("activityList"));
    layout->addWidget(m_activity);
    return box;
}

void ButtonsValuesPage::log(const QString& text, bool replacesSameKind)
{
    // A drag reports every step: keep one line for it, not one per step.
    const int last = m_activity->count() - 1;
    const QString kind = text.section(QLatin1Char(':'), 0, 0);
    if (replacesSameKind && last >= 0 && m_activity->item(last)->text().section(QLatin1Char(':'), 0, 0) == kind) {
        m_activity->item(last)->setText(text);
        return;
    }
    m_activity->addItem(text);
    m_activity->scrollToBottom();
}

void ButtonsValuesPage::pickColour()
{
    // During a replay exec() may delete the dialog itself; hold it guarded.
    QPointer<AQColorDialog> dialog =
        new AQColorDialog(QStringLiteral("colourDialog"), m_colour->color(), this, true);
    dialog->setWindowTitle(tr("Port colour"));
    const int result = dialog->exec();
    if (result == QDialog::Accepted && dialog) {
        m_colour->setColor(dialog->currentColor());
        log(tr("Port colour %1").arg(dialog->currentColor().name()));
    }
    delete dialog;
}

void ButtonsValuesPage::askName()
{
    // A replayed question leaves ok as it is: start from true.
    bool ok = true;
    const QString name = AQInputDialog::getText(this, tr("Rename project"), tr("Project name:"), QLineEdit::Normal,
                                                m_projectName->text(), &ok, {}, Qt::ImhNone, true);
    if (ok && !name.isEmpty()) {
        m_projectName->setText(name);
        log(tr("Project renamed: %1").arg(name));
    }
}
