#include "mainwindow.h"

#include "customertreemodel.h"
#include "formatmodel.h"
#include "orderfilterwidget.h"
#include "orderlinesmodel.h"
#include "orderoptionswidget.h"
#include "ordersmodel.h"
#include "ordersproxymodel.h"
#include "valuesortproxymodel.h"
#include "widgetspage.h"

#include <logger.h>
#include <vauthaction.h>
#include <vburgermenu.h>
#include <vclearlineedit.h>
#include <vcrudtoolbar.h>
#include <vcsvfilepick.h>
#include <vcsvmodelwriter.h>
#include <vfilterwidget.h>
#include <vhighlightitemdelegate.h>
#include <vhtmltreeview.h>
#include <vloggerwidget.h>
#include <voptionswidget.h>
#include <vsearchlineedit.h>
#include <vsortfilterproxymodel.h>
#include <vsortfiltertreeproxymodel.h>
#include <vtableview.h>
#include <vtableviewwidget.h>
#include <vtreeviewwidget.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QSqlError>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

#include <algorithm>
#include <functional>

namespace {

// The widget under a column's header that filters it.
enum class Filter { None, Line, YesNo, Date };

struct ColumnDef {
    const char* title;
    FormatModel::Format format;
    Filter filter;
};

// Where a table's rows come from.
enum class Source { Query, Orders, OrderLines };

struct TableDef {
    const char* table;
    const char* widgetName; // names the view widget, its toolbar actions and its settings
    Source source;
    const char* title;
    const char* query;
    ColumnDef columns[10];
};

using F = FormatModel;

// Titles are translated where they are used; a null title ends a column list.
const TableDef tables[] = {
    { "customers", "Customers", Source::Query, QT_TRANSLATE_NOOP("MainWindow", "Customers"),
        "SELECT id, name, email, phone, city, country, customer_since, active FROM customers ORDER BY id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Name"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "E-mail"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Phone"), F::Text, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "City"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Country"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Customer Since"), F::Text, Filter::Date },
            { QT_TRANSLATE_NOOP("MainWindow", "Active"), F::YesNo, Filter::YesNo } } },
    { "products", "Products", Source::Query, QT_TRANSLATE_NOOP("MainWindow", "Products"),
        "SELECT id, sku, name, category, unit_price, stock, discontinued FROM products ORDER BY id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "SKU"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Product"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Category"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Unit Price"), F::Money, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "In Stock"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Discontinued"), F::YesNo, Filter::YesNo } } },
    { "orders", "Orders", Source::Orders, QT_TRANSLATE_NOOP("MainWindow", "Orders"),
        "SELECT o.id, o.order_date, c.name, c.city, o.status, o.paid, o.shipped_date, t.lines, t.total"
        " FROM orders o JOIN customers c ON c.id = o.customer_id"
        " LEFT JOIN (SELECT order_id, COUNT(*) AS lines,"
        " ROUND(SUM(quantity * unit_price * (1 - discount)), 2) AS total"
        " FROM order_lines GROUP BY order_id) t ON t.order_id = o.id"
        " ORDER BY o.id",
        { { QT_TRANSLATE_NOOP("MainWindow", "Order"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Date"), F::Text, Filter::Date },
            { QT_TRANSLATE_NOOP("MainWindow", "Customer"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "City"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Status"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Paid"), F::YesNo, Filter::YesNo },
            { QT_TRANSLATE_NOOP("MainWindow", "Shipped"), F::Text, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Lines"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Total"), F::Money, Filter::None } } },
    // The one editable table: OrderLinesModel selects it with the product's name.
    { "order_lines", "OrderLines", Source::OrderLines, QT_TRANSLATE_NOOP("MainWindow", "Order Lines"), "",
        { { QT_TRANSLATE_NOOP("MainWindow", "Id"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Order"), F::Number, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Pos."), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Product"), F::Text, Filter::Line },
            { QT_TRANSLATE_NOOP("MainWindow", "Quantity"), F::Number, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Unit Price"), F::Money, Filter::None },
            { QT_TRANSLATE_NOOP("MainWindow", "Discount"), F::Percent, Filter::None } } },
};

const char customerTreeTable[] = "customers_orders";

// Wide text columns (e-mail, product names) would otherwise push the rest out of sight.
const int maxColumnWidth = 320;
// A search that leaves at most this many customers shows their matching orders at once.
const int maxExpandedCustomers = 50;
// Rows and the filter row under the header: room for a line edit, a combo box or a date edit.
const int rowHeight = 22;

// The pages of the burger menu, in menu order; the last one sits at the bottom.
struct PageDef {
    const char* name;
    const char* title;
    const char* icon;
};
const PageDef menuPages[] = {
    { "tables", QT_TRANSLATE_NOOP("MainWindow", "Tables"), ":/images/view" },
    { "widgets", QT_TRANSLATE_NOOP("MainWindow", "Widgets"), ":/images/settings" },
    { "about", QT_TRANSLATE_NOOP("MainWindow", "About"), ":/images/open" },
};

// The library ships no burger icon: three bars, drawn once.
QIcon burgerIcon()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xee, 0xee, 0xee));
    for (int y : { 7, 14, 21 })
        painter.drawRoundedRect(QRectF(5, y, 22, 3.5), 1.5, 1.5);
    return QIcon(pixmap);
}

