#ifndef VTESTSETTINGS_H
#define VTESTSETTINGS_H

#include <vsettings.h>

#include <QSettings>
#include <QTemporaryDir>

/**
 * Points the settings store at a fresh file in a temporary folder for as long
 * as it lives, so that no test reads or writes the user's real settings.
 * Declare one as a member of the test class (or in initTestCase).
 */
class VTestSettings
{
public:
    VTestSettings()
    {
        // Anything that bypasses VSettings lands in the temporary folder too.
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir.path());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        VSettings::setFileName(fileName());
    }
    ~VTestSettings() { VSettings::setFileName(QString()); }

    QString fileName() const { return m_dir.filePath(QStringLiteral("settings.ini")); }
    QString dir() const { return m_dir.path(); }

    /// Removes every stored key, for tests that need a clean store between cases.
    void clear()
    {
        VSettings settings(nullptr);
        settings.settings()->clear();
    }

private:
    QTemporaryDir m_dir;
};

#endif // VTESTSETTINGS_H
