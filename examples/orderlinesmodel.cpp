#include "orderlinesmodel.h"

#include <QBrush>
#include <QColor>
#include <QFont>

OrderLinesModel::OrderLinesModel(QObject* parent)
    : QSqlRelationalTableModel(parent)
{
    setObjectName(QStringLiteral("order_linesModel"));
    setTable(QStringLiteral("order_lines"));
    setEditStrategy(OnManualSubmit);
    setRelation(ProductColumn,
        QSqlRelation(QStringLiteral("products"), QStringLiteral("id"), QStringLiteral("name")));
    setSort(IdColumn, Qt::AscendingOrder);
}

bool OrderLinesModel::load()
{
    if (!select())
        return false;
    fetchAll();
    return true;
}

void OrderLinesModel::fetchAll()
{
    while (canFetchMore())
        fetchMore();
}

bool OrderLinesModel::submitAll()
{
    // Submitting selects the table again, which fetches only the first rows.
    const bool ok = QSqlRelationalTableModel::submitAll();
    fetchAll();
    return ok;
}

void OrderLinesModel::setColumnFormat(int column, FormatModel::Format format)
{
    if (column < 0)
        return;
    if (m_formats.size() <= column)
        m_formats.resize(column + 1);
    m_formats[column] = format;
}

bool OrderLinesModel::isRemoved(int row) const
{
    // The table model marks a row removed but not yet submitted with "!" in the vertical header.
    return headerData(row, Qt::Vertical).toString() == QLatin1String("!");
}

QVariant OrderLinesModel::data(const QModelIndex& index, int role) const
{
    const FormatModel::Format format = m_formats.value(index.column(), FormatModel::Text);
    switch (role) {
    case Qt::DisplayRole:
        return FormatModel::displayText(format, QSqlRelationalTableModel::data(index, role));
    case Qt::TextAlignmentRole: {
        const QVariant align = FormatModel::alignment(format);
        return align.isNull() ? QSqlRelationalTableModel::data(index, role) : align;
    }
    case Qt::FontRole:
        if (index.isValid() && isRemoved(index.row())) {
            QFont font;
            font.setStrikeOut(true);
            return font;
        }
        break;
    case Qt::BackgroundRole:
        // Held changes stand out until they are saved or cancelled.
        if (index.isValid() && isDirty(index))
            return QBrush(isRemoved(index.row()) ? QColor(0xf6, 0xd0, 0xd0) : QColor(0xff, 0xf1, 0xb8));
        break;
    default:
        break;
    }
    return QSqlRelationalTableModel::data(index, role);
}
