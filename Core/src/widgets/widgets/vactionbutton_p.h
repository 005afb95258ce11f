#ifndef VACTIONBUTTON_P_H
#define VACTIONBUTTON_P_H

#include <QAbstractButton>
#include <QAction>
#include <QPointer>

// The push button and the tool button differ only in their base, so they share their logic here.
namespace VActionButtonSync {

template <class Button>
void update(Button* button, const QAction* action)
{
    if (!action)
        return;
    button->setText(action->text());
    button->setStatusTip(action->statusTip());
    button->setToolTip(action->toolTip());
    button->setIcon(action->icon());
    button->setEnabled(action->isEnabled());
    button->setVisible(action->isVisible());
    button->setCheckable(action->isCheckable());
    button->setChecked(action->isChecked());
}

template <class Button>
void setAction(Button* button, QPointer<QAction>& held, QAction* newAction)
{
    QAction* previous = held;
    if (previous != newAction) {
        if (previous) {
            QObject::disconnect(previous, &QAction::changed, button, &Button::updateButtonStatusFromAction);
            QObject::disconnect(button, &QAbstractButton::clicked, previous, &QAction::trigger);
        }
        held = newAction;
        button->updateButtonStatusFromAction();
    }
    if (!newAction) {
        button->setVisible(false);
        return;
    }
    if (newAction == previous)
        button->updateButtonStatusFromAction();
    // Connected again even for the held action: callers rely on one trigger per setAction() call.
    QObject::connect(newAction, &QAction::changed, button, &Button::updateButtonStatusFromAction);
    QObject::connect(button, &QAbstractButton::clicked, newAction, &QAction::trigger);
}

} // namespace VActionButtonSync

#endif // VACTIONBUTTON_P_H
