#pragma once

#include "OrvexQtUIBase_export.h"

#include "Scriptable/AQDialog.h"

#include <QTextDocument>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPrinter;

namespace QtUIBase {

/**
 * A read-only viewer for a text file (a log, a report) with find and
 * print, as a scriptable dialog.
 *
 * | Record   | Arguments                                  | When                          |
 * |----------|--------------------------------------------|-------------------------------|
 * | "open"   | the file (relative to the script's folder when inside it) | a file was opened |
 * | "find"   | the text, QTextDocument::FindFlags in decimal | a search ("Find" or Return) |
 * | "closed" | none                                       | the viewer was closed         |
 *
 * Replay opens, searches and closes the same way. Searching goes on from
 * the cursor and wraps around once; a text that is not in the file leaves
 * the cursor and says "Not found" under the text. A file that cannot be
 * read shows "Unable to read file \"%1\"" titled "Error" (during a replay
 * the message goes to the fixed-script report instead, and the replay goes
 * on). Printing uses Qt's print dialog; printToPdf() prints without any
 * dialog, headless too. Printing is not recorded.
 *
 * As an AQDialog, exec() takes part in replay and the dialog keeps its
 * position in the state INI file under its name.
 */
class ORVEXQTUIBASE_EXPORT AQDisplayFile : public AQDialog
{
    Q_OBJECT

public:
    explicit AQDisplayFile(const QString& name, QWidget* parent = nullptr, bool scriptable = true);

    /// Shows @p file; false (with a message) when it cannot be read.
    bool openFile(const QString& file);
    /// Selects the next occurrence of @p text; false when there is none.
    bool find(const QString& text, QTextDocument::FindFlags flags = QTextDocument::FindFlags());

    QString fileName() const { return m_fileName; }
    QString text() const;
    /// The text of the current selection (the last match).
    QString selectedText() const;

    void print(QPrinter* printer) const;
    /// Prints the file into a PDF file; false when it could not be written.
    bool printToPdf(const QString& pdfFile) const;

    void scriptReplay(const QString& signal, const QStringList& args) override;

public Q_SLOTS:
    /// Asks for a file (recorded as the file opened) and opens it.
    void browse();
    /// Asks for a printer and prints.
    void printWithDialog();

Q_SIGNALS:
    void AFileOpened(const QString& file);
    void AFound(bool found);

private:
    void findFromField();

    QLineEdit* m_findText = nullptr;
    QPlainTextEdit* m_view = nullptr;
    QLabel* m_status = nullptr;
    QString m_fileName;
};

} // namespace QtUIBase
