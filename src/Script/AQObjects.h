#pragma once

#include "OrvexQtUIBase_export.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVector>

#include <vector>

namespace QtUIBase {

/**
 * The process-wide registry of scriptable objects.
 *
 * A scriptable object registers under its script name (its object name,
 * blanks turned into "_") and is found again by it when a script line is
 * replayed. Each entry also remembers a parent: the object's QObject parent
 * at registration, or one set later with setParentObject(). An object's id is
 * its current index in registration order; ids shift down when earlier
 * entries go, so an id is only valid until the next removal. Not found is -1.
 *
 * Entries are removed when their object is destroyed, together with every
 * entry whose parent is a removed object (transitively), even while those
 * children are still alive.
 *
 * Lookups answer exactly what a scan of the list in registration order
 * would; behind them, an index by name and by object is rebuilt whenever an
 * entry goes or a registered object is renamed, so replaying against
 * thousands of registered widgets does not scan them all for every line.
 */
class ORVEXQTUIBASE_EXPORT AQObjects : public QObject
{
    Q_OBJECT

public:
    /// Registers @p obj. A non-empty @p name, with blanks replaced by "_",
    /// becomes the object name; an empty one keeps the current object name.
    /// Registering an object twice makes two entries.
    static void add(QObject* obj, const QString& name);
    /// Unregisters @p obj and every entry whose parent is a removed object.
    static void remove(const QObject* obj);

    /// First entry whose object name is @p name (always case-sensitive).
    static int find(const QString& name);
    static int find(const QObject* obj);
    /// First entry whose entry parent is @p parent and whose name is @p name.
    static int find(const QObject* parent, const QString& name);
    /// Two-name lookup: under "EMFieldWindow" and "ThermalFieldWindow" the
    /// object registered last wins, under any other parent name the first.
    static int find(const QString& parentName, const QString& name);
    static int forwardfindobjectID(const QString& parentName, const QString& name);
    static int reversefindobjectID(const QString& parentName, const QString& name);

    /// Object name of entry @p id, or an empty string past the end.
    static QString getObjectInstanceName(int id);
    /// With a non-empty @p name, the first object of that exact name
    /// (ignoring @p id); otherwise the object of entry @p id, or null.
    static QObject* getObjectPtr(int id, const QString& name = QString());
    static const QObject* getParentObjectPtr(int id);
    /// Gives entry @p id the parent @p parent, unless its current parent is
    /// itself a registered object.
    static void setParentObject(int id, QObject* parent);
    /// Shows, raises and activates the registered widget named @p name.
    static bool dialogActive(const QString& name);

    /// Number of entries (for diagnostics and tests).
    static int count();

private Q_SLOTS:
    void onDestroyed(QObject* obj);
    void onObjectNameChanged();

private:
    struct Entry
    {
        QObject* object = nullptr;
        QObject* parent = nullptr;
    };

    AQObjects() = default;
    static bool namesMatch(const QString& a, const QString& b);
    static int findPair(const QString& parentName, const QString& name, bool fromLast);
    static int scanPair(const QString& parentName, const QString& name, bool fromLast);
    // Ids registered under a name / for an object, ascending; null when none.
    const QVector<int>* idsNamed(const QString& name);
    const QVector<int>* idsOf(const QObject* obj);
    void indexEntry(int id);
    void ensureIndex();

    std::vector<Entry> m_entries;
    QHash<QString, QVector<int>> m_byName;
    QHash<const QObject*, QVector<int>> m_byObject;
    bool m_indexValid = true;

    static AQObjects s_instance;
};

} // namespace QtUIBase
