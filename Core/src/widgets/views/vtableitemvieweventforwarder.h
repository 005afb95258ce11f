#ifndef VTABLEITEMVIEWEVENTFORWARDER_H
#define VTABLEITEMVIEWEVENTFORWARDER_H

#include "veitikgip_export.h"

#include <QObject>

/**
 * @brief Tells a view when the mouse enters one of its headers.
 *
 * Installed as event filter on a view's headers; emits entered() for every
 * enter event and never consumes an event. The views use it to put back the
 * arrow cursor that a link cell may have set.
 */
class VEITIKGIP_EXPORT VTableItemViewEventForwarder : public QObject {
    Q_OBJECT
public:
    explicit VTableItemViewEventForwarder(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void entered();
};

#endif // VTABLEITEMVIEWEVENTFORWARDER_H
