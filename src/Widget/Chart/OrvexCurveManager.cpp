#include "Widget/Chart/OrvexCurveManager.h"

#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>
#include <iostream>

namespace Gui::Widget {

namespace {

const QString kJsonFilter = QStringLiteral("JSON (*.json)");

// The chart file messages separate their words with no-break spaces
// (U+00A0, written as UTF-8), which tools scanning the output rely on.
std::string withNoBreakSpaces(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == ' ')
            result += "\xC2\xA0";
        else
            result += c;
    }
    return result;
}

QJsonArray toJsonArray(const std::vector<double>& values)
{
    QJsonArray array;
    for (const double v : values)
        array.append(v);
    return array;
}

std::vector<double> toDoubles(const QJsonArray& array)
{
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue& v : array)
        values.push_back(v.toDouble());
    return values;
}

std::string stdString(const QJsonObject& object, const QString& key)
{
    return object.value(key).toString().toStdString();
}

// Only Qt's real pen styles are taken; anything else falls back to a solid line.
Qt::PenStyle penStyle(int value)
{
    return value >= Qt::NoPen && value <= Qt::CustomDashLine ? static_cast<Qt::PenStyle>(value) : Qt::SolidLine;
}

QJsonObject curveToJson(OrvexCurve& curve)
{
    QJsonObject object;
    object.insert(QStringLiteral("id"), QString::fromStdString(curve.id()));
    object.insert(QStringLiteral("title"), QString::fromStdString(curve.title()));
    object.insert(QStringLiteral("suffix"), QString::fromStdString(curve.suffix()));
    object.insert(QStringLiteral("lineStyle"), static_cast<int>(curve.lineStyle()));
    object.insert(QStringLiteral("width"), curve.width());
    object.insert(QStringLiteral("visible"), curve.visible());
    object.insert(QStringLiteral("barWidth"), curve.barWidth());
    object.insert(QStringLiteral("xUnit"), QString::fromStdString(curve.xUnit()));
    object.insert(QStringLiteral("yUnit"), QString::fromStdString(curve.yUnit()));
    object.insert(QStringLiteral("xLabel"), QString::fromStdString(curve.xLabel()));
    object.insert(QStringLiteral("yLabel"), QString::fromStdString(curve.yLabel()));
    object.insert(QStringLiteral("X"), toJsonArray(curve.xData(OrvexCurveDataType::RawData)));
    object.insert(QStringLiteral("Y"), toJsonArray(curve.yData(OrvexCurveDataType::RawData)));
    return object;
}

void curveFromJson(OrvexCurveGroup& group, const QJsonObject& object)
{
    std::vector<double> x = toDoubles(object.value(QStringLiteral("X")).toArray());
    std::vector<double> y = toDoubles(object.value(QStringLiteral("Y")).toArray());
    const auto curve = group.createCurve(stdString(object, QStringLiteral("id")));
    curve->setTitle(stdString(object, QStringLiteral("title")));
    curve->setSuffix(stdString(object, QStringLiteral("suffix")));
    curve->setLineStyle(penStyle(object.value(QStringLiteral("lineStyle")).toInt()));
    curve->setWidth(object.value(QStringLiteral("width")).toInt());
    curve->setVisible(object.value(QStringLiteral("visible")).toBool());
    curve->setBarWidth(object.value(QStringLiteral("barWidth")).toInt());
    curve->setXUnit(stdString(object, QStringLiteral("xUnit")));
    curve->setYUnit(stdString(object, QStringLiteral("yUnit")));
    curve->setXLabel(stdString(object, QStringLiteral("xLabel")));
    curve->setYLabel(stdString(object, QStringLiteral("yLabel")));
    // Files carry a "curveType", but imported curves keep the default type:
    // the value is read and deliberately not applied.
    const int fileCurveType = object.value(QStringLiteral("curveType")).toInt();
    Q_UNUSED(fileCurveType)
    curve->setData(std::move(x), std::move(y));
    emit curve->dataChanged();
}

} // namespace

OrvexCurveManager::OrvexCurveManager(OrvexChartView* view)
    : m_view(view)
{
}

