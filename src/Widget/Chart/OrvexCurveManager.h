#pragma once

#include "OrvexQtUIBase_export.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace Gui::Widget {

class OrvexChartView;
class OrvexCurve;
class OrvexCurveGroup;

/**
 * Owner of a chart's curve groups, with the notion of a current group, and
 * reader/writer of JSON curve files.
 *
 * Made by the chart view, which keeps it in a `std::shared_ptr`; the manager
 * keeps a plain pointer back to the view. Groups are kept in creation order.
 * There is no current group at first; `createCurve` makes one (and makes it
 * current) when needed. Only one curve is highlighted at a time: a curve
 * turning its highlight on clears it on every other curve.
 *
 * File errors are written to the standard error stream, never shown in a
 * dialog.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveManager : public QObject, public std::enable_shared_from_this<OrvexCurveManager>
{
    Q_OBJECT

public:
    explicit OrvexCurveManager(OrvexChartView* view);
    ~OrvexCurveManager() override;

    OrvexChartView* view() const { return m_view; }

    /// Makes a group (an empty id becomes a UUID); an existing id answers the
    /// group already there. Does not change the current group.
    std::shared_ptr<OrvexCurveGroup> createGroup(std::string id);
    /// The group with @p id, or null.
    std::shared_ptr<OrvexCurveGroup> findGroup(const std::string& id) const;
    /// The group with @p id, made first when missing.
    std::shared_ptr<OrvexCurveGroup> getGroup(const std::string& id);
    /// All groups in order; only the visible ones when @p visibleOnly.
    std::vector<std::shared_ptr<OrvexCurveGroup>> getAllGroups(bool visibleOnly = false) const;
    std::vector<std::string> groupIds() const;
    /// Emits the group's `beforeGroupDeleted()`, removes its curves, drops it.
    bool removeGroup(const std::string& id);
    void removeAll();

    std::shared_ptr<OrvexCurveGroup> getCurrentGroup() const;
    const std::string& currentGroupId() const { return m_currentGroupId; }
    /// Stores @p id (also one without a group yet) and emits currentGroupChanged().
    void setCurrentGroup(const std::string& id);

    /// A new curve in the current group; a group is made and made current
    /// when there is none.
    std::shared_ptr<OrvexCurve> createCurve(std::string id);
    std::shared_ptr<OrvexCurve> createCurve(const std::vector<double>& x, const std::vector<double>& y,
                                            std::string id);
    std::shared_ptr<OrvexCurve> createCurve(std::vector<double>&& x, std::vector<double>&& y, std::string id);
    /// Searches every group, in order.
    std::shared_ptr<OrvexCurve> getCurve(const std::string& id) const;
    std::shared_ptr<OrvexCurve> getCurveByTitle(const std::string& title) const;
    bool removeCurve(const std::string& id);

    /**
     * Writes every group and curve to a JSON curve file. Without @p path the
     * user picks the file ("Export JSON file"); a cancelled dialog answers
     * false. Colours and curve types are not written.
     */
    bool exportData(const QString& path = QString());
    /**
     * Replaces the model by the content of a JSON curve file. Without @p path
     * the user picks the file ("Import JSON file"). A file that cannot be
     * opened or does not parse leaves the model untouched and answers false.
     */
    bool importData(const QString& path = QString());

    /// The file content `exportData` writes.
    QByteArray exportToBytes() const;
    /// The import step after reading the file; false when @p bytes do not
    /// parse to a JSON document (the model is then untouched).
    bool importFromBytes(const QByteArray& bytes);

public slots:
    void afterCurveAdded(OrvexCurve* curve);
    void onCurveRemoving(OrvexCurve* curve);
    void handleHighlightChanged(bool highlighted);

signals:
    void currentGroupChanged();
    /// A curve joined one of the groups (the view builds its series).
    void curveAdded(OrvexCurve* curve);
    /// A curve is about to leave its group; it is still alive.
    void curveRemoving(OrvexCurve* curve);

private:
    OrvexChartView* m_view;
    std::vector<std::shared_ptr<OrvexCurveGroup>> m_groups;
    std::string m_currentGroupId;
};

} // namespace Gui::Widget