// The library sets no colours on the menu; the demo dresses it by object name.
const char menuStyleSheet[] = "VBurgerMenu, #BurgerMenu { background: #2b3440; }"
                              "#MainBurgerButton { background: #2b3440; border: none; }"
                              "#MainBurgerButton:hover { background: #3a4656; }"
                              "#BurgerButton { color: #dfe6ee; background: #2b3440; border: none;"
                              " text-align: left; padding-left: 12px; }"
                              "#BurgerButton:hover { background: #3a4656; }"
                              "#BurgerButton:checked { background: #4a7ab8; color: white; }";

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_menu(new VBurgerMenu(this))
    , m_stack(new QStackedWidget(this))
    , m_logDock(nullptr)
    , m_tabs(new QTabWidget(this))
    , m_exportAction(nullptr)
{
    setObjectName(QStringLiteral("MainWindow"));
    m_tabs->setObjectName(QStringLiteral("tableTabs"));
    m_tabs->setDocumentMode(true);
    m_stack->setObjectName(QStringLiteral("pageStack"));
    auto* central = new QWidget(this);
    auto* centralLayout = new QHBoxLayout(central);
    centralLayout->setContentsMargins(0, 0, 0, 0);
    centralLayout->setSpacing(0);
    centralLayout->addWidget(m_menu);
    centralLayout->addWidget(m_stack, 1);
    setCentralWidget(central);
    statusBar()->setObjectName(QStringLiteral("statusBar"));

    createLogDock();
    createActions();
    for (int i = 0; i < int(sizeof(tables) / sizeof(tables[0])); ++i)
        addTablePage(i);
    addCustomerTreePage();
    // The panels' toggles, the link and visibility states of the last run.
    for (const Page& page : qAsConst(m_pages))
        page.widget->readSettings();

    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::onCurrentTabChanged);
    onCurrentTabChanged();
    createMenu();
}

void MainWindow::createMenu()
{
    m_menu->setObjectName(QStringLiteral("mainBurgerMenu"));
    m_menu->setStyleSheet(QLatin1String(menuStyleSheet));
    m_menu->setBurgerIcon(burgerIcon());
    m_menu->setIconSize(QSize(24, 24));
    m_menu->setMenuWidth(120);
    QWidget* pages[] = { m_tabs, new WidgetsPage(m_stack), createAboutPage() };
    const int count = int(sizeof(menuPages) / sizeof(menuPages[0]));
    for (int i = 0; i < count; ++i) {
        m_stack->addWidget(pages[i]);
        QAction* action = m_menu->addMenuAction(
            QIcon(QLatin1String(menuPages[i].icon)), tr(menuPages[i].title), i == count - 1);
        action->setObjectName(QLatin1String(menuPages[i].name) + QLatin1String("PageAction"));
        action->setData(QLatin1String(menuPages[i].name));
        action->setToolTip(tr(menuPages[i].title));
    }
    m_menu->setIconFixedHeight(40);
    connect(m_menu, &VBurgerMenu::triggered, this, [this](QAction* action, bool activateOnly) {
        const QString name = action->data().toString();
        for (int i = 0; i < int(sizeof(menuPages) / sizeof(menuPages[0])); ++i) {
            if (name == QLatin1String(menuPages[i].name))
                m_stack->setCurrentIndex(i);
        }
        m_exportAction->setEnabled(
            m_stack->currentWidget() == m_tabs && currentPage() && currentPage()->tableView);
        LOG_INFO("Showing the %s page%s", qPrintable(name), activateOnly ? " at start" : "");
    });
    m_menu->activateAction(tr(menuPages[0].title));
}

