#include "vtoolbarmenu_p.h"

#include "vclickablelabel.h"
#include "vcrudtoolbar.h"

#include <QMenu>
#include <QToolButton>

void VToolBarMenu::addToolBarEntries(QMenu* menu, const VCrudToolBar* toolBar)
{
    if (!menu || !toolBar)
        return;
    const QList<QAction*> actions = toolBar->actions();
    for (QAction* action : actions) {
        if (action->isSeparator()) {
            menu->addAction(action);
            continue;
        }
        QWidget* widget = toolBar->widgetForAction(action);
        if (auto button = qobject_cast<QToolButton*>(widget)) {
            if (QMenu* buttonMenu = button->menu()) {
                buttonMenu->setTitle(action->text());
                buttonMenu->setIcon(action->icon());
                menu->addMenu(buttonMenu);
            }
        } else if (auto label = qobject_cast<VClickableLabel*>(widget)) {
            menu->addAction(action);
            action->setText(label->toolTip());
            // The entry must act exactly like a click on the label, nothing else.
            action->disconnect();
            QObject::connect(action, &QAction::triggered, label, [label] { Q_EMIT label->clicked(); });
        }
    }
}
