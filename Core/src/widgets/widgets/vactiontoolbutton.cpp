#include "vactiontoolbutton.h"

#include "vactionbutton_p.h"

VActionToolButton::VActionToolButton(QWidget* parent)
    : QToolButton(parent)
{
}

VActionToolButton::VActionToolButton(QAction* action, QWidget* parent)
    : QToolButton(parent)
{
    setAction(action);
}

void VActionToolButton::setAction(QAction* action)
{
    VActionButtonSync::setAction(this, m_action, action);
}

QAction* VActionToolButton::action() const
{
    return m_action;
}

void VActionToolButton::updateButtonStatusFromAction()
{
    VActionButtonSync::update(this, m_action.data());
}