OrvexCurveManager::~OrvexCurveManager() = default;

// -------------------------------------------------------------- groups

std::shared_ptr<OrvexCurveGroup> OrvexCurveManager::createGroup(std::string id)
{
    if (id.empty())
        id = QUuid::createUuid().toString().toStdString();
    if (auto existing = findGroup(id))
        return existing;
    auto group = std::make_shared<OrvexCurveGroup>(shared_from_this(), std::move(id));
    connect(group.get(), &OrvexCurveGroup::curveAdded, this, &OrvexCurveManager::afterCurveAdded);
    connect(group.get(), &OrvexCurveGroup::curveRemoving, this, &OrvexCurveManager::onCurveRemoving);
    m_groups.push_back(group);
    return group;
}

std::shared_ptr<OrvexCurveGroup> OrvexCurveManager::findGroup(const std::string& id) const
{
    const auto it = std::find_if(m_groups.begin(), m_groups.end(), [&](const auto& g) { return g->id() == id; });
    return it == m_groups.end() ? nullptr : *it;
}

std::shared_ptr<OrvexCurveGroup> OrvexCurveManager::getGroup(const std::string& id)
{
    if (auto group = findGroup(id))
        return group;
    return createGroup(id);
}

std::vector<std::shared_ptr<OrvexCurveGroup>> OrvexCurveManager::getAllGroups(bool visibleOnly) const
{
    std::vector<std::shared_ptr<OrvexCurveGroup>> result;
    std::copy_if(m_groups.begin(), m_groups.end(), std::back_inserter(result),
                 [&](const auto& g) { return !visibleOnly || g->visible(); });
    return result;
}

std::vector<std::string> OrvexCurveManager::groupIds() const
{
    std::vector<std::string> ids;
    ids.reserve(m_groups.size());
    for (const auto& group : m_groups)
        ids.push_back(group->id());
    return ids;
}

bool OrvexCurveManager::removeGroup(const std::string& id)
{
    const auto it = std::find_if(m_groups.begin(), m_groups.end(), [&](const auto& g) { return g->id() == id; });
    if (it == m_groups.end())
        return false;
    const auto group = *it;
    emit group->beforeGroupDeleted();
    group->removeAll();
    disconnect(group.get(), nullptr, this, nullptr);
    m_groups.erase(std::find(m_groups.begin(), m_groups.end(), group));
    if (m_currentGroupId == id)
        m_currentGroupId.clear();
    return true;
}

void OrvexCurveManager::removeAll()
{
    while (!m_groups.empty())
        removeGroup(m_groups.back()->id());
}

std::shared_ptr<OrvexCurveGroup> OrvexCurveManager::getCurrentGroup() const
{
    return findGroup(m_currentGroupId);
}

void OrvexCurveManager::setCurrentGroup(const std::string& id)
{
    m_currentGroupId = id;
    emit currentGroupChanged();
}

// -------------------------------------------------------------- curves

std::shared_ptr<OrvexCurve> OrvexCurveManager::createCurve(std::string id)
{
    auto group = getCurrentGroup();
    if (!group) {
        group = createGroup(std::string());
        setCurrentGroup(group->id());
    }
    return group->createCurve(std::move(id));
}

std::shared_ptr<OrvexCurve> OrvexCurveManager::createCurve(const std::vector<double>& x,
                                                           const std::vector<double>& y, std::string id)
{
    auto curve = createCurve(std::move(id));
    curve->setData(x, y);
    return curve;
}

std::shared_ptr<OrvexCurve> OrvexCurveManager::createCurve(std::vector<double>&& x, std::vector<double>&& y,
                                                           std::string id)
{
    auto curve = createCurve(std::move(id));
    curve->setData(std::move(x), std::move(y));
    return curve;
}

std::shared_ptr<OrvexCurve> OrvexCurveManager::getCurve(const std::string& id) const
{
    for (const auto& group : m_groups) {
        if (auto curve = group->getCurve(id))
            return curve;
    }
    return nullptr;
}

std::shared_ptr<OrvexCurve> OrvexCurveManager::getCurveByTitle(const std::string& title) const
{
    for (const auto& group : m_groups) {
        if (auto curve = group->getCurveByTitle(title))
            return curve;
    }
    return nullptr;
}

