#include "formatmodel.h"

#include <QLocale>

FormatModel::FormatModel(QObject* parent)
    : QSqlQueryModel(parent)
{
}

void FormatModel::setColumnFormat(int column, Format format)
{
    if (column < 0 || columnFormat(column) == format)
        return;
    if (m_formats.size() <= column)
        m_formats.resize(column + 1);
    m_formats[column] = format;
    const int rows = rowCount();
    if (rows > 0)
        Q_EMIT dataChanged(index(0, column), index(rows - 1, column));
}

FormatModel::Format FormatModel::columnFormat(int column) const
{
    return m_formats.value(column, Text);
}

QVariant FormatModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::TextAlignmentRole)
        return QSqlQueryModel::data(index, role);
    const Format format = columnFormat(index.column());
    if (role == Qt::TextAlignmentRole) {
        const QVariant align = alignment(format);
        return align.isNull() ? QSqlQueryModel::data(index, role) : align;
    }
    const QVariant value = QSqlQueryModel::data(index, Qt::DisplayRole);
    return format == Text ? value : displayText(format, value);
}

QVariant FormatModel::alignment(Format format)
{
    switch (format) {
    case Number:
    case Money:
    case Percent:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case YesNo:
        return int(Qt::AlignCenter);
    case Text:
        break;
    }
    return QVariant();
}

QVariant FormatModel::displayText(Format format, const QVariant& value)
{
    // Shared by every flag cell, so that filtering a flag column allocates nothing.
    static const QString yes = tr("Yes");
    static const QString no = tr("No");
    if (format == Text)
        return value;
    if (value.isNull())
        return QString();
    switch (format) {
    case Number:
        // No group separators: these are mostly ids and counts that people search for.
        return value.toString();
    case Money:
        return QLocale().toString(value.toDouble(), 'f', 2);
    case Percent: {
        const int percent = qRound(value.toDouble() * 100);
        return percent == 0 ? QString() : QLocale().toString(percent) + QLatin1String(" %");
    }
    case YesNo:
        return value.toBool() ? yes : no;
    case Text:
        break;
    }
    return value;
}
