#include <QAction>
#include <QActionGroup>
#include <QBoxLayout>
#include <QMetaProperty>
#include <QPainter>
#include <QPropertyAnimation>
#include <QSignalSpy>
#include <QStyleOption>
#include <QtTest>

#include "vburgermenu.h"
#include "vburgermenu_p.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

namespace {

QPushButton* mainButton(const VBurgerMenu& menu)
{
    return menu.findChild<QPushButton*>(QStringLiteral("MainBurgerButton"));
}

QList<BurgerButton*> buttons(const VBurgerMenu& menu)
{
    QList<BurgerButton*> result;
    for (QPushButton* button : menu.findChildren<QPushButton*>(QStringLiteral("BurgerButton")))
        result << static_cast<BurgerButton*>(button);
    return result;
}

BurgerButton* buttonOf(const VBurgerMenu& menu, const QAction* action)
{
    for (BurgerButton* button : buttons(menu)) {
        if (button->action() == action)
            return button;
    }
    return nullptr;
}

QIcon solidIcon(const QColor& off, const QColor& on = QColor(), const QColor& disabled = QColor(),
    const QColor& active = QColor())
{
    QIcon icon;
    const auto add = [&icon](const QColor& colour, QIcon::Mode mode, QIcon::State state) {
        if (!colour.isValid())
            return;
        QPixmap pixmap(16, 16);
        pixmap.fill(colour);
        icon.addPixmap(pixmap, mode, state);
    };
    add(off, QIcon::Normal, QIcon::Off);
    add(on, QIcon::Normal, QIcon::On);
    add(disabled, QIcon::Disabled, QIcon::Off);
    add(active, QIcon::Active, QIcon::Off);
    return icon;
}

QRect contentsRect(BurgerButton* button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    return button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button);
}

// Bounding box of the pixels in @p area that differ between two grabs.
QRect difference(const QImage& a, const QImage& b, QRect area = QRect())
{
    area = area.isNull() ? a.rect() : area & a.rect();
    QRect box;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

struct Window {
    Window()
    {
        auto* layout = new QHBoxLayout(&widget);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(menu);
        layout->addStretch();
        widget.resize(600, 600);
    }
    QWidget widget;
    VBurgerMenu* menu = new VBurgerMenu;
};

} // namespace

class tst_VBurgerMenu : public QObject {
    Q_OBJECT

