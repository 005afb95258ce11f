#ifndef VBURGERMENU_P_H
#define VBURGERMENU_P_H

#include <QAction>
#include <QPointer>
#include <QPushButton>
#include <QSize>

// One entry of a VBurgerMenu: paints its action's icon centred in the toggle button's
// column and, while the menu is expanded, the elided icon text beside it.
class BurgerButton : public QPushButton {
public:
    BurgerButton(QAction* action, QWidget* parent);
    ~BurgerButton() override;

    QAction* action() const { return m_action; }
    QSize actionIconSize() const { return m_iconSize; }
    void setActionIconSize(const QSize& size) { m_iconSize = size; }
    bool showText() const { return m_showText; }
    void setShowText(bool show) { m_showText = show; }
    int iconAreaWidth() const { return m_iconAreaWidth; }
    void setIconAreaWidth(int width) { m_iconAreaWidth = width; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize m_iconSize { 64, 64 };
    // The action deletes this button only later, so a paint may come after the action is gone.
    QPointer<QAction> m_action;
    bool m_showText = false;
    int m_iconAreaWidth = 0;
};

#endif // VBURGERMENU_P_H
