#include "Widget/Chart/OrvexCurveCsvFile.h"

#include "Script/AQScriptBackend.h"
#include "Widget/Chart/OrvexCurve.h"
#include "Widget/Chart/OrvexCurveGroup.h"
#include "Widget/Chart/OrvexCurveManager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QProgressDialog>
#include <QTextCodec>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iostream>
#include <limits>
#include <functional>

namespace Gui::Widget {

namespace {

using Flavour = OrvexCurveCsvFile::Flavour;
using Column = OrvexCurveCsvFile::Column;

const QString kCsvFilter = QStringLiteral("CSV (*.csv)");

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
// Output is handed to the file in pieces of about this size.
constexpr std::size_t kWriteChunk = 1 << 20;
// Files below this size are read too fast for a progress dialog to matter.
constexpr qint64 kProgressMinimumBytes = 1 << 20;
constexpr int kProgressDelayMs = 500;
constexpr int kProgressSteps = 1000;
// Upper bound of the values reserved ahead for the columns of one file.
constexpr std::size_t kReserveLimit = std::size_t(1) << 25;

char separator(Flavour flavour)
{
    return flavour == Flavour::Comma ? ',' : ' ';
}

// ------------------------------------------------------------ numbers out

// Writes @p v exactly as QString("%1").arg(v, 0, 'g') does: six significant
// digits in %g layout, ties rounded away from zero, "nan", "inf", and no sign
// on zero. Returns the end of the text; at most 16 characters are written.
char* writeNumber(char* out, double v)
{
    if (std::isnan(v)) {
        std::memcpy(out, "nan", 3);
        return out + 3;
    }
    if (std::isinf(v)) {
        if (v < 0)
            *out++ = '-';
        std::memcpy(out, "inf", 3);
        return out + 3;
    }
    if (v == 0) {
        *out++ = '0';
        return out;
    }

    // Seven correctly rounded digits decide the sixth, except when the
    // seventh is a 5: then what follows it decides, and an exact tie is left
    // to Qt itself.
    char sci[40];
    std::to_chars_result r = std::to_chars(sci, sci + sizeof sci, v, std::chars_format::scientific, 6);
    const char* s = sci[0] == '-' ? sci + 1 : sci;
    char digits[7] = {s[0], s[2], s[3], s[4], s[5], s[6], s[7]};
    int exponent = 0;
    std::from_chars(s[9] == '+' ? s + 10 : s + 9, r.ptr, exponent);

    bool up = digits[6] > '5';
    if (digits[6] == '5') {
        char precise[48];
        r = std::to_chars(precise, precise + sizeof precise, v, std::chars_format::scientific, 30);
        // The first six digits are the same here; the seventh may read 4
        // when the 5 came from rounding up a run of nines.
        const char* seventh = (precise[0] == '-' ? precise + 1 : precise) + 7;
        const char* tailEnd = std::find(seventh + 1, static_cast<const char*>(r.ptr), 'e');
        const bool zeroTail = std::all_of(seventh + 1, tailEnd, [](char c) { return c == '0'; });
        if (*seventh == '5' && zeroTail) {
            const QByteArray qt = QString::number(v, 'g', 6).toLatin1();
            std::memcpy(out, qt.constData(), static_cast<std::size_t>(qt.size()));
            return out + qt.size();
        }
        up = *seventh >= '5';
    }
    if (up) {
        int i = 5;
        while (i >= 0 && digits[i] == '9')
            digits[i--] = '0';
        if (i >= 0) {
            ++digits[i];
        } else {
            digits[0] = '1';
            ++exponent;
        }
    }

    int count = 6;
    while (count > 1 && digits[count - 1] == '0')
        --count;
    if (v < 0)
        *out++ = '-';
    if (exponent < -4 || exponent >= 6) {
        *out++ = digits[0];
        if (count > 1) {
            *out++ = '.';
            std::memcpy(out, digits + 1, static_cast<std::size_t>(count - 1));
            out += count - 1;
        }
        *out++ = 'e';
        *out++ = exponent < 0 ? '-' : '+';
        const int magnitude = std::abs(exponent);
        if (magnitude >= 100)
            *out++ = static_cast<char>('0' + magnitude / 100);
        *out++ = static_cast<char>('0' + magnitude / 10 % 10);
        *out++ = static_cast<char>('0' + magnitude % 10);
    } else if (exponent >= 0) {
        for (int i = 0; i <= exponent; ++i)
            *out++ = i < count ? digits[i] : '0';
        if (count > exponent + 1) {
            *out++ = '.';
            for (int i = exponent + 1; i < count; ++i)
                *out++ = digits[i];
        }
    } else {
        *out++ = '0';
        *out++ = '.';
        for (int i = 0; i < -exponent - 1; ++i)
            *out++ = '0';
        std::memcpy(out, digits, static_cast<std::size_t>(count));
        out += count;
    }
    return out;
}

// ------------------------------------------------------------ export

// One curve's points in ascending X, the first point per X, NaN X left out.
class SortedPoints
{
public:
    explicit SortedPoints(const OrvexCurve& curve)
        : m_x(curve.xData())
        , m_y(curve.yData())
    {
        const std::size_t n = std::min(m_x.size(), m_y.size());
        bool ascending = true;
        for (std::size_t i = 0; i < n && ascending; ++i)
            ascending = !std::isnan(m_x[i]) && (i == 0 || m_x[i - 1] < m_x[i]);
        if (ascending) {
            m_size = n;
            return;
        }
        m_order.reserve(n);
        for (std::size_t i = 0; i < n; ++i) {
            if (!std::isnan(m_x[i]))
                m_order.push_back(i);
        }
        std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) { return m_x[a] < m_x[b]; });
        m_order.erase(std::unique(m_order.begin(), m_order.end(),
                                  [this](std::size_t a, std::size_t b) { return m_x[a] == m_x[b]; }),
                      m_order.end());
        m_size = m_order.size();
    }

