#ifndef VBASEDIALOG_H
#define VBASEDIALOG_H

#include "veitikgip_export.h"

#include <QDialog>

class QDialogButtonBox;
class QVBoxLayout;

/**
 * @brief A top-level dialog that remembers its size and position between runs.
 *
 * The dialog is a vertical main layout with a button box at its foot that
 * offers a single "&Close" button. Subclasses add their widgets to
 * `mainLayout` above the button box and give the dialog a distinct object
 * name: the geometry is stored under "dialogs/" followed by that name,
 * restored on every show and saved on every way out (button, Escape, window
 * close). Dialogs that keep the placeholder name "VBaseDialog_ObjNameNotSet"
 * share one entry.
 * @code
 * class VNoteDialog : public VBaseDialog {
 * public:
 *     VNoteDialog() { setObjectName("VNoteDialog"); mainLayout->insertWidget(0, new QTextEdit); }
 * };
 * @endcode
 */
class VEITIKGIP_EXPORT VBaseDialog : public QDialog {
    Q_OBJECT
public:
    VBaseDialog();

    /// Restores the geometry stored under "dialogs/" + objectName(); called on every show.
    virtual void readSettings();
    /// Stores the geometry under "dialogs/" + objectName(); called on close and by done().
    virtual void saveSettings();

protected slots:
    /// Called once for each change of the object name, and so of the settings key; does nothing here.
    virtual void onObjectNameChanged(const QString& objectName);

public slots:
    /// Saves the settings, then closes the dialog with result @p r.
    void done(int r) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

    QVBoxLayout* mainLayout;
    QDialogButtonBox* buttonBox;
};

#endif // VBASEDIALOG_H
