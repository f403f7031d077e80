#include "Script/AQScriptingDialog.h"

#include "Script/AQEventNames.h"
#include "Script/AQScriptBackend.h"
#include "Script/AQScriptEngine.h"
#include "Script/AQScripts.h"
#include "Scriptable/AQMessageBox.h"
#include "Settings/AQSettings.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTextStream>
#include <QVBoxLayout>

namespace QtUIBase {

const QMap<QByteArray, QByteArray> AQScriptingDialog::m_replaceEventMap = AQEventNames::numberedToNamed();

namespace {

constexpr int SpeedMaximum = 2000;
const char* const DialogStateKey = "AQScriptingDialog";
const char* const RecordWindowIni = "/recordWindow.ini";
const char* const RecordWindowKey = "ScriptDialog";

void showCritical(const QString& title, const QString& text)
{
    QMessageBox::critical(nullptr, title, text, QMessageBox::Ok);
}

QString folderOf(const QString& file)
{
    return QFileInfo(file).absolutePath();
}

// The folder beside the script that receives the text dumps of one kind of
// run; dumps of an earlier run are removed so runs can be compared.
void prepareDumpFolder(const QString& script, const QString& name)
{
    QDir dir(folderOf(script) + name);
    if (!dir.exists())
        dir.mkpath(QStringLiteral("."));
    const QStringList dumps = dir.entryList({QStringLiteral("*.txt")}, QDir::Files);
    for (const QString& dump : dumps)
        dir.remove(dump);
}

bool isVersionLine(const QStringList& tokens)
{
    return !tokens.isEmpty() && tokens.first().startsWith(QLatin1Char('#'))
        && tokens.first().contains(QLatin1String("version:"), Qt::CaseInsensitive);
}

QString currentVersionLine()
{
    return QStringLiteral("#\tversion: %1").arg(AQScriptingDialog::m_scriptVersion);
}

bool isProjectFillin(const QStringList& tokens)
{
    return tokens.size() == 2 && tokens.at(0) == QLatin1String("QtFillin")
        && tokens.at(1).right(5) == QLatin1String(".3dem");
}

bool isYesNoFillin(const QStringList& tokens)
{
    return tokens.size() == 2 && tokens.at(0) == QLatin1String("QtFillin")
        && (tokens.at(1) == QLatin1String("Yes") || tokens.at(1) == QLatin1String("No"));
}

QPushButton* addButton(QLayout* layout, const QString& text, const char* name)
{
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    layout->addWidget(button);
    return button;
}

} // namespace

AQScriptingDialog::AQScriptingDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
    , m_exeName(QCoreApplication::applicationName())
{
    setWindowTitle(tr("Scripting"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    auto* layout = new QVBoxLayout(this);

    auto* fileGroup = new QGroupBox(tr("Scripting File"), this);
    auto* fileLayout = new QGridLayout(fileGroup);
    m_nameEdit = new QLineEdit(fileGroup);
    m_nameEdit->setObjectName(QStringLiteral("scriptNameEdit"));
    m_browseButton = new QPushButton(tr("Browse..."), fileGroup);
    m_browseButton->setObjectName(QStringLiteral("browseButton"));
    fileLayout->addWidget(new QLabel(tr("Name:"), fileGroup), 0, 0);
    fileLayout->addWidget(m_nameEdit, 0, 1);
    fileLayout->addWidget(m_browseButton, 0, 2);
    connect(m_nameEdit, &QLineEdit::textChanged, this, &AQScriptingDialog::fileNameChanged);
    connect(m_nameEdit, &QLineEdit::editingFinished, this, &AQScriptingDialog::onFileNameEntered);
    connect(m_browseButton, &QPushButton::clicked, this, &AQScriptingDialog::browseForScriptFile);
    layout->addWidget(fileGroup);

    auto* runGroup = new QGroupBox(tr("Record/Replay"), this);
    auto* runLayout = new QHBoxLayout(runGroup);
    m_recordButton = addButton(runLayout, tr("Record"), "recordButton");
    m_stopRecordButton = addButton(runLayout, tr("Stop Record"), "stopRecordButton");
    m_replayButton = addButton(runLayout, tr("Replay"), "replayButton");
    m_stopReplayButton = addButton(runLayout, tr("Stop Replay"), "stopReplayButton");
    m_stopReplayButton->setEnabled(false);
    connect(m_recordButton, &QPushButton::clicked, this, &AQScriptingDialog::scriptingRecord);
    connect(m_stopRecordButton, &QPushButton::clicked, this, &AQScriptingDialog::scriptingStopRecord);
    connect(m_replayButton, &QPushButton::clicked, this, &AQScriptingDialog::scriptingReplay);
    connect(m_stopReplayButton, &QPushButton::clicked, this, &AQScriptingDialog::scriptingStopReplay);
    layout->addWidget(runGroup);

    auto* speedGroup = new QGroupBox(tr("Replay Speed"), this);
    auto* speedLayout = new QHBoxLayout(speedGroup);
    m_speedSlider = new QSlider(Qt::Horizontal, speedGroup);
    m_speedSlider->setObjectName(QStringLiteral("speedSlider"));
    m_speedSlider->setRange(0, SpeedMaximum);
    m_speedSlider->setSingleStep(200);
    m_speedSlider->setPageStep(200);
    m_speedSlider->setValue(1200);
    m_speedSlider->setTickInterval(200);
    m_speedSlider->setTickPosition(QSlider::TicksBothSides);
    speedLayout->addWidget(m_speedSlider);
    layout->addWidget(speedGroup);

    if (qEnvironmentVariableIntValue("_QUORVEL_SHOW_MIGRATE_FILE") == 1) {
        auto* migrateLayout = new QHBoxLayout;
        migrateLayout->addWidget(new QLabel(tr("Path:"), this));
        m_migratePathEdit = new QLineEdit(this);
        m_migratePathEdit->setObjectName(QStringLiteral("migratePathEdit"));
        migrateLayout->addWidget(m_migratePathEdit);
        QPushButton* browser = addButton(migrateLayout, tr("Browser"), "migrateBrowseButton");
        QPushButton* transfer = addButton(migrateLayout, tr("Transfer"), "transferButton");
        connect(browser, &QPushButton::clicked, this, &AQScriptingDialog::browserFilePath);
        connect(transfer, &QPushButton::clicked, this, &AQScriptingDialog::transferFiletoNewFormat);
        layout->addLayout(migrateLayout);
    }

    auto* cancelLayout = new QHBoxLayout;
    cancelLayout->addStretch();
    m_cancelButton = addButton(cancelLayout, tr("Cancel"), "cancelButton");
    connect(m_cancelButton, &QPushButton::clicked, this, &AQScriptingDialog::scriptingCancel);
    layout->addLayout(cancelLayout);

    restoreDialogState();
    updateButtonStatus();
}

AQScriptingDialog::~AQScriptingDialog() = default;

QString AQScriptingDialog::getScriptFileName() const
{
    return m_nameEdit->text();
}

bool AQScriptingDialog::checkFixedFileExist() const
{
    return QFileInfo::exists(AQScripts::fixedScriptFilePath());
}

bool AQScriptingDialog::checkScriptFileSuffix(const QString& file)
{
    if (QFileInfo(file).suffix() == QLatin1String("scr"))
        return true;
    showCritical(tr("Error"), tr("script file is not a scr file,please check."));
    return false;
}

void AQScriptingDialog::saveDialogState() const
{
    AQSettings::withStateIni(
        [this](AQSettings& settings) { settings.setValue(QLatin1String(DialogStateKey), saveGeometry()); });
}

void AQScriptingDialog::restoreDialogState()
{
    AQSettings::withStateIni([this](AQSettings& settings) {
        const QByteArray geometry = settings.value(QLatin1String(DialogStateKey)).toByteArray();
        if (!geometry.isEmpty())
            restoreGeometry(geometry);
    });
}

int AQScriptingDialog::replayIntervalForSpeed(int speed)
{
    // The fastest position still pauses 400 ms while the one below it
    // pauses 200 ms: that is how the scale has always ended.
    return speed >= SpeedMaximum ? 2400 - speed : 2000 - speed;
}

QStringList AQScriptingDialog::migrateScriptLines(const QStringList& lines)
{
    bool hasVersion = false;
    for (const QString& line : lines)
        hasVersion = hasVersion || isVersionLine(AQScripts::splitLine(line));

    QStringList migrated;
    for (int i = 0; i < lines.size(); ++i) {
        QByteArray line = lines.at(i).toUtf8();
        for (auto it = m_replaceEventMap.cbegin(); it != m_replaceEventMap.cend(); ++it)
            line.replace(it.key(), it.value());
        const QStringList tokens = AQScripts::splitLine(QString::fromUtf8(line));
        if (isVersionLine(tokens) && (tokens.size() < 2 || tokens.at(1).toInt() < m_scriptVersion))
            migrated << currentVersionLine();
        else
            migrated << QString::fromUtf8(line);

        // Newer versions ask whether to keep the open project before opening
        // another one; old scripts lack that answer.
        if (isProjectFillin(tokens)
            && (i + 1 >= lines.size() || !isYesNoFillin(AQScripts::splitLine(lines.at(i + 1)))))
            migrated << QStringLiteral("QtFillin Yes");
        if (i == 1 && !hasVersion)
            migrated << currentVersionLine();
    }
    if (lines.size() < 2 && !hasVersion)
        migrated << currentVersionLine();
    return migrated;
}

QString AQScriptingDialog::askScriptFile(FilePurpose purpose)
{
    QFileDialog dialog(this, tr("Script file to execute"), m_workingPath, tr("script files(*.scr);;Allfiles(*.*)"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    // Recording may name a file that does not exist yet.
    dialog.setFileMode(purpose == FilePurpose::Record ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!getScriptFileName().isEmpty())
        dialog.selectFile(getScriptFileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}

QString AQScriptingDialog::askMigrationFolder()
{
    return QFileDialog::getExistingDirectory(this, tr("Folder of scripts to migrate"), m_workingPath);
}

QString AQScriptingDialog::chooseScriptFile(FilePurpose purpose)
{
    const QString file = askScriptFile(purpose);
    if (file.isEmpty()) {
        showCritical(tr("Error"), tr("Missing script file name."));
        return QString();
    }
    m_nameEdit->setText(file);
    return file;
}

void AQScriptingDialog::onFileNameEntered()
{
    if (!getScriptFileName().isEmpty())
        Q_EMIT fileNameSelected();
}

void AQScriptingDialog::browseForScriptFile()
{
    const QString file = askScriptFile(FilePurpose::Record);
    if (file.isEmpty())
        return;
    m_nameEdit->setText(file);
    Q_EMIT fileNameSelected();
}

void AQScriptingDialog::fileNameChanged()
{
    updateButtonStatus();
}

void AQScriptingDialog::scriptingRecord()
{
    QString file = chooseScriptFile(FilePurpose::Record);
    if (file.isEmpty())
        return;
    checkScriptFileSuffix(file);
    if (QFileInfo::exists(file)
        && AQMessageBox::question(this, tr("File Exists"),
                                  tr("File %1 already exists. Do you wish to overwrite this file?").arg(file),
                                  QMessageBox::Yes | QMessageBox::No)
            != QMessageBox::Yes)
        return;

    prepareDumpFolder(file, QStringLiteral("/DumpRecord"));
    AQSettings::setUIAScriptPath(file);
    QVector<int>& count = m_recordCounts[file];
    count = {count.value(0) + 1};
    AQSettings::setUIARecordCount(m_recordCounts);
    Q_EMIT fileNameSelected();

    AQOpenScriptFileForRecord(file, QString::number(m_scriptVersion));
    updateButtonStatus();
}

void AQScriptingDialog::scriptingStopRecord()
{
    AQStopScriptRecording();
    updateButtonStatus();
    const QString script = AQSettings::getUIAScriptPath();
    if (AQSettings::getMainWindow() && !script.isEmpty()) {
        AQSettings ini(folderOf(script) + QLatin1String(RecordWindowIni), QSettings::IniFormat);
        ini.saveFixedSizeDpiFlag(QLatin1String(RecordWindowKey));
    }
}

void AQScriptingDialog::scriptingReplay()
{
    const QString file = chooseScriptFile(FilePurpose::Replay);
    if (file.isEmpty())
        return;
    clearFixedScriptOperation(file);
    prepareDumpFolder(file, QStringLiteral("/DumpReplay"));

    if (file != m_lastReplayedFile) {
        m_lastReplayedFile = file;
        m_lastReplayCount = 0;
    }
    ++m_lastReplayCount;
    m_replayCounts[file] = {m_lastReplayCount};
    QString scriptPath = file;
    AQSettings::setUIAScriptPath(scriptPath);
    AQSettings::setUIAReplayCount(m_replayCounts);

    checkScriptFileSuffix(file);
    setWindowTitle(tr("Scripting") + QStringLiteral(" _") + file);

    const QString journalBase = file.left(file.lastIndexOf(QLatin1Char('/')) + 1) + m_exeName;
    AQInitializeNonVelmoraScripting(QFile::encodeName(journalBase).constData(), false, true);
    updateButtonStatus();

    const int interval = replayIntervalForSpeed(m_speedSlider->value());
    const QString recordWindow = folderOf(file) + QLatin1String(RecordWindowIni);
    if (QMainWindow* window = AQSettings::getMainWindow(); window && QFileInfo::exists(recordWindow)) {
        AQSettings ini(recordWindow, QSettings::IniFormat);
        ini.restoreFixedState(QLatin1String(RecordWindowKey), *window);
    }

    m_stopReplayButton->setEnabled(true);
    const bool finished = AQOpenScriptFileForReplay(file, interval, m_scriptVersion);
    if (finished)
        showCritical(tr("info"), tr("replay finish"));
    else
        showCritical(tr("error"), tr("replay failed"));
    m_stopReplayButton->setEnabled(false);

    QFile& report = AQScripts::getFixedScriptFile();
    if (report.isOpen())
        report.close();
}

void AQScriptingDialog::scriptingStopReplay()
{
    AQStopScriptReplay();
    updateButtonStatus();
}

void AQScriptingDialog::scriptingCancel()
{
    close();
    AQResetReplayState();
}

void AQScriptingDialog::scriptingHelp()
{
    QMessageBox::information(
        this, tr("Scripting"),
        tr("Record writes every operation into the chosen script file until Stop Record.\n"
           "Replay plays a script back; the speed slider sets the pause between operations.\n"
           "Operations that could not be replayed are listed in fixedScriptOperation.txt beside the script."));
}

void AQScriptingDialog::browserFilePath()
{
    const QString folder = askMigrationFolder();
    if (!folder.isEmpty() && m_migratePathEdit)
        m_migratePathEdit->setText(folder);
}

bool AQScriptingDialog::migrateFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        showCritical(tr("Error"), tr("Unable to open file \"%1\"").arg(path));
        return false;
    }
    QStringList lines = QTextStream(&file).readAll().split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast(); // the end of the last line, not a line of its own
    file.close();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        showCritical(tr("Error"), tr("Unable to open file \"%1\"").arg(path));
        return false;
    }
    QTextStream out(&file);
    const QStringList migrated = migrateScriptLines(lines);
    for (const QString& line : migrated)
        out << line << '\n';
    return true;
}

void AQScriptingDialog::transferFiletoNewFormat()
{
    if (!m_migratePathEdit)
        return;
    const QFileInfo target(m_migratePathEdit->text());
    QStringList files;
    if (target.isFile()) {
        files << target.absoluteFilePath();
    } else {
        const QFileInfoList entries = QDir(target.absoluteFilePath()).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& entry : entries)
            files << entry.absoluteFilePath();
    }
    for (const QString& path : qAsConst(files)) {
        if (path.endsWith(QLatin1String(".scr")))
            migrateFile(path);
    }
}

void AQScriptingDialog::updateButtonStatus()
{
    const bool recording = AQIsScriptRecordActive();
    for (QPushButton* button : {m_browseButton, m_recordButton, m_replayButton, m_cancelButton})
        button->setEnabled(!recording);
    m_nameEdit->setEnabled(!recording);
    m_speedSlider->setEnabled(!recording);
    m_stopRecordButton->setEnabled(recording);
    m_stopReplayButton->setEnabled(false);
}

void AQScriptingDialog::clearFixedScriptOperation(const QString& file)
{
    QFile& report = AQScripts::getFixedScriptFile();
    if (report.isOpen())
        report.close();
    QFile::remove(folderOf(file) + QLatin1String("/fixedScriptOperation.txt"));
}

void AQScriptingDialog::closeEvent(QCloseEvent* event)
{
    AQResetReplayState();
    saveDialogState();
    QDialog::closeEvent(event);
}

} // namespace QtUIBase
