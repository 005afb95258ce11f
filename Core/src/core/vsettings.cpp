#include "vsettings.h"

#include <QCoreApplication>
#include <QReadWriteLock>
#include <QSettings>

namespace {
QReadWriteLock s_fileNameLock;
QString s_fileName;

QSettings* openStore()
{
    {
        QReadLocker locker(&s_fileNameLock);
        if (!s_fileName.isEmpty())
            return new QSettings(s_fileName, QSettings::IniFormat);
    }
    QString application = QCoreApplication::applicationName();
    if (application.isEmpty())
        application = QStringLiteral("veitikgip");
    QString organisation = QCoreApplication::organizationName();
    if (organisation.isEmpty())
        organisation = application;
    return new QSettings(QSettings::IniFormat, QSettings::UserScope, organisation, application);
}
} // namespace

VSettings::VSettings(QObject* parent)
    : QObject(parent)
    , m_settings(openStore())
{
}

VSettings::~VSettings()
{
    delete m_settings;
}

void VSettings::beginGroup(const QString& prefix)
{
    m_settings->beginGroup(prefix);
}

void VSettings::endGroup()
{
    m_settings->endGroup();
}

QString VSettings::group() const
{
    return m_settings->group();
}

QVariant VSettings::value(const QString& key, const QVariant& defaultValue) const
{
    return m_settings->value(key, defaultValue);
}

void VSettings::setValue(const QString& key, const QVariant& value)
{
    m_settings->setValue(key, value);
}

bool VSettings::contains(const QString& key) const
{
    return m_settings->contains(key);
}

void VSettings::remove(const QString& key)
{
    m_settings->remove(key);
}

void VSettings::sync()
{
    m_settings->sync();
}

QSettings* VSettings::settings() const
{
    return m_settings;
}

void VSettings::setFileName(const QString& fileName)
{
    QWriteLocker locker(&s_fileNameLock);
    s_fileName = fileName;
}

QString VSettings::fileName()
{
    QSettings* store = openStore();
    const QString name = store->fileName();
    delete store;
    return name;
}
