#ifndef VAUTHACTION_H
#define VAUTHACTION_H

#include "veitikgip_export.h"

#include <QAction>

/**
 * @brief An action that an application can withhold from the current user.
 *
 * The record actions of VCrudToolBar are VAuthActions. The library never
 * clears authorized; an application finds an action by its object name and
 * clears the flag to take the action away from a user. The toolbar then keeps
 * the action hidden and does not pass its trigger on.
 * @code
 * if (auto* action = window->findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_Delete")))
 *     action->authorized = user.mayDelete();
 * @endcode
 */
class VEITIKGIP_EXPORT VAuthAction : public QAction {
    Q_OBJECT
public:
    VAuthAction(const QString& objectName, QObject* parent);
    VAuthAction(const QString& objectName, QObject* parent, const QString& text);
    VAuthAction(const QIcon& icon, const QString& objectName, QObject* parent, const QString& text);

    /// Whether the current user may use this action; true until the application says otherwise.
    bool authorized = true;
};

#endif // VAUTHACTION_H
