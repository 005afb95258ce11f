#include <QSignalSpy>
#include <QtTest>

#include "vmonthcombobox.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <climits>

class tst_VMonthComboBox : public QObject {
    Q_OBJECT

private slots:
    void names();
    void setMonth();
    void outOfRange_data();
    void outOfRange();
    void userChoiceIsNotSignalled();

private:
    VTestSettings m_settings;
};

void tst_VMonthComboBox::names()
{
    VMonthComboBox box;
    QCOMPARE(box.count(), 12);
    QVERIFY(!box.isEditable());
    const QLocale locale = QLocale::system();
    QStringList texts;
    for (int i = 0; i < 12; ++i) {
        texts << box.itemText(i);
        QCOMPARE(box.itemText(i), locale.monthName(i + 1, QLocale::ShortFormat));
    }
    if (locale.language() == QLocale::C || locale.language() == QLocale::English)
        QCOMPARE(texts,
            QStringList(
                { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec" }));
    QCOMPARE(box.month(), 1);

    const QMetaProperty property = box.metaObject()->property(box.metaObject()->indexOfProperty("month"));
    QVERIFY(property.isWritable());
    QCOMPARE(property.notifySignal().name(), QByteArray("monthChanged"));
}

void tst_VMonthComboBox::setMonth()
{
    VMonthComboBox box;
    QSignalSpy spy(&box, &VMonthComboBox::monthChanged);

    box.setMonth(1);
    QCOMPARE(spy.count(), 0);

    box.setMonth(5);
    QCOMPARE(box.currentIndex(), 4);
    QCOMPARE(box.month(), 5);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 5);
    box.setMonth(5);
    QCOMPARE(spy.count(), 1);

    QVERIFY(box.setProperty("month", 12));
    QCOMPARE(box.currentIndex(), 11);
    QCOMPARE(spy.count(), 2);

    // With nothing selected the month reads 0, and any month is a change.
    box.setCurrentIndex(-1);
    QCOMPARE(box.month(), 0);
    box.setMonth(12);
    QCOMPARE(box.month(), 12);
    QCOMPARE(spy.count(), 3);
}

void tst_VMonthComboBox::outOfRange_data()
{
    QTest::addColumn<int>("month");
    QTest::newRow("0") << 0;
    QTest::newRow("13") << 13;
    QTest::newRow("-1") << -1;
    QTest::newRow("INT_MIN") << INT_MIN;
    QTest::newRow("INT_MAX") << INT_MAX;
}

void tst_VMonthComboBox::outOfRange()
{
    QFETCH(int, month);
    VMonthComboBox box;
    box.setMonth(3);
    QSignalSpy spy(&box, &VMonthComboBox::monthChanged);
    VTestLogCapture log;

    box.setMonth(month);
    QCOMPARE(box.month(), 3);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(log.messages(Logger::Warning),
        QStringList(QStringLiteral("Month %1 is not between 1 and 12; the selection is kept").arg(month)));
}

void tst_VMonthComboBox::userChoiceIsNotSignalled()
{
    VMonthComboBox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QSignalSpy spy(&box, &VMonthComboBox::monthChanged);
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(box.month(), 3);
    QCOMPARE(spy.count(), 0);
}

QTEST_MAIN(tst_VMonthComboBox)
#include "tst_vmonthcombobox.moc"
