#include "vtableviewdockwidget.h"

#include "vtableviewwidget.h"

VTableViewDockWidget::VTableViewDockWidget(QWidget* parent)
    : QDockWidget(parent, Qt::WindowFlags())
{
    setAllowedAreas(Qt::AllDockWidgetAreas);
}

VTableViewWidget* VTableViewDockWidget::tableViewWidget() const
{
    return qobject_cast<VTableViewWidget*>(widget());
}
