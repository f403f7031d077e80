#include "UnitsPage.h"

#include <Kernel/DM/Expression.h>
#include <Kernel/Quantity.h>
#include <Kernel/Unit.h>
#include <Script/AQObjects.h>
#include <Scriptable/AQCheckBox.h>
#include <Scriptable/AQSlider.h>
#include <Widget/Collapsible/CollapsibleSectionWidget.h>
#include <Widget/ComboBox/OrvexComboBox.h>
#include <Widget/Indicator/OrvexEncryptionIndicatorWidget.h>
#include <Widget/LineEdit/OrvexEquationInputBox.h>
#include <Widget/Splitter/OrvexHSplitter.h>
#include <Widget/Sticker/AQDefaultStickerWidget.h>
#include <Widget/TrackMark/QTrackMark.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QVBoxLayout>

using namespace QtUIBase;
using Gui::Widget::CollapsibleSectionWidget;
using Kernel::Quantity;

namespace {

constexpr int RecommendedDensity = 60;

/// A section of the form holding @p content.
CollapsibleSectionWidget* section(QWidget* page, const QString& name, const QString& title, QWidget* content)
{
    auto* section = new CollapsibleSectionWidget(name, title, page, true);
    section->setContentWidget(content);
    return section;
}

} // namespace

UnitsPage::UnitsPage(QWidget* parent)
    : QWidget(parent)
    , m_names{"n", "k"}
    , m_context(&m_document.parserContext())
{
    // Registered first, so every widget built with the page as its parent is
    // recorded under the page's name.
    AQObjects::add(this, QStringLiteral("Units"));

    Kernel::DM::ParserContext& parameters = m_document.parserContext();
    parameters.declare({"L", Quantity::get(Quantity::Kind::Length)});
    parameters.declare({"W", Quantity::get(Quantity::Kind::Length)});
    parameters.declare({"f0", Quantity::get(Quantity::Kind::Frequency)});
    // What the boxes see: the document's parameters and their own names.
    for (const std::string& name : m_names)
        m_context.declare({name, Quantity::NoneUnitQuantity()});

    auto* splitter = new Gui::Widget::OrvexHSplitter(QStringLiteral("unitsSplitter"), this, true);
    splitter->addWidget(buildForm());
    splitter->addWidget(buildView());
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(splitter);
}

UnitsPage::~UnitsPage() = default;

OrvexEquationInputBox* UnitsPage::addBox(QFormLayout* form, const QString& name, const QString& label,
                                         const Quantity* quantity, const QString& text)
{
    auto* box = new OrvexEquationInputBox(&m_document, m_names, name, this, false, true);
    box->setUnitConstraint(quantity);
    box->setText(text);
    auto* why = new QLabel(this);
    QFont small = why->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    why->setFont(small);
    connect(box, &QLineEdit::textChanged, this, [this, box, why] { explain(box, why); });
    explain(box, why);
    form->addRow(label, box);
    form->addRow(QString(), why);
    return box;
}

void UnitsPage::explain(OrvexEquationInputBox* box, QLabel* line) const
{
    const QString text = box->text();
    const Kernel::DM::ExpressionCheck check = Kernel::DM::checkExpression(m_context, text.toStdString());
    QString why;
    if (text.isEmpty())
        why = tr("Empty");
    else if (!check.valid)
        why = tr("Not accepted: %1").arg(QString::fromStdString(check.message));
    else if (!box->isExpressionValid())
        why = tr("Measures %1, not %2")
                  .arg(QString::fromStdString(check.dimension),
                       box->placeholderText().isEmpty() ? tr("a plain number") : box->placeholderText());
    else
        why = tr("Accepted");
    line->setText(why);
    line->setStyleSheet(box->isExpressionValid() ? QString() : QStringLiteral("color: #b00020"));
}

