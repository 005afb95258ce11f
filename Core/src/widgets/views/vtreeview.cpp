#include "vtreeview.h"

#include "vheaderstate_p.h"
#include "vselectviewcolumnsdialog.h"
#include "vtoolbarmenu_p.h"

#include <logger.h>
#include <vsettings.h>

#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSettings>
#include <QVector>

namespace {
const int s_cursorRole = Qt::UserRole + 6;
const int s_linkRole = Qt::UserRole + 7;
const int s_linkFlagsRole = Qt::UserRole + 8;

// Written without the slash after the colon; the resource system finds them all the same.
const char s_expandIcon[] = ":images/add";
const char s_collapseIcon[] = ":images/remove";

QString stateKey(const QObject* view)
{
    return QStringLiteral("views/") + view->objectName();
}
} // namespace

VTreeView::VTreeView(QWidget* parent)
    : QTreeView(parent)
{
    header()->installEventFilter(&m_eventForwarder);
    connect(&m_eventForwarder, &VTableItemViewEventForwarder::entered, this, &VTreeView::resetCursor);
    setMouseTracking(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    // Through the virtual operations, so that subclasses can replace them.
    connect(this, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex& index) { onDoubleClicked(index); });
    connect(
        this, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) { contextMenu(pos); });
}

VTreeView::~VTreeView() = default;

void VTreeView::setToolBar(const VCrudToolBar* toolBar)
{
    m_toolBar = toolBar;
}

const VCrudToolBar* VTreeView::toolBar() const
{
    return m_toolBar;
}

void VTreeView::setModel(QAbstractItemModel* model)
{
    QTreeView::setModel(model);
    m_hoverIndex = QPersistentModelIndex();
    m_hoverOnCell = false;
    if (model && selectionModel())
        disconnect(
            selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), model, SLOT(submit()));
}

void VTreeView::saveState()
{
    VSettings settings(nullptr);
    settings.setValue(stateKey(this), header()->saveState());
}

void VTreeView::restoreState()
{
    if (!model())
        return;
    const QString key = stateKey(this);
    VSettings settings(nullptr);
    const QVariant stored = settings.value(key, QVariant());
    if (!stored.isValid())
        return;
    const QByteArray state = stored.toByteArray();
    if (!VHeaderState::isUsable(state, Qt::Horizontal, model()->columnCount())) {
        // Damaged or written for another set of columns: Qt must not see it.
        LOG_DEBUG("Removing stale header state %s", qPrintable(key));
        settings.settings()->remove(key);
        return;
    }
    header()->restoreState(state);
}

QList<int> VTreeView::visibleColumns() const
{
    QList<int> columns;
    const int count = model() ? model()->columnCount() : 0;
    for (int column = 0; column < count; ++column) {
        if (!isColumnHidden(column))
            columns.append(column);
    }
    return columns;
}

QMenu* VTreeView::createContextMenu()
{
    auto menu = new QMenu(this);
    VToolBarMenu::addToolBarEntries(menu, m_toolBar);
    menu->addSeparator();
    connect(menu->addAction(tr("Select Visible Columns...")), &QAction::triggered, this,
        &VTreeView::selectVisibleColumns);
    return menu;
}

QMenu* VTreeView::buildContextMenu(const QPoint& pos)
{
    // Persistent: the model may change while the menu is open.
    const QPersistentModelIndex index(indexAt(pos));
    QMenu* menu = createContextMenu();
    if (!menu)
        menu = new QMenu(this);
    menu->setToolTipsVisible(true);

    QAction* before = menu->actions().value(0);
    const QIcon expandIcon(QString::fromLatin1(s_expandIcon));
    const QIcon collapseIcon(QString::fromLatin1(s_collapseIcon));
    auto insert = [menu, before](const QIcon& icon, const QString& text) {
        auto action = new QAction(icon, text, menu);
        menu->insertAction(before, action);
        return action;
    };
    connect(insert(expandIcon, tr("Expand All.")), &QAction::triggered, this, &QTreeView::expandAll);
    QAction* expandHere = insert(expandIcon, tr("Expand All from here."));
    connect(expandHere, &QAction::triggered, this, [this, index] { expandNode(index, true); });
    connect(insert(collapseIcon, tr("Collapse All.")), &QAction::triggered, this, &QTreeView::collapseAll);
    QAction* collapseHere = insert(collapseIcon, tr("Collapse All from here."));
    connect(collapseHere, &QAction::triggered, this, [this, index] { expandNode(index, false); });
    menu->insertSeparator(before);

    expandHere->setEnabled(index.isValid());
    collapseHere->setEnabled(index.isValid());
    return menu;
}

