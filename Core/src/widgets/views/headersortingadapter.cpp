#include "headersortingadapter.h"

#include <logger.h>

#include <QApplication>
#include <QHeaderView>
#include <QMetaEnum>
#include <QMouseEvent>
#include <QTableView>

HeaderSortingAdapter::HeaderSortingAdapter(QTableView* view)
    : QObject(view)
    , m_view(view)
{
    if (!view) {
        LOG_ERROR("No table view given; header sorting stays off");
        return;
    }
    QHeaderView* header = view->horizontalHeader();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setSortIndicatorShown(false);
    header->viewport()->installEventFilter(this);
}

bool HeaderSortingAdapter::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_view || !m_view->isSortingEnabled())
        return false;
    auto* header = qobject_cast<QHeaderView*>(watched->parent());
    if (!header)
        return false;

    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton) {
            m_pressX = mouse->x();
            m_pressY = mouse->y();
        }
        return false;
    }
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if ((mouse->buttons() & Qt::LeftButton)
            && (mouse->pos() - QPoint(m_pressX, m_pressY)).manhattanLength()
                > QApplication::startDragDistance())
            m_dragging = header->sectionsMovable();
        return false;
    }
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton)
            return false;
        if (m_dragging) {
            // The header completes the move itself; a drag never sorts.
            m_dragging = false;
            return false;
        }
        return headerReleased(header, mouse->pos());
    }
    default:
        return false;
    }
}

bool HeaderSortingAdapter::headerReleased(QHeaderView* header, const QPoint& pos)
{
    const int section = header->logicalIndexAt(header->orientation() == Qt::Horizontal ? pos.x() : pos.y());
    const int sortSection = header->sortIndicatorSection();
    const Qt::SortOrder order = header->sortIndicatorOrder();
    LOG_DEBUG("Header section %d clicked; sort indicator at section %d, %s", section, sortSection,
        QMetaEnum::fromType<Qt::SortOrder>().valueToKey(order));

    if (section != -1) {
        if (section != sortSection) {
            header->setSortIndicator(section, Qt::AscendingOrder);
            header->setSortIndicatorShown(true);
        } else if (order == Qt::AscendingOrder) {
            header->setSortIndicator(section, Qt::DescendingOrder);
        } else {
            header->setSortIndicator(-1, Qt::AscendingOrder);
            header->setSortIndicatorShown(false);
            if (QAbstractItemModel* model = m_view->model())
                model->sort(-1, Qt::AscendingOrder);
        }
    }

    // The header forgets a press only on its own release or on a move without buttons.
    // With the release swallowed, tell it the button is up, or its next press would be
    // ignored and a following drag would move the section pressed here.
    QMouseEvent buttonUp(QEvent::MouseMove, QPoint(qMax(0, pos.x()), qMax(0, pos.y())), Qt::NoButton,
        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(header->viewport(), &buttonUp);
    header->viewport()->update();

    emit header->sectionClicked(section);
    return true;
}
