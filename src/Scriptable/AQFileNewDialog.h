#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQFileDialog.h"

namespace QtUIBase {

/**
 * An AQFileDialog that names a file to create: save mode, any file name,
 * @p defaultSuffix appended to a name without one.
 *
 * Choosing a file that exists asks "File %1 already exists. Do you wish to
 * overwrite this file?" (title "File Exists", Yes and No); No answers as a
 * cancelled dialog. Only the outcome is recorded, as AQFileDialog's
 * fill-in: the name, or "" when the user cancelled or said No. A replay
 * reads it and asks nothing.
 */
class ORVEXQTUIBASE_EXPORT AQFileNewDialog : public AQFileDialog
{
    Q_OBJECT

public:
    explicit AQFileNewDialog(const QString& name, QWidget* parent = nullptr, const QString& caption = QString(),
                             const QString& directory = QString(), const QString& filter = QString(),
                             const QString& defaultSuffix = QString(), bool scriptable = true);

protected:
    QStringList confirm(const QStringList& files) override;
};

} // namespace QtUIBase