    bool done() const { return m_next >= m_size; }
    double x() const { return m_x[index()]; }
    double y() const { return m_y[index()]; }
    void advance() { ++m_next; }

private:
    std::size_t index() const { return m_order.empty() ? m_next : m_order[m_next]; }

    const std::vector<double>& m_x;
    const std::vector<double>& m_y;
    std::vector<std::size_t> m_order;
    std::size_t m_size = 0;
    std::size_t m_next = 0;
};

QByteArray headerLine(const char* name, const std::vector<std::shared_ptr<OrvexCurve>>& curves,
                      const std::string& (OrvexCurve::*text)() const, Flavour flavour)
{
    QString line = QLatin1String(name);
    for (const auto& curve : curves) {
        line += QLatin1Char(separator(flavour));
        line += QString::fromStdString(((*curve).*text)());
    }
    line += QLatin1Char('\n');
    return QTextCodec::codecForLocale()->fromUnicode(line);
}

// Hands the table text to @p sink in pieces: sink(const char*, std::size_t).
template <typename Sink>
void writeTable(const std::vector<std::shared_ptr<OrvexCurve>>& curves, Flavour flavour, Sink&& sink)
{
    for (const auto& [name, text] : {std::pair{"#Title", &OrvexCurve::title}, std::pair{"#Suffix", &OrvexCurve::suffix},
                                     std::pair{"#X-Unit", &OrvexCurve::xUnit}, std::pair{"#Y-Unit", &OrvexCurve::yUnit}}) {
        const QByteArray line = headerLine(name, curves, text, flavour);
        sink(line.constData(), static_cast<std::size_t>(line.size()));
    }

    std::vector<SortedPoints> points;
    points.reserve(curves.size());
    for (const auto& curve : curves)
        points.emplace_back(*curve);

    const char sep = separator(flavour);
    // A number takes at most 16 characters, a row one more per cell.
    const std::size_t rowLimit = (curves.size() + 1) * 17 + 1;
    std::size_t rows = 0;
    for (const auto& curve : curves)
        rows += curve->dataSize();
    const std::size_t capacity = std::min(kWriteChunk, rows * rowLimit) + rowLimit;
    const std::unique_ptr<char[]> buffer(new char[capacity]);
    char* out = buffer.get();
    char* const flushAt = buffer.get() + capacity - rowLimit;
    while (true) {
        bool any = false;
        double x = 0;
        for (const auto& p : points) {
            if (!p.done() && (!any || p.x() < x)) {
                x = p.x();
                any = true;
            }
        }
        if (!any)
            break;
        out = writeNumber(out, x);
        for (auto& p : points) {
            *out++ = sep;
            double y = kMissing;
            if (!p.done() && p.x() == x) {
                y = p.y();
                p.advance();
            }
            if (std::isnan(y) && flavour == Flavour::Comma)
                *out++ = ' ';
            else
                out = writeNumber(out, y);
        }
        *out++ = '\n';
        if (out > flushAt) {
            sink(buffer.get(), static_cast<std::size_t>(out - buffer.get()));
            out = buffer.get();
        }
    }
    if (out != buffer.get())
        sink(buffer.get(), static_cast<std::size_t>(out - buffer.get()));
}

