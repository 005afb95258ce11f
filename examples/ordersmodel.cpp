#include "ordersmodel.h"

#include <QHash>
#include <QLocale>

namespace {

// Read by the view widget's status line, with an invalid index.
const int StatusPrefixRole = Qt::UserRole + 2;
const int StatusBackgroundsRole = Qt::UserRole + 3;
const int StatusTextsRole = Qt::UserRole + 4;
const int StatusForegroundsRole = Qt::UserRole + 5;

struct StatusLook {
    const char* status;
    const char* text;
    const char* background;
    const char* foreground;
};

const StatusLook looks[] = {
    { "New", QT_TRANSLATE_NOOP("OrdersModel", "%1 new"), "#2f6fd6", "#ffffff" },
    { "Processing", QT_TRANSLATE_NOOP("OrdersModel", "%1 processing"), "#f2a900", "#000000" },
    { "Shipped", QT_TRANSLATE_NOOP("OrdersModel", "%1 shipped"), "#7b4fd0", "#ffffff" },
    { "Delivered", QT_TRANSLATE_NOOP("OrdersModel", "%1 delivered"), "#1f8a3b", "#ffffff" },
    { "Returned", QT_TRANSLATE_NOOP("OrdersModel", "%1 returned"), "#c2410c", "#ffffff" },
    { "Cancelled", QT_TRANSLATE_NOOP("OrdersModel", "%1 cancelled"), "#8c939d", "#ffffff" },
};

} // namespace

OrdersModel::OrdersModel(QObject* parent)
    : FormatModel(parent)
{
}

QStringList OrdersModel::statuses()
{
    QStringList list;
    for (const StatusLook& look : looks)
        list << QLatin1String(look.status);
    return list;
}

void OrdersModel::updateStatusCounts()
{
    QHash<QString, int> counts;
    int open = 0;
    const QString cancelled = QStringLiteral("Cancelled");
    for (int row = 0, rows = rowCount(); row < rows; ++row) {
        const QString status = QSqlQueryModel::data(index(row, StatusColumn)).toString();
        ++counts[status];
        if (status != cancelled && !QSqlQueryModel::data(index(row, PaidColumn)).toBool())
            ++open;
    }
    m_backgrounds.clear();
    m_texts.clear();
    m_foregrounds.clear();
    for (const StatusLook& look : looks) {
        const int n = counts.value(QLatin1String(look.status));
        if (n == 0)
            continue;
        m_texts << tr(look.text).arg(QLocale().toString(n));
        m_backgrounds << QLatin1String(look.background);
        m_foregrounds << QLatin1String(look.foreground);
    }
    m_texts << tr("%1 open").arg(QLocale().toString(open));
    m_backgrounds << QStringLiteral("#fde68a");
    m_foregrounds << QStringLiteral("#7a4b00");
}

QVariant OrdersModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        switch (role) {
        case StatusPrefixRole:
            return tr("Status");
        case StatusBackgroundsRole:
            return m_backgrounds;
        case StatusTextsRole:
            return m_texts;
        case StatusForegroundsRole:
            return m_foregrounds;
        default:
            break;
        }
    }
    return FormatModel::data(index, role);
}
