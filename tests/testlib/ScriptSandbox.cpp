#include "ScriptSandbox.h"

#include <Script/AQScriptBackend.h>
#include <Script/AQScriptEngine.h>
#include <Script/AQScripts.h>
#include <Settings/AQSettings.h>

#include <QFile>
#include <QTextStream>

using namespace QtUIBase;

ScriptSandbox::ScriptSandbox(bool journal)
{
    AQCloseScript();
    AQStopScriptReplay();
    AQResetReplayState();
    AQScripts::forceRecordingAllowed(true);
    QString scriptPath;
    AQSettings::setUIAScriptPath(scriptPath);
    const QByteArray base = QFile::encodeName(path(QStringLiteral("journal")));
    AQInitializeNonVelmoraScripting(base.constData(), false, journal);
}

ScriptSandbox::~ScriptSandbox()
{
    AQStopScriptReplay();
    AQResetReplayState();
    AQCloseScript();
    AQScripts::forceRecordingAllowed(true);
    AQScripts::setScriptReplayInterval(0);
    AQScripts::getFixedScriptFile().close();
    QString none;
    AQSettings::setUIAScriptPath(none);
}

QString ScriptSandbox::path(const QString& fileName) const
{
    return m_dir.filePath(fileName);
}

QStringList ScriptSandbox::readLines(const QString& file)
{
    QStringList lines = readAll(file).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QString ScriptSandbox::readAll(const QString& file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(f.readAll());
}

void ScriptSandbox::writeLines(const QString& file, const QStringList& lines)
{
    QFile f(file);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    QTextStream out(&f);
    for (const QString& line : lines)
        out << line << '\n';
}

QStringList ScriptSandbox::recordLines(const QString& file)
{
    QStringList records;
    const QStringList lines = readLines(file);
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1String("Journal ")))
            continue;
        records << line;
    }
    return records;
}

void ScriptSandbox::writeScript(const QString& file, const QStringList& body, int version) const
{
    QStringList lines{QStringLiteral("#\tfile: ") + file, QStringLiteral("#\tstart time: Sun Nov 22 2026 10:00:00"),
                      QStringLiteral("#\tversion: %1").arg(version)};
    writeLines(file, lines + body);
}
