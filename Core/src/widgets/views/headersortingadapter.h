#ifndef HEADERSORTINGADAPTER_H
#define HEADERSORTINGADAPTER_H

#include "veitikgip_export.h"

#include <QObject>
#include <QPointer>

class QHeaderView;
class QPoint;
class QTableView;

/**
 * @brief Gives a table view's header a three-state sort cycle.
 *
 * Installed on the horizontal header's viewport, it replaces the header's own
 * click-to-sort: clicking a column sorts it ascending, clicking it again sorts
 * it descending, and a third click removes the sort and returns the rows to
 * the model's own order. A drag that moves a section is never taken for a
 * click. The adapter acts only while the view's sorting is enabled.
 * @code
 * tableView->setSortingEnabled(true);
 * new HeaderSortingAdapter(tableView); // owned by the view
 * @endcode
 */
class VEITIKGIP_EXPORT HeaderSortingAdapter : public QObject {
    Q_OBJECT
public:
    /// Clears and hides the sort indicator of @p view's horizontal header and starts watching it.
    explicit HeaderSortingAdapter(QTableView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool headerReleased(QHeaderView* header, const QPoint& pos);

    QPointer<QTableView> m_view;
    int m_pressX = 0;
    int m_pressY = 0;
    bool m_dragging = false;
};

#endif // HEADERSORTINGADAPTER_H
