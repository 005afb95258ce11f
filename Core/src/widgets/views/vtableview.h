#ifndef VTABLEVIEW_H
#define VTABLEVIEW_H

#include "veitikgip_export.h"
#include "vtableitemvieweventforwarder.h"

#include <QTableView>
#include <QUrl>

class QComboBox;
class QMenu;
class VCrudToolBar;
class VFilterHorizontalHeaderView;

/**
 * @brief The table view of every table screen: browse, filter, sort, export.
 *
 * A QTableView preset for browsing records (whole-row single selection, no
 * in-place editing, movable columns, sorting by header click cycling
 * ascending, descending and unsorted) with:
 * - a filter row under the header whose widgets drive the column filters of
 *   a VSortFilterProxyModel (a line edit filters on Return or when cleared,
 *   not while typing);
 * - a context menu with the actions of an attached VCrudToolBar and, with
 *   setShowViewCommands(true), natural-order sorting, the column chooser and
 *   four CSV exports;
 * - link cells: the model's Qt::UserRole + 6 gives the cursor over a cell and
 *   a double click on a cell with a link (Qt::UserRole + 7) emits linkClicked();
 * - the column layout saved under "views/" + objectName();
 * - preserveSelection() / restoreSelection() to keep the selected records
 *   (by the key in column 0's edit role) selected across a refresh.
 * @code
 * auto view = new VTableView(this);
 * view->setObjectName("ordersView");
 * view->setModel(proxy);                       // a VSortFilterProxyModel
 * view->setColumnFilterWidget(2, new VClearLineEdit);
 * view->setColumnFilterWidget(5, view->createYesNoComboBox());
 * view->restoreState();
 * @endcode
 */
class VEITIKGIP_EXPORT VTableView : public QTableView {
    Q_OBJECT
public:
    explicit VTableView(QWidget* parent = nullptr);
    ~VTableView() override;

    void setToolBar(const VCrudToolBar* toolBar);
    const VCrudToolBar* toolBar() const;

    /// Whether the context menu offers sorting, column and export commands; off by default.
    void setShowViewCommands(bool show);
    bool showViewCommands() const;

    /// Sets the model; moving between rows never submits it.
    void setModel(QAbstractItemModel* model) override;

    /// A fixed height for every row, and for the filter row.
    void setRowHeight(int height);

    /**
     * Places a filter widget under a column. The model must already be a
     * VSortFilterProxyModel; a line edit filters on Return or when cleared,
     * a combo box on a change of index, a date edit or spin box re-filters.
     */
    void setColumnFilterWidget(int column, QWidget* widget);
    /// A combo box with the items "", "Yes" and "No", for yes/no columns.
    QComboBox* createYesNoComboBox();

    /// The logical columns that are not hidden, ascending.
    QList<int> visibleColumns() const;

    /**
     * Writes the model's rows to a CSV file, columns in the order the user
     * sees them. An empty @p fileName asks for one. Reports the outcome in a
     * message box.
     */
    void writeToCsv(const QString& fileName, bool visibleOnly, int role);

    /// Applies the header state saved for this view; a stale or damaged state is removed.
    virtual void restoreState();
    /// Saves the header state under "views/" + objectName(); the arguments are ignored.
    virtual void saveState(const QString& = QString(), const QString& = QString());
    /// Remembers the keys (column 0, edit role) of the current and the selected rows.
    virtual void preserveSelection();
    /// Selects again the rows whose keys preserveSelection() remembered.
    virtual void restoreSelection();

    /// Builds the context menu (a new menu owned by the caller), or null for none.
    virtual QMenu* createContextMenu();

Q_SIGNALS:
    void linkClicked(const QUrl& url);

public Q_SLOTS:
    void selectVisibleColumns();

protected Q_SLOTS:
    virtual void contextMenu(const QPoint& pos);
    virtual void onDoubleClicked(const QModelIndex& index);
    virtual void sortEnableToggled();
    void onFilterChanged();
    void exportAllColsToCsvTriggered();
    void exportVisibleColsToCsvTriggered();
    void exportAllColsToCsvEditRollTriggered();
    void exportVisibleColsToCsvEditRollTriggered();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;

    VFilterHorizontalHeaderView* filterHeader() const;

private Q_SLOTS:
    void resetCursor();

private:
    QList<int> m_preservedIds;
    int m_preservedCurrentId = 0;
    const VCrudToolBar* m_toolBar = nullptr;
    bool m_showViewCommands = false;
    int m_hoverColumn = -1;
    int m_hoverRow = -1;
    VTableItemViewEventForwarder m_eventForwarder;
    VFilterHorizontalHeaderView* m_filterHeader = nullptr;
};

#endif // VTABLEVIEW_H
