#include "vtableview.h"

#include "headersortingadapter.h"
#include "vclearlineedit.h"
#include "vcsvfilepick.h"
#include "vcsvmodelwriter.h"
#include "vfilterhorizontalheaderview.h"
#include "vheaderstate_p.h"
#include "vselectviewcolumnsdialog.h"
#include "vtoolbarmenu_p.h"

#include <logger.h>
#include <vsettings.h>
#include <vsortfilterproxymodel.h>

#include <QComboBox>
#include <QDateEdit>
#include <QItemSelection>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSet>
#include <QSettings>
#include <QSpinBox>

namespace {
const int s_cursorRole = Qt::UserRole + 6;
const int s_linkRole = Qt::UserRole + 7;
const int s_linkFlagsRole = Qt::UserRole + 8;

QString stateKey(const QObject* view)
{
    return QStringLiteral("views/") + view->objectName();
}
} // namespace

VTableView::VTableView(QWidget* parent)
    : QTableView(parent)
{
    m_filterHeader = new VFilterHorizontalHeaderView(this);

    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);

    // Qt clamps the default size to the minimum, which follows the font.
    verticalHeader()->setMinimumSectionSize(qMin(verticalHeader()->minimumSectionSize(), 17));
    verticalHeader()->setDefaultSectionSize(17);
    verticalHeader()->hide();

    setHorizontalHeader(m_filterHeader);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);

    horizontalHeader()->installEventFilter(&m_eventForwarder);
    verticalHeader()->installEventFilter(&m_eventForwarder);

    resizeColumnsToContents();
    setSortingEnabled(true);
    setContextMenuPolicy(Qt::CustomContextMenu);

    connect(&m_eventForwarder, &VTableItemViewEventForwarder::entered, this, &VTableView::resetCursor);
    // Through the virtual operations, so that subclasses can replace them.
    connect(
        this, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) { contextMenu(pos); });
    connect(this, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex& index) { onDoubleClicked(index); });

    connect(horizontalScrollBar(), &QScrollBar::valueChanged, m_filterHeader,
        &VFilterHorizontalHeaderView::onScroll);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, m_filterHeader,
        &VFilterHorizontalHeaderView::onScroll);

    setMouseTracking(true);

    new HeaderSortingAdapter(this);
}

VTableView::~VTableView() = default;

void VTableView::setToolBar(const VCrudToolBar* toolBar)
{
    m_toolBar = toolBar;
}

const VCrudToolBar* VTableView::toolBar() const
{
    return m_toolBar;
}

void VTableView::setShowViewCommands(bool show)
{
    m_showViewCommands = show;
}

bool VTableView::showViewCommands() const
{
    return m_showViewCommands;
}

void VTableView::setModel(QAbstractItemModel* model)
{
    QTableView::setModel(model);
    m_hoverColumn = -1;
    m_hoverRow = -1;
    if (model && selectionModel())
        disconnect(
            selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), model, SLOT(submit()));
}

void VTableView::setRowHeight(int height)
{
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    if (height < verticalHeader()->minimumSectionSize())
        verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    m_filterHeader->setFilterRowHeight(height);
}

void VTableView::setColumnFilterWidget(int column, QWidget* widget)
{
    auto proxy = qobject_cast<VSortFilterProxyModel*>(model());
    if (!proxy) {
        LOG_ERROR("Must use VSortFilterProxyModel derived model. %s", qPrintable(objectName()));
        return;
    }
    proxy->addFilterKeyColumn(column);
    m_filterHeader->setFilterWidget(column, widget);

    if (auto clearEdit = qobject_cast<VClearLineEdit*>(widget))
        connect(clearEdit, &VClearLineEdit::clearTriggered, this, &VTableView::onFilterChanged);

    if (auto lineEdit = qobject_cast<QLineEdit*>(widget))
        connect(lineEdit, &QLineEdit::returnPressed, this, &VTableView::onFilterChanged);
    else if (auto comboBox = qobject_cast<QComboBox*>(widget))
        connect(comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &VTableView::onFilterChanged);
    else if (auto dateEdit = qobject_cast<QDateEdit*>(widget))
        connect(dateEdit, &QDateEdit::dateChanged, this, &VTableView::onFilterChanged);
    else if (auto spinBox = qobject_cast<QSpinBox*>(widget))
        connect(spinBox, QOverload<int>::of(&QSpinBox::valueChanged), this, &VTableView::onFilterChanged);
}

QComboBox* VTableView::createYesNoComboBox()
{
    auto comboBox = new QComboBox(this);
    comboBox->addItem(QString());
    comboBox->addItem(tr("Yes"));
    comboBox->addItem(tr("No"));
    return comboBox;
}

QList<int> VTableView::visibleColumns() const
{
    QList<int> columns;
    const int count = model() ? model()->columnCount() : 0;
    for (int column = 0; column < count; ++column) {
        if (!isColumnHidden(column))
            columns.append(column);
    }
    return columns;
}

