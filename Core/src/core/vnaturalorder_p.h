#ifndef VNATURALORDER_P_H
#define VNATURALORDER_P_H

#include <QAbstractProxyModel>

// Natural order for the proxies: the source's Qt::InitialSortOrderRole key
// when it has one, otherwise the source row, i.e. insertion order.
namespace VNaturalOrder {

inline QVariant key(const QModelIndex& sourceIndex)
{
    const QVariant v = sourceIndex.data(Qt::InitialSortOrderRole);
    return v.isValid() ? v : QVariant(sourceIndex.row());
}

inline QVariant data(const QAbstractProxyModel* proxy, const QModelIndex& index)
{
    if (!index.isValid())
        return QVariant();
    return key(proxy->mapToSource(index));
}

inline bool lessThan(const QModelIndex& left, const QModelIndex& right)
{
    const QVariant l = left.data(Qt::InitialSortOrderRole);
    const QVariant r = right.data(Qt::InitialSortOrderRole);
    if (!l.isValid() || !r.isValid())
        return left.row() < right.row();
    if (l.canConvert<qlonglong>() && r.canConvert<qlonglong>()) {
        bool okL = false, okR = false;
        const qlonglong a = l.toLongLong(&okL), b = r.toLongLong(&okR);
        if (okL && okR)
            return a < b;
    }
    return l.toString() < r.toString();
}

} // namespace VNaturalOrder

#endif // VNATURALORDER_P_H
