#include "customertreemodel.h"

#include <QLocale>
#include <QSqlError>
#include <QSqlQuery>
#include <QVector>

namespace {

// Customers in id order, each followed by its orders: the tree is built in one pass.
const char treeQuery[] = "SELECT c.id, c.name, c.email, c.city, c.country, c.customer_since, c.active,"
                         " o.id, o.order_date, o.status, o.paid, t.lines, t.total"
                         " FROM customers c LEFT JOIN orders o ON o.customer_id = c.id"
                         " LEFT JOIN (SELECT order_id, COUNT(*) AS lines,"
                         " ROUND(SUM(quantity * unit_price * (1 - discount)), 2) AS total"
                         " FROM order_lines GROUP BY order_id) t ON t.order_id = o.id"
                         " ORDER BY c.id, o.id";

enum QueryField {
    CustomerId,
    CustomerName,
    CustomerEmail,
    CustomerCity,
    CustomerCountry,
    CustomerSince,
    CustomerActive,
    OrderId,
    OrderDate,
    OrderStatus,
    OrderPaid,
    OrderLines,
    OrderTotal
};

QString money(const QVariant& value)
{
    return QLocale().toString(value.toDouble(), 'f', 2);
}

} // namespace

CustomerTreeModel::CustomerTreeModel(QObject* parent)
    : VTreeRowEditModel({ tr("Customer / Order"), tr("Since / Date"), tr("City / Status"),
                            tr("E-mail / Payment"), tr("Orders / Lines"), tr("Total") },
        parent)
{
    setModelName(QStringLiteral("customers_orders"));
    for (int column = 0; column < columnCount(); ++column)
        setColumnEditable(column, false);
}

bool CustomerTreeModel::load()
{
    clear();
    m_error.clear();
    QSqlQuery query;
    query.setForwardOnly(true);
    if (!query.exec(QLatin1String(treeQuery))) {
        m_error = query.lastError().text();
        return false;
    }

    const QString paid = tr("paid");
    const QString open = tr("open");
    QVector<QVariantList> orders;
    QVariantList customer;
    bool inactive = false;
    double total = 0;
    // A customer row carries the count and sum of its orders, so it is appended once they are read.
    auto appendCustomer = [&] {
        if (customer.isEmpty())
            return;
        customer << orders.size() << qRound(total * 100) / 100.0;
        const QModelIndex parent = appendRow(customer);
        if (inactive)
            setData(parent, true, InactiveRole);
        for (const QVariantList& order : qAsConst(orders))
            appendRow(order, parent);
        orders.clear();
        customer.clear();
        total = 0;
    };

    qint64 customerId = -1;
    while (query.next()) {
        const qint64 id = query.value(CustomerId).toLongLong();
        if (id != customerId) {
            appendCustomer();
            customerId = id;
            customer << query.value(CustomerName) << query.value(CustomerSince)
                     << QString(query.value(CustomerCity).toString() + QLatin1String(", ")
                            + query.value(CustomerCountry).toString())
                     << query.value(CustomerEmail);
            inactive = !query.value(CustomerActive).toBool();
        }
        // A customer without orders comes with one row of nulls for them.
        if (query.isNull(OrderId))
            continue;
        const QVariant orderTotal = query.value(OrderTotal);
        total += orderTotal.toDouble();
        orders.append({ query.value(OrderId), query.value(OrderDate), query.value(OrderStatus),
            query.value(OrderPaid).toBool() ? paid : open, query.value(OrderLines), orderTotal });
    }
    appendCustomer();
    if (query.lastError().isValid()) {
        m_error = query.lastError().text();
        return false;
    }
    return true;
}

QVariant CustomerTreeModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::TextAlignmentRole && (index.column() == CountColumn || index.column() == TotalColumn))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return VTreeRowEditModel::data(index, role);
    const QVariant value = VTreeRowEditModel::data(index, Qt::EditRole);
    if (value.isNull())
        return value;
    return index.parent().isValid() ? orderHtml(index, value) : customerHtml(index, value);
}

QString CustomerTreeModel::customerHtml(const QModelIndex& index, const QVariant& value) const
{
    switch (index.column()) {
    case NameColumn: {
        const QString name = QLatin1String("<b>") + value.toString().toHtmlEscaped() + QLatin1String("</b>");
        if (!VTreeRowEditModel::data(index, InactiveRole).toBool())
            return name;
        return name + QLatin1String(" <span style=\"color:#808080\">") + tr("(inactive)")
            + QLatin1String("</span>");
    }
    case ContactColumn: {
        const QString address = value.toString().toHtmlEscaped();
        return QLatin1String("<a href=\"mailto:") + address + QLatin1String("\">") + address
            + QLatin1String("</a>");
    }
    case TotalColumn:
        return QLatin1String("<b>") + money(value) + QLatin1String("</b>");
    default:
        return value.toString().toHtmlEscaped();
    }
}

QString CustomerTreeModel::orderHtml(const QModelIndex& index, const QVariant& value) const
{
    switch (index.column()) {
    case NameColumn: {
        const QString id = value.toString();
        return QLatin1String("<a href=\"https://example.org/orders/") + id + QLatin1String("\">")
            + tr("Order %1").arg(id) + QLatin1String("</a>");
    }
    case PlaceColumn: {
        const QString status = value.toString();
        // Orders that brought no money stand out.
        if (status == QLatin1String("Cancelled") || status == QLatin1String("Returned"))
            return QLatin1String("<span style=\"color:#b00020\">") + status + QLatin1String("</span>");
        return status;
    }
    case TotalColumn:
        return money(value);
    default:
        return value.toString().toHtmlEscaped();
    }
}
