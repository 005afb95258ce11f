#ifndef VSETTINGS_H
#define VSETTINGS_H

#include "vocore_export.h"

#include <QObject>
#include <QVariant>

class QSettings;

/**
 * @brief The settings store that every widget of the library persists through.
 *
 * A thin wrapper around one QSettings object in INI format. Widgets create it
 * on the stack, read or write a few values and let it go; every instance
 * addresses the same store, and values written are on disk once the last
 * instance that wrote them is destroyed.
 *
 * The store is the INI file that QSettings chooses for the application's
 * organisation and application names (user scope); when the organisation
 * name is unset the application name stands in for it, and when that is
 * unset too, "veitikgip". An application or a test points the store at a
 * given file with setFileName():
 * @code
 * VSettings::setFileName(QDir::temp().filePath("test-settings.ini"));
 * VSettings settings(nullptr);
 * settings.setValue("views/customers", header->saveState());
 * @endcode
 */
class VOCORE_EXPORT VSettings : public QObject
{
    Q_OBJECT
public:
    explicit VSettings(QObject* parent = nullptr);
    ~VSettings() override;

    void beginGroup(const QString& prefix);
    void endGroup();
    QString group() const;

    QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
    void setValue(const QString& key, const QVariant& value);
    bool contains(const QString& key) const;
    void remove(const QString& key);
    /// Writes pending changes to the file now, rather than on destruction.
    void sync();

    /// The wrapped QSettings, for the operations the wrapper does not forward.
    QSettings* settings() const;

    /**
     * Makes every VSettings created from now on use @p fileName (INI format).
     * An empty name returns to the default location.
     */
    static void setFileName(const QString& fileName);
    /// The file that a VSettings created now would use.
    static QString fileName();

private:
    QSettings* m_settings;
};

#endif // VSETTINGS_H
