#include "vauthaction.h"

VAuthAction::VAuthAction(const QString& objectName, QObject* parent)
    : QAction(parent)
{
    setObjectName(objectName);
}

VAuthAction::VAuthAction(const QString& objectName, QObject* parent, const QString& text)
    : QAction(text, parent)
{
    setObjectName(objectName);
}

VAuthAction::VAuthAction(const QIcon& icon, const QString& objectName, QObject* parent, const QString& text)
    : QAction(icon, text, parent)
{
    setObjectName(objectName);
}
