#include "vcsvfilepick.h"

#include <vsettings.h>

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

namespace {

QString openPathKey(const QObject* object)
{
    return QStringLiteral("%1/openPath").arg(object->objectName());
}

QString savePathKey(const QObject* object)
{
    return QStringLiteral("%1/savePath").arg(object->objectName());
}

// A backslash on every platform: the start path has always been built this way.
QString startPath(const QString& folder, const QString& fileName)
{
    return QStringLiteral("%1\\%2").arg(folder, fileName);
}

} // namespace

VCsvFilePick::VCsvFilePick(QObject* parent)
    : QObject(parent)
{
    setObjectName(QStringLiteral("VCsvFilePick"));
    readSettings();
}

VCsvFilePick::~VCsvFilePick() = default;

QString VCsvFilePick::getOpenFileName(const QString& fileName)
{
    const QString path
        = execOpenDialog(tr("Select CSV"), startPath(m_openPath, fileName), tr("csv Files (*.csv)"));
    if (!path.isEmpty()) {
        m_openPath = QFileInfo(path).absolutePath();
        saveSettings();
    }
    return path;
}

QString VCsvFilePick::getSaveFileName(const QString& fileName)
{
    const QString path
        = execSaveDialog(tr("Save CSV"), startPath(m_savePath, fileName), tr("csv Files (*.csv)"));
    if (!path.isEmpty()) {
        m_savePath = QFileInfo(path).absolutePath();
        saveSettings();
    }
    return path;
}

void VCsvFilePick::readSettings()
{
    const QString defaultPath = QCoreApplication::applicationDirPath();
    VSettings settings(nullptr);
    m_openPath = settings.value(openPathKey(this), defaultPath).toString();
    m_savePath = settings.value(savePathKey(this), defaultPath).toString();
}

void VCsvFilePick::saveSettings()
{
    VSettings settings(nullptr);
    settings.setValue(openPathKey(this), m_openPath);
    settings.setValue(savePathKey(this), m_savePath);
}

QString VCsvFilePick::execOpenDialog(const QString& caption, const QString& startPath, const QString& filter)
{
    return QFileDialog::getOpenFileName(nullptr, caption, startPath, filter);
}

QString VCsvFilePick::execSaveDialog(const QString& caption, const QString& startPath, const QString& filter)
{
    return QFileDialog::getSaveFileName(nullptr, caption, startPath, filter);
}
