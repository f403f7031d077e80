#include "Scriptable/AQFileDialog.h"

#include "Script/AQScriptBackend.h"
#include "Scriptable/AQWrapperSupport_p.h"

namespace QtUIBase {

using namespace Wrapper;

namespace {

const QChar Separator = QLatin1Char('|');

QStringList replayedAnswer()
{
    return AQFileDialog::decodeAnswer(AQScripts::getFillin());
}

void recordAnswer(const QStringList& files)
{
    // The answer belongs in the script even when the code that asked runs
    // with recording suppressed.
    AQRecordingGuard allowed(true);
    AQScripts::recordFillin(AQFileDialog::encodeAnswer(files));
}

/// Runs @p ask outside a replay (recording its answer with @p record) or
/// answers from the script during one.
QStringList answer(bool record, const std::function<QStringList()>& ask)
{
    if (AQIsScriptReplayActive())
        return replayedAnswer();
    const QStringList files = ask();
    if (record)
        recordAnswer(files);
    return files;
}

QStringList nonEmpty(const QString& file)
{
    return file.isEmpty() ? QStringList() : QStringList{file};
}

using OneFileQuestion = QString (*)(QWidget*, const QString&, const QString&, const QString&, QString*,
                                    QFileDialog::Options);

/// getOpenFileName() and getSaveFileName(): one file or none.
QString oneFile(OneFileQuestion ask, QWidget* parent, const QString& caption, const QString& dir,
                const QString& filter, QString* selectedFilter, QFileDialog::Options options, bool record)
{
    return answer(record, [&] { return nonEmpty(ask(parent, caption, dir, filter, selectedFilter, options)); })
        .value(0);
}

} // namespace

AQFileDialog::AQFileDialog(const QString& name, QWidget* parent, const QString& caption, const QString& directory,
                           const QString& filter, bool scriptable)
    : QFileDialog(parent, caption, directory, filter)
    , m_scriptable(scriptable)
{
    setObjectName(name);
}

QString AQFileDialog::encodeAnswer(const QStringList& files)
{
    QStringList parts;
    for (const QString& file : files)
        parts << toScriptRelative(file);
    return parts.join(Separator);
}

QStringList AQFileDialog::decodeAnswer(const QString& fillin)
{
    QStringList files;
    const QStringList parts = fillin.split(Separator, Qt::SkipEmptyParts);
    for (const QString& part : parts)
        files << fromScriptRelative(part);
    return files;
}

int AQFileDialog::exec()
{
    m_answered = false;
    m_answer.clear();
    if (!AQIsScriptReplayActive()) {
        const int result = QFileDialog::exec();
        const QStringList files = result == Accepted ? confirm(QFileDialog::selectedFiles()) : QStringList();
        if (m_scriptable)
            recordAnswer(files);
        m_answer = files;
        m_answered = true;
        return files.isEmpty() ? Rejected : Accepted;
    }

    // The recorded answer is the confirmed one: nothing is asked again.
    m_answer = replayedAnswer();
    m_answered = true;
    const int result = m_answer.isEmpty() ? Rejected : Accepted;
    setResult(result);
    if (result == Accepted) {
        Q_EMIT filesSelected(m_answer);
        Q_EMIT fileSelected(m_answer.first());
        Q_EMIT accepted();
    } else {
        Q_EMIT rejected();
    }
    Q_EMIT finished(result);
    return result;
}

QStringList AQFileDialog::selectedFiles() const
{
    return m_answered ? m_answer : QFileDialog::selectedFiles();
}

QString AQFileDialog::getOpenFileName(QWidget* parent, const QString& caption, const QString& dir,
                                      const QString& filter, QString* selectedFilter, Options options, bool record)
{
    return oneFile(&QFileDialog::getOpenFileName, parent, caption, dir, filter, selectedFilter, options, record);
}

QStringList AQFileDialog::getOpenFileNames(QWidget* parent, const QString& caption, const QString& dir,
                                           const QString& filter, QString* selectedFilter, Options options,
                                           bool record)
{
    return answer(record,
                  [&] { return QFileDialog::getOpenFileNames(parent, caption, dir, filter, selectedFilter, options); });
}

QString AQFileDialog::getSaveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                      const QString& filter, QString* selectedFilter, Options options, bool record)
{
    return oneFile(&QFileDialog::getSaveFileName, parent, caption, dir, filter, selectedFilter, options, record);
}

QString AQFileDialog::getExistingDirectory(QWidget* parent, const QString& caption, const QString& dir,
                                           Options options, bool record)
{
    return answer(record, [&] {
               return nonEmpty(QFileDialog::getExistingDirectory(parent, caption, dir, options));
           }).value(0);
}

} // namespace QtUIBase
