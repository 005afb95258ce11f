#include "orderfilterwidget.h"

#include "ordersmodel.h"

#include <vcore.h>
#include <vdateedit.h>

#include <QComboBox>
#include <QFormLayout>

namespace {

QDate valueOf(const VDateEdit* edit)
{
    const QDate date = edit->date();
    return date == VCore::nullDate() ? QDate() : date;
}

} // namespace

OrderFilterWidget::OrderFilterWidget(QWidget* parent)
    : VFilterWidget(tr("Filter"), parent)
    , m_from(new VDateEdit(this, true))
    , m_to(new VDateEdit(this, true))
    , m_status(new QComboBox(this))
{
    setObjectName(QStringLiteral("orderFilter"));
    m_from->setObjectName(QStringLiteral("orderFilterFrom"));
    m_to->setObjectName(QStringLiteral("orderFilterTo"));
    m_status->setObjectName(QStringLiteral("orderFilterStatus"));
    m_from->setDate(QDate(2024, 10, 1));
    m_to->setDate(VCore::nullDate());
    m_status->addItem(tr("All"));
    for (const QString& status : OrdersModel::statuses())
        m_status->addItem(tr(qPrintable(status)), status);
    formLayout->addRow(tr("Ordered from:"), m_from);
    formLayout->addRow(tr("to:"), m_to);
    formLayout->addRow(tr("Status:"), m_status);
}

QDate OrderFilterWidget::from() const
{
    return valueOf(m_from);
}

QDate OrderFilterWidget::to() const
{
    return valueOf(m_to);
}

QString OrderFilterWidget::status() const
{
    return m_status->currentData().toString();
}

QString OrderFilterWidget::filterText() const
{
    QStringList parts;
    if (from().isValid())
        parts << tr("from %1").arg(from().toString(Qt::ISODate));
    if (to().isValid())
        parts << tr("to %1").arg(to().toString(Qt::ISODate));
    if (!status().isEmpty())
        parts << tr("status %1").arg(m_status->currentText());
    return parts.isEmpty() ? QString() : tr("Orders %1").arg(parts.join(QLatin1Char(' ')));
}
