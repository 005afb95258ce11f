#include "ordersproxymodel.h"

#include "ordersmodel.h"

namespace {

QString isoOrEmpty(const QDate& date)
{
    return date.isValid() ? date.toString(Qt::ISODate) : QString();
}

} // namespace

OrdersProxyModel::OrdersProxyModel(QObject* parent)
    : ValueSortProxyModel(parent)
{
}

void OrdersProxyModel::setDateRange(const QDate& from, const QDate& to)
{
    m_from = isoOrEmpty(from);
    m_to = isoOrEmpty(to);
    invalidateFilter();
}

void OrdersProxyModel::setStatus(const QString& status)
{
    m_status = status;
    invalidateFilter();
}

void OrdersProxyModel::setShowCancelled(bool show)
{
    if (m_showCancelled == show)
        return;
    m_showCancelled = show;
    invalidateFilter();
}

bool OrdersProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QAbstractItemModel* model = sourceModel();
    if (!m_from.isEmpty() || !m_to.isEmpty()) {
        const QString date
            = model->index(sourceRow, OrdersModel::DateColumn, sourceParent).data(Qt::EditRole).toString();
        if ((!m_from.isEmpty() && date < m_from) || (!m_to.isEmpty() && date > m_to))
            return false;
    }
    if (!m_status.isEmpty() || !m_showCancelled) {
        const QString status
            = model->index(sourceRow, OrdersModel::StatusColumn, sourceParent).data(Qt::EditRole).toString();
        if (!m_status.isEmpty() && status != m_status)
            return false;
        if (!m_showCancelled && status == QLatin1String("Cancelled"))
            return false;
    }
    return ValueSortProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}
