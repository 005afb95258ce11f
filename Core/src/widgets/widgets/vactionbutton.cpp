#include "vactionbutton.h"

#include "vactionbutton_p.h"

VActionButton::VActionButton(QWidget* parent)
    : QPushButton(parent)
{
}

VActionButton::VActionButton(QAction* action, QWidget* parent)
    : QPushButton(parent)
{
    setAction(action);
}

void VActionButton::setAction(QAction* action)
{
    VActionButtonSync::setAction(this, m_action, action);
}

QAction* VActionButton::action() const
{
    return m_action;
}

void VActionButton::updateButtonStatusFromAction()
{
    VActionButtonSync::update(this, m_action.data());
}