// ------------------------------------------------------------ numbers in

enum class Cell { Value, Missing, Bad };

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool isDigitOrPoint(char c)
{
    return (c >= '0' && c <= '9') || c == '.';
}

Cell classify(bool ok, double value)
{
    if (!ok)
        return Cell::Bad;
    return std::isnan(value) ? Cell::Missing : Cell::Value;
}

Cell readCell(const QString& text, double& value)
{
    if (text.trimmed().isEmpty())
        return Cell::Missing;
    bool ok = false;
    value = text.toDouble(&ok);
    return classify(ok, value);
}

Cell readCell(QStringView text, double& value)
{
    return readCell(text.toString(), value);
}

// Plain decimal numbers are converted here; everything else ("inf", "nan",
// values out of range, oddities) goes to QString::toDouble, which decides.
Cell readCell(const char* begin, const char* end, double& value)
{
    while (begin < end && isBlank(*begin))
        ++begin;
    while (end > begin && isBlank(end[-1]))
        --end;
    if (begin == end)
        return Cell::Missing;
    const char* digits = *begin == '+' || *begin == '-' ? begin + 1 : begin;
    if (digits < end && isDigitOrPoint(*digits)) {
        const auto r = std::from_chars(*begin == '+' ? digits : begin, end, value);
        if (r.ec == std::errc() && r.ptr == end)
            return Cell::Value;
    }
    return readCell(QString::fromLatin1(begin, static_cast<int>(end - begin)), value);
}

bool isDataSeparator(char c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r';
}

bool isDataSeparator(QChar c)
{
    return c.unicode() < 0x80 && isDataSeparator(static_cast<char>(c.unicode()));
}

// Calls onCell(begin, end) for each cell of a data line, empty parts skipped.
template <typename Char, typename OnCell>
void splitData(const Char* begin, const Char* end, Flavour flavour, OnCell&& onCell)
{
    if (flavour == Flavour::Comma) {
        while (begin < end) {
            const Char* stop = std::find(begin, end, Char(','));
            if (stop != begin)
                onCell(begin, stop);
            begin = stop == end ? end : stop + 1;
        }
        return;
    }
    while (begin < end) {
        while (begin < end && isDataSeparator(*begin))
            ++begin;
        const Char* stop = begin;
        while (stop < end && !isDataSeparator(*stop))
            ++stop;
        if (stop != begin)
            onCell(begin, stop);
        begin = stop;
    }
}

Cell readCell(const QChar* begin, const QChar* end, double& value)
{
    return readCell(QStringView(begin, end - begin), value);
}

bool isAscii(const char* begin, const char* end)
{
    unsigned char any = 0;
    for (; begin < end; ++begin)
        any |= static_cast<unsigned char>(*begin);
    return any < 0x80;
}

// The bytes to parse, with the codec for header texts: the codec of a
// Unicode byte-order mark if there is one (Unicode other than UTF-8 is
// turned into UTF-8 first), "GB2312" otherwise.
struct Source
{
    QByteArray bytes;
    int start = 0;
    QTextCodec* codec = nullptr;
};

Source normalise(const QByteArray& raw)
{
    Source source{raw, 0, nullptr};
    QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    if (raw.startsWith("\xEF\xBB\xBF")) {
        source.start = 3;
        source.codec = utf8;
    } else if (QTextCodec* unicode = QTextCodec::codecForUtfText(raw, nullptr)) {
        QString text = unicode->toUnicode(raw);
        if (text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        source.bytes = text.toUtf8();
        source.codec = utf8;
    } else {
        source.codec = QTextCodec::codecForName("GB2312");
        if (!source.codec)
            source.codec = utf8;
    }
    return source;
}

// Calls onLine(begin, end) for each line, without its "\n" or "\r\n".
template <typename OnLine>
void forEachLine(const char* begin, const char* end, OnLine&& onLine)
{
    while (begin < end) {
        const char* stop = static_cast<const char*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin)));
        if (!stop)
            stop = end;
        const char* lineEnd = stop > begin && stop[-1] == '\r' ? stop - 1 : stop;
        if (!onLine(begin, lineEnd))
            return;
        begin = stop == end ? end : stop + 1;
    }
}

