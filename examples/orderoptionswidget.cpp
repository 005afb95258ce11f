#include "orderoptionswidget.h"

#include <QCheckBox>
#include <QFormLayout>

OrderOptionsWidget::OrderOptionsWidget(QWidget* parent)
    : VOptionsWidget(tr("Options"), parent)
    , m_cancelled(new QCheckBox(tr("Show cancelled orders"), this))
{
    setObjectName(QStringLiteral("orderOptions"));
    m_cancelled->setObjectName(QStringLiteral("showCancelledCheckBox"));
    m_cancelled->setChecked(true);
    formLayout->addRow(m_cancelled);
    connect(m_cancelled, &QCheckBox::toggled, this, &VOptionsWidget::optionsChanged);
}

bool OrderOptionsWidget::showCancelled() const
{
    return m_cancelled->isChecked();
}

QString OrderOptionsWidget::description() const
{
    return showCancelled() ? tr("Cancelled orders shown") : tr("Cancelled orders hidden");
}
