#ifndef VTABLEVIEWWIDGET_H
#define VTABLEVIEWWIDGET_H

#include "vabstractviewwidget.h"

/**
 * @brief A view widget framing a VTableView.
 *
 * The application creates the table and passes it to setView(); the table
 * then offers the toolbar's entries in its context menu, "Select Columns..."
 * opens its column chooser and the toolbar's CSV action its export. Another
 * kind of view still works as a frame; the table-only parts then do nothing.
 * @code
 * auto* orders = new VTableViewWidget(QStringLiteral("Orders"), this);
 * auto* table = new VTableView;
 * table->setObjectName(QStringLiteral("ordersView"));
 * table->setModel(proxy);
 * orders->setView(table);
 * @endcode
 */
class VEITIKGIP_EXPORT VTableViewWidget : public VAbstractViewWidget {
    Q_OBJECT
public:
    explicit VTableViewWidget(const QString& objectName, QWidget* parent = nullptr);

    void setToolBar(VCrudToolBar* bar) override;
    /// Frames @p v; a VTableView is given the toolbar and its links are forwarded as linkClicked().
    void setView(QAbstractItemView* v) override;
    /// Restores the table's header layout, then the widget's toggles.
    void readSettings() override;
    /// Saves the table's header layout, then the widget's toggles.
    void saveSettings() override;
    /// Opens the table's column chooser.
    void selectColumns() override;
    /// Exports the table's visible columns to a CSV file that the user chooses.
    void exportToCsv() override;

private:
    void giveToolBarToTable();
};

#endif // VTABLEVIEWWIDGET_H