QWidget* MainWindow::createAboutPage()
{
    auto* about = new QLabel(m_stack);
    about->setObjectName(QStringLiteral("aboutPage"));
    about->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    about->setMargin(24);
    about->setWordWrap(true);
    about->setTextFormat(Qt::RichText);
    about->setText(tr("<h2>veitikgip demo %1</h2>"
                      "<p>Widgets for desktop database front-ends, on a sample SQLite database of "
                      "customers, products, orders and order lines.</p>"
                      "<p>The menu on the left switches between the tables, the stand-alone widgets and "
                      "this page; its top button expands and collapses it. The log dock shows what the "
                      "library and the demo log, from the level chosen in its box.</p>"
                      "<p>Start options: <tt>--database FILE</tt>, <tt>--table NAME</tt>, "
                      "<tt>--search TEXT</tt>, <tt>--page tables|widgets|about</tt>, <tt>--collapsed</tt>, "
                      "<tt>--screenshot FILE</tt>.</p>")
                       .arg(QApplication::applicationVersion()));
    return about;
}

void MainWindow::createLogDock()
{
    m_logDock = new QDockWidget(tr("Log"), this);
    m_logDock->setObjectName(QStringLiteral("logDock"));
    m_logDock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::RightDockWidgetArea);
    // Attached: every line the library logs, from any thread, lands here.
    auto* log = new VLoggerWidget(m_logDock, true);
    log->setObjectName(QStringLiteral("logWidget"));
    log->setLoggerLevel(Logger::Info);
    m_logDock->setWidget(log);
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    resizeDocks({ m_logDock }, { 150 }, Qt::Vertical);
    LOG_INFO("veitikgip demo %s started", qPrintable(QApplication::applicationVersion()));
}

bool MainWindow::setCurrentPage(const QString& name)
{
    for (const PageDef& page : menuPages) {
        if (name == QLatin1String(page.name)) {
            m_menu->activateAction(tr(page.title));
            return true;
        }
    }
    return false;
}

void MainWindow::setMenuExpanded(bool expanded)
{
    const bool animated = m_menu->animated();
    m_menu->setAnimated(false);
    m_menu->setExpanded(expanded);
    m_menu->setAnimated(animated);
}

int MainWindow::currentRowCount() const
{
    const Page* page = currentPage();
    return page ? page->proxy->rowCount() : 0;
}

QString MainWindow::loadTimes() const
{
    QStringList parts;
    for (const Page& page : m_pages)
        parts << tr("%1 %2 ms").arg(page.table).arg(page.loadTime);
    return parts.join(QLatin1String(", "));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveViewStates();
    QMainWindow::closeEvent(event);
}

void MainWindow::saveViewStates()
{
    for (const Page& page : qAsConst(m_pages)) {
        if (page.tableView)
            page.tableView->saveState();
        else if (page.treeView)
            page.treeView->saveState();
        page.widget->saveSettings();
    }
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
    QMenu* viewMenu = menuBar()->addMenu(tr("&View"));
    viewMenu->setObjectName(QStringLiteral("viewMenu"));
    viewMenu->addAction(m_logDock->toggleViewAction());

    QToolBar* toolBar = addToolBar(tr("Main"));
    toolBar->setObjectName(QStringLiteral("mainToolBar"));
    toolBar->setMovable(false);
    toolBar->addAction(m_exportAction);

    // Each view has its own search field; Ctrl+F goes to the one in front.
    auto* findAction = new QAction(tr("Find"), this);
    findAction->setObjectName(QStringLiteral("findAction"));
    findAction->setShortcut(QKeySequence::Find);
    connect(findAction, &QAction::triggered, this, [this] {
        const Page* page = currentPage();
        if (!page || m_stack->currentWidget() != m_tabs)
            return;
        page->widget->toolBar()->searchLineEdit->setFocus(Qt::ShortcutFocusReason);
        page->widget->toolBar()->searchLineEdit->selectAll();
    });
    addAction(findAction);
}

