#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include <QMainWindow>
#include <QVector>

class QAction;
class QLabel;
class QSqlQueryModel;
class QTabWidget;
class QTableView;
class VSearchLineEdit;
class VSortFilterProxyModel;

/**
 * @brief The demo's main window: one tab per table of the sample database.
 *
 * Each tab shows a whole table (every row fetched) through a
 * VSortFilterProxyModel. The toolbar's search field filters the current tab
 * on Return and when it is cleared; "Export CSV..." writes the rows that the
 * current tab shows, in its visible columns, to a file; the status bar counts
 * the shown rows. Expects the sample database as the default SQL connection.
 */
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);

    /// Rows that the current tab shows (after the search).
    int currentRowCount() const;
    /// Brings the tab of @p table ("customers", "products", "orders", "order_lines") to the front.
    bool setCurrentTable(const QString& table);

private:
    struct Page {
        QString table;
        QSqlQueryModel* model;
        VSortFilterProxyModel* proxy;
        QTableView* view;
    };

    void createActions();
    void addPage(int tableIndex);
    const Page* currentPage() const;
    void applySearch(const QString& text);
    void onCurrentTabChanged();
    void exportCsv();
    void updateRowCount();

    QTabWidget* m_tabs;
    VSearchLineEdit* m_search;
    QAction* m_exportAction;
    QLabel* m_rowCount;
    QVector<Page> m_pages;
};

#endif // MAINWINDOW_H
