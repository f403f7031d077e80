#pragma once

#include "OrvexQtUIBase_export.h"

#include <QByteArray>
#include <QSettings>
#include <QVariant>

namespace QtUIBase {
namespace Pvt {

/**
 * The non-template half of the window settings mix-in.
 *
 * restoreGeometryAndSettings() and saveGeometryAndSettings() open the
 * user's settings store (AQSettings with subProductName() as application)
 * and work in the group instanceNameForSettings(). Geometry is kept under
 * "SizeAndPos"; the window's own values are read and written by its
 * RestoreSettings()/SaveSettings() overrides, but never while a script is
 * recorded or replayed, so a replay starts from and leaves the same state.
 */
class ORVEXQTUIBASE_EXPORT SettingsSupport
{
public:
    /// The window's own values; nothing by default.
    virtual void RestoreSettings(QSettings& settings);
    virtual void SaveSettings(QSettings& settings) const;
    virtual ~SettingsSupport();
    /// Settings application name; "Main" by default.
    virtual const char* subProductName() const;
    /// Group of the window's values: its class name.
    virtual const char* instanceNameForSettings() const = 0;
    virtual void restoreGeoms(QSettings& settings, const QVariant& value) = 0;
    /// Geometry to store under "SizeAndPos"; empty stores nothing.
    virtual QByteArray saveGeoms(QSettings& settings) const = 0;
    /// Puts the window back to the geometry it had before any restore.
    virtual void RestoreDefaultSettings() = 0;

protected:
    void restoreGeometryAndSettings();
    void saveGeometryAndSettings(bool skipOwnSettings) const;
};

} // namespace Pvt

/**
 * Settings persistence mixed into a window class T (T derives from
 * SettingsSupport<T>): the window's geometry is stored under its class name,
 * and T adds values of its own by overriding SaveSettings/RestoreSettings.
 *
 * The default geometry is the window's geometry when it is restored for the
 * first time; RestoreDefaultSettings() goes back to it. defaultState is
 * kept for main windows (their dock and toolbar layout).
 */
template <typename T>
class SettingsSupport : public Pvt::SettingsSupport
{
public:
    const char* instanceNameForSettings() const override { return window().metaObject()->className(); }

    void restoreGeoms(QSettings&, const QVariant& value) override
    {
        if (m_defaultGeometry.isEmpty())
            m_defaultGeometry = window().saveGeometry();
        if (value.isValid())
            window().restoreGeometry(value.toByteArray());
    }

    QByteArray saveGeoms(QSettings&) const override { return window().saveGeometry(); }

    void RestoreDefaultSettings() override { window().restoreGeometry(m_defaultGeometry); }

protected:
    QByteArray m_defaultGeometry;
    QByteArray m_defaultState;

private:
    T& window() { return static_cast<T&>(*this); }
    const T& window() const { return static_cast<const T&>(*this); }
};

} // namespace QtUIBase