void MainWindow::addTablePage(int tableIndex)
{
    QElapsedTimer timer;
    timer.start();
    const TableDef& def = tables[tableIndex];
    const QString table = QLatin1String(def.table);

    Page page;
    page.table = table;
    QSqlQueryModel* model = nullptr;
    if (def.source == Source::OrderLines) {
        page.lines = new OrderLinesModel(this);
        if (!page.lines->load())
            LOG_ERROR("Cannot load %s: %s", def.table, qPrintable(page.lines->lastError().text()));
        model = page.lines;
    } else {
        // Formats in the model itself rather than in a proxy on top: one model layer less for every
        // cell that a filter or a search reads.
        auto* query = def.source == Source::Orders ? new OrdersModel(this) : new FormatModel(this);
        query->setQuery(QLatin1String(def.query));
        if (query->lastError().isValid())
            LOG_ERROR("Cannot load %s: %s", def.table, qPrintable(query->lastError().text()));
        // The whole table, before the proxy sees it: one mapping instead of one per fetched batch,
        // and filters and counts that cover every row.
        while (query->canFetchMore())
            query->fetchMore();
        model = query;
    }
    model->setObjectName(table + QLatin1String("Model"));
    int columns = 0;
    for (const ColumnDef& column : def.columns) {
        if (!column.title)
            break;
        model->setHeaderData(columns, Qt::Horizontal, tr(column.title));
        if (auto* formatted = qobject_cast<FormatModel*>(model))
            formatted->setColumnFormat(columns, column.format);
        else
            page.lines->setColumnFormat(columns, column.format);
        ++columns;
    }

    if (auto* orders = qobject_cast<OrdersModel*>(model)) {
        orders->updateStatusCounts();
        page.proxy = page.orders = new OrdersProxyModel(this);
    } else {
        page.proxy = new ValueSortProxyModel(this);
    }
    page.proxy->setObjectName(table + QLatin1String("Proxy"));
    page.proxy->setSourceModel(model);

    auto* widget = new VTableViewWidget(QLatin1String(def.widgetName), m_tabs);
    page.widget = widget;
    auto* view = new VTableView;
    page.view = page.tableView = view;
    // Names the saved column layout ("views/customersView").
    view->setObjectName(table + QLatin1String("View"));
    view->setModel(page.proxy);
    view->setShowViewCommands(true);
    view->setAlternatingRowColors(true);
    view->setWordWrap(false);
    view->setRowHeight(rowHeight);
    // The delegate reads the search text from the proxy; every column is formatted by the model.
    view->setItemDelegate(new VHighLightItemDelegate(view));
    QHeaderView* header = view->horizontalHeader();
    header->setHighlightSections(false);

    // Measures a bounded sample of rows (the header's resize precision), not all of them.
    view->resizeColumnsToContents();
    for (int c = 0; c < columns; ++c) {
        QWidget* filter = nullptr;
        switch (def.columns[c].filter) {
        case Filter::None:
            break;
        case Filter::Line: {
            auto* edit = new VClearLineEdit;
            edit->setPlaceholderText(tr("Filter"));
            edit->setToolTip(tr("Press Return to show only the rows whose %1 contains the text")
                                 .arg(tr(def.columns[c].title)));
            filter = edit;
            break;
        }
        case Filter::YesNo:
            filter = view->createYesNoComboBox();
            break;
        case Filter::Date: {
            auto* edit = new QDateEdit(QDate::currentDate());
            edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
            edit->setCalendarPopup(true);
            filter = edit;
            break;
        }
        }
        int width = qMin(header->sectionSize(c), maxColumnWidth);
        if (filter) {
            filter->setObjectName(table + QLatin1String("Filter") + QString::number(c));
            view->setColumnFilterWidget(c, filter);
            // Wide enough for the whole date or "Yes" with the combo box's arrow.
            if (def.columns[c].filter != Filter::Line)
                width = qMax(width, filter->sizeHint().width());
        }
        header->resizeSection(c, width);
    }
    // The widths above are the layout of a first run; a saved layout replaces them.
    view->restoreState();

    widget->setView(view);
    widget->setHeaderText(tr(def.title));
    // A flat table has nothing to expand or collapse.
    VCrudToolBar::Options toolBarOptions = VCrudToolBar::NoPdf | VCrudToolBar::NoEmail
        | VCrudToolBar::NoExpandAll | VCrudToolBar::NoCollapseAll;
    if (def.source == Source::OrderLines) {
        setUpOrderLines(page);
        // Lines belong to an order: they are deleted and edited here, never created.
        toolBarOptions |= VCrudToolBar::NoNew | VCrudToolBar::NoCopy;
        widget->setTitleText(tr("Delete or edit lines, then Save or Cancel"));
    } else {
        toolBarOptions |= VCrudToolBar::NoNew | VCrudToolBar::NoCopy | VCrudToolBar::NoEdit
            | VCrudToolBar::NoDelete | VCrudToolBar::NoSubmit | VCrudToolBar::NoRevert;
        widget->setTitleText(
            tr("%1 rows from the sample database").arg(QLocale().toString(model->rowCount())));
    }
    if (def.source == Source::Orders) {
        setUpOrders(page);
        // 30000 orders: searched a moment after the last keystroke, not on every one.
        toolBarOptions |= VCrudToolBar::SearchAsYouType | VCrudToolBar::DelayedSearch;
    }
    widget->toolBar()->setOptions(toolBarOptions);
    connectSearch(page.widget, m_pages.size());

    page.loadTime = timer.elapsed();
    m_tabs->addTab(widget, tr(def.title));
    m_pages.append(page);
}

