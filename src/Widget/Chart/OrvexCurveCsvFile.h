#pragma once

#include "OrvexQtUIBase_export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace Gui::Widget {

class OrvexCurve;
class OrvexCurveGroup;
class OrvexCurveManager;

/**
 * Curve data as text tables, for exchange with other tools.
 *
 * A table holds one shared X column and one Y column per curve. Two flavours
 * share the layout and differ in the separator: a comma, or a single blank.
 *
 *     #Title,<title 1>,<title 2>...
 *     #Suffix,<suffix 1>,...
 *     #X-Unit,<X unit 1>,...
 *     #Y-Unit,<Y unit 1>,...
 *     <x>,<y 1>,<y 2>...          one row per distinct X, ascending
 *
 * Numbers are written as `QString("%1").arg(v, 0, 'g')` would write them (six
 * significant digits). A curve without a point at a row's X leaves a missing
 * value there: a single blank in the comma flavour, "nan" in the blank one.
 * Export writes the visible curves of a group in their current data type;
 * a curve with several points at one X contributes the first of them, and
 * points with a NaN X are left out (they belong to no row).
 *
 * Import reads header texts through the "GB2312" codec (or the codec of a
 * Unicode byte-order mark, which a text stream would honour as well) and
 * makes one curve per Y column. The rules where files from other tools leave
 * room for choice:
 *
 * - Hand-over: the comma flavour reads a file as blank-separated when its
 *   first data line (the first non-empty line not starting with "#") has no
 *   comma; a file without data lines is judged by its first line.
 * - Splitting: data lines split on the separator with empty parts skipped;
 *   in the blank flavour any run of blanks and tabs separates. Header lines
 *   keep empty cells, so that a curve without a suffix or unit does not
 *   shift the texts of the curves after it. Lines starting with "#" other
 *   than the four headers are comments.
 * - Missing values: a cell that is blank or reads as NaN ("nan") is missing;
 *   that point is left out of its curve, and the other columns of the row
 *   still count.
 * - Cells that do not convert (`QString::toDouble` fails): the whole line is
 *   skipped, as is a line whose X is missing. Nothing is guessed.
 * - Columns: the widest accepted data line sets the number of curves; header
 *   cells beyond it are ignored, so a file without data makes no curves.
 *
 * Failures go to the standard error stream ("Cannot open file for writing:",
 * "Cannot open file for reading: ", "Empty file: ") and leave the curves as
 * they were.
 */
class ORVEXQTUIBASE_EXPORT OrvexCurveCsvFile
{
public:
    enum class Flavour {
        Comma, ///< "," between cells, missing values as " "
        Blank, ///< " " between cells, missing values as "nan"
    };

    /// One Y column as read, with the header texts found for it.
    struct Column
    {
        std::vector<double> x;
        std::vector<double> y;
        std::optional<QString> title;
        std::optional<QString> suffix;
        std::optional<QString> xUnit;
        std::optional<QString> yUnit;
    };

    /// Called while a file is read: bytes done out of the total.
    using Progress = std::function<void(std::int64_t done, std::int64_t total)>;

    // ------------------------------------------------------------ the view
    /// Exports the visible curves of the manager's current group to @p path
    /// (asked for when empty). False when cancelled or not written.
    static bool exportData(const OrvexCurveManager& manager, const std::string& path, Flavour flavour,
                           QWidget* dialogParent = nullptr);
    /// Imports @p files (asked for when empty) into the manager's current
    /// group, made first when there is none and a file yields curves.
    /// Returns the number of curves made.
    static int importData(OrvexCurveManager& manager, const std::vector<std::string>& files, Flavour flavour,
                          QWidget* dialogParent = nullptr);

    // ------------------------------------------------------------ export
    /// Writes the visible curves of @p group to @p path (asked for when empty;
    /// ".csv" appended when the suffix is another).
    static bool exportGroup(const OrvexCurveGroup& group, const QString& path, Flavour flavour,
                            QWidget* dialogParent = nullptr);
    /// The file text for @p curves, all of them, in their current data type.
    static QByteArray format(const std::vector<std::shared_ptr<OrvexCurve>>& curves, Flavour flavour);

    // ------------------------------------------------------------ import
    /// Reads each file into new curves of @p group; unreadable and empty files
    /// are reported and skipped. Returns the number of curves made.
    static int importFiles(OrvexCurveGroup& group, const QStringList& files, Flavour flavour,
                           QWidget* dialogParent = nullptr);
    /// The columns of a file's bytes, or nothing when the bytes hold no data.
    static std::vector<Column> parse(const QByteArray& bytes, Flavour flavour, const Progress& progress = {});
    /// Makes one curve per column in @p group; returns how many.
    static int addCurves(OrvexCurveGroup& group, std::vector<Column>&& columns);

    // ------------------------------------------------------------ helpers
    /// @p path with ".csv" appended unless its suffix is "csv" already.
    static QString withCsvSuffix(const QString& path);
    /// Save dialog ("Export CSV file"); empty when cancelled.
    static QString askExportPath(QWidget* parent = nullptr);
    /// Open dialog ("Import CSV file") for one or more files.
    static QStringList askImportFiles(QWidget* parent = nullptr);
    /// The flavour a file of @p bytes is read in when opened as @p flavour.
    static Flavour effectiveFlavour(const QByteArray& bytes, Flavour flavour);
};

} // namespace Gui::Widget
