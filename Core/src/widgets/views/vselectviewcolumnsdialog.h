#ifndef VSELECTVIEWCOLUMNSDIALOG_H
#define VSELECTVIEWCOLUMNSDIALOG_H

#include "vbasedialog.h"
#include "veitikgip_export.h"

#include <QPointer>

class QAbstractItemView;
class QCheckBox;
class QListWidget;
class QPushButton;
class QVBoxLayout;

/**
 * @brief Lets the user choose which columns of a table or tree view are shown.
 *
 * The dialog lists the columns of the view's model by their header texts,
 * each with a check box that shows whether the column is visible, and applies
 * the ticks to the view on OK; Cancel leaves the view untouched. Columns whose
 * header does not begin with an upper-case letter are taken for fields that
 * the model uses internally and are listed only while "Display All" is
 * ticked; that choice is kept in the settings.
 * @code
 * VSelectViewColumnsDialog dialog(tableView);
 * dialog.exec();
 * @endcode
 */
class VEITIKGIP_EXPORT VSelectViewColumnsDialog : public VBaseDialog {
    Q_OBJECT
public:
    /// @param view the view whose columns are edited; it is not the dialog's parent.
    explicit VSelectViewColumnsDialog(QAbstractItemView* view);

    /**
     * The model column that the list item in @p row stands for, found by its
     * header text, or -1. An item listed as "Col %1" (an empty header) maps to
     * no column; of two columns with the same text, the first one is found.
     */
    int modelColumn(int row) const;
    /// Rebuilds the list from the view's model and the columns' current visibility.
    void showColumns();

    /// Restores "Display All", then the geometry.
    void readSettings() override;
    /// Stores "Display All", then the geometry.
    void saveSettings() override;

signals:
    /// Declared for subclasses and callers; the dialog itself never emits it.
    void resetViewClicked();

public slots:
    /// Shows or hides the view's columns as ticked, then closes the dialog.
    void accept() override;

protected slots:
    void onShowAllStateChanged(int state);
    void onSelectAllClicked();
    void onSelectNoneClicked();
    void onResetViewClicked();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QString headerText(int column) const;
    void setAllCheckStates(Qt::CheckState state);

    QCheckBox* m_showAll;
    QPushButton* m_selectAll;
    QPushButton* m_selectNone;
    QListWidget* m_columns;
    QPointer<QAbstractItemView> m_view;
    QVBoxLayout* m_columnsLayout;
};

#endif // VSELECTVIEWCOLUMNSDIALOG_H
