#include "vburgermenu.h"

#include "vburgermenu_p.h"

#include <logger.h>

#include <QActionGroup>
#include <QBoxLayout>
#include <QPainter>
#include <QPropertyAnimation>
#include <QStyleOption>

namespace {

const QString kMainButtonName = QStringLiteral("MainBurgerButton");
const QString kMenuWidgetName = QStringLiteral("BurgerMenu");
const QString kActionButtonName = QStringLiteral("BurgerButton");
constexpr int kExpansionDuration = 250;

// The action buttons are found by name among all descendants, so that the
// buttons stay plain children of the menu's layout.
QList<BurgerButton*> burgerButtons(const QWidget* menu)
{
    QList<BurgerButton*> buttons;
    const QList<QPushButton*> named = menu->findChildren<QPushButton*>(kActionButtonName);
    for (QPushButton* button : named) {
        if (auto* burgerButton = dynamic_cast<BurgerButton*>(button))
            buttons.append(burgerButton);
    }
    return buttons;
}

} // namespace

BurgerButton::BurgerButton(QAction* action, QWidget* parent)
    : QPushButton(parent)
    , m_action(action)
{
}

BurgerButton::~BurgerButton() = default;

void BurgerButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    const bool checked = m_action && m_action->isChecked();
    option.state |= checked ? QStyle::State_On : QStyle::State_Off;
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (!m_action)
        return;

    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    const int x0 = (m_iconAreaWidth - m_iconSize.width()) / 2;
    const QIcon icon = m_action->icon();
    if (!icon.isNull()) {
        QIcon::Mode mode = QIcon::Normal;
        if (!isEnabled())
            mode = QIcon::Disabled;
        else if (option.state & QStyle::State_MouseOver)
            mode = QIcon::Active;
        const QPixmap pixmap = icon.pixmap(m_iconSize, mode, checked ? QIcon::On : QIcon::Off);
        painter.drawPixmap(QRect(QPoint(x0, contents.top()), m_iconSize), pixmap);
    }
    if (m_showText) {
        const QRect textRect(QPoint(x0 + 4 + m_iconSize.width(), contents.top()), contents.bottomRight());
        option.text = fontMetrics().elidedText(
            m_action->iconText(), Qt::ElideRight, textRect.width(), Qt::TextShowMnemonic);
        option.rect = textRect;
        // The check-box label draws left-aligned and vertically centred; a push-button label would centre.
        style()->drawControl(QStyle::CE_CheckBoxLabel, &option, &painter, this);
    }
}

VBurgerMenu::VBurgerMenu(QWidget* parent)
    : QWidget(parent)
    , m_actionGroup(new QActionGroup(this))
    , m_mainButton(new QPushButton(this))
{
    // triggered() carries the action; queued connections and signal spies need the type known.
    qRegisterMetaType<QAction*>();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);

    m_mainButton->setObjectName(kMainButtonName);
    m_mainButton->setFlat(true);
    m_mainButton->setIconSize(QSize(48, 48));
    m_mainButton->setFixedSize(48, 48);
    m_mainButton->setCheckable(true);
    m_mainButton->setCursor(Qt::PointingHandCursor);

    m_actionGroup->setExclusive(true);

    auto* menuWidget = new QWidget(this);
    menuWidget->setObjectName(kMenuWidgetName);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_mainButton);
    row->addWidget(menuWidget);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(row);
    // Stays the last item: action buttons are inserted before it.
    column->addStretch(0);

    setFixedWidth(48);

    connect(m_mainButton, &QPushButton::toggled, this, &VBurgerMenu::setExpansionState);
    connect(m_mainButton, &QPushButton::toggled, this, &VBurgerMenu::expandedChanged);
    connect(m_actionGroup, &QActionGroup::triggered, this,
        [this](QAction* action) { emit triggered(action, false); });
}

VBurgerMenu::~VBurgerMenu() = default;

QIcon VBurgerMenu::burgerIcon() const
{
    return m_mainButton->icon();
}

QSize VBurgerMenu::iconSize() const
{
    return m_mainButton->iconSize();
}

int VBurgerMenu::menuWidth() const
{
    return m_menuWidth;
}

bool VBurgerMenu::animated() const
{
    return m_animated;
}

bool VBurgerMenu::expanded() const
{
    return m_mainButton->isChecked();
}

QList<QAction*> VBurgerMenu::actions() const
{
    return m_actionGroup->actions();
}

QAction* VBurgerMenu::action(const QString& name) const
{
    const QList<QAction*> menuActions = m_actionGroup->actions();
    for (QAction* menuAction : menuActions) {
        if (menuAction->iconText() == name)
            return menuAction;
    }
    return nullptr;
}

void VBurgerMenu::activateAction(const QString& name)
{
    QAction* found = action(name);
    if (!found)
        return;
    found->setChecked(true);
    emit triggered(found, true);
}

QAction* VBurgerMenu::addMenuAction(QAction* action, bool atBottom)
{
    if (!action) {
        LOG_WARNING("Null action not added to the menu %s", qUtf8Printable(objectName()));
        return nullptr;
    }
    if (m_actionGroup->actions().contains(action)) {
        LOG_WARNING("Action \"%s\" is already in the menu %s", qUtf8Printable(action->text()),
            qUtf8Printable(objectName()));
        return action;
    }
    m_actionGroup->addAction(action);
    registerAction(action, atBottom);
    return action;
}

