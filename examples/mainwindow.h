#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include <QMainWindow>
#include <QVector>

class QAbstractItemView;
class QAction;
class QLabel;
class QTabWidget;
class VHtmlTreeView;
class VSearchLineEdit;
class VSortFilterProxyModel;
class VTableView;

/**
 * @brief The demo's main window: one tab per table of the sample database,
 * and a tree of the customers with their orders.
 *
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
    /// Searches the current tab for @p text, as if it were typed into the search field with Return.
    void search(const QString& text);
    /// How long each tab took to load, e.g. "customers 12 ms, products 3 ms".
    QString loadTimes() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Page {
        QString table;
        VSortFilterProxyModel* proxy = nullptr;
        QAbstractItemView* view = nullptr;
        VTableView* tableView = nullptr; // null for the tree
        VHtmlTreeView* treeView = nullptr; // null for the tables
        qint64 loadTime = 0;
    };

    void createActions();
    void addTablePage(int tableIndex);
    void addCustomerTreePage();
    const Page* currentPage() const;
    void applySearch(const QString& text);
    void onCurrentTabChanged();
    void exportCsv();
    void updateRowCount();
    void saveViewStates();

    QTabWidget* m_tabs;
    VSearchLineEdit* m_search;
    QAction* m_exportAction;
    QLabel* m_rowCount;
    QVector<Page> m_pages;
};

#endif // MAINWINDOW_H
