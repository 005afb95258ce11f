#ifndef VACTIONBUTTON_H
#define VACTIONBUTTON_H

#include "veitikgip_export.h"

#include <QPointer>
#include <QPushButton>

class QAction;

/**
 * @brief A push button that mirrors one QAction and triggers it when clicked.
 *
 * Text, status tip, tooltip, icon, enabled state, visibility and the checked
 * state follow the action whenever it changes. The action is not owned. Use it
 * where an action belongs on a form rather than in a toolbar or menu; VActionToolButton
 * is the same with the other base.
 * @code
 * auto* save = new VActionButton(toolBar->submitAction, this);
 * @endcode
 */
class VEITIKGIP_EXPORT VActionButton : public QPushButton {
    Q_OBJECT
public:
    explicit VActionButton(QWidget* parent = nullptr);
    VActionButton(QAction* action, QWidget* parent);

    /**
     * Follows @p action from now on; a null action hides the button.
     * Setting the held action again connects it once more, so that a click
     * then triggers it once per such call.
     */
    void setAction(QAction* action);
    QAction* action() const;

public slots:
    /// Copies the action's state to the button; does nothing without an action.
    void updateButtonStatusFromAction();

private:
    QPointer<QAction> m_action;
};

#endif // VACTIONBUTTON_H
