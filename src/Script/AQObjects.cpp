#include "Script/AQObjects.h"

#include "Script/AQScripts.h"

#include <QWidget>

namespace QtUIBase {

AQObjects AQObjects::s_instance;

void AQObjects::add(QObject* obj, const QString& name)
{
    if (!obj)
        return;
    if (!name.isEmpty()) {
        QString scriptName = name;
        scriptName.replace(QLatin1Char(' '), QLatin1Char('_'));
        obj->setObjectName(scriptName);
    }
    s_instance.m_entries.push_back(Entry{obj, obj->parent()});
    if (s_instance.m_indexValid)
        s_instance.indexEntry(static_cast<int>(s_instance.m_entries.size()) - 1);
    connect(obj, &QObject::destroyed, &s_instance, &AQObjects::onDestroyed, Qt::UniqueConnection);
    connect(obj, &QObject::objectNameChanged, &s_instance, &AQObjects::onObjectNameChanged, Qt::UniqueConnection);
}

void AQObjects::indexEntry(int id)
{
    const Entry& entry = m_entries[static_cast<std::size_t>(id)];
    if (!entry.object)
        return;
    m_byName[entry.object->objectName()].append(id);
    m_byObject[entry.object].append(id);
}

void AQObjects::ensureIndex()
{
    if (m_indexValid)
        return;
    m_byName.clear();
    m_byObject.clear();
    for (int id = 0; id < static_cast<int>(m_entries.size()); ++id)
        indexEntry(id);
    m_indexValid = true;
}

const QVector<int>* AQObjects::idsNamed(const QString& name)
{
    ensureIndex();
    const auto it = m_byName.constFind(name);
    return it == m_byName.constEnd() ? nullptr : &it.value();
}

const QVector<int>* AQObjects::idsOf(const QObject* obj)
{
    ensureIndex();
    const auto it = m_byObject.constFind(obj);
    return it == m_byObject.constEnd() ? nullptr : &it.value();
}

void AQObjects::onObjectNameChanged()
{
    m_indexValid = false;
}

void AQObjects::remove(const QObject* obj)
{
    auto& entries = s_instance.m_entries;
    const std::size_t sizeBefore = entries.size();
    std::vector<const QObject*> work{obj};
    // Index-based: the work list grows while it is walked.
    for (std::size_t w = 0; w < work.size(); ++w) {
        const QObject* current = work[w];
        for (std::size_t i = entries.size(); i-- > 0;) {
            if (entries[i].object == current) {
                entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
            } else if (entries[i].parent == current) {
                work.push_back(entries[i].object);
                entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
    }
    // Ids after a removed entry shift: the index is rebuilt when next asked.
    if (entries.size() != sizeBefore)
        s_instance.m_indexValid = false;
}

void AQObjects::onDestroyed(QObject* obj)
{
    remove(obj);
}

int AQObjects::find(const QString& name)
{
    const QVector<int>* ids = s_instance.idsNamed(name);
    return ids ? ids->first() : -1;
}

int AQObjects::find(const QObject* obj)
{
    const QVector<int>* ids = s_instance.idsOf(obj);
    return ids ? ids->first() : -1;
}

int AQObjects::find(const QObject* parent, const QString& name)
{
    const QVector<int>* ids = s_instance.idsNamed(name);
    if (!ids)
        return -1;
    for (int id : *ids) {
        if (s_instance.m_entries[static_cast<std::size_t>(id)].parent == parent)
            return id;
    }
    return -1;
}

int AQObjects::find(const QString& parentName, const QString& name)
{
    // Several field windows of these kinds can be open at once; scripts mean
    // the one opened last.
    if (parentName == QLatin1String("EMFieldWindow") || parentName == QLatin1String("ThermalFieldWindow"))
        return reversefindobjectID(parentName, name);
    return forwardfindobjectID(parentName, name);
}

int AQObjects::forwardfindobjectID(const QString& parentName, const QString& name)
{
    return findPair(parentName, name, false);
}

int AQObjects::reversefindobjectID(const QString& parentName, const QString& name)
{
    return findPair(parentName, name, true);
}

bool AQObjects::namesMatch(const QString& a, const QString& b)
{
    if (a == b)
        return true;
    return AQScripts::doCaseInsensitiveFind() && a.compare(b, Qt::CaseInsensitive) == 0;
}

int AQObjects::findPair(const QString& parentName, const QString& name, bool fromLast)
{
    // Ignoring case, the first match may be spelled differently from the
    // name asked for: the index by exact name cannot answer that.
    if (AQScripts::doCaseInsensitiveFind())
        return scanPair(parentName, name, fromLast);
    const QVector<int>* parents = s_instance.idsNamed(parentName);
    const QVector<int>* children = s_instance.idsNamed(name);
    if (!parents || !children)
        return -1;
    const auto& entries = s_instance.m_entries;
    const QObject* parent = entries[static_cast<std::size_t>(fromLast ? parents->last() : parents->first())].object;
    if (!parent)
        return -1;
    const int count = children->size();
    for (int k = 0; k < count; ++k) {
        const int id = children->at(fromLast ? count - 1 - k : k);
        if (entries[static_cast<std::size_t>(id)].parent == parent)
            return id;
    }
    return -1;
}

int AQObjects::scanPair(const QString& parentName, const QString& name, bool fromLast)
{
    const auto& entries = s_instance.m_entries;
    const int size = static_cast<int>(entries.size());
    const int first = fromLast ? size - 1 : 0;
    const int step = fromLast ? -1 : 1;
    auto inRange = [size](int i) { return i >= 0 && i < size; };

    const QObject* parent = nullptr;
    for (int i = first; inRange(i); i += step) {
        if (entries[i].object && namesMatch(entries[i].object->objectName(), parentName)) {
            parent = entries[i].object;
            break;
        }
    }
    if (!parent)
        return -1;
    for (int i = first; inRange(i); i += step) {
        if (entries[i].parent == parent && entries[i].object && namesMatch(entries[i].object->objectName(), name))
            return i;
    }
    return -1;
}

QString AQObjects::getObjectInstanceName(int id)
{
    const auto& entries = s_instance.m_entries;
    if (id < 0 || id >= static_cast<int>(entries.size()) || !entries[id].object)
        return QString();
    return entries[id].object->objectName();
}

QObject* AQObjects::getObjectPtr(int id, const QString& name)
{
    if (!name.isEmpty()) {
        const int byName = find(name);
        return byName < 0 ? nullptr : s_instance.m_entries[static_cast<std::size_t>(byName)].object;
    }
    const auto& entries = s_instance.m_entries;
    if (id < 0 || id >= static_cast<int>(entries.size()))
        return nullptr;
    return entries[id].object;
}

const QObject* AQObjects::getParentObjectPtr(int id)
{
    const auto& entries = s_instance.m_entries;
    if (id < 0 || id >= static_cast<int>(entries.size()))
        return nullptr;
    return entries[id].parent;
}

void AQObjects::setParentObject(int id, QObject* parent)
{
    auto& entries = s_instance.m_entries;
    if (id < 0 || id >= static_cast<int>(entries.size()))
        return;
    Entry& entry = entries[id];
    // A parent that is itself scriptable already gives the right script
    // name; only a missing or unregistered one is replaced.
    if (!entry.parent || find(entry.parent) < 0)
        entry.parent = parent;
}

bool AQObjects::dialogActive(const QString& name)
{
    const int id = find(name);
    if (id < 0)
        return false;
    auto* widget = qobject_cast<QWidget*>(s_instance.m_entries[id].object);
    if (!widget)
        return false;
    widget->showNormal();
    widget->raise();
    widget->activateWindow();
    return true;
}

int AQObjects::count()
{
    return static_cast<int>(s_instance.m_entries.size());
}

} // namespace QtUIBase