QWidget* UnitsPage::buildForm()
{
    auto* form = new QWidget(this);
    auto* column = new QVBoxLayout(form);

    auto* geometry = new QWidget(this);
    auto* geometryForm = new QFormLayout(geometry);
    auto* parameters = new QLabel(tr("Parameters: L and W are lengths, f0 a frequency; n and k are plain numbers."), this);
    parameters->setWordWrap(true);
    geometryForm->addRow(parameters);
    addBox(geometryForm, QStringLiteral("lengthBox"), tr("Patch length:"), &Quantity::get(Quantity::Kind::Length),
           QStringLiteral("2*L + 3 mm"));
    column->addWidget(section(this, QStringLiteral("geometrySection"), tr("Geometry"), geometry));

    auto* excitation = new QWidget(this);
    auto* excitationForm = new QFormLayout(excitation);
    addBox(excitationForm, QStringLiteral("frequencyBox"), tr("Centre frequency:"),
           &Quantity::get(Quantity::Kind::Frequency), QStringLiteral("f0"));
    auto* port = new Gui::Widget::OrvexComboBox(QStringLiteral("portCombo"), this, true);
    port->addItems({tr("Port 1"), tr("Port 2: coaxial feed at the lower edge of the patch"),
                    tr("Port 3: lumped port between the strip line and ground")});
    port->setMaximumWidth(140);
    excitationForm->addRow(tr("Port:"), port);
    column->addWidget(section(this, QStringLiteral("excitationSection"), tr("Excitation"), excitation));

    auto* mesh = new QWidget(this);
    auto* meshForm = new QFormLayout(mesh);
    addBox(meshForm, QStringLiteral("factorBox"), tr("Refinement factor:"), nullptr, QStringLiteral("2*n + 1"));
    auto* density = new AQSlider(QStringLiteral("densitySlider"), Qt::Horizontal, this, true);
    density->setRange(0, 100);
    density->setValue(35);
    density->setTickPosition(QSlider::TicksAbove);
    density->setTickInterval(10);
    auto* mark = new Gui::Widget::QTrackMark(density);
    mark->setValue(RecommendedDensity);
    mark->setToolTip(tr("Recommended"));
    meshForm->addRow(tr("Mesh density:"), density);
    meshForm->addRow(QString(), new QLabel(tr("The mark shows the recommended density (%1).").arg(RecommendedDensity),
                                           this));
    column->addWidget(section(this, QStringLiteral("meshSection"), tr("Mesh"), mesh));
    column->addStretch();
    return form;
}

QWidget* UnitsPage::buildView()
{
    auto* pane = new QWidget(this);
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);

    auto* view = new QLabel(tr("3-D view"), this);
    view->setAlignment(Qt::AlignCenter);
    view->setMinimumSize(160, 200);
    view->setAutoFillBackground(true);
    QPalette dark = view->palette();
    QLinearGradient sky(0, 0, 0, 1);
    sky.setCoordinateMode(QGradient::ObjectMode);
    sky.setColorAt(0, QColor(58, 74, 98));
    sky.setColorAt(1, QColor(18, 22, 30));
    dark.setBrush(QPalette::Window, sky);
    dark.setColor(QPalette::WindowText, QColor(200, 208, 220));
    view->setPalette(dark);
    column->addWidget(view, 1);

    auto* note = new AQDefaultStickerWidget(QStringLiteral("noteSticker"), tr("Note"),
                                            tr("Feed the patch 3 mm from its lower edge."), this, true);
    note->setParent(view); // recorded under the page, pinned over the view
    note->show();

    auto* status = new QVBoxLayout;
    auto* indicator = new Gui::Widget::OrvexEncryptionIndicatorWidget(this);
    indicator->setFileName(QStringLiteral("dual_band_patch.omdl"));
    auto* encrypt = new AQCheckBox(QStringLiteral("encryptCheck"), tr("Encrypt model file"), this, true);
    connect(encrypt, &AQCheckBox::AClicked, indicator, &Gui::Widget::OrvexEncryptionIndicatorWidget::setEncrypted);
    status->addWidget(indicator);
    status->addWidget(encrypt);
    column->addLayout(status);
    return pane;
}
