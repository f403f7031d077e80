#include "Widget/Filter/AQFilterHeaderView.h"

#include "Widget/Filter/AQFilterComboBox.h"
#include "Widget/Filter/AQFilterLineEdit.h"
#include "Widget/Filter/FilterKind.h"

#include <QAbstractItemModel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QRegExp>
#include <QScrollBar>

namespace QtUIBase {

AQFilterHeaderView::AQFilterHeaderView(const QString& name, QWidget* parent, bool scriptable)
    : AQHeaderView(name, Qt::Horizontal, parent, scriptable)
{
    setSectionsClickable(true);
    setHighlightSections(true);
    connect(this, &QHeaderView::sectionResized, this, &AQFilterHeaderView::resized);
    // Moves shift sections without resizing any.
    connect(this, &QHeaderView::sectionMoved, this, &AQFilterHeaderView::updateFilters);
}

void AQFilterHeaderView::setModel(QAbstractItemModel* model)
{
    disconnect(m_resetConnection);
    AQHeaderView::setModel(model);
    if (model)
        m_resetConnection = connect(model, &QAbstractItemModel::modelReset, this, &AQFilterHeaderView::modelResetEvent);
    createFilters();
}

int AQFilterHeaderView::kindOf(int section) const
{
    bool ok = false;
    const int kind = model() ? model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toInt(&ok) : 0;
    return ok ? kind : Text;
}

void AQFilterHeaderView::createFilters()
{
    if (!m_filters.isEmpty() || count() < 1)
        return;
    for (int i = 0; i < count(); ++i) {
        auto* filter = new AQFilterComboBox(kindOf(i), objectName() + QStringLiteral("_filter_%1").arg(i), this);
        m_filters.append(filter);
        connect(filter, &AQComboBox::AEditTextChanged, this, &AQFilterHeaderView::textChanged);
    }
    updateFilters();
}

void AQFilterHeaderView::modelResetEvent()
{
    if (m_filters.isEmpty()) {
        createFilters();
        return;
    }
    for (int i = 0; i < m_filters.size(); ++i) {
        const int kind = kindOf(i);
        if (kind != m_filters.at(i)->kind())
            m_filters.at(i)->setKind(kind);
    }
}

QList<AQFilterComboBox*> AQFilterHeaderView::filtersFor(int column) const
{
    if (column == -1)
        return m_filters;
    if (column >= 1 && column < m_filters.size())
        return {m_filters.at(column)};
    return {};
}

QStringList AQFilterHeaderView::getFilter(int column) const
{
    QStringList texts;
    for (const AQFilterComboBox* filter : filtersFor(column))
        texts << filter->currentText();
    return texts;
}

void AQFilterHeaderView::resetFilter(int column)
{
    for (AQFilterComboBox* filter : filtersFor(column))
        filter->clearFilter();
}

void AQFilterHeaderView::resetFilterHistory(int column)
{
    for (AQFilterComboBox* filter : filtersFor(column)) {
        filter->clearEditText();
        filter->clear();
        filter->setCurrentIndex(-1);
    }
}

bool AQFilterHeaderView::setFilterList(int column, const std::set<std::string>& values)
{
    if (column < 0 || column >= m_filters.size())
        return false;
    AQFilterComboBox* filter = m_filters.at(column);
    filter->clear();
    filter->addItem(QStringLiteral("*"));
    for (const std::string& value : values)
        filter->addItem(QString::fromStdString(value));
    return true;
}

void AQFilterHeaderView::setFilterVisibility(bool visible)
{
    const int target = visible ? DefaultFilterHeight : 0;
    if (m_animationDuration < 1) {
        setFilterHeight(target);
        return;
    }
    auto* animation = new QPropertyAnimation(this, "filter_height", this);
    animation->setDuration(m_animationDuration);
    animation->setStartValue(DefaultFilterHeight - target);
    animation->setEndValue(target);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void AQFilterHeaderView::setFilterHeight(int height)
{
    m_filterHeight = height;
    Q_EMIT geometriesChanged();
    updateFilters();
}

void AQFilterHeaderView::place(int logicalIndex, int size)
{
    if (logicalIndex < 0 || logicalIndex >= m_filters.size())
        return;
    m_filters.at(logicalIndex)->setGeometry(sectionViewportPosition(logicalIndex) + 1, height() - m_filterHeight,
                                            size - 2, m_filterHeight - 2);
}

void AQFilterHeaderView::updateFilters()
{
    for (int i = 0; i < m_filters.size(); ++i) {
        AQFilterComboBox* filter = m_filters.at(i);
        if (m_filterHeight > 0 && i < count() && !isSectionHidden(i)) {
            place(i, sectionSize(i));
            filter->show();
        } else {
            filter->hide();
        }
    }
}

void AQFilterHeaderView::resized(int section, int, int newSize)
{
    if (m_filterHeight < 1)
        return;
    place(section, newSize);
    for (int visual = visualIndex(section) + 1; visual < count(); ++visual)
        place(logicalIndex(visual), sectionSize(logicalIndex(visual)));
}

void AQFilterHeaderView::horizontalScrollChanged(int)
{
    updateFilters();
}

QString AQFilterHeaderView::patternFor(const QString& text, int kind) const
{
    return kind == Text ? textPattern(text) : text;
}

QString AQFilterHeaderView::textPattern(const QString& text)
{
    QString pattern = QLatin1Char('^') + text + QLatin1Char('$');
    pattern.replace(QLatin1Char('?'), QLatin1String(".{1,1}"));
    pattern.replace(QLatin1Char('*'), QLatin1String(".*"));
    return QLatin1String("^$|") + pattern;
}

void AQFilterHeaderView::textChanged(const QString& text)
{
    if (!sender())
        return;
    QRegExp digits(QStringLiteral("(\\d+)"));
    if (digits.indexIn(sender()->objectName()) < 0)
        return;
    bool ok = false;
    const int column = digits.cap(1).toInt(&ok);
    const auto* filter = qobject_cast<const AQFilterComboBox*>(sender());
    if (ok)
        Q_EMIT filterChanged(column, patternFor(text, filter ? filter->kind() : int(Text)));
}

void AQFilterHeaderView::showEvent(QShowEvent* event)
{
    // Scrolling the view moves the sections under the drop-downs; the
    // view's own handler has set the header's offset by the time this runs.
    if (auto* view = qobject_cast<QAbstractScrollArea*>(parentWidget()))
        connect(view->horizontalScrollBar(), &QScrollBar::valueChanged, this,
                &AQFilterHeaderView::horizontalScrollChanged, Qt::UniqueConnection);
    updateFilters();
    AQHeaderView::showEvent(event);
}

void AQFilterHeaderView::resizeEvent(QResizeEvent* event)
{
    AQHeaderView::resizeEvent(event);
    updateFilters();
}

QSize AQFilterHeaderView::sizeHint() const
{
    QSize hint = AQHeaderView::sizeHint();
    hint.setHeight(hint.height() + m_filterHeight);
    return hint;
}

void AQFilterHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    painter->save();
    AQHeaderView::paintSection(painter, rect.adjusted(0, 0, 0, -m_filterHeight), logicalIndex);
    painter->restore();
}

} // namespace QtUIBase
