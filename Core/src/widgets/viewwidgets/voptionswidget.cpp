#include "voptionswidget.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

VOptionsWidget::VOptionsWidget(const QString& title, QWidget* parent)
    : QGroupBox(title, parent)
    , formLayout(new QFormLayout)
    , mainLayout(new QVBoxLayout(this))
{
    formLayout->setContentsMargins(30, 0, 0, 0);
    formLayout->setSpacing(4);
    mainLayout->setContentsMargins(10, 10, 10, 4);
    mainLayout->setSpacing(10);

    // The form takes the left half of the panel; an empty widget holds the right half.
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addLayout(formLayout, 50);
    auto* placeholderLayout = new QHBoxLayout;
    placeholderLayout->addWidget(new QWidget(this));
    row->addLayout(placeholderLayout, 50);
    mainLayout->addLayout(row);
}

QString VOptionsWidget::description() const
{
    return QString();
}

void VOptionsWidget::refreshOptions() { }

void VOptionsWidget::prepareApply() { }
