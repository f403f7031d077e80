#pragma once

#include "OrvexQtUIBase_export.h"

#include <QByteArray>
#include <QDialog>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

class QLineEdit;
class QPushButton;
class QSlider;

namespace QtUIBase {

/**
 * The Record/Replay dialog: records a script, replays one at a chosen
 * speed, stops either and, when the environment variable
 * "_QUORVEL_SHOW_MIGRATE_FILE" is 1, migrates older script files.
 *
 * Recording prepares a "DumpRecord" folder beside the script (emptied of
 * its .txt files), stores the script path and record count in AQSettings
 * and opens the script with the current version (m_scriptVersion). Stopping
 * writes "recordWindow.ini" beside the script when a main window is kept by
 * AQSettings, so a replay can put that window at the size it was recorded
 * at. Replay prepares "DumpReplay", removes the last fixed-script report,
 * journals into the script's folder (named after the executable), runs the
 * whole replay inside the click and reports "replay finish" or "replay
 * failed".
 *
 * The dialog's own geometry is kept in the state INI file under
 * "AQScriptingDialog". File choices go through askScriptFile() and
 * askMigrationFolder(), which a subclass may replace.
 *
 * Defaults: replay speed 1200 (800 ms between lines), executable name the
 * application's name, working path empty.
 */
class ORVEXQTUIBASE_EXPORT AQScriptingDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AQScriptingDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    ~AQScriptingDialog() override;

    void setExeName(const QString& name) { m_exeName = name; }
    void setWorkingPath(const QString& path) { m_workingPath = path; }
    /// The file named in the "Name:" field.
    QString getScriptFileName() const;
    /// Whether the last replay left a fixed-script report.
    bool checkFixedFileExist() const;
    /// Warns when @p file's suffix is not "scr"; answers whether it is.
    bool checkScriptFileSuffix(const QString& file);
    void saveDialogState() const;
    void restoreDialogState();

    /// Pause between replayed lines for a speed slider position: 2000 minus
    /// the position, except at the maximum, which pauses 400 ms.
    static int replayIntervalForSpeed(int speed);
    /// The lines of an old script in the current format: named event
    /// forms, an answer after each project-file fill-in and a current
    /// version line.
    static QStringList migrateScriptLines(const QStringList& lines);

    static constexpr int m_scriptVersion = 2;
    /// Numbered event forms of old scripts to their named forms.
    static const QMap<QByteArray, QByteArray> m_replaceEventMap;

Q_SIGNALS:
    void fileNameSelected();

public Q_SLOTS:
    void onFileNameEntered();
    void browseForScriptFile();
    void scriptingRecord();
    void scriptingStopRecord();
    void scriptingReplay();
    void scriptingStopReplay();
    void scriptingCancel();
    void scriptingHelp();
    void fileNameChanged();
    void browserFilePath();
    void transferFiletoNewFormat();

protected:
    enum class FilePurpose { Record, Replay };

    /// Asks for a script file; empty when the user cancels.
    virtual QString askScriptFile(FilePurpose purpose);
    /// Asks for the folder of scripts to migrate; empty when cancelled.
    virtual QString askMigrationFolder();

    void updateButtonStatus();
    void clearFixedScriptOperation(const QString& file);
    void closeEvent(QCloseEvent* event) override;

private:
    QString chooseScriptFile(FilePurpose purpose);
    bool migrateFile(const QString& path);

    QLineEdit* m_nameEdit = nullptr;
    QPushButton* m_browseButton = nullptr;
    QPushButton* m_recordButton = nullptr;
    QPushButton* m_stopRecordButton = nullptr;
    QPushButton* m_replayButton = nullptr;
    QPushButton* m_stopReplayButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
    QSlider* m_speedSlider = nullptr;
    QLineEdit* m_migratePathEdit = nullptr;
    QString m_exeName;
    QString m_workingPath;
    QString m_lastReplayedFile;
    int m_lastReplayCount = 0;
    QMap<QString, QVector<int>> m_recordCounts;
    QMap<QString, QVector<int>> m_replayCounts;
};

} // namespace QtUIBase
