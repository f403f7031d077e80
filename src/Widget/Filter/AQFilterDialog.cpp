#include "Widget/Filter/AQFilterDialog.h"

#include "Scriptable/AQComboBox.h"
#include "Scriptable/AQPushButton.h"
#include "Scriptable/AQScriptableLineEdit.h"
#include "Widget/Filter/FilterKind.h"
#include "Widget/Filter/NoCommaValidator.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <limits>

namespace QtUIBase {

namespace {
bool isNumeric(int kind)
{
    return kind == Real || kind == Integer;
}
} // namespace

AQFilterDialog::AQFilterDialog(int kind, const QString& name, QWidget* parent)
    : QWidget(parent, Qt::Tool)
    , m_kind(kind)
{
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(name);
    auto* layout = new QVBoxLayout(this);

    if (isNumeric(kind) || kind == PassFail || kind == OnOff) {
        // Scriptable only for its ACurrentIndexChanged: with the dialog
        // unregistered, its records are never written.
        m_conditionBox = new AQComboBox(name + QStringLiteral("_condition"), this, true);
        auto* row = new QHBoxLayout;
        row->addWidget(m_conditionBox);
        layout->addLayout(row);
        if (isNumeric(kind)) {
            m_conditionBox->addItems({tr("unlimited"), tr("equal to"), tr("less than"), tr("greater than"),
                                      tr("in range")});
            for (int i = 0; i < 2; ++i) {
                m_edits[i] = addValueEdit(name + QStringLiteral("_value%1").arg(i + 1));
                row->addWidget(m_edits[i]);
            }
            setWindowTitle(tr("Numeric Filter:"));
            m_condition = ConditionUnlimited;
        } else if (kind == PassFail) {
            m_conditionBox->addItems({QStringLiteral("PASS"), QStringLiteral("FAIL")});
            setWindowTitle(tr("Pass/Fail Filter:"));
            m_condition = ConditionPass;
        } else {
            m_conditionBox->addItems({QStringLiteral("ON"), QStringLiteral("OFF")});
            setWindowTitle(tr("On/Off Filter:"));
            m_condition = ConditionOn;
        }
        connect(m_conditionBox, QOverload<int>::of(&AQComboBox::ACurrentIndexChanged), this,
                &AQFilterDialog::conditionChanged);
    } else if (kind == Region) {
        auto* corners = new QHBoxLayout;
        for (int corner = 0; corner < 2; ++corner) {
            auto* grid = new QGridLayout;
            grid->addWidget(new QLabel(tr("x:"), this), 0, 0);
            grid->addWidget(new QLabel(tr("y:"), this), 0, 1);
            for (int axis = 0; axis < 2; ++axis) {
                const QString suffix = QStringLiteral("_pt%1%2").arg(corner + 1).arg(axis == 0 ? 'x' : 'y');
                m_edits[corner * 2 + axis] = addValueEdit(name + suffix);
                grid->addWidget(m_edits[corner * 2 + axis], 1, axis);
            }
            corners->addLayout(grid);
        }
        layout->addLayout(corners);
        setWindowTitle(tr("Region Filter:"));
    }

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = new AQPushButton(name + QStringLiteral("_ok"), tr("OK"), this, false);
    m_cancel = new AQPushButton(name + QStringLiteral("_cancel"), tr("Cancel"), this, false);
    // Unregistered widgets do not take their script names by themselves.
    m_ok->setObjectName(name + QStringLiteral("_ok"));
    m_cancel->setObjectName(name + QStringLiteral("_cancel"));
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    layout->addLayout(buttons);
    connect(m_ok, &QPushButton::clicked, this, &AQFilterDialog::onOk);
    connect(m_cancel, &QPushButton::clicked, this, &AQFilterDialog::onCancel);

    setFixedHeight(sizeHint().height());
    updateFields();
}

AQScriptableLineEdit* AQFilterDialog::addValueEdit(const QString& name)
{
    auto* edit = new AQScriptableLineEdit(name, this, false);
    edit->setObjectName(name);
    if (m_kind == Integer) {
        edit->setValidator(new QIntValidator(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), edit));
    } else {
        const double max = std::numeric_limits<double>::max();
        edit->setValidator(new NoCommaValidator(-max, max, 3, edit));
    }
    return edit;
}

void AQFilterDialog::conditionChanged(int index)
{
    if (isNumeric(m_kind) && index >= 0 && index <= 4)
        m_condition = index;
    else if (m_kind == PassFail && (index == 0 || index == 1))
        m_condition = ConditionPass + index;
    else if (m_kind == OnOff && (index == 0 || index == 1))
        m_condition = ConditionOn + index;
    updateFields();
}

void AQFilterDialog::updateFields()
{
    if (isNumeric(m_kind)) {
        m_edits[0]->setEnabled(m_condition != ConditionUnlimited);
        m_edits[1]->setEnabled(m_condition == ConditionInRange);
        m_edits[1]->setVisible(m_condition == ConditionInRange);
    } else if (m_kind == Region) {
        for (AQScriptableLineEdit* edit : m_edits)
            edit->setEnabled(true);
    }
}

QString AQFilterDialog::filterText() const
{
    const auto value = [this](int i) { return m_edits[i] ? m_edits[i]->text() : QString(); };
    if (isNumeric(m_kind)) {
        static const char* const operators[] = {"", "=", "<", ">"};
        if (m_condition >= ConditionEqualTo && m_condition <= ConditionGreaterThan && !value(0).isEmpty())
            return QLatin1String(operators[m_condition]) + value(0);
        if (m_condition == ConditionInRange && !value(0).isEmpty() && !value(1).isEmpty())
            return QStringLiteral(">%1,<%2").arg(value(0), value(1));
        return QString();
    }
    if (m_kind == Region) {
        for (int i = 0; i < 4; ++i) {
            if (value(i).isEmpty())
                return QString();
        }
        return QStringLiteral("(%1,%2):(%3,%4)").arg(value(0), value(1), value(2), value(3));
    }
    if (m_kind == PassFail)
        return m_condition == ConditionFail ? QStringLiteral("FAIL") : QStringLiteral("PASS");
    if (m_kind == OnOff)
        return m_condition == ConditionOff ? QStringLiteral("OFF") : QStringLiteral("ON");
    return QString();
}

void AQFilterDialog::onOk()
{
    Q_EMIT filterChanged(filterText());
    close();
}

void AQFilterDialog::onCancel()
{
    close();
}

QPoint AQFilterDialog::placement(const QRect& screen, const QPoint& point, const QSize& size)
{
    const int right = screen.x() + screen.width();
    const int bottom = screen.y() + screen.height();
    int x = point.x() + 2;
    int y = point.y() + 2;
    if (x + size.width() > right)
        x -= size.width() + 4;
    // 24: room for the title bar the window manager adds.
    if (y + 24 + size.height() > bottom) {
        y -= size.height() + 24;
        if (y < screen.y())
            y = screen.y();
    }
    if (x + size.width() > right)
        x = right - size.width();
    if (x < screen.x())
        x = screen.x();
    if (y + size.height() > bottom)
        y = bottom - size.height();
    return QPoint(x, y);
}

void AQFilterDialog::placeAt(const QPoint& point)
{
    QScreen* screen = QGuiApplication::screenAt(point);
    if (!screen)
        screen = parentWidget() ? parentWidget()->screen() : this->screen();
    if (screen)
        move(placement(screen->geometry(), point, size()));
}

} // namespace QtUIBase
