#ifndef ORDERSMODEL_H
#define ORDERSMODEL_H

#include "formatmodel.h"

#include <QStringList>

/**
 * @brief The orders query with a coloured summary of their states for the status line.
 *
 * Asked with an invalid index, the model answers the status roles that a
 * view widget shows beside its row counts: Qt::UserRole + 2 the prefix
 * "Status", + 3 the background colours, + 4 the texts ("12 new", "30
 * delivered", "5 open") and + 5 the foreground colours, one entry per state
 * that occurs, and the unpaid orders last. The counts are taken once per
 * query by updateStatusCounts(), after every row has been fetched:
 * @code
 * auto orders = new OrdersModel(this);
 * orders->setQuery(sql);
 * while (orders->canFetchMore())
 *     orders->fetchMore();
 * orders->updateStatusCounts();
 * @endcode
 */
class OrdersModel : public FormatModel {
    Q_OBJECT
public:
    /// The query's columns that the summary and the filters read.
    enum Column { IdColumn, DateColumn, CustomerColumn, CityColumn, StatusColumn, PaidColumn };

    explicit OrdersModel(QObject* parent = nullptr);

    /// Counts the orders of each state and the unpaid ones among the rows fetched so far.
    void updateStatusCounts();
    /// The order states in the order of the summary ("New", "Processing", ...), as stored.
    static QStringList statuses();

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QStringList m_backgrounds;
    QStringList m_texts;
    QStringList m_foregrounds;
};

#endif // ORDERSMODEL_H
