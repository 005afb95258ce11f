#include "vtableitemvieweventforwarder.h"

#include <QEvent>

VTableItemViewEventForwarder::VTableItemViewEventForwarder(QObject* parent)
    : QObject(parent)
{
}

bool VTableItemViewEventForwarder::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Enter)
        Q_EMIT entered();
    return QObject::eventFilter(watched, event);
}