void VTreeView::contextMenu(const QPoint& pos)
{
    const QPointer<QMenu> menu = buildContextMenu(pos);
    if (!menu)
        return;
    menu->exec(viewport()->mapToGlobal(pos));
    // An entry may have closed the view, and the menu with it.
    delete menu.data();
}

void VTreeView::expandNode(const QModelIndex& index, bool expanded)
{
    const QAbstractItemModel* m = index.model();
    if (!m)
        return;
    // The recursion of the walk, kept on the heap so that no depth of tree can
    // exhaust the stack; nodes are visited in exactly the recursive order.
    struct Frame {
        QModelIndex node;
        int next;
        int rows;
    };
    QVector<Frame> stack;
    auto enter = [&](const QModelIndex& node) {
        if (!expanded)
            setExpanded(node, false);
        stack.append({ node, 0, m->rowCount(node) });
    };
    enter(m->index(index.row(), 0, index.parent()));
    while (!stack.isEmpty()) {
        Frame& top = stack.last();
        if (top.next < top.rows) {
            const QModelIndex child = m->index(top.next++, 0, top.node);
            enter(child);
        } else {
            const QModelIndex node = top.node;
            stack.removeLast();
            if (expanded)
                setExpanded(node, true);
        }
    }
}

void VTreeView::selectVisibleColumns()
{
    VSelectViewColumnsDialog dialog(this);
    dialog.exec();
}

void VTreeView::onDoubleClicked(const QModelIndex& index)
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
        LOG_WARNING("Invalid URL: %s", qPrintable(url.toString()));
        return;
    }
    Q_EMIT linkClicked(url);
}

void VTreeView::mouseMoveEvent(QMouseEvent* event)
{
    QTreeView::mouseMoveEvent(event);
    if (!model())
        return;
    const QModelIndex index = indexAt(event->localPos().toPoint());
    if (m_hoverOnCell == index.isValid() && m_hoverIndex == index)
        return;
    m_hoverIndex = index;
    m_hoverOnCell = index.isValid();
    const QVariant shape = index.data(s_cursorRole);
    setCursor(shape.isNull() ? QCursor(Qt::ArrowCursor) : QCursor(Qt::CursorShape(shape.toInt())));
}

void VTreeView::resetCursor()
{
    m_hoverIndex = QPersistentModelIndex();
    m_hoverOnCell = false;
    setCursor(Qt::ArrowCursor);
}

void VTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);

    // Each cell's outline starts one pixel before it, on the line its left and
    // upper neighbours draw, so that every grid line is one pixel wide.
    static const QColor s_gridColor(QStringLiteral("#D3D3D3"));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(s_gridColor);
    painter->setBrush(Qt::NoBrush);
    const int top = option.rect.top() - 1;
    const int height = option.rect.height();
    const QHeaderView* h = header();
    if (isFirstColumnSpanned(index.row(), index.parent())) {
        painter->drawRect(QRect(-h->offset() - 1, top, h->length(), height));
    } else {
        // Only the sections in sight: a wide header costs nothing per row.
        const int a = h->visualIndexAt(0);
        const int b = h->visualIndexAt(viewport()->width() - 1);
        const int first = a < 0 || b < 0 ? 0 : qMin(a, b);
        const int last = a < 0 || b < 0 ? h->count() - 1 : qMax(a, b);
        for (int visual = first; visual <= last; ++visual) {
            const int logical = h->logicalIndex(visual);
            if (h->isSectionHidden(logical))
                continue;
            const int width = h->sectionSize(logical);
            if (width > 0)
                painter->drawRect(QRect(h->sectionViewportPosition(logical) - 1, top, width, height));
        }
    }
    painter->restore();
}