    VTestSettings m_settings;

private slots:
    void construction()
    {
        VBurgerMenu menu;
        QCOMPARE(menu.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(menu.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(menu.minimumWidth(), 48);
        QCOMPARE(menu.maximumWidth(), 48);
        QCOMPARE(menu.menuWidth(), 200);
        QVERIFY(menu.animated());
        QVERIFY(!menu.expanded());
        QCOMPARE(menu.iconSize(), QSize(48, 48));
        QVERIFY(menu.burgerIcon().isNull());

        QPushButton* toggle = mainButton(menu);
        QVERIFY(toggle);
        QVERIFY(toggle->isCheckable());
        QCOMPARE(toggle->iconSize(), QSize(48, 48));
        QCOMPARE(toggle->maximumSize(), QSize(48, 48));
        QCOMPARE(toggle->cursor().shape(), Qt::PointingHandCursor);

        auto* row = qobject_cast<QHBoxLayout*>(menu.layout()->itemAt(0)->layout());
        QVERIFY(row);
        QCOMPARE(row->itemAt(0)->widget(), toggle);
        QCOMPARE(row->itemAt(1)->widget()->objectName(), QStringLiteral("BurgerMenu"));
    }

    void properties()
    {
        VBurgerMenu menu;
        const QMetaObject* meta = menu.metaObject();
        for (const char* name : { "icon", "iconSize", "menuWidth", "animated", "expanded" }) {
            const QMetaProperty property = meta->property(meta->indexOfProperty(name));
            QVERIFY2(property.isWritable() && property.notifySignal().name() == name + QByteArray("Changed"),
                name);
        }

        QSignalSpy icon(&menu, &VBurgerMenu::iconChanged);
        QSignalSpy iconSize(&menu, &VBurgerMenu::iconSizeChanged);
        QSignalSpy width(&menu, &VBurgerMenu::menuWidthChanged);
        QSignalSpy animated(&menu, &VBurgerMenu::animatedChanged);
        QSignalSpy expanded(&menu, &VBurgerMenu::expandedChanged);

        // The icon has no equality test: every call emits.
        const QIcon burger = solidIcon(Qt::black);
        menu.setBurgerIcon(burger);
        menu.setBurgerIcon(burger);
        QCOMPARE(icon.count(), 2);
        QCOMPARE(menu.burgerIcon().cacheKey(), burger.cacheKey());

        for (int i = 0; i < 2; ++i) {
            menu.setIconSize(QSize(32, 32));
            menu.setMenuWidth(150);
            menu.setAnimated(false);
            menu.setExpanded(true);
        }
        QCOMPARE(iconSize, QList<QVariantList>({ { QSize(32, 32) } }));
        QCOMPARE(width, QList<QVariantList>({ { 150 } }));
        QCOMPARE(animated, QList<QVariantList>({ { false } }));
        QCOMPARE(expanded, QList<QVariantList>({ { true } }));
        // The toggle keeps its size; only its icon shrinks.
        QCOMPARE(mainButton(menu)->size(), QSize(48, 48));

        // The toggle button is the expansion state.
        mainButton(menu)->setChecked(false);
        QCOMPARE(expanded.count(), 2);
        QVERIFY(!menu.expanded());

        VTestLogCapture log;
        menu.setMenuWidth(-10);
        menu.setIconSize(QSize(-1, 5));
        menu.setIconFixedHeight(-3);
        QCOMPARE(menu.menuWidth(), 150);
        QCOMPARE(menu.iconSize(), QSize(32, 32));
        QCOMPARE(mainButton(menu)->height(), 48);
        QCOMPARE(width.count(), 1);
        QCOMPARE(iconSize.count(), 1);
        QCOMPARE(log.messages(Logger::Warning).size(), 3);
    }

    void addingActions()
    {
        VBurgerMenu menu;
        QAction* orders = menu.addMenuAction(QStringLiteral("Orders"));
        QAction* customers = menu.addMenuAction(solidIcon(Qt::red), QStringLiteral("Customers"));
        QAction external(QStringLiteral("Help"));
        QCOMPARE(menu.addMenuAction(&external), &external);

        QCOMPARE(menu.actions(), (QList<QAction*> { orders, customers, &external }));
        QVERIFY(orders->isCheckable());
        QVERIFY(!customers->icon().isNull());
        // An action passed in keeps its flag and its owner.
        QVERIFY(!external.isCheckable());
        QVERIFY(external.parent() == nullptr);
        QCOMPARE(external.actionGroup(), orders->actionGroup());
        QVERIFY(orders->actionGroup()->isExclusive());

        QCOMPARE(buttons(menu).size(), 3);
        for (QAction* action : menu.actions()) {
            BurgerButton* button = buttonOf(menu, action);
            QVERIFY(button);
            QCOMPARE(button->toolTip(), action->text());
            QCOMPARE(button->actionIconSize(), QSize(48, 48));
            QCOMPARE(button->iconAreaWidth(), 48);
            QVERIFY(!button->showText());
        }

        VTestLogCapture log;
        QCOMPARE(menu.addMenuAction(static_cast<QAction*>(nullptr)), nullptr);
        QCOMPARE(menu.addMenuAction(&external), &external);
        QCOMPARE(buttons(menu).size(), 3);
        QCOMPARE(log.messages(Logger::Warning).size(), 2);
    }

    void layoutRule()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        QAction* a = menu->addMenuAction(QStringLiteral("A"));
        QAction* b = menu->addMenuAction(QStringLiteral("B"), true);
        QAction* c = menu->addMenuAction(QStringLiteral("C"));
        QAction* d = menu->addMenuAction(QStringLiteral("D"), true);

        // Row, A, stretch, B, C, stretch, D, final stretch.
        auto* column = static_cast<QVBoxLayout*>(menu->layout());
        QCOMPARE(column->count(), 8);
        const QList<QAction*> widgets { nullptr, a, nullptr, b, c, nullptr, d, nullptr };
        const QList<int> stretches { 0, 0, 1, 0, 0, 1, 0, 0 };
        for (int i = 1; i < column->count(); ++i) {
            QLayoutItem* item = column->itemAt(i);
            if (widgets.at(i))
                QCOMPARE(item->widget(), buttonOf(*menu, widgets.at(i)));
            else
                QVERIFY(item->spacerItem());
            QCOMPARE(column->stretch(i), stretches.at(i));
        }

        // The two bottom stretches share the free space equally.
        menu->setIconFixedHeight(40);
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));
        QCOMPARE(menu->height(), 600);
        QCOMPARE(buttonOf(*menu, a)->geometry(), QRect(0, 40, 48, 40));
        QCOMPARE(buttonOf(*menu, b)->geometry(), QRect(0, 280, 48, 40));
        QCOMPARE(buttonOf(*menu, c)->geometry(), QRect(0, 320, 48, 40));
        QCOMPARE(buttonOf(*menu, d)->geometry(), QRect(0, 560, 48, 40));

