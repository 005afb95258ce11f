#include "mainwindow.h"

#include "valuedelegate.h"

#include <logger.h>
#include <vcsvfilepick.h>
#include <vcsvmodelwriter.h>
#include <vsearchlineedit.h>
#include <vsortfilterproxymodel.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSqlError>
#include <QSqlQueryModel>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>

namespace {

struct ColumnDef {
    const char* title;
    ValueDelegate::Format format;
};

struct TableDef {
    const char* table;
    const char* title;
    const char* query;
    ColumnDef columns[10];
};

// Titles are translated where they are used; a null title ends a column list.
const TableDef tables[] = {
    { "customers", QT_TRANSLATE_NOOP("MainWindow", "Customers"),
        "SELECT id, name, email, phone, city, country, customer_since, active FROM customers ORDER BY id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Name"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "E-mail"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Phone"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "City"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Country"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Customer Since"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Active"), ValueDelegate::YesNo } } },
    { "products", QT_TRANSLATE_NOOP("MainWindow", "Products"),
        "SELECT id, sku, name, category, unit_price, stock, discontinued FROM products ORDER BY id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "SKU"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Product"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Category"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Unit Price"), ValueDelegate::Money },
            { QT_TRANSLATE_NOOP("MainWindow", "In Stock"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Discontinued"), ValueDelegate::YesNo } } },
    { "orders", QT_TRANSLATE_NOOP("MainWindow", "Orders"),
        "SELECT o.id, o.order_date, c.name, c.city, o.status, o.paid, o.shipped_date, t.lines, t.total"
        " FROM orders o JOIN customers c ON c.id = o.customer_id"
        " LEFT JOIN (SELECT order_id, COUNT(*) AS lines,"
        " ROUND(SUM(quantity * unit_price * (1 - discount)), 2) AS total"
        " FROM order_lines GROUP BY order_id) t ON t.order_id = o.id"
        " ORDER BY o.id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Order"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Date"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Customer"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "City"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Status"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Paid"), ValueDelegate::YesNo },
            { QT_TRANSLATE_NOOP("MainWindow", "Shipped"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Lines"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Total"), ValueDelegate::Money } } },
    { "order_lines", QT_TRANSLATE_NOOP("MainWindow", "Order Lines"),
        "SELECT l.id, l.order_id, l.position, p.sku, p.name, l.quantity, l.unit_price, l.discount,"
        " ROUND(l.quantity * l.unit_price * (1 - l.discount), 2)"
        " FROM order_lines l JOIN products p ON p.id = l.product_id ORDER BY l.id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Order"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Pos."), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "SKU"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Product"), ValueDelegate::Text },
            { QT_TRANSLATE_NOOP("MainWindow", "Quantity"), ValueDelegate::Number },
            { QT_TRANSLATE_NOOP("MainWindow", "Unit Price"), ValueDelegate::Money },
            { QT_TRANSLATE_NOOP("MainWindow", "Discount"), ValueDelegate::Percent },
            { QT_TRANSLATE_NOOP("MainWindow", "Amount"), ValueDelegate::Money } } },
};

// Wide text columns (e-mail, product names) would otherwise push the rest out of sight.
const int maxColumnWidth = 320;

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_tabs(new QTabWidget(this))
    , m_search(nullptr)
    , m_exportAction(nullptr)
    , m_rowCount(new QLabel(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    m_tabs->setObjectName(QStringLiteral("tableTabs"));
    m_tabs->setDocumentMode(true);
    setCentralWidget(m_tabs);
    m_rowCount->setObjectName(QStringLiteral("rowCountLabel"));
    statusBar()->setObjectName(QStringLiteral("statusBar"));
    statusBar()->addPermanentWidget(m_rowCount);

    createActions();
    for (int i = 0; i < int(sizeof(tables) / sizeof(tables[0])); ++i)
        addPage(i);

    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::onCurrentTabChanged);
    onCurrentTabChanged();
}

int MainWindow::currentRowCount() const
{
    const Page* page = currentPage();
    return page ? page->proxy->rowCount() : 0;
}

