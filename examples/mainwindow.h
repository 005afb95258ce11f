#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include <QMainWindow>
#include <QVector>

class QAbstractItemView;
class QAction;
class QDockWidget;
class QLabel;
class QStackedWidget;
class QTabWidget;
class OrderLinesModel;
class OrdersProxyModel;
class VAbstractViewWidget;
class VBurgerMenu;
class VHtmlTreeView;
class VSortFilterProxyModel;
class VTableView;

/**
 * @brief The demo's main window: a burger menu on the left that switches
 * between the tables, a page of the stand-alone widgets and an about page,
 * and a dock with the library's log.
 *
 * The tables page has one tab per table of the sample database and a tree of
 * the customers with their orders.
 * Each table tab shows a whole table (every row fetched) in a VTableView
 * through a VSortFilterProxyModel, with filter widgets under several columns
 * and the view commands (natural order, column chooser, CSV exports) in the
 * context menu. The "Customers & Orders" tab shows HTML cells with links in a
 * VHtmlTreeView; a link hovered or clicked is shown in the status bar. The
 * toolbar's search field filters the current tab on Return and when it is
 * cleared, and the matches are highlighted; "Export CSV..." writes the rows
 * of the current table tab to a file. Column layouts are kept between runs.
 * Expects the sample database as the default SQL connection.
 */
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);

    /// Rows that the current tab shows (after the search); top-level rows for the tree.
    int currentRowCount() const;
    /**
     * Brings a tab to the front: "customers", "products", "orders",
     * "order_lines" or "customers_orders" (the tree).
     */
    bool setCurrentTable(const QString& table);
    /// Searches the current tab for @p text, as if it were typed into its search field with Return.
    void search(const QString& text);
    /// Makes every view read-only: nothing can be created, copied, edited or deleted.
    void setReadOnly(bool readOnly);
    /**
     * Withholds the record actions (new, copy, edit, delete, save, cancel) of
     * every view, as for a user without edit rights: clears their authorized
     * flags, found by object name, and hides them.
     */
    void withholdRecordActions();
    /// Opens the filter and options panels of the views that have them.
    void showPanels();
    /// How long each tab took to load, e.g. "customers 12 ms, products 3 ms".
    QString loadTimes() const;
    /// Shows the page @p name ("tables", "widgets" or "about") as the menu would.
    bool setCurrentPage(const QString& name);
    /// Expands or collapses the burger menu at once, without the animation.
    void setMenuExpanded(bool expanded);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Page {
        QString table;
        VSortFilterProxyModel* proxy = nullptr;
        QAbstractItemView* view = nullptr;
        VTableView* tableView = nullptr; // null for the tree
        VHtmlTreeView* treeView = nullptr; // null for the tables
        VAbstractViewWidget* widget = nullptr;
        OrdersProxyModel* orders = nullptr; // the orders' proxy, else null
        OrderLinesModel* lines = nullptr; // the editable order lines, else null
        qint64 loadTime = 0;
    };

    void createActions();
    void createMenu();
    void createLogDock();
    QWidget* createAboutPage();
    void addTablePage(int tableIndex);
    void addCustomerTreePage();
    const Page* currentPage() const;
    void connectSearch(VAbstractViewWidget* widget, int pageIndex);
    void applySearch(const Page& page, const QString& text, bool excludeMode);
    void setUpOrders(Page& page);
    void setUpOrderLines(Page& page);
    void onCurrentTabChanged();
    void exportCsv();
    void saveViewStates();

    VBurgerMenu* m_menu;
    QStackedWidget* m_stack;
    QDockWidget* m_logDock;
    QTabWidget* m_tabs;
    QAction* m_exportAction;
    bool m_readOnly = false;
    QVector<Page> m_pages;
};

#endif // MAINWINDOW_H
