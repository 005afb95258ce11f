#ifndef VTABLEVIEWDOCKWIDGET_H
#define VTABLEVIEWDOCKWIDGET_H

#include "veitikgip_export.h"

#include <QDockWidget>

class VTableViewWidget;

/**
 * @brief A dock window, allowed in every dock area, meant to hold a VTableViewWidget.
 * @code
 * auto* dock = new VTableViewDockWidget(mainWindow);
 * dock->setWidget(new VTableViewWidget(QStringLiteral("Customers"), dock));
 * mainWindow->addDockWidget(Qt::LeftDockWidgetArea, dock);
 * @endcode
 */
class VEITIKGIP_EXPORT VTableViewDockWidget : public QDockWidget {
    Q_OBJECT
public:
    explicit VTableViewDockWidget(QWidget* parent = nullptr);

    /// The dock's widget as a VTableViewWidget, or null when it is something else.
    VTableViewWidget* tableViewWidget() const;
};

#endif // VTABLEVIEWDOCKWIDGET_H