void MainWindow::connectSearch(VAbstractViewWidget* widget, int pageIndex)
{
    // By index: the page list still grows while the pages are built.
    connect(widget, &VAbstractViewWidget::searchTextEdited, this,
        [this, pageIndex](int, const QString& text, bool excludeMode) {
            applySearch(m_pages.at(pageIndex), text, excludeMode);
        });
}

void MainWindow::applySearch(const Page& page, const QString& text, bool excludeMode)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    page.proxy->setSearchString(text, excludeMode);
    QApplication::restoreOverrideCursor();
    // The same rows may pass a new search; their highlight bands must still follow the text.
    page.view->viewport()->update();
    // A customer may be shown only for one of its orders: open the few that are left to show it.
    if (page.treeView && !text.isEmpty() && page.proxy->rowCount() <= maxExpandedCustomers)
        page.treeView->expandAll();
    LOG_INFO("Search in %s for \"%s\"%s: %d rows", qPrintable(page.table), qPrintable(text),
        excludeMode ? " (exclude)" : "", page.proxy->rowCount());
}

void MainWindow::setUpOrders(Page& page)
{
    auto* filter = new OrderFilterWidget(page.widget);
    page.widget->setFilterWidget(filter);
    OrdersProxyModel* proxy = page.orders;
    VAbstractViewWidget* widget = page.widget;
    connect(filter, &VFilterWidget::applyClicked, proxy, [proxy, filter, widget] {
        proxy->setDateRange(filter->from(), filter->to());
        proxy->setStatus(filter->status());
        widget->refreshFilterLabel();
        LOG_INFO("Order filter applied: %s, %d orders", qPrintable(filter->filterText()), proxy->rowCount());
    });

    auto* options = new OrderOptionsWidget(page.widget);
    page.widget->setOptionsWidget(options);
    connect(options, &VOptionsWidget::optionsChanged, proxy, [proxy, options] {
        proxy->setShowCancelled(options->showCancelled());
        LOG_INFO("%s", qPrintable(options->description()));
    });
}