Flavour flavourOf(const Source& source, Flavour flavour)
{
    if (flavour == Flavour::Blank)
        return flavour;
    const char* begin = source.bytes.constData() + source.start;
    const char* end = source.bytes.constData() + source.bytes.size();
    const char* firstLine = nullptr;
    const char* firstLineEnd = nullptr;
    const char* dataLine = nullptr;
    const char* dataLineEnd = nullptr;
    forEachLine(begin, end, [&](const char* b, const char* e) {
        if (std::all_of(b, e, isBlank))
            return true;
        if (!firstLine) {
            firstLine = b;
            firstLineEnd = e;
        }
        if (*b == '#')
            return true;
        dataLine = b;
        dataLineEnd = e;
        return false;
    });
    const char* b = dataLine ? dataLine : firstLine;
    const char* e = dataLine ? dataLineEnd : firstLineEnd;
    if (b && std::find(b, e, ',') == e)
        return Flavour::Blank;
    return Flavour::Comma;
}

// Header cells: the separator alone splits, empty cells stay in place.
QStringList splitHeader(const QString& line, Flavour flavour)
{
    if (flavour == Flavour::Comma)
        return line.split(QLatin1Char(','));
    QStringList cells;
    int start = 0;
    for (int i = 0; i <= line.size(); ++i) {
        if (i == line.size() || line.at(i) == QLatin1Char(' ') || line.at(i) == QLatin1Char('\t')) {
            cells.append(line.mid(start, i - start));
            start = i + 1;
        }
    }
    return cells;
}

class TableReader
{
public:
    TableReader(Flavour flavour, std::size_t expectedRows)
        : m_flavour(flavour)
        , m_expectedRows(expectedRows)
    {
    }

    void header(const QString& line)
    {
        QStringList cells = splitHeader(line, m_flavour);
        const QString name = cells.takeFirst();
        if (name == QLatin1String("#Title"))
            m_titles = cells;
        else if (name == QLatin1String("#Suffix"))
            m_suffixes = cells;
        else if (name == QLatin1String("#X-Unit"))
            m_xUnits = cells;
        else if (name == QLatin1String("#Y-Unit"))
            m_yUnits = cells;
    }

    template <typename Char>
    void data(const Char* begin, const Char* end)
    {
        m_row.clear();
        bool first = true;
        bool bad = false;
        double x = 0;
        splitData(begin, end, m_flavour, [&](const Char* b, const Char* e) {
            if (bad)
                return;
            double value = kMissing;
            const Cell cell = readCell(b, e, value);
            if (first) {
                first = false;
                x = value;
                bad = cell != Cell::Value;
            } else {
                m_row.push_back(cell == Cell::Value ? value : kMissing);
                bad = cell == Cell::Bad;
            }
        });
        if (first || bad)
            return;
        if (m_row.size() > m_columns.size()) {
            const std::size_t from = m_columns.size();
            m_columns.resize(m_row.size());
            // Room for every line of the file, unless a very wide table would
            // make that far more than the file itself needs.
            if (m_columns.size() * m_expectedRows <= kReserveLimit) {
                for (std::size_t i = from; i < m_columns.size(); ++i) {
                    m_columns[i].x.reserve(m_expectedRows);
                    m_columns[i].y.reserve(m_expectedRows);
                }
            }
        }
        for (std::size_t i = 0; i < m_row.size(); ++i) {
            if (!std::isnan(m_row[i])) {
                m_columns[i].x.push_back(x);
                m_columns[i].y.push_back(m_row[i]);
            }
        }
    }

    std::vector<Column> finish()
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const int index = static_cast<int>(i);
            Column& column = m_columns[i];
            if (index < m_titles.size())
                column.title = m_titles.at(index);
            if (index < m_suffixes.size())
                column.suffix = m_suffixes.at(index);
            if (index < m_xUnits.size())
                column.xUnit = m_xUnits.at(index);
            if (index < m_yUnits.size())
                column.yUnit = m_yUnits.at(index);
            column.x.shrink_to_fit();
            column.y.shrink_to_fit();
        }
        return std::move(m_columns);
    }

private:
    Flavour m_flavour;
    std::size_t m_expectedRows;
    std::vector<double> m_row;
    std::vector<Column> m_columns;
    QStringList m_titles;
    QStringList m_suffixes;
    QStringList m_xUnits;
    QStringList m_yUnits;
};

// ------------------------------------------------------------ reading files