QAction* VBurgerMenu::addMenuAction(const QString& label, bool atBottom)
{
    QAction* action = m_actionGroup->addAction(label);
    action->setCheckable(true);
    registerAction(action, atBottom);
    return action;
}

QAction* VBurgerMenu::addMenuAction(const QIcon& icon, const QString& label, bool atBottom)
{
    QAction* action = m_actionGroup->addAction(icon, label);
    action->setCheckable(true);
    registerAction(action, atBottom);
    return action;
}

void VBurgerMenu::removeMenuAction(QAction* action)
{
    if (!action || !m_actionGroup->actions().contains(action)) {
        LOG_WARNING("Action not in the menu %s", qUtf8Printable(objectName()));
        return;
    }
    m_actionGroup->removeAction(action);
    unRegisterAction(action);
}

void VBurgerMenu::setBurgerIcon(const QIcon& icon)
{
    m_mainButton->setIcon(icon);
    emit iconChanged();
}

void VBurgerMenu::setIconSize(const QSize& size)
{
    if (!size.isValid()) {
        LOG_WARNING("Invalid icon size %dx%d ignored", size.width(), size.height());
        return;
    }
    if (size == m_mainButton->iconSize())
        return;
    m_mainButton->setIconSize(size);
    const QList<BurgerButton*> buttons = burgerButtons(this);
    for (BurgerButton* button : buttons) {
        button->setActionIconSize(size);
        button->setIconAreaWidth(buttonWidth());
        button->update();
    }
    setFixedWidth(targetWidth());
    emit iconSizeChanged(size);
}

void VBurgerMenu::setIconFixedHeight(int height)
{
    if (height < 0) {
        LOG_WARNING("Negative button height %d ignored", height);
        return;
    }
    m_mainButton->setFixedHeight(height);
    const QList<BurgerButton*> buttons = burgerButtons(this);
    for (BurgerButton* button : buttons) {
        button->setFixedHeight(height);
        button->update();
    }
    setFixedWidth(targetWidth());
}

void VBurgerMenu::setMenuWidth(int width)
{
    if (width < 0) {
        LOG_WARNING("Negative menu width %d ignored", width);
        return;
    }
    if (width == m_menuWidth)
        return;
    m_menuWidth = width;
    setFixedWidth(targetWidth());
    emit menuWidthChanged(width);
}

void VBurgerMenu::setAnimated(bool animated)
{
    if (animated == m_animated)
        return;
    m_animated = animated;
    emit animatedChanged(animated);
}

void VBurgerMenu::setExpanded(bool expanded)
{
    m_mainButton->setChecked(expanded);
}

void VBurgerMenu::paintEvent(QPaintEvent*)
{
    // Lets a style sheet set on the menu draw its background.
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void VBurgerMenu::registerAction(QAction* action, bool atBottom)
{
    auto* button = new BurgerButton(action, this);
    button->setObjectName(kActionButtonName);
    connect(action, &QObject::destroyed, button, &QObject::deleteLater);
    connect(action, &QAction::changed, button, QOverload<>::of(&QWidget::update));
    connect(button, &QPushButton::clicked, button, [button] {
        QAction* clicked = button->action();
        if (!clicked)
            return;
        if (clicked->isCheckable() && !clicked->isChecked())
            clicked->toggle();
        clicked->activate(QAction::Trigger);
    });
    button->setCursor(Qt::PointingHandCursor);
    button->setActionIconSize(m_mainButton->iconSize());
    button->setIconAreaWidth(buttonWidth());
    button->update();
    button->setToolTip(action->text());

    // A bottom action brings its own stretch; several bottom actions share the free space equally.
    auto* column = static_cast<QVBoxLayout*>(layout());
    if (atBottom)
        column->insertStretch(column->count() - 1, 1);
    column->insertWidget(column->count() - 1, button);
}

void VBurgerMenu::unRegisterAction(QAction* action)
{
    const QList<BurgerButton*> buttons = burgerButtons(this);
    for (BurgerButton* button : buttons) {
        if (button->action() == action) {
            // Taken out at once but deleted later: the removal may come from this button's own click.
            button->hide();
            button->setParent(nullptr);
            button->deleteLater();
            return;
        }
    }
}

void VBurgerMenu::setExpansionState(bool expanded)
{
    if (m_animated) {
        auto* animation = new QPropertyAnimation(this, "minimumWidth", this);
        animation->setDuration(kExpansionDuration);
        animation->setStartValue(buttonWidth());
        animation->setEndValue(buttonWidth() + m_menuWidth);
        animation->setDirection(expanded ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
        animation->setEasingCurve(expanded ? QEasingCurve::OutCubic : QEasingCurve::InCubic);
        animation->start(QAbstractAnimation::DeleteWhenStopped);
    } else {
        setFixedWidth(targetWidth());
    }
    const QList<BurgerButton*> buttons = burgerButtons(this);
    for (BurgerButton* button : buttons) {
        button->setShowText(expanded);
        button->update();
    }
}

int VBurgerMenu::buttonWidth() const
{
    return m_mainButton->geometry().width();
}

int VBurgerMenu::targetWidth() const
{
    return expanded() ? buttonWidth() + m_menuWidth : buttonWidth();
}
