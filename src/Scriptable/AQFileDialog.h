#pragma once

#include "OrvexQtUIBase_export.h"

#include <QFileDialog>

namespace QtUIBase {

/**
 * A QFileDialog whose answer is scripted.
 *
 * The chosen file, files or folder are recorded as one fill-in ("QtFillin
 * <answer>", several files joined by "|"), a cancelled dialog as the empty
 * fill-in "". Paths inside the folder of the script being recorded are
 * written relative to it ("data/run.txt", "." for the folder itself), so a
 * recorded session replays from another checkout. The answer is recorded
 * whatever the recording permission of the code that asked, since it is
 * needed to replay what asked.
 *
 * During a replay no dialog is shown: the answer is the next fill-in,
 * relative paths taken from the folder of the replayed script; a missing
 * fill-in answers as a cancelled dialog. exec() then reports the answer as
 * the dialog would (fileSelected(), filesSelected(), accepted() or
 * rejected(), finished()) and selectedFiles() returns it.
 *
 * The static functions work the same way for the QFileDialog functions of
 * the same names. With @p record false (or a dialog built not scriptable)
 * nothing is recorded, while a replay still reads a fill-in.
 */
class ORVEXQTUIBASE_EXPORT AQFileDialog : public QFileDialog
{
    Q_OBJECT

public:
    explicit AQFileDialog(const QString& name, QWidget* parent = nullptr, const QString& caption = QString(),
                          const QString& directory = QString(), const QString& filter = QString(),
                          bool scriptable = true);

    int exec() override;
    /// The files chosen, or answered by the script during a replay.
    QStringList selectedFiles() const;

    static QString getOpenFileName(QWidget* parent = nullptr, const QString& caption = QString(),
                                   const QString& dir = QString(), const QString& filter = QString(),
                                   QString* selectedFilter = nullptr, Options options = Options(),
                                   bool record = true);
    static QStringList getOpenFileNames(QWidget* parent = nullptr, const QString& caption = QString(),
                                        const QString& dir = QString(), const QString& filter = QString(),
                                        QString* selectedFilter = nullptr, Options options = Options(),
                                        bool record = true);
    static QString getSaveFileName(QWidget* parent = nullptr, const QString& caption = QString(),
                                   const QString& dir = QString(), const QString& filter = QString(),
                                   QString* selectedFilter = nullptr, Options options = Options(),
                                   bool record = true);
    static QString getExistingDirectory(QWidget* parent = nullptr, const QString& caption = QString(),
                                        const QString& dir = QString(), Options options = ShowDirsOnly,
                                        bool record = true);

    /// The fill-in text of an answer, and the answer of a fill-in text.
    static QString encodeAnswer(const QStringList& files);
    static QStringList decodeAnswer(const QString& fillin);

protected:
    /// The answer of the accepted dialog, before it is recorded; a subclass
    /// may still refuse it (answer empty). Not called during a replay: the
    /// recorded answer is the confirmed one.
    virtual QStringList confirm(const QStringList& files) { return files; }

private:
    bool m_scriptable = true;
    bool m_answered = false;
    QStringList m_answer;
};

} // namespace QtUIBase