// A progress dialog for reading a large file, shown only when the reading
// takes longer than a moment, and never without widgets or during replay.
class ReadProgress
{
public:
    ReadProgress(const QString& fileName, qint64 size, QWidget* parent)
    {
        if (size < kProgressMinimumBytes || !qobject_cast<QApplication*>(QCoreApplication::instance())
            || QtUIBase::AQIsScriptReplayActive())
            return;
        m_dialog = std::make_unique<QProgressDialog>(
            QStringLiteral("Reading %1").arg(QFileInfo(fileName).fileName()), QString(), 0, kProgressSteps, parent);
        m_dialog->setWindowModality(Qt::ApplicationModal);
        m_dialog->setMinimumDuration(kProgressDelayMs);
        m_dialog->setValue(0);
    }

    // Reading the bytes is the first half of the work, parsing them the second.
    void reading(std::int64_t done, std::int64_t total) { update(done, total, 0); }
    void parsing(std::int64_t done, std::int64_t total) { update(done, total, kProgressSteps / 2); }

private:
    void update(std::int64_t done, std::int64_t total, int offset)
    {
        if (!m_dialog || total <= 0)
            return;
        const int step = offset + static_cast<int>(done * (kProgressSteps / 2) / total);
        if (step != m_step && step < kProgressSteps) {
            m_step = step;
            m_dialog->setValue(step);
        }
    }

    std::unique_ptr<QProgressDialog> m_dialog;
    int m_step = 0;
};

std::optional<QByteArray> readFile(QFile& file, ReadProgress& progress)
{
    const qint64 size = file.size();
    QByteArray bytes;
    if (size <= 0)
        return file.readAll();
    bytes.resize(static_cast<int>(std::min<qint64>(size, std::numeric_limits<int>::max() - 1)));
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 n = file.read(bytes.data() + done, std::min<qint64>(bytes.size() - done, kWriteChunk * 4));
        if (n < 0)
            return std::nullopt;
        if (n == 0)
            break;
        done += n;
        progress.reading(done, bytes.size());
    }
    // Text mode drops the "\r" of "\r\n", so fewer bytes may arrive.
    bytes.truncate(static_cast<int>(done));
    return bytes;
}

bool writeFile(const QString& path, const std::vector<std::shared_ptr<OrvexCurve>>& curves, Flavour flavour)
{
    QFile file(OrvexCurveCsvFile::withCsvSuffix(path));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::cerr << "Cannot open file for writing: " << file.errorString().toStdString() << std::endl;
        return false;
    }
    bool written = true;
    writeTable(curves, flavour, [&](const char* data, std::size_t size) {
        written = written && file.write(data, static_cast<qint64>(size)) == static_cast<qint64>(size);
    });
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

// Reads each of @p files; @p group is asked for the target group only when a
// file yields curves.
int importInto(const QStringList& files, Flavour flavour, QWidget* dialogParent,
               const std::function<OrvexCurveGroup&()>& group)
{
    int made = 0;
    for (const QString& name : files) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
            std::cerr << "Cannot open file for reading: " << name.toStdString() << std::endl;
            continue;
        }
        ReadProgress progress(name, file.size(), dialogParent);
        const std::optional<QByteArray> bytes = readFile(file, progress);
        if (!bytes) {
            std::cerr << "Cannot open file for reading: " << name.toStdString() << std::endl;
            continue;
        }
        if (bytes->isEmpty()) {
            std::cerr << "Empty file: " << name.toStdString() << std::endl;
            continue;
        }
        auto columns = OrvexCurveCsvFile::parse(
            *bytes, flavour, [&](std::int64_t done, std::int64_t total) { progress.parsing(done, total); });
        if (!columns.empty())
            made += OrvexCurveCsvFile::addCurves(group(), std::move(columns));
    }
    return made;
}

} // namespace

// ================================================================ the view

bool OrvexCurveCsvFile::exportData(const OrvexCurveManager& manager, const std::string& path, Flavour flavour,
                                   QWidget* dialogParent)
{
    QString fileName = QString::fromStdString(path);
    if (fileName.isEmpty()) {
        fileName = askExportPath(dialogParent);
        if (fileName.isEmpty())
            return false;
    }
    // Without a current group there are no curves, but the table is written.
    const auto group = manager.getCurrentGroup();
    return writeFile(fileName, group ? group->getAllCurves(true) : std::vector<std::shared_ptr<OrvexCurve>>(),
                     flavour);
}