        // A fixed height reaches only the buttons that existed at the call.
        QAction* e = menu->addMenuAction(QStringLiteral("E"));
        QVERIFY(buttonOf(*menu, e)->maximumHeight() != 40);
        QCOMPARE(column->indexOf(buttonOf(*menu, e)), 7);
        QCOMPARE(column->count(), 9);
    }

    void removing()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        QAction* a = menu->addMenuAction(QStringLiteral("A"));
        QAction* b = menu->addMenuAction(QStringLiteral("B"), true);
        QAction* d = menu->addMenuAction(QStringLiteral("D"), true);
        auto* column = static_cast<QVBoxLayout*>(menu->layout());
        QCOMPARE(column->count(), 7);

        menu->removeMenuAction(b);
        QCOMPARE(menu->actions(), (QList<QAction*> { a, d }));
        QVERIFY(!buttonOf(*menu, b));
        QCOMPARE(buttons(*menu).size(), 2);
        // Its stretch stays, so the remaining bottom action still shares the space with it.
        QCOMPARE(column->count(), 6);
        QVERIFY(column->itemAt(2)->spacerItem());
        QCOMPARE(column->stretch(2), 1);
        QVERIFY(column->itemAt(3)->spacerItem());
        QCOMPARE(column->stretch(3), 1);

        VTestLogCapture log;
        menu->removeMenuAction(b);
        menu->removeMenuAction(nullptr);
        QCOMPARE(log.messages(Logger::Warning).size(), 2);
        QCOMPARE(menu->actions().size(), 2);

        // A destroyed action takes its button along.
        delete a;
        QCOMPARE(menu->actions(), (QList<QAction*> { d }));
        QTRY_COMPARE(buttons(*menu).size(), 1);
        QCOMPARE(buttons(*menu).at(0)->action(), d);
    }

    void activation()
    {
        VBurgerMenu menu;
        QAction* orders = menu.addMenuAction(QStringLiteral("Orders"));
        QAction* first = menu.addMenuAction(QStringLiteral("Twice"));
        QAction* second = menu.addMenuAction(QStringLiteral("Twice"));
        orders->setIconText(QStringLiteral("Order list"));

        QCOMPARE(menu.action(QStringLiteral("Order list")), orders);
        QCOMPARE(menu.action(QStringLiteral("Orders")), nullptr);
        QCOMPARE(menu.action(QStringLiteral("Twice")), first);

        QSignalSpy menuSpy(&menu, &VBurgerMenu::triggered);
        QSignalSpy actionSpy(first, &QAction::triggered);
        menu.activateAction(QStringLiteral("Nothing"));
        QCOMPARE(menuSpy.count(), 0);
        QVERIFY(!first->isChecked());

        menu.activateAction(QStringLiteral("Twice"));
        QCOMPARE(menuSpy.count(), 1);
        QCOMPARE(menuSpy.at(0).at(0).value<QAction*>(), first);
        QCOMPARE(menuSpy.at(0).at(1).toBool(), true);
        QCOMPARE(actionSpy.count(), 0);
        QVERIFY(first->isChecked());
        QVERIFY(!second->isChecked());

        menu.activateAction(QStringLiteral("Order list"));
        QCOMPARE(menuSpy.count(), 2);
        QVERIFY(orders->isChecked());
        QVERIFY(!first->isChecked());
    }

    void clicking()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        QAction* orders = menu->addMenuAction(QStringLiteral("Orders"));
        QAction* customers = menu->addMenuAction(QStringLiteral("Customers"));
        QAction help(QStringLiteral("Help"));
        menu->addMenuAction(&help, true);
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));

        QSignalSpy menuSpy(menu, &VBurgerMenu::triggered);
        QSignalSpy ordersSpy(orders, &QAction::triggered);
        QTest::mouseClick(buttonOf(*menu, orders), Qt::LeftButton);
        QCOMPARE(menuSpy.count(), 1);
        QCOMPARE(menuSpy.at(0).at(0).value<QAction*>(), orders);
        QCOMPARE(menuSpy.at(0).at(1).toBool(), false);
        QCOMPARE(ordersSpy.count(), 1);
        QCOMPARE(ordersSpy.at(0).at(0).toBool(), true);
        QVERIFY(orders->isChecked());

        // The current entry stays current when clicked again.
        QTest::mouseClick(buttonOf(*menu, orders), Qt::LeftButton);
        QCOMPARE(menuSpy.count(), 2);
        QVERIFY(orders->isChecked());

        QTest::mouseClick(buttonOf(*menu, customers), Qt::LeftButton);
        QVERIFY(customers->isChecked());
        QVERIFY(!orders->isChecked());

        QTest::mouseClick(buttonOf(*menu, &help), Qt::LeftButton);
        QCOMPARE(menuSpy.count(), 4);
        QCOMPARE(menuSpy.at(3).at(1).toBool(), false);
        QVERIFY(!help.isChecked());
        QVERIFY(customers->isChecked());

        // Triggering the action itself is reported the same way.
        orders->trigger();
        QCOMPARE(menuSpy.count(), 5);
        QCOMPARE(menuSpy.at(4).at(1).toBool(), false);

        // Toggling the burger button expands the menu.
        menu->setAnimated(false);
        QTest::mouseClick(mainButton(*menu), Qt::LeftButton);
        QVERIFY(menu->expanded());
        QCOMPARE(menu->width(), 248);
    }

    void immediateExpansion()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        menu->setAnimated(false);
        menu->addMenuAction(QStringLiteral("Orders"));
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));

        menu->setExpanded(true);
        QVERIFY(!menu->findChild<QPropertyAnimation*>());
        QCOMPARE(menu->maximumWidth(), 248);
        QTRY_COMPARE(menu->width(), 248);
        QVERIFY(buttons(*menu).at(0)->showText());

        menu->setMenuWidth(100);
        QCOMPARE(menu->maximumWidth(), 148);
        QTRY_COMPARE(menu->width(), 148);
        menu->setIconSize(QSize(24, 24));
        QCOMPARE(menu->maximumWidth(), 148);
        QCOMPARE(buttons(*menu).at(0)->actionIconSize(), QSize(24, 24));
        QCOMPARE(buttons(*menu).at(0)->iconAreaWidth(), 48);

        // Added while expanded: icon only until the next toggle.
        QAction* late = menu->addMenuAction(QStringLiteral("Late"));
        QVERIFY(!buttonOf(*menu, late)->showText());
        QCOMPARE(buttonOf(*menu, late)->actionIconSize(), QSize(24, 24));

        menu->setExpanded(false);
        QTRY_COMPARE(menu->width(), 48);
        for (BurgerButton* button : buttons(*menu))
            QVERIFY(!button->showText());

        // Collapsed, the menu width is kept for later.
        menu->setMenuWidth(300);
        QCOMPARE(menu->maximumWidth(), 48);
        menu->setExpanded(true);
        QCOMPARE(menu->maximumWidth(), 348);
        QVERIFY(buttonOf(*menu, late)->showText());
    }

    void animatedExpansion()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        menu->addMenuAction(QStringLiteral("Orders"));
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));

        menu->setExpanded(true);
        auto* animation = menu->findChild<QPropertyAnimation*>();
        QVERIFY(animation);
        QCOMPARE(animation->propertyName(), QByteArray("minimumWidth"));
        QCOMPARE(animation->duration(), 250);
        QCOMPARE(animation->startValue().toInt(), 48);
        QCOMPARE(animation->endValue().toInt(), 248);
        QCOMPARE(animation->direction(), QAbstractAnimation::Forward);
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
        // The texts show at once; only the width moves.
        QVERIFY(buttons(*menu).at(0)->showText());

        QSignalSpy expandFinished(animation, &QAbstractAnimation::finished);
        QVERIFY(expandFinished.wait(2000));
        QTRY_COMPARE(menu->width(), 248);
        QTRY_VERIFY(!menu->findChild<QPropertyAnimation*>());

        menu->setExpanded(false);
        animation = menu->findChild<QPropertyAnimation*>();
        QVERIFY(animation);
        QCOMPARE(animation->startValue().toInt(), 48);
        QCOMPARE(animation->endValue().toInt(), 248);
        QCOMPARE(animation->direction(), QAbstractAnimation::Backward);
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::InCubic);
        QVERIFY(!buttons(*menu).at(0)->showText());

        QSignalSpy collapseFinished(animation, &QAbstractAnimation::finished);
        QVERIFY(collapseFinished.wait(2000));
        QTRY_COMPARE(menu->width(), 48);
        QTRY_VERIFY(!menu->findChild<QPropertyAnimation*>());

        // Toggling during an animation starts another one on the same property.
        menu->setExpanded(true);
        menu->setExpanded(false);
        QCOMPARE(menu->findChildren<QPropertyAnimation*>().size(), 2);
    }

    void paintsIcon_data()
    {
        QTest::addColumn<bool>("checked");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("hovered");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("normal") << false << true << false << QColor(Qt::red);
        QTest::newRow("checked") << true << true << false << QColor(Qt::blue);
        QTest::newRow("disabled") << false << false << false << QColor(Qt::green);
        QTest::newRow("hovered") << false << true << true << QColor(Qt::yellow);
    }

    void paintsIcon()
    {
        QFETCH(bool, checked);
        QFETCH(bool, enabled);
        QFETCH(bool, hovered);
        QFETCH(QColor, expected);

        Window window;
        VBurgerMenu* menu = window.menu;
        QAction* action
            = menu->addMenuAction(solidIcon(Qt::red, Qt::blue, Qt::green, Qt::yellow), QStringLiteral("A"));
        menu->setIconSize(QSize(16, 16));
        menu->setIconFixedHeight(40);
        action->setChecked(checked);
        BurgerButton* button = buttonOf(*menu, action);
        button->setEnabled(enabled);
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));
        button->setAttribute(Qt::WA_UnderMouse, hovered);

        // Centred in the 48 pixel column: x0 = (48 - 16) / 2, at the top of the contents.
        const int top = contentsRect(button).top();
        const QImage image = button->grab().toImage();
        for (int y = top; y < top + 16; ++y) {
            QCOMPARE(QColor(image.pixel(16, y)), expected);
            QVERIFY(QColor(image.pixel(31, y)) == expected && QColor(image.pixel(32, y)) != expected);
            QVERIFY(QColor(image.pixel(15, y)) != expected);
        }
        QVERIFY(QColor(image.pixel(20, top + 16)) != expected);
    }

    void paintsText()
    {
        Window window;
        VBurgerMenu* menu = window.menu;
        menu->setAnimated(false);
        menu->setIconSize(QSize(16, 16));
        QAction* withIcon = menu->addMenuAction(solidIcon(Qt::red), QStringLiteral("Orders"));
        QAction* noIcon = menu->addMenuAction(QStringLiteral("Orders"));
        QAction* longText = menu->addMenuAction(
            solidIcon(Qt::red), QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW"));
        menu->setIconFixedHeight(40);
        window.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.widget));
        menu->setExpanded(true);
        QTRY_COMPARE(menu->width(), 248);

        for (QAction* action : { withIcon, noIcon, longText }) {
            BurgerButton* button = buttonOf(*menu, action);
            QVERIFY(button->showText());
            const QImage expanded = button->grab().toImage();
            button->setShowText(false);
            const QImage collapsed = button->grab().toImage();
            button->setShowText(true);

            // Left-aligned after the icon column (x0 + 4 + icon width), vertically centred in the contents.
            const QRect contents = contentsRect(button);
            const QRect text = difference(expanded, collapsed);
            QVERIFY2(!text.isEmpty(), qPrintable(action->text()));
            QVERIFY(text.left() >= 16 + 4 + 16 && text.left() <= 16 + 4 + 16 + 2);
            QVERIFY(qAbs(text.center().y() - contents.center().y()) <= 2);
            QVERIFY(text.right() <= contents.right());
            const QFontMetrics metrics(button->font());
            if (action == longText) {
                // Elided: the line ends in the dots of an ellipsis, nothing above their baseline.
                const int dots = metrics.horizontalAdvance(QChar(0x2026));
                QVERIFY(text.right() > contents.right() - dots);
                const QRect lastGlyphTop(text.right() - dots + 3, text.top(), dots - 3, text.height() / 2);
                QCOMPARE(difference(expanded, collapsed, lastGlyphTop), QRect());
            } else {
                QVERIFY(text.right() < 16 + 4 + 16 + metrics.horizontalAdvance(action->text()) + 2);
            }
        }
    }

    void styleSheetBackground()
    {
        VBurgerMenu menu;
        menu.setStyleSheet(QStringLiteral("VBurgerMenu { background: rgb(10, 20, 30); }"));
        menu.resize(48, 200);
        const QImage image = menu.grab().toImage();
        QCOMPARE(QColor(image.pixel(24, 150)), QColor(10, 20, 30));
    }

    void actionOutlivesMenu()
    {
        QAction help(QStringLiteral("Help"));
        QPointer<QAction> owned;
        {
            VBurgerMenu menu;
            menu.addMenuAction(&help);
            owned = menu.addMenuAction(QStringLiteral("Orders"));
        }
        QVERIFY(owned.isNull());
        QCOMPARE(help.actionGroup(), nullptr);
        help.trigger();
    }
};

QTEST_MAIN(tst_VBurgerMenu)
#include "tst_vburgermenu.moc"