void MainWindow::setUpOrderLines(Page& page)
{
    OrderLinesModel* model = page.lines;
    VSortFilterProxyModel* proxy = page.proxy;
    VAbstractViewWidget* widget = page.widget;
    // Cells open for editing only through the toolbar's Edit, which honours read-only and rights.
    page.view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    QAbstractItemView* view = page.view;
    connect(widget, &VAbstractViewWidget::deleteTriggered, model,
        [model, proxy, widget, view](int, const QModelIndexList& rows) {
            QVector<int> sourceRows;
            sourceRows.reserve(rows.size());
            for (const QModelIndex& index : rows)
                sourceRows << proxy->mapToSource(index).row();
            // From the bottom up, so that the rows still to remove keep their numbers.
            std::sort(sourceRows.begin(), sourceRows.end(), std::greater<int>());
            for (int row : qAsConst(sourceRows))
                model->removeRows(row, 1);
            // Marking a row changes only its vertical header: repaint the struck-through cells.
            view->viewport()->update();
            widget->enableSubmit();
            LOG_INFO(
                "%d order lines marked for removal; Save writes them, Cancel keeps them", sourceRows.size());
        });
    connect(widget, &VAbstractViewWidget::editTriggered, page.view,
        [this, view = page.view, proxy](int, const QModelIndex& index) {
            if (m_readOnly || !index.isValid())
                return;
            view->edit(proxy->index(index.row(), OrderLinesModel::QuantityColumn));
        });
    connect(model, &QAbstractItemModel::dataChanged, widget, [model, widget] {
        if (model->isDirty())
            widget->enableSubmit();
    });
    connect(widget, &VAbstractViewWidget::submitTriggered, model, [this, model, widget] {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const bool ok = model->submitAll();
        QApplication::restoreOverrideCursor();
        if (!ok) {
            LOG_ERROR("Cannot save the order lines: %s", qPrintable(model->lastError().text()));
            QMessageBox::warning(this, tr("Save Error"),
                tr("The order lines could not be saved:\n%1").arg(model->lastError().text()));
            return;
        }
        widget->toolBar()->disableSubmit();
        LOG_INFO("Order lines saved: %d rows", model->rowCount());
    });
    connect(widget, &VAbstractViewWidget::revertTriggered, model, [model, widget, view] {
        model->revertAll();
        view->viewport()->update();
        widget->toolBar()->disableSubmit();
        LOG_INFO("Order line changes cancelled");
    });
}

void MainWindow::addCustomerTreePage()
{
    QElapsedTimer timer;
    timer.start();
    auto* model = new CustomerTreeModel(this);
    model->setObjectName(QStringLiteral("customersOrdersModel"));
    if (!model->load())
        LOG_ERROR("Cannot load the customers and their orders: %s", qPrintable(model->errorString()));

    Page page;
    page.table = QLatin1String(customerTreeTable);
    page.proxy = new VSortFilterTreeProxyModel(this);
    page.proxy->setObjectName(QStringLiteral("customersOrdersProxy"));
    // The search looks at the plain values, not at the markup around them.
    page.proxy->setFilterRole(Qt::EditRole);
    // Set once the tree is complete: one mapping instead of an update per appended row.
    page.proxy->setSourceModel(model);

    auto* widget = new VTreeViewWidget(QStringLiteral("CustomersOrders"), m_tabs);
    page.widget = widget;
    auto* view = new VHtmlTreeView;
    page.view = page.treeView = view;
    view->setObjectName(QStringLiteral("customersOrdersView"));
    view->setModel(page.proxy);
    view->setUniformRowHeights(true);
    view->setAlternatingRowColors(true);
    view->setWordWrap(false);
    // The delegate would measure the markup, not the text it draws: fixed widths for a first run.
    const int widths[] = { 300, 110, 220, 320, 120, 100 };
    for (int c = 0; c < int(sizeof(widths) / sizeof(widths[0])); ++c)
        view->setColumnWidth(c, widths[c]);
    view->restoreState();
    // A glimpse of the orders without a click.
    for (int row = 0; row < 3 && row < page.proxy->rowCount(); ++row)
        view->expand(page.proxy->index(row, 0));

    widget->setView(view);
    widget->setHeaderText(tr("Customers && Orders"));
    widget->setTitleText(tr("Hover a link to see where it leads"));
    widget->toolBar()->setOptions(VCrudToolBar::NoNew | VCrudToolBar::NoCopy | VCrudToolBar::NoEdit
        | VCrudToolBar::NoDelete | VCrudToolBar::NoSubmit | VCrudToolBar::NoRevert | VCrudToolBar::NoPdf
        | VCrudToolBar::NoEmail | VCrudToolBar::NoCsv);
    connectSearch(page.widget, m_pages.size());

    // The demo opens no browser or mail program; it only tells where the link leads.
    connect(view, &VTreeView::linkClicked, statusBar(), [this](const QUrl& url) {
        statusBar()->showMessage(tr("Link clicked: %1").arg(url.toDisplayString()), 10000);
    });

    page.loadTime = timer.elapsed();
    m_tabs->addTab(widget, tr("Customers && Orders"));
    m_pages.append(page);
}