void VTableView::onFilterChanged()
{
    if (auto proxy = qobject_cast<VSortFilterProxyModel*>(model())) {
        const int count = horizontalHeader()->count();
        for (int section = 0; section < count; ++section) {
            if (isColumnHidden(section))
                continue;
            QWidget* widget = m_filterHeader->filterWidget(section);
            if (auto lineEdit = qobject_cast<QLineEdit*>(widget))
                proxy->addFilterFixedString(section, lineEdit->text());
            else if (auto comboBox = qobject_cast<QComboBox*>(widget))
                proxy->addFilterFixedString(section, comboBox->currentText());
        }
        proxy->invalidateFilter();
    }
    if (model())
        setCurrentIndex(model()->index(0, 0));
}

void VTableView::contextMenu(const QPoint& pos)
{
    Q_UNUSED(pos)
    QMenu* menu = createContextMenu();
    if (!menu)
        return;
    menu->setToolTipsVisible(true);
    // At the cursor, not at pos: the request may come from the keyboard.
    menu->exec(QCursor::pos());
    delete menu;
}

QMenu* VTableView::createContextMenu()
{
    auto menu = new QMenu(this);
    VToolBarMenu::addToolBarEntries(menu, m_toolBar);
    if (!m_showViewCommands)
        return menu;

    auto proxy = qobject_cast<QSortFilterProxyModel*>(model());
    if (isSortingEnabled() && proxy) {
        const QString text = proxy->sortRole() == Qt::InitialSortOrderRole ? tr("Enable Sorting")
                                                                           : tr("Sort in Natural Order");
        connect(menu->addAction(text), &QAction::triggered, this, &VTableView::sortEnableToggled);
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Select Visible Columns...")), &QAction::triggered, this,
        &VTableView::selectVisibleColumns);
    menu->addSeparator();
    connect(menu->addAction(tr("Export Visible Columns to csv File...")), &QAction::triggered, this,
        &VTableView::exportVisibleColsToCsvTriggered);
    connect(menu->addAction(tr("Export ALL Columns to csv File...")), &QAction::triggered, this,
        &VTableView::exportAllColsToCsvTriggered);
    connect(menu->addAction(tr("Export Visible Columns to csv File (Edit Role)...")), &QAction::triggered,
        this, &VTableView::exportVisibleColsToCsvEditRollTriggered);
    connect(menu->addAction(tr("Export ALL Columns to csv File (Edit Role)...")), &QAction::triggered, this,
        &VTableView::exportAllColsToCsvEditRollTriggered);
    return menu;
}

void VTableView::sortEnableToggled()
{
    auto proxy = qobject_cast<QSortFilterProxyModel*>(model());
    if (!isSortingEnabled() || !proxy)
        return;
    proxy->setSortRole(
        proxy->sortRole() == Qt::InitialSortOrderRole ? int(Qt::DisplayRole) : int(Qt::InitialSortOrderRole));
    proxy->invalidate();
}

void VTableView::selectVisibleColumns()
{
    VSelectViewColumnsDialog dialog(this);
    dialog.exec();
}

void VTableView::exportAllColsToCsvTriggered()
{
    writeToCsv(QString(), false, Qt::DisplayRole);
}

void VTableView::exportVisibleColsToCsvTriggered()
{
    writeToCsv(QString(), true, Qt::DisplayRole);
}

void VTableView::exportAllColsToCsvEditRollTriggered()
{
    writeToCsv(QString(), false, Qt::EditRole);
}

void VTableView::exportVisibleColsToCsvEditRollTriggered()
{
    writeToCsv(QString(), true, Qt::EditRole);
}

void VTableView::writeToCsv(const QString& fileName, bool visibleOnly, int role)
{
    VCsvFilePick pick;
    const QString path = fileName.isEmpty() ? pick.getSaveFileName(objectName()) : fileName;
    if (path.isEmpty())
        return;

    auto writer = new VCsvModelWriter(path);
    writer->setModel(model());
    const QHeaderView* header = horizontalHeader();
    const int count = header->count();
    for (int visual = 0; visual < count; ++visual) {
        const int column = header->logicalIndex(visual);
        if (visibleOnly && isColumnHidden(column))
            continue;
        const QString name
            = model() ? model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() : QString();
        writer->addColumn(name, column, role);
    }
    if (!writer->write()) {
        QMessageBox::warning(
            this, tr("Save Error"), tr("There was an error saving the csv file."), QMessageBox::Ok);
    } else {
        QMessageBox::information(
            this, tr("File Saved"), tr("Data exported to '%1'.").arg(path), QMessageBox::Ok);
    }
    delete writer;
}

void VTableView::mouseMoveEvent(QMouseEvent* event)
{
    QTableView::mouseMoveEvent(event);
    if (!model())
        return;
    const QPoint pos = event->localPos().toPoint();
    int row = rowAt(pos.y());
    int column = columnAt(pos.x());
    if (row < 0 || column < 0) {
        row = -1;
        column = -1;
    }
    if (row == m_hoverRow && column == m_hoverColumn)
        return;
    m_hoverRow = row;
    m_hoverColumn = column;
    const QVariant shape = indexAt(pos).data(s_cursorRole);
    setCursor(shape.isNull() ? QCursor(Qt::ArrowCursor) : QCursor(Qt::CursorShape(shape.toInt())));
}

