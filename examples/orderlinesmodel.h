#ifndef ORDERLINESMODEL_H
#define ORDERLINESMODEL_H

#include "formatmodel.h"

#include <QSqlRelationalTableModel>
#include <QVector>

/**
 * @brief The order lines table, editable, with changes held until they are submitted.
 *
 * A QSqlRelationalTableModel on "order_lines" with the product's name in
 * place of its id and the edit strategy OnManualSubmit: removed rows stay
 * in view, struck through, and edited rows are tinted until submitAll()
 * writes them or revertAll() drops them. Values are shown as the other
 * tables show them (FormatModel's formats); load() and submitAll() fetch
 * every row, so that filters and counts cover the whole table.
 */
class OrderLinesModel : public QSqlRelationalTableModel {
    Q_OBJECT
public:
    enum Column {
        IdColumn,
        OrderColumn,
        PositionColumn,
        ProductColumn,
        QuantityColumn,
        UnitPriceColumn,
        DiscountColumn
    };

    explicit OrderLinesModel(QObject* parent = nullptr);

    /// Selects every row; false with lastError() on failure.
    bool load();
    void setColumnFormat(int column, FormatModel::Format format);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

public slots:
    bool submitAll();

private:
    void fetchAll();
    bool isRemoved(int row) const;

    QVector<FormatModel::Format> m_formats;
};

#endif // ORDERLINESMODEL_H
