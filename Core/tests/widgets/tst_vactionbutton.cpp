#include <QAction>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include "vactionbutton.h"
#include "vactiontoolbutton.h"
#include "vtestsettings.h"

namespace {

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(16, 16).toImage();
}

// Both buttons carry the same contract; each check runs for the push button and for the tool button.
template <class Button>
struct Fixture {
    Fixture() { new QVBoxLayout(&window); }
    // Shows the window with the button in it, so that the button's own visibility decides.
    Button* add(QAction* action)
    {
        auto* button = action ? new Button(action, &window) : new Button(&window);
        window.layout()->addWidget(button);
        window.show();
        return button;
    }
    QWidget window;
};

template <class Button>
void checkMirrors()
{
    Fixture<Button> f;
    QAction action(QIcon(QStringLiteral(":/images/new")), QStringLiteral("New..."), nullptr);
    action.setStatusTip(QStringLiteral("Create a record"));
    action.setToolTip(QStringLiteral("Create a new record."));
    action.setCheckable(true);
    action.setChecked(true);
    action.setEnabled(false);
    Button* button = f.add(&action);

    QCOMPARE(button->action(), &action);
    QCOMPARE(button->text(), QStringLiteral("New..."));
    QCOMPARE(button->statusTip(), QStringLiteral("Create a record"));
    QCOMPARE(button->toolTip(), QStringLiteral("Create a new record."));
    QVERIFY(iconImage(button->icon()) == iconImage(QIcon(QStringLiteral(":/images/new"))));
    QVERIFY(!button->isEnabled());
    QVERIFY(button->isVisible());
    QVERIFY(button->isCheckable());
    QVERIFY(button->isChecked());

    action.setText(QStringLiteral("View..."));
    action.setStatusTip(QStringLiteral("Show the record"));
    action.setToolTip(QStringLiteral("View selected record."));
    action.setIcon(QIcon(QStringLiteral(":/images/view")));
    action.setEnabled(true);
    action.setChecked(false);
    QCOMPARE(button->text(), QStringLiteral("View..."));
    QCOMPARE(button->statusTip(), QStringLiteral("Show the record"));
    QCOMPARE(button->toolTip(), QStringLiteral("View selected record."));
    QVERIFY(iconImage(button->icon()) == iconImage(QIcon(QStringLiteral(":/images/view"))));
    QVERIFY(button->isEnabled());
    QVERIFY(!button->isChecked());
    action.setVisible(false);
    QVERIFY(button->isHidden());
    action.setVisible(true);
    QVERIFY(button->isVisible());
    action.setCheckable(false);
    QVERIFY(!button->isCheckable());
}

template <class Button>
void checkClicks()
{
    Fixture<Button> f;
    QAction first(QStringLiteral("First"), nullptr);
    QAction second(QStringLiteral("Second"), nullptr);
    QSignalSpy firstSpy(&first, &QAction::triggered);
    QSignalSpy secondSpy(&second, &QAction::triggered);
    Button* button = f.add(&first);

    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(firstSpy.count(), 1);

    // The held action set again is connected once more: one click, two triggers.
    button->setAction(&first);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(firstSpy.count(), 3);

    button->setAction(&second);
    QCOMPARE(button->action(), &second);
    QCOMPARE(button->text(), QStringLiteral("Second"));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(firstSpy.count(), 3);
    QCOMPARE(secondSpy.count(), 1);
    first.setText(QStringLiteral("Ignored"));
    QCOMPARE(button->text(), QStringLiteral("Second"));

    // A disabled action disables its button, so a click triggers nothing.
    second.setEnabled(false);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(secondSpy.count(), 1);

    // A checkable action and its button stay in step through a click.
    second.setEnabled(true);
    second.setCheckable(true);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(second.isChecked());
    QVERIFY(button->isChecked());
}

template <class Button>
void checkWithoutAction()
{
    Fixture<Button> f;
    Button* button = f.add(nullptr);
    QCOMPARE(button->action(), nullptr);
    QVERIFY(button->isVisible());
    button->setText(QStringLiteral("Own text"));
    button->updateButtonStatusFromAction();
    QCOMPARE(button->text(), QStringLiteral("Own text"));
    button->setAction(nullptr);
    QVERIFY(button->isHidden());

    auto* action = new QAction(QStringLiteral("Short-lived"), nullptr);
    button->setAction(action);
    QVERIFY(button->isVisible());
    QCOMPARE(button->text(), QStringLiteral("Short-lived"));
    button->setAction(nullptr);
    QVERIFY(button->isHidden());
    QCOMPARE(button->action(), nullptr);
    QSignalSpy spy(action, &QAction::triggered);
    button->click();
    QCOMPARE(spy.count(), 0);

    // An action deleted under the button is let go of.
    button->setAction(action);
    delete action;
    QCOMPARE(button->action(), nullptr);
    button->click();
    button->updateButtonStatusFromAction();
    QCOMPARE(button->text(), QStringLiteral("Short-lived"));
}

} // namespace

class tst_VActionButton : public QObject {
    Q_OBJECT

private slots:
    void mirrorsAction()
    {
        checkMirrors<VActionButton>();
        checkMirrors<VActionToolButton>();
    }
    void clickTriggersAction()
    {
        checkClicks<VActionButton>();
        checkClicks<VActionToolButton>();
    }
    void withoutAction()
    {
        checkWithoutAction<VActionButton>();
        checkWithoutAction<VActionToolButton>();
    }

private:
    VTestSettings m_settings;
};

QTEST_MAIN(tst_VActionButton)
#include "tst_vactionbutton.moc"
