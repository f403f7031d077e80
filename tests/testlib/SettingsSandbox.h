#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * Points every QSettings store of the test process (native and INI, user
 * and system scope) and QStandardPaths at a temporary folder, and hands the
 * library a state INI file and a layout INI file inside it. Create it in
 * initTestCase(), before anything opens a QSettings, so the real user's
 * store is never touched. clear() empties the stores between tests.
 */
class SettingsSandbox
{
public:
    SettingsSandbox();

    QString stateIniPath() const;
    QString path(const QString& fileName) const { return m_dir.filePath(fileName); }
    /// Empties the user store of application "Main" and the state INI file.
    void clear() const;

private:
    QTemporaryDir m_dir;
};