int OrvexCurveCsvFile::importData(OrvexCurveManager& manager, const std::vector<std::string>& files, Flavour flavour,
                                  QWidget* dialogParent)
{
    QStringList names;
    for (const std::string& file : files)
        names.append(QString::fromStdString(file));
    if (names.isEmpty()) {
        names = askImportFiles(dialogParent);
        if (names.isEmpty())
            return 0;
    }
    // The group is made only for a file that yields curves, so that a failed
    // import leaves the chart as it was.
    return importInto(names, flavour, dialogParent, [&manager]() -> OrvexCurveGroup& {
        auto group = manager.getCurrentGroup();
        if (!group) {
            group = manager.createGroup(std::string());
            manager.setCurrentGroup(group->id());
        }
        return *group;
    });
}

// ================================================================ export

bool OrvexCurveCsvFile::exportGroup(const OrvexCurveGroup& group, const QString& path, Flavour flavour,
                                    QWidget* dialogParent)
{
    QString fileName = path;
    if (fileName.isEmpty()) {
        fileName = askExportPath(dialogParent);
        if (fileName.isEmpty())
            return false;
    }
    return writeFile(fileName, group.getAllCurves(true), flavour);
}

QByteArray OrvexCurveCsvFile::format(const std::vector<std::shared_ptr<OrvexCurve>>& curves, Flavour flavour)
{
    QByteArray bytes;
    writeTable(curves, flavour, [&](const char* data, std::size_t size) { bytes.append(data, static_cast<int>(size)); });
    return bytes;
}

// ================================================================ import

int OrvexCurveCsvFile::importFiles(OrvexCurveGroup& group, const QStringList& files, Flavour flavour,
                                   QWidget* dialogParent)
{
    return importInto(files, flavour, dialogParent, [&group]() -> OrvexCurveGroup& { return group; });
}

std::vector<OrvexCurveCsvFile::Column> OrvexCurveCsvFile::parse(const QByteArray& bytes, Flavour flavour,
                                                                const Progress& progress)
{
    const Source source = normalise(bytes);
    flavour = flavourOf(source, flavour);
    const char* const begin = source.bytes.constData() + source.start;
    const char* const end = source.bytes.constData() + source.bytes.size();
    const std::int64_t total = end - begin;
    constexpr std::int64_t kProgressEvery = 1 << 20;
    std::int64_t nextReport = kProgressEvery;

    TableReader reader(flavour, static_cast<std::size_t>(std::count(begin, end, '\n')) + 1);
    forEachLine(begin, end, [&](const char* b, const char* e) {
        if (b < e && *b == '#') {
            reader.header(source.codec->toUnicode(b, static_cast<int>(e - b)));
        } else if (isAscii(b, e)) {
            reader.data(b, e);
        } else {
            const QString line = source.codec->toUnicode(b, static_cast<int>(e - b));
            reader.data(line.constData(), line.constData() + line.size());
        }
        if (progress && e - begin >= nextReport) {
            progress(e - begin, total);
            nextReport = (e - begin) + kProgressEvery;
        }
        return true;
    });
    return reader.finish();
}

int OrvexCurveCsvFile::addCurves(OrvexCurveGroup& group, std::vector<Column>&& columns)
{
    for (Column& column : columns) {
        const auto curve = group.createCurve(std::string());
        if (column.title)
            curve->setTitle(column.title->toStdString());
        if (column.suffix)
            curve->setSuffix(column.suffix->toStdString());
        if (column.yUnit)
            curve->setYUnit(column.yUnit->toStdString());
        if (column.xUnit)
            curve->setXUnit(column.xUnit->toStdString());
        curve->setData(std::move(column.x), std::move(column.y));
        emit curve->dataChanged();
    }
    return static_cast<int>(columns.size());
}

// ================================================================ helpers

QString OrvexCurveCsvFile::withCsvSuffix(const QString& path)
{
    if (QFileInfo(path).suffix().compare(QLatin1String("csv"), Qt::CaseInsensitive) == 0)
        return path;
    return path + QStringLiteral(".csv");
}

QString OrvexCurveCsvFile::askExportPath(QWidget* parent)
{
    return QFileDialog::getSaveFileName(parent, QStringLiteral("Export CSV file"), QDir::currentPath(), kCsvFilter);
}

QStringList OrvexCurveCsvFile::askImportFiles(QWidget* parent)
{
    return QFileDialog::getOpenFileNames(parent, QStringLiteral("Import CSV file"), QDir::currentPath(), kCsvFilter);
}

OrvexCurveCsvFile::Flavour OrvexCurveCsvFile::effectiveFlavour(const QByteArray& bytes, Flavour flavour)
{
    return flavourOf(normalise(bytes), flavour);
}

} // namespace Gui::Widget
