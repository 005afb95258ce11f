#ifndef CUSTOMERTREEMODEL_H
#define CUSTOMERTREEMODEL_H

#include <vtreeroweditmodel.h>

/**
 * @brief The customers of the sample database with their orders below them.
 *
 * A read-only VTreeRowEditModel: each customer is a top-level row (name,
 * customer since, city and country, e-mail, number of orders, total) with
 * one child row per order (number, date, status, paid or open, lines,
 * total). The edit role holds the plain values, which the search filters
 * on; the display role is the HTML the tree draws: bold names, a mailto link
 * per customer and a link per order to "https://example.org/orders/<id>".
 * @code
 * auto model = new CustomerTreeModel(this);
 * if (!model->load())
 *     qWarning() << model->errorString();
 * proxy->setSourceModel(model);   // set after loading: one mapping, not one per row
 * @endcode
 */
class CustomerTreeModel : public VTreeRowEditModel {
    Q_OBJECT
public:
    enum Column { NameColumn, DateColumn, PlaceColumn, ContactColumn, CountColumn, TotalColumn };

    explicit CustomerTreeModel(QObject* parent = nullptr);

    /// Reads every customer and order in one query; false with errorString() on failure.
    bool load();
    QString errorString() const { return m_error; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    // Set on the name cell of customers that are no longer active.
    static const int InactiveRole = Qt::UserRole + 20;

    QString customerHtml(const QModelIndex& index, const QVariant& value) const;
    QString orderHtml(const QModelIndex& index, const QVariant& value) const;

    QString m_error;
};

#endif // CUSTOMERTREEMODEL_H
