#ifndef VCSVFILEPICK_H
#define VCSVFILEPICK_H

#include "veitikgip_export.h"

#include <QObject>
#include <QString>

/**
 * @brief Asks the user for a CSV file to open or to save, starting in the folder used last time.
 *
 * The last open folder and the last save folder are kept apart and persisted
 * under "VCsvFilePick/openPath" and "VCsvFilePick/savePath"; both start as the
 * application's directory.
 * @code
 * VCsvFilePick pick;
 * const QString path = pick.getSaveFileName(QStringLiteral("customers.csv"));
 * if (!path.isEmpty())
 *     exportTo(path);
 * @endcode
 */
class VEITIKGIP_EXPORT VCsvFilePick : public QObject {
    Q_OBJECT
public:
    explicit VCsvFilePick(QObject* parent = nullptr);
    ~VCsvFilePick() override;

    /**
     * Shows the open dialog in the last open folder with @p fileName proposed.
     * @return the chosen path, or an empty string when the user cancels.
     */
    QString getOpenFileName(const QString& fileName);
    /**
     * Shows the save dialog in the last save folder with @p fileName proposed.
     * @return the chosen path as given (no extension is added), or an empty string when the user cancels.
     */
    QString getSaveFileName(const QString& fileName);

    void readSettings();
    void saveSettings();

protected:
    /// Runs the modal open dialog; a subclass may answer without showing one.
    virtual QString execOpenDialog(const QString& caption, const QString& startPath, const QString& filter);
    /// Runs the modal save dialog; a subclass may answer without showing one.
    virtual QString execSaveDialog(const QString& caption, const QString& startPath, const QString& filter);

private:
    QString m_openPath;
    QString m_savePath;
};

#endif // VCSVFILEPICK_H