void MainWindow::createActions()
{
    m_exportAction = new QAction(tr("Export CSV..."), this);
    m_exportAction->setObjectName(QStringLiteral("exportCsvAction"));
    m_exportAction->setToolTip(tr("Export the rows of the current table to a CSV file"));
    m_exportAction->setShortcut(QKeySequence(tr("Ctrl+E")));
    connect(m_exportAction, &QAction::triggered, this, &MainWindow::exportCsv);

    auto* quitAction = new QAction(tr("&Quit"), this);
    quitAction->setObjectName(QStringLiteral("quitAction"));
    quitAction->setShortcut(QKeySequence::Quit);
    connect(quitAction, &QAction::triggered, this, &QWidget::close);

    QMenu* fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->setObjectName(QStringLiteral("fileMenu"));
    fileMenu->addAction(m_exportAction);
    fileMenu->addSeparator();
    fileMenu->addAction(quitAction);

    QToolBar* toolBar = addToolBar(tr("Main"));
    toolBar->setObjectName(QStringLiteral("mainToolBar"));
    toolBar->setMovable(false);
    toolBar->addAction(m_exportAction);
    toolBar->addSeparator();

    m_search = new VSearchLineEdit(toolBar);
    m_search->setObjectName(QStringLiteral("searchLineEdit"));
    m_search->setToolTip(tr("Press Return to show only the rows that contain the text"));
    m_search->setMaximumWidth(320);
    toolBar->addWidget(m_search);
    connect(m_search, &QLineEdit::returnPressed, this, [this] { applySearch(m_search->text()); });
    connect(m_search, &VSearchLineEdit::textCleared, this, [this] { applySearch(QString()); });

    auto* findAction = new QAction(tr("Find"), this);
    findAction->setObjectName(QStringLiteral("findAction"));
    findAction->setShortcut(QKeySequence::Find);
    connect(findAction, &QAction::triggered, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    addAction(findAction);
}

void MainWindow::addPage(int tableIndex)
{
    const TableDef& def = tables[tableIndex];
    const QString table = QLatin1String(def.table);

    Page page;
    page.table = table;
    page.model = new QSqlQueryModel(this);
    page.model->setObjectName(table + QLatin1String("Model"));
    page.model->setQuery(QLatin1String(def.query));
    if (page.model->lastError().isValid())
        LOG_ERROR("Cannot load %s: %s", def.table, qPrintable(page.model->lastError().text()));
    // The whole table, before the proxy sees it: one mapping instead of one per fetched batch.
    while (page.model->canFetchMore())
        page.model->fetchMore();

    int columns = 0;
    for (const ColumnDef& column : def.columns) {
        if (!column.title)
            break;
        page.model->setHeaderData(columns++, Qt::Horizontal, tr(column.title));
    }

    page.proxy = new VSortFilterProxyModel(this);
    page.proxy->setObjectName(table + QLatin1String("Proxy"));
    page.proxy->setSourceModel(page.model);

    page.view = new QTableView(m_tabs);
    page.view->setObjectName(table + QLatin1String("View"));
    page.view->setModel(page.proxy);
    page.view->setSelectionBehavior(QAbstractItemView::SelectRows);
    page.view->setAlternatingRowColors(true);
    page.view->setWordWrap(false);
    page.view->verticalHeader()->hide();
    page.view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    page.view->verticalHeader()->setDefaultSectionSize(page.view->fontMetrics().height() + 6);
    QHeaderView* header = page.view->horizontalHeader();
    header->setObjectName(table + QLatin1String("Header"));
    header->setHighlightSections(false);
    // Rows stay in key order until the user clicks a header.
    header->setSortIndicator(-1, Qt::AscendingOrder);
    page.view->setSortingEnabled(true);

    for (int c = 0; c < columns; ++c) {
        if (def.columns[c].format != ValueDelegate::Text)
            page.view->setItemDelegateForColumn(c, new ValueDelegate(def.columns[c].format, page.view));
    }
    // Measures a bounded sample of rows (the header's resize precision), not all of them.
    page.view->resizeColumnsToContents();
    for (int c = 0; c < columns; ++c)
        header->resizeSection(c, qMin(header->sectionSize(c), maxColumnWidth));

    connect(page.proxy, &QAbstractItemModel::modelReset, this, &MainWindow::updateRowCount);
    connect(page.proxy, &QAbstractItemModel::layoutChanged, this, &MainWindow::updateRowCount);
    connect(page.proxy, &QAbstractItemModel::rowsInserted, this, &MainWindow::updateRowCount);
    connect(page.proxy, &QAbstractItemModel::rowsRemoved, this, &MainWindow::updateRowCount);

    m_tabs->addTab(page.view, tr(def.title));
    m_pages.append(page);
}

bool MainWindow::setCurrentTable(const QString& table)
{
    for (int i = 0; i < m_pages.size(); ++i) {
        if (m_pages.at(i).table == table) {
            m_tabs->setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

const MainWindow::Page* MainWindow::currentPage() const
{
    const int index = m_tabs->currentIndex();
    return index >= 0 && index < m_pages.size() ? &m_pages.at(index) : nullptr;
}

void MainWindow::applySearch(const QString& text)
{
    const Page* page = currentPage();
    if (!page)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    page->proxy->setSearchString(text);
    QApplication::restoreOverrideCursor();
    updateRowCount();
}

void MainWindow::onCurrentTabChanged()
{
    // Each tab keeps its own search; the field shows the one of the tab in front.
    const Page* page = currentPage();
    m_search->setText(page ? page->proxy->searchString() : QString());
    m_exportAction->setEnabled(page != nullptr);
    updateRowCount();
}

void MainWindow::exportCsv()
{
    const Page* page = currentPage();
    if (!page)
        return;
    VCsvFilePick pick;
    const QString fileName = pick.getSaveFileName(page->table + QLatin1String(".csv"));
    if (fileName.isEmpty())
        return;

    VCsvModelWriter writer(fileName);
    writer.setModel(page->proxy);
    // Columns in the order the user sees them, hidden ones left out.
    const QHeaderView* header = page->view->horizontalHeader();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int column = header->logicalIndex(visual);
        if (!header->isSectionHidden(column))
            writer.addColumn(
                page->proxy->headerData(column, Qt::Horizontal).toString(), column, Qt::DisplayRole);
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = writer.write();
    QApplication::restoreOverrideCursor();
    if (!ok) {
        QMessageBox::warning(this, tr("Save Error"), tr("There was an error saving the csv file."));
        return;
    }
    statusBar()->showMessage(
        tr("Exported %1 rows to %2")
            .arg(QLocale().toString(page->proxy->rowCount()), QDir::toNativeSeparators(fileName)),
        10000);
}

void MainWindow::updateRowCount()
{
    const int rows = currentRowCount();
    m_rowCount->setText(rows == 1 ? tr("1 row") : tr("%1 rows").arg(QLocale().toString(rows)));
}
