#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A temporary folder with the built-in script engine initialised to journal
 * into it. The destructor stops any recording or replay, closes the journal
 * and resets the recording permission, so each test starts from a clean
 * engine even after a failure.
 */
class ScriptSandbox
{
public:
    /// @p journal: open a journal file "journal.jrl" in the folder.
    explicit ScriptSandbox(bool journal = true);
    ~ScriptSandbox();

    QString path(const QString& fileName) const;
    QString journalPath() const { return path(QStringLiteral("journal.jrl")); }

    /// Lines of a text file (without line ends); empty when unreadable.
    static QStringList readLines(const QString& file);
    static QString readAll(const QString& file);
    /// Writes @p lines, each ended by "\n".
    static void writeLines(const QString& file, const QStringList& lines);
    /// The record lines of a script or journal: header, "Journal ..." and
    /// comment lines left out.
    static QStringList recordLines(const QString& file);

    /// A complete script: the three header lines and @p body.
    void writeScript(const QString& file, const QStringList& body, int version = 2) const;

private:
    QTemporaryDir m_dir;
};
