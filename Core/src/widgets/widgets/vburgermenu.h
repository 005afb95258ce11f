#ifndef VBURGERMENU_H
#define VBURGERMENU_H

#include "veitikgip_export.h"

#include <QIcon>
#include <QList>
#include <QSize>
#include <QWidget>

class QAction;
class QActionGroup;
class QPaintEvent;
class QPushButton;

/**
 * @brief A collapsible vertical navigation menu with a "burger" toggle button on top.
 *
 * Below the square toggle ("MainBurgerButton") each menu action gets a button
 * ("BurgerButton") that shows the action's icon and, while the menu is expanded,
 * its icon text. Collapsed, the menu is as wide as the toggle button; expanded, it
 * widens by menuWidth(), animated or at once. The actions form one exclusive group,
 * so exactly one entry is current. Actions added with @c atBottom are pushed
 * towards the bottom by a stretch of their own. The library sets no colours: style
 * the menu, the "BurgerMenu" widget beside the toggle and the buttons by object name.
 * @code
 * auto* menu = new VBurgerMenu(this);
 * menu->addMenuAction(QIcon(":/images/view"), tr("Orders"));
 * menu->addMenuAction(QIcon(":/images/settings"), tr("Settings"), true);
 * connect(menu, &VBurgerMenu::triggered, this, &MainWindow::showPage);
 * menu->activateAction(tr("Orders"));
 * @endcode
 */
class VEITIKGIP_EXPORT VBurgerMenu : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QIcon icon READ burgerIcon WRITE setBurgerIcon NOTIFY iconChanged)
    Q_PROPERTY(QSize iconSize READ iconSize WRITE setIconSize NOTIFY iconSizeChanged)
    Q_PROPERTY(int menuWidth READ menuWidth WRITE setMenuWidth NOTIFY menuWidthChanged)
    Q_PROPERTY(bool animated READ animated WRITE setAnimated NOTIFY animatedChanged)
    Q_PROPERTY(bool expanded READ expanded WRITE setExpanded NOTIFY expandedChanged)

public:
    explicit VBurgerMenu(QWidget* parent = nullptr);
    ~VBurgerMenu() override;

    /// The toggle button's icon.
    QIcon burgerIcon() const;
    /// The toggle button's icon size, also used for the action icons.
    QSize iconSize() const;
    /// The width that the menu gains when expanded.
    int menuWidth() const;
    /// Whether expanding and collapsing are animated.
    bool animated() const;
    /// Whether the menu is expanded (the toggle button is checked).
    bool expanded() const;

    /// The menu actions in the order they were added.
    QList<QAction*> actions() const;
    /// The first menu action whose iconText() equals @p name, or null.
    QAction* action(const QString& name) const;
    /**
     * Makes the action named @p name current and emits triggered(action, true)
     * without triggering the action itself, so that an application can select
     * a page at start-up without running the page's handler. Does nothing for
     * an unknown name.
     */
    void activateAction(const QString& name);

public slots:
    /**
     * Adds @p action as it is (its checkable flag is left alone); the menu
     * does not own it. With @p atBottom the action is pushed towards the
     * bottom by a stretch of its own.
     */
    QAction* addMenuAction(QAction* action, bool atBottom = false);
    /// Adds a new checkable action with the text @p label, owned by the menu.
    QAction* addMenuAction(const QString& label, bool atBottom = false);
    /// Adds a new checkable action with @p icon and @p label, owned by the menu.
    QAction* addMenuAction(const QIcon& icon, const QString& label, bool atBottom = false);
    /// Removes @p action and its button; a stretch added for it stays in place.
    void removeMenuAction(QAction* action);
    void setBurgerIcon(const QIcon& icon);
    void setIconSize(const QSize& size);
    /// Gives the toggle button and the existing action buttons the fixed height @p height.
    void setIconFixedHeight(int height);
    void setMenuWidth(int width);
    void setAnimated(bool animated);
    void setExpanded(bool expanded);

signals:
    void iconChanged();
    void iconSizeChanged(QSize size);
    void menuWidthChanged(int width);
    void animatedChanged(bool animated);
    void expandedChanged(bool expanded);
    /**
     * A menu action was chosen: by the user or programmatically through the
     * action (@p activateOnly false), or through activateAction() (@p activateOnly true).
     */
    void triggered(QAction* action, bool activateOnly);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void registerAction(QAction* action, bool atBottom);
    void unRegisterAction(QAction* action);
    void setExpansionState(bool expanded);
    int buttonWidth() const;
    int targetWidth() const;

    QActionGroup* m_actionGroup;
    QPushButton* m_mainButton;
    int m_menuWidth = 200;
    bool m_animated = true;
};

#endif // VBURGERMENU_H