bool MainWindow::setCurrentTable(const QString& table)
{
    for (int i = 0; i < m_pages.size(); ++i) {
        if (m_pages.at(i).table == table) {
            m_tabs->setCurrentIndex(i);
            setCurrentPage(QStringLiteral("tables"));
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

void MainWindow::search(const QString& text)
{
    const Page* page = currentPage();
    if (!page)
        return;
    // As if typed and confirmed: the field shows the text, the proxy filters by it.
    VCrudToolBar* bar = page->widget->toolBar();
    bar->searchLineEdit->setText(text);
    applySearch(*page, text, bar->excludeCheckBox->isChecked());
}

void MainWindow::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    for (const Page& page : qAsConst(m_pages)) {
        page.widget->setReadOnly(readOnly);
        if (page.lines && readOnly)
            page.widget->setTitleText(tr("Read only: order lines can be viewed, not changed"));
    }
    if (readOnly)
        LOG_INFO("Started read-only: nothing can be created, copied, edited or deleted");
}

void MainWindow::withholdRecordActions()
{
    static const char* const suffixes[] = { "_New", "_Copy", "_Edit", "_Delete", "_Save", "_Cancel" };
    for (const Page& page : qAsConst(m_pages)) {
        const QString prefix = page.widget->objectName() + QLatin1String("_ToolBar");
        for (const char* suffix : suffixes) {
            if (auto* action = page.widget->findChild<VAuthAction*>(prefix + QLatin1String(suffix)))
                action->authorized = false;
            else
                LOG_WARNING("No toolbar action %s%s", qPrintable(prefix), suffix);
        }
        // setOptions() acts only on a changed word, and it is where the rights are applied:
        // step away from the current word and back.
        VCrudToolBar* bar = page.widget->toolBar();
        const VCrudToolBar::Options options = bar->options;
        bar->setOptions(options ^ VCrudToolBar::NoRefresh);
        bar->setOptions(options);
        page.widget->refreshToolBar();
        if (page.lines)
            page.widget->setTitleText(tr("Viewing only: this user may not change order lines"));
    }
    LOG_INFO("Signed in as viewer: the record actions are withheld");
}

void MainWindow::showPanels()
{
    for (const Page& page : qAsConst(m_pages)) {
        const std::pair<const char*, QWidget*> panels[] = {
            { "showFilterAction", page.widget->findChild<VFilterWidget*>() },
            { "showOptionsAction", page.widget->findChild<VOptionsWidget*>(QStringLiteral("orderOptions")) }
        };
        for (const auto& panel : panels) {
            auto* action = page.widget->findChild<QAction*>(QLatin1String(panel.first));
            // The action toggles: only a closed panel is opened.
            if (panel.second && action && !panel.second->isVisibleTo(page.widget))
                action->trigger();
        }
    }
}

void MainWindow::onCurrentTabChanged()
{
    const Page* page = currentPage();
    m_exportAction->setEnabled(page && page->tableView);
    if (page)
        LOG_INFO("Showing the %s tab", qPrintable(page->table));
}

void MainWindow::exportCsv()
{
    const Page* page = currentPage();
    if (!page || !page->tableView)
        return;
    VCsvFilePick pick;
    const QString fileName = pick.getSaveFileName(page->table + QLatin1String(".csv"));
    if (fileName.isEmpty())
        return;

    VCsvModelWriter writer(fileName);
    writer.setModel(page->proxy);
    // Columns in the order the user sees them, hidden ones left out.
    const QHeaderView* header = page->tableView->horizontalHeader();
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
