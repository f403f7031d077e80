#include "Widget/Filter/AQFilterComboBox.h"

#include "Script/AQRecordingGuard.h"
#include "Scriptable/AQAction.h"
#include "Widget/Filter/AQFilterLineEdit.h"
#include "Widget/Filter/FilterKind.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace QtUIBase {

AQFilterComboBox::AQFilterComboBox(int kind, const QString& name, QWidget* parent)
    : AQComboBox(name, parent, true)
    , m_kind(kind)
{
    setMaxVisibleItems(8);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setFocusPolicy(Qt::WheelFocus);
    m_lineEdit = new AQFilterLineEdit(kind, name + QStringLiteral("_text"), this);
    m_lineEdit->setFocusPolicy(Qt::StrongFocus);
    m_lineEdit->setPlaceholderText(QStringLiteral("*"));
    connect(m_lineEdit, &AQFilterLineEdit::saveFilter, this, &AQFilterComboBox::saveFilter);
    setLineEdit(m_lineEdit);
    // After installing: the combo box empties its line edit.
    m_lineEdit->setTextInternal(m_lineEdit->placeholderText());
    // A history item picked again while already current is replayed as
    // "activated" only: the text it stands for is set from the signal, so
    // replay shows it as the user saw it.
    connect(this, QOverload<const QString&>::of(&AQComboBox::AIndexActivated), this, [this](const QString& text) {
        if (currentText() != text)
            setEditText(text);
    });
    m_clearFilter = new AQAction(name + QStringLiteral("_clearFilter"), tr("Clear Filter"), this, true);
    connect(m_clearFilter, &AQAction::ATriggered, this, &AQFilterComboBox::clearFilter);
    setKind(kind);
}

void AQFilterComboBox::setKind(int kind)
{
    m_kind = kind;
    m_lineEdit->setKind(kind);
    if (kind == Text)
        m_lineEdit->setReadOnly(false);
    else if (kind >= Real && kind <= Disabled)
        m_lineEdit->setReadOnly(true);
    setEnabled(kind != Disabled);
}

void AQFilterComboBox::saveFilter(const QString& text)
{
    if (findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0)
        return;
    // The first item becomes current on its own; that is not a user's pick.
    withRecordingSuppressed([&] { addItem(text); });
}

void AQFilterComboBox::clearFilter()
{
    clearEditText();
    setCurrentIndex(-1);
}

void AQFilterComboBox::contextMenuEvent(QContextMenuEvent* event)
{
    if (!m_lineEdit)
        return;
    QMenu* menu = m_lineEdit->createStandardContextMenu();
    QAction* first = menu->actions().value(0);
    QAction* separator = menu->insertSeparator(first);
    menu->insertAction(separator, m_clearFilter);
    menu->exec(event->globalPos());
    delete menu;
}

} // namespace QtUIBase
