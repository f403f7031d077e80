#pragma once

#include "OrvexQtUIBase_export.h"

#include "Script/IAQScriptable.h"

#include <QToolBox>

namespace QtUIBase {

/**
 * A scriptable QToolBox that names pages by their item text.
 *
 * Always registered, under its current object name (set one before
 * recording). Opening a page records "currentChanged" with the page's item
 * text; no application signal is emitted (listen to currentChanged()).
 *
 * Replay of "currentChanged" searches the pages from the last to the first
 * and opens the first whose text equals the argument, so of two pages with
 * the same text the later one opens; a text that no page has changes
 * nothing and is reported in the fixed-script report.
 */
class ORVEXQTUIBASE_EXPORT AQToolBox : public QToolBox, public IAQScriptable
{
    Q_OBJECT

public:
    explicit AQToolBox(QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    void scriptReplay(const QString& signal, const QStringList& args) override;

private Q_SLOTS:
    void onCurrentChanged(int index);
};

} // namespace QtUIBase
