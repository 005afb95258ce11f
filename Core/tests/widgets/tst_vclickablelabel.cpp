#include <QSignalSpy>
#include <QtTest>

#include "vclickablelabel.h"
#include "vtestsettings.h"

class tst_VClickableLabel : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void clicks_data();
    void clicks();
    void releaseOutside();

private:
    VTestSettings m_settings;
};

void tst_VClickableLabel::construction()
{
    QWidget parent;
    VClickableLabel withText(QStringLiteral("Show all"), &parent);
    QCOMPARE(withText.text(), QStringLiteral("Show all"));
    QCOMPARE(withText.parentWidget(), &parent);
    VClickableLabel window(nullptr, Qt::Tool);
    QCOMPARE(window.text(), QString());
    QCOMPARE(window.windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    // The cursor is the application's business.
    QVERIFY(!withText.testAttribute(Qt::WA_SetCursor));
}

void tst_VClickableLabel::clicks_data()
{
    QTest::addColumn<int>("buttonValue");
    QTest::addColumn<int>("expected");
    QTest::newRow("left") << int(Qt::LeftButton) << 1;
    QTest::newRow("right") << int(Qt::RightButton) << 0;
    QTest::newRow("middle") << int(Qt::MiddleButton) << 0;
}

void tst_VClickableLabel::clicks()
{
    QFETCH(int, buttonValue);
    const auto button = Qt::MouseButton(buttonValue);
    QFETCH(int, expected);

    VClickableLabel label(QStringLiteral("Orders"));
    label.resize(100, 20);
    label.show();
    QSignalSpy spy(&label, &VClickableLabel::clicked);
    QTest::mousePress(&label, button);
    QCOMPARE(spy.count(), 0);
    QTest::mouseRelease(&label, button);
    QCOMPARE(spy.count(), expected);
    QTest::mouseClick(&label, button, Qt::ShiftModifier, QPoint(2, 2));
    QCOMPARE(spy.count(), 2 * expected);
}

void tst_VClickableLabel::releaseOutside()
{
    VClickableLabel label(QStringLiteral("Orders"));
    label.resize(100, 20);
    label.show();
    QSignalSpy spy(&label, &VClickableLabel::clicked);
    QTest::mousePress(&label, Qt::LeftButton, Qt::NoModifier, QPoint(50, 10));
    QTest::mouseRelease(&label, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
    QCOMPARE(spy.count(), 0);
}

QTEST_MAIN(tst_VClickableLabel)
#include "tst_vclickablelabel.moc"
