#ifndef VACTIONTOOLBUTTON_H
#define VACTIONTOOLBUTTON_H

#include "veitikgip_export.h"

#include <QPointer>
#include <QToolButton>

class QAction;

/**
 * @brief A tool button that mirrors one QAction and triggers it when clicked.
 *
 * Text, status tip, tooltip, icon, enabled state, visibility and the checked
 * state follow the action whenever it changes. The action is not owned. Use it
 * where an action belongs on a form rather than in a toolbar or menu; VActionButton
 * is the same with the other base.
 * @code
 * auto* save = new VActionToolButton(toolBar->submitAction, this);
 * @endcode
 */
class VEITIKGIP_EXPORT VActionToolButton : public QToolButton {
    Q_OBJECT
public:
    explicit VActionToolButton(QWidget* parent = nullptr);
    VActionToolButton(QAction* action, QWidget* parent);

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

#endif // VACTIONTOOLBUTTON_H
