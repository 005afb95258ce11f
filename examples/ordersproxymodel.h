#ifndef ORDERSPROXYMODEL_H
#define ORDERSPROXYMODEL_H

#include "valuesortproxymodel.h"

#include <QDate>

/**
 * @brief The orders' proxy: the column filters and the search, plus an order
 * date range, one state and whether cancelled orders are shown.
 *
 * The filter panel and the options panel of the orders screen set these;
 * each setter re-filters at once. Dates are compared as ISO text, the way
 * the database stores them, so that no row allocates a QDate.
 */
class OrdersProxyModel : public ValueSortProxyModel {
    Q_OBJECT
public:
    explicit OrdersProxyModel(QObject* parent = nullptr);

    /// Orders from @p from to @p to, both included; a null date leaves that end open.
    void setDateRange(const QDate& from, const QDate& to);
    /// Only orders in @p status ("Shipped", ...); empty for every state.
    void setStatus(const QString& status);
    void setShowCancelled(bool show);
    bool showCancelled() const { return m_showCancelled; }

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    QString m_from;
    QString m_to;
    QString m_status;
    bool m_showCancelled = true;
};

#endif // ORDERSPROXYMODEL_H
