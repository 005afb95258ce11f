#include "vtreeviewwidget.h"

#include "vcrudtoolbar.h"
#include "vhtmltreeview.h"
#include "vtreeview.h"

#include <QLabel>

VTreeViewWidget::VTreeViewWidget(const QString& objectName, QWidget* parent)
    : VAbstractViewWidget(NoHighlightDelegate, objectName, parent)
{
}

void VTreeViewWidget::setToolBar(VCrudToolBar* bar)
{
    VAbstractViewWidget::setToolBar(bar);
    // The tree's context menu and its expand and collapse follow the toolbar that is in place.
    connectTreeToToolBar();
}

void VTreeViewWidget::setView(QAbstractItemView* v)
{
    VAbstractViewWidget::setView(v);
    if (auto* html = qobject_cast<VHtmlTreeView*>(view())) {
        connect(
            html, &VHtmlTreeView::linkHovered, this, [this](const QString& link) { onLinkHovered(link); });
        connect(html, &VHtmlTreeView::linkUnhovered, this, [this] { onLinkUnhovered(); });
    }
    if (auto* tree = qobject_cast<VTreeView*>(view())) {
        connect(tree, &VTreeView::linkClicked, this, [this](const QUrl& url) { _linkClicked(url); });
        connectTreeToToolBar();
    }
}

void VTreeViewWidget::connectTreeToToolBar()
{
    for (const QMetaObject::Connection& connection : qAsConst(m_toolBarConnections))
        disconnect(connection);
    m_toolBarConnections.clear();
    auto* tree = qobject_cast<VTreeView*>(view());
    VCrudToolBar* bar = toolBar();
    if (!tree)
        return;
    tree->setToolBar(bar);
    if (!bar)
        return;
    m_toolBarConnections << connect(bar, &VCrudToolBar::expandAllTriggered, tree, &QTreeView::expandAll);
    m_toolBarConnections << connect(bar, &VCrudToolBar::collapseAllTriggered, tree, &QTreeView::collapseAll);
    m_toolBarConnections << connect(bar, &QObject::destroyed, tree, [tree, bar] {
        if (tree->toolBar() == bar)
            tree->setToolBar(nullptr);
    });
}

void VTreeViewWidget::setCurrentIndex(const QModelIndex& index)
{
    VAbstractViewWidget::setCurrentIndex(index);
    auto* tree = qobject_cast<QTreeView*>(view());
    // An index the base refused (another model) is not expanded either.
    if (!tree || !index.isValid() || index.model() != tree->model())
        return;
    if (index.parent().isValid())
        tree->expand(index.parent());
    tree->expand(index);
}

void VTreeViewWidget::readSettings()
{
    if (auto* tree = qobject_cast<VTreeView*>(view()))
        tree->restoreState();
    VAbstractViewWidget::readSettings();
}

void VTreeViewWidget::saveSettings()
{
    if (auto* tree = qobject_cast<VTreeView*>(view()))
        tree->saveState();
    VAbstractViewWidget::saveSettings();
}

void VTreeViewWidget::selectColumns()
{
    if (auto* tree = qobject_cast<VTreeView*>(view()))
        tree->selectVisibleColumns();
}

void VTreeViewWidget::updateStatusLabel()
{
    VAbstractViewWidget::updateStatusLabel();
    savedStatusText = statusLabel->text();
}

void VTreeViewWidget::onLinkHovered(const QString& link)
{
    statusLabel->setText(savedStatusText + QLatin1Char(' ') + link);
}

void VTreeViewWidget::onLinkUnhovered()
{
    statusLabel->setText(savedStatusText);
}
