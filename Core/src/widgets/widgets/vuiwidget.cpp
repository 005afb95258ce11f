#include "vuiwidget.h"

VUiWidget::VUiWidget(QWidget* parent, const QString& objectName)
    : QWidget(parent)
{
    if (!objectName.isEmpty())
        setObjectName(objectName);
}
