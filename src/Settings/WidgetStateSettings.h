#pragma once

#include "OrvexQtUIBase_export.h"

#include "Settings/SettingsSupport.h"

#include <QByteArray>
#include <QString>

namespace QtUIBase {

/**
 * Persistence of a child widget's own state (a splitter's handle
 * positions, a section's folding) through the windows' settings machinery:
 * the values lie in the user's settings store, application "Main", group
 * "<class name>/<key>" (the meta-object's class name, namespace included, as
 * windows use it); they are restored the first time the widget is
 * shown and are neither read nor written while a script is recorded or
 * replayed. No geometry is stored: the parent places the widget.
 *
 * The key defaults to the widget's script name; an empty key turns
 * persistence off. Subclasses write their values in SaveSettings() and read
 * them in RestoreSettings(), and call saveWidgetState() when the user has
 * changed them.
 */
class ORVEXQTUIBASE_EXPORT WidgetStateSettings : public Pvt::SettingsSupport
{
public:
    /// "<class name>/<key>", the class being the widget's own.
    const char* instanceNameForSettings() const override;
    void restoreGeoms(QSettings& settings, const QVariant& value) override;
    QByteArray saveGeoms(QSettings& settings) const override;

    QString settingsKey() const { return m_key; }
    void setSettingsKey(const QString& key) { m_key = key; }

protected:
    explicit WidgetStateSettings(const QString& key);

    /// Restores the stored values the first time it is called (from the
    /// widget's showEvent); later calls do nothing.
    void restoreWidgetStateOnce();
    void saveWidgetState() const;

private:
    QString m_key;
    mutable QByteArray m_group;
    bool m_restored = false;
};

} // namespace QtUIBase