bool OrvexCurveManager::removeCurve(const std::string& id)
{
    for (const auto& group : m_groups) {
        if (group->removeCurve(id))
            return true;
    }
    return false;
}

void OrvexCurveManager::afterCurveAdded(OrvexCurve* curve)
{
    connect(curve, &OrvexCurve::highlightChanged, this, &OrvexCurveManager::handleHighlightChanged);
    emit curveAdded(curve);
}

void OrvexCurveManager::onCurveRemoving(OrvexCurve* curve)
{
    disconnect(curve, nullptr, this, nullptr);
    emit curveRemoving(curve);
}

void OrvexCurveManager::handleHighlightChanged(bool highlighted)
{
    if (!highlighted)
        return;
    const auto* source = qobject_cast<OrvexCurve*>(sender());
    for (const auto& group : m_groups) {
        for (const auto& curve : group->getAllCurves(false)) {
            if (curve.get() != source)
                curve->setHighlight(false);
        }
    }
}

// ---------------------------------------------------------------- JSON

QByteArray OrvexCurveManager::exportToBytes() const
{
    QJsonArray groups;
    for (const auto& group : m_groups) {
        QJsonArray curves;
        for (const auto& curve : group->getAllCurves(false))
            curves.append(curveToJson(*curve));
        QJsonObject groupObject;
        groupObject.insert(QStringLiteral("id"), QString::fromStdString(group->id()));
        groupObject.insert(QStringLiteral("customSymbol"), QString::fromStdString(group->customSymbol()));
        groupObject.insert(QStringLiteral("visible"), group->visible());
        groupObject.insert(QStringLiteral("curves"), curves);
        groups.append(groupObject);
    }
    QJsonObject root;
    root.insert(QStringLiteral("groups"), groups);
    root.insert(QStringLiteral("currentGroupId"), QString::fromStdString(m_currentGroupId));
    return QJsonDocument(root).toJson();
}

bool OrvexCurveManager::importFromBytes(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (document.isNull())
        return false;
    removeAll();
    const QJsonObject root = document.object();
    for (const QJsonValue& groupValue : root.value(QStringLiteral("groups")).toArray()) {
        const QJsonObject groupObject = groupValue.toObject();
        const auto group = createGroup(stdString(groupObject, QStringLiteral("id")));
        group->setVisible(groupObject.value(QStringLiteral("visible")).toBool());
        group->setCustomSymbol(stdString(groupObject, QStringLiteral("customSymbol")));
        for (const QJsonValue& curveValue : groupObject.value(QStringLiteral("curves")).toArray())
            curveFromJson(*group, curveValue.toObject());
    }
    setCurrentGroup(stdString(root, QStringLiteral("currentGroupId")));
    return true;
}

bool OrvexCurveManager::exportData(const QString& path)
{
    QString fileName = path;
    if (fileName.isEmpty()) {
        fileName = QFileDialog::getSaveFileName(nullptr, QStringLiteral("Export JSON file"), QDir::currentPath(),
                                                kJsonFilter);
        if (fileName.isEmpty())
            return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::cerr << withNoBreakSpaces("Cannot open file for writing: ") << file.errorString().toStdString()
                  << std::endl;
        return false;
    }
    const QByteArray bytes = exportToBytes();
    const bool written = file.write(bytes) == bytes.size();
    file.close();
    return written;
}

bool OrvexCurveManager::importData(const QString& path)
{
    QString fileName = path;
    if (fileName.isEmpty()) {
        fileName = QFileDialog::getOpenFileName(nullptr, QStringLiteral("Import JSON file"), QString(), kJsonFilter);
        if (fileName.isEmpty())
            return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        std::cerr << withNoBreakSpaces("Cannot open file for reading: ") << std::endl;
        return false;
    }
    const QByteArray bytes = file.readAll();
    file.close();
    if (!importFromBytes(bytes)) {
        std::cerr << withNoBreakSpaces("Failed to parse JSON file") << std::endl;
        return false;
    }
    return true;
}

} // namespace Gui::Widget
