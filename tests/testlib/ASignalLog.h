#pragma once

#include <QObject>
#include <QStringList>

/**
 * Listens to the application-facing signals of scriptable objects (every
 * signal whose name starts with "A" and a capital letter or "v", such as
 * AClicked and AvalueChanged) and logs each emission, in order, as
 * "object:signal(arg,arg)". Colours are logged as "#rrggbb", points as
 * "x;y", other arguments through QVariant::toString().
 *
 * Connecting counts as listening: wrappers that connect lazily start
 * recording once watched.
 */
class ASignalLog : public QObject
{
public:
    explicit ASignalLog(QObject* parent = nullptr);

    /// Watches every A signal of @p object (connect before operating),
    /// except the signals named in @p except (such as "ATextChanged").
    void watch(QObject* object, const QStringList& except = QStringList());
    /// Watches @p object and every descendant.
    void watchTree(QObject* root);

    QStringList entries() const { return m_entries; }
    void clear() { m_entries.clear(); }

    int qt_metacall(QMetaObject::Call call, int id, void** args) override;

private:
    QStringList m_entries;
};
