#ifndef VTREEVIEW_H
#define VTREEVIEW_H

#include "veitikgip_export.h"
#include "vtableitemvieweventforwarder.h"

#include <QPersistentModelIndex>
#include <QTreeView>
#include <QUrl>

class QMenu;
class VCrudToolBar;

/**
 * @brief The tree view of the library's tree screens: browse, expand, follow links.
 *
 * A QTreeView for tree-shaped record models with the table view's hooks:
 * - a context menu offering "Expand All.", "Expand All from here.",
 *   "Collapse All." and "Collapse All from here." (a cell of any column
 *   stands for its row), then the actions of an attached VCrudToolBar and the
 *   column chooser;
 * - link cells: the model's Qt::UserRole + 6 gives the cursor over a cell and
 *   a double click on a cell with a link (Qt::UserRole + 7, not suppressed by
 *   the flags in Qt::UserRole + 8) emits linkClicked();
 * - light grid lines around every cell;
 * - the header layout saved under "views/" + objectName().
 * Moving between rows never submits the model.
 * @code
 * auto tree = new VTreeView(this);
 * tree->setObjectName("customerOrders");
 * tree->setModel(treeProxy);
 * tree->restoreState();
 * @endcode
 */
class VEITIKGIP_EXPORT VTreeView : public QTreeView {
    Q_OBJECT
public:
    explicit VTreeView(QWidget* parent = nullptr);
    ~VTreeView() override;

    void setToolBar(const VCrudToolBar* toolBar);
    const VCrudToolBar* toolBar() const;

    /// Sets the model; moving between rows never submits it.
    void setModel(QAbstractItemModel* model) override;

    /// Saves the header layout under "views/" + objectName().
    virtual void saveState();
    /**
     * Applies the header layout saved for this view. Nothing happens without
     * a model or a saved layout; a damaged layout, or one saved for another
     * number of columns, is removed from the settings and not applied.
     */
    virtual void restoreState();

    /// The logical columns that are not hidden, ascending.
    QList<int> visibleColumns() const;

    /**
     * The view's part of the context menu (a new menu owned by the caller, or
     * null for none): the toolbar's entries, a separator and
     * "Select Visible Columns...".
     */
    virtual QMenu* createContextMenu();
    /**
     * The whole context menu for a request at @p pos (viewport coordinates),
     * as contextMenu() shows it: the four expand and collapse entries, a
     * separator, then createContextMenu()'s entries. The "from here" entries
     * act on the row under @p pos and are disabled over no row. The menu is
     * new and owned by the caller.
     */
    virtual QMenu* buildContextMenu(const QPoint& pos);

Q_SIGNALS:
    void linkClicked(const QUrl& url);

public Q_SLOTS:
    /**
     * Expands (or collapses) the row of @p index and every row below it.
     * Collapsing goes from the top down and expanding from the bottom up, so
     * the whole branch ends in the same state at little layout cost.
     */
    void expandNode(const QModelIndex& index, bool expanded);
    void selectVisibleColumns();

protected Q_SLOTS:
    /// Shows buildContextMenu()'s menu at @p pos, modally.
    virtual void contextMenu(const QPoint& pos);
    virtual void onDoubleClicked(const QModelIndex& index);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void drawRow(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private Q_SLOTS:
    void resetCursor();

private:
    const VCrudToolBar* m_toolBar = nullptr;
    // The cell under the mouse at the last move. Persistent, because a row
    // number alone does not tell a tree's cells apart and a reset must not
    // leave it pointing at a row that is gone; the flag remembers that the
    // cursor came from a cell even when that cell has since disappeared.
    QPersistentModelIndex m_hoverIndex;
    bool m_hoverOnCell = false;
    VTableItemViewEventForwarder m_eventForwarder;
};

#endif // VTREEVIEW_H