void VTableView::resetCursor()
{
    m_hoverColumn = -1;
    m_hoverRow = -1;
    setCursor(Qt::ArrowCursor);
}

void VTableView::onDoubleClicked(const QModelIndex& index)
{
    const QString link = index.data(s_linkRole).toString();
    LOG_DEBUG("link: %s", qPrintable(link));
    if (link.isEmpty())
        return;
    const int flags = index.data(s_linkFlagsRole).toInt();
    LOG_DEBUG("link flags: %d", flags);
    if (flags & 0x3)
        return;
    const QUrl url(link, QUrl::TolerantMode);
    if (!url.isValid()) {
        LOG_ERROR("Invalid URL: %s", qPrintable(url.toString()));
        return;
    }
    Q_EMIT linkClicked(url);
}

void VTableView::saveState(const QString&, const QString&)
{
    VSettings settings(nullptr);
    settings.setValue(stateKey(this), horizontalHeader()->saveState());
}

void VTableView::restoreState()
{
    if (!model()) {
        LOG_WARNING("No model set on %s; header state not restored.", qPrintable(objectName()));
        return;
    }
    const QString key = stateKey(this);
    const int columns = model()->columnCount();
    VSettings settings(nullptr);
    const QVariant stored = settings.value(key, QVariant());
    QByteArray state = stored.toByteArray();
    if (stored.isValid() && !VHeaderState::isUsable(state, Qt::Horizontal, columns)) {
        // Damaged or written for another set of columns: Qt must not see it.
        LOG_DEBUG("Removing stale header state %s", qPrintable(key));
        settings.settings()->remove(key);
        state = settings.value(key, QVariant()).toByteArray();
    }
    horizontalHeader()->restoreState(state);
    if (horizontalHeader()->count() != columns) {
        settings.settings()->remove(key);
        horizontalHeader()->restoreState(settings.value(key, QVariant()).toByteArray());
        if (horizontalHeader()->count() != columns)
            horizontalHeader()->reset();
    }
}

void VTableView::preserveSelection()
{
    m_preservedIds.clear();
    m_preservedCurrentId = 0;
    QItemSelectionModel* selection = selectionModel();
    if (!selection)
        return;
    const QModelIndex current = selection->currentIndex();
    if (current.isValid())
        m_preservedCurrentId = current.sibling(current.row(), 0).data(Qt::EditRole).toInt();
    // The selected rows as selectedRows(0) gives them, without its cost: it
    // tests every row against every range, which is quadratic in the ranges.
    const QItemSelection ranges = selection->selection();
    const int lastColumn = model() ? model()->columnCount() - 1 : -1;
    QSet<int> seen;
    for (const QItemSelectionRange& range : ranges) {
        if (range.parent().isValid())
            continue;
        const bool wholeRows = range.left() == 0 && range.right() == lastColumn;
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (seen.contains(row))
                continue;
            seen.insert(row);
            if (wholeRows || selection->isRowSelected(row, QModelIndex()))
                m_preservedIds.append(model()->index(row, 0).data(Qt::EditRole).toInt());
        }
    }
}

void VTableView::restoreSelection()
{
    QAbstractItemModel* m = model();
    QItemSelectionModel* selection = selectionModel();
    if (!m || !selection)
        return;
    const QSet<int> ids(m_preservedIds.cbegin(), m_preservedIds.cend());
    const int rows = m->rowCount();
    int currentRow = -1;
    QItemSelection rowsToSelect;
    int rangeStart = -1;
    // One pass over the keys; runs of adjacent rows become one range, so the
    // selection model gets a single call however many rows come back.
    for (int row = 0; row <= rows; ++row) {
        bool wanted = false;
        if (row < rows) {
            const int key = m->index(row, 0).data(Qt::EditRole).toInt();
            wanted = ids.contains(key);
            if (currentRow < 0 && key == m_preservedCurrentId)
                currentRow = row;
        }
        if (wanted && rangeStart < 0)
            rangeStart = row;
        if (!wanted && rangeStart >= 0) {
            rowsToSelect.append(QItemSelectionRange(m->index(rangeStart, 0), m->index(row - 1, 0)));
            rangeStart = -1;
        }
    }
    if (currentRow >= 0)
        setCurrentIndex(m->index(currentRow, 0));
    if (rowsToSelect.isEmpty())
        return;
    // Without updates the view skips computing the screen region of every
    // selected range; one repaint of the viewport is cheaper.
    const bool updates = updatesEnabled();
    setUpdatesEnabled(false);
    selection->select(rowsToSelect, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    setUpdatesEnabled(updates);
    viewport()->update();
}

VFilterHorizontalHeaderView* VTableView::filterHeader() const
{
    return m_filterHeader;
}
