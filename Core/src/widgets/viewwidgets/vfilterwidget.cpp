#include "vfilterwidget.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

VFilterWidget::VFilterWidget(const QString& title, QWidget* parent)
    : VOptionsWidget(title, parent)
    , applyButton(new QPushButton(tr("Apply Options"), this))
{
    // Renamed at once; kept in two steps because a subclass may read the text while being built.
    applyButton->setText(tr("Apply Filter"));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(applyButton);
    row->addStretch(1);
    mainLayout->addLayout(row);

    connect(applyButton, &QPushButton::clicked, this, [this] {
        prepareApply();
        emit applyClicked();
    });
}

QString VFilterWidget::filterText() const
{
    return QString();
}

void VFilterWidget::refresh()
{
    prepareApply();
    refreshFilter();
    refreshOptions();
}

void VFilterWidget::refreshFilter() { }

void VFilterWidget::keyPressEvent(QKeyEvent* event)
{
    QWidget::keyPressEvent(event);
}

void VFilterWidget::keyReleaseEvent(QKeyEvent* event)
{
    // Only the main Return key applies; a held key's repeats do not apply again.
    if (event->key() == Qt::Key_Return && !event->isAutoRepeat())
        applyButton->click();
    VOptionsWidget::keyReleaseEvent(event);
}
