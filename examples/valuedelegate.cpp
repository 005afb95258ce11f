#include "valuedelegate.h"

ValueDelegate::ValueDelegate(Format format, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_format(format)
{
}

QString ValueDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    if (value.isNull())
        return QString();
    switch (m_format) {
    case Money:
        return locale.toString(value.toDouble(), 'f', 2);
    case Percent:
        return value.toDouble() == 0.0
            ? QString()
            : locale.toString(qRound(value.toDouble() * 100)) + QLatin1String(" %");
    case YesNo:
        return value.toBool() ? tr("Yes") : tr("No");
    case Number:
        // No group separators: these are mostly ids and counts that people search for.
        return value.toString();
    case Text:
        break;
    }
    return QStyledItemDelegate::displayText(value, locale);
}

void ValueDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    switch (m_format) {
    case Number:
    case Money:
    case Percent:
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
        break;
    case YesNo:
        option->displayAlignment = Qt::AlignCenter;
        break;
    case Text:
        break;
    }
}
