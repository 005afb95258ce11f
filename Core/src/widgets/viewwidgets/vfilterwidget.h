#ifndef VFILTERWIDGET_H
#define VFILTERWIDGET_H

#include "veitikgip_export.h"
#include "voptionswidget.h"

class QPushButton;

/**
 * @brief An options panel with an "Apply Filter" button, for filtering a view widget's rows.
 *
 * Clicking the button, or releasing the Return key anywhere in the panel
 * (the keypad Enter key is deliberately left out), calls prepareApply() and
 * emits applyClicked(). A view widget shows and hides the panel through its
 * "Show Filter" action (VAbstractViewWidget::setFilterWidget()) and shows
 * description() in its status line.
 * @code
 * auto* filter = new OrderFilter(tr("Filter"), ordersWidget);   // a VFilterWidget subclass
 * ordersWidget->setFilterWidget(filter);
 * connect(filter, &VFilterWidget::applyClicked, this, &OrdersScreen::applyOrderFilter);
 * @endcode
 */
class VEITIKGIP_EXPORT VFilterWidget : public VOptionsWidget {
    Q_OBJECT
public:
    explicit VFilterWidget(const QString& title, QWidget* parent = nullptr);

    /// The filter in force, as text; empty by default.
    virtual QString filterText() const;

public slots:
    /// Calls prepareApply(), refreshFilter() and refreshOptions(), in this order.
    virtual void refresh();
    /// Hook: bring the filter controls up to date; empty.
    virtual void refreshFilter();

signals:
    void applyClicked();

public:
    QPushButton* applyButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
};

#endif // VFILTERWIDGET_H
