#include "vtableviewwidget.h"

#include "vcrudtoolbar.h"
#include "vtableview.h"

VTableViewWidget::VTableViewWidget(const QString& objectName, QWidget* parent)
    : VAbstractViewWidget(Options(), objectName, parent)
{
}

void VTableViewWidget::setToolBar(VCrudToolBar* bar)
{
    VAbstractViewWidget::setToolBar(bar);
    giveToolBarToTable();
}

void VTableViewWidget::setView(QAbstractItemView* v)
{
    VAbstractViewWidget::setView(v);
    if (auto* table = qobject_cast<VTableView*>(view())) {
        giveToolBarToTable();
        connect(table, &VTableView::linkClicked, this, [this](const QUrl& url) { _linkClicked(url); });
    }
}

void VTableViewWidget::giveToolBarToTable()
{
    auto* table = qobject_cast<VTableView*>(view());
    if (!table)
        return;
    VCrudToolBar* bar = toolBar();
    table->setToolBar(bar);
    // The table's context menu must never reach a toolbar that is gone.
    if (bar)
        connect(bar, &QObject::destroyed, table, [table, bar] {
            if (table->toolBar() == bar)
                table->setToolBar(nullptr);
        });
}

void VTableViewWidget::readSettings()
{
    if (auto* table = qobject_cast<VTableView*>(view()))
        table->restoreState();
    VAbstractViewWidget::readSettings();
}

void VTableViewWidget::saveSettings()
{
    if (auto* table = qobject_cast<VTableView*>(view()))
        table->saveState();
    VAbstractViewWidget::saveSettings();
}

void VTableViewWidget::selectColumns()
{
    if (auto* table = qobject_cast<VTableView*>(view()))
        table->selectVisibleColumns();
}

void VTableViewWidget::exportToCsv()
{
    if (auto* table = qobject_cast<VTableView*>(view()))
        table->writeToCsv(QString(), true, 0);
}
