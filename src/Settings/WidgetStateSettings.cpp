#include "Settings/WidgetStateSettings.h"

#include <QObject>

namespace QtUIBase {

WidgetStateSettings::WidgetStateSettings(const QString& key)
    : m_key(key)
{
}

const char* WidgetStateSettings::instanceNameForSettings() const
{
    // Asked when the widget is complete, so the class is the most derived.
    const auto* object = dynamic_cast<const QObject*>(this);
    m_group = QByteArray(object ? object->metaObject()->className() : "QWidget") + '/' + m_key.toLatin1();
    return m_group.constData();
}

void WidgetStateSettings::restoreGeoms(QSettings&, const QVariant&) {}

QByteArray WidgetStateSettings::saveGeoms(QSettings&) const
{
    return QByteArray();
}

void WidgetStateSettings::restoreWidgetStateOnce()
{
    if (m_restored)
        return;
    m_restored = true;
    if (!m_key.isEmpty())
        restoreGeometryAndSettings();
}

void WidgetStateSettings::saveWidgetState() const
{
    if (!m_key.isEmpty())
        saveGeometryAndSettings(false);
}

} // namespace QtUIBase
