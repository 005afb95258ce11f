#include <QCalendarWidget>
#include <QDataWidgetMapper>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QToolButton>
#include <QtTest>

#include "vdateedit.h"
#include "vtestsettings.h"

#include <vcore.h>

namespace {

struct Parts {
    CDateEdit* edit;
    QToolButton* today;
    QToolButton* clear;
};

Parts parts(VDateEdit& w)
{
    return { w.findChild<CDateEdit*>(), w.findChild<QToolButton*>(QStringLiteral("todayButton")),
        w.findChild<QToolButton*>(QStringLiteral("clearButton")) };
}

QString shownText(CDateEdit* edit)
{
    return edit->findChild<QLineEdit*>()->text();
}

} // namespace

class tst_VDateEdit : public QObject {
    Q_OBJECT

private slots:
    void construction_data();
    void construction();
    void nullMapping();
    void dateTimeMapping();
    void invalidDatesEmptyTheField();
    void minimumDateMovesTheSentinel();
    void buttons();
    void enabling();
    void readOnly();
    void mapperBindsDate();
    void calendarOpensOnToday();

private:
    VTestSettings m_settings;
};

void tst_VDateEdit::construction_data()
{
    QTest::addColumn<bool>("nullable");
    QTest::newRow("nullable") << true;
    QTest::newRow("not nullable") << false;
}

void tst_VDateEdit::construction()
{
    QFETCH(bool, nullable);
    QWidget window;
    VDateEdit w(&window, nullable);
    const Parts p = parts(w);
    QVERIFY(p.edit && p.today && p.clear);
    QCOMPARE(w.parentWidget(), &window);
    QCOMPARE(p.edit->displayFormat(), QStringLiteral("MMMM dd, yyyy"));
    QVERIFY(p.edit->calendarPopup());
    QVERIFY(p.edit->calendarWidget());
    QCOMPARE(p.edit->specialValueText(), nullable ? QStringLiteral("<Not Specified>") : QString());
    QCOMPARE(p.today->text(), QStringLiteral("Today"));
    QCOMPARE(p.clear->text(), QStringLiteral("Clear"));
    QCOMPARE(p.clear->isHidden(), !nullable);
    QVERIFY(!p.today->isHidden());

    auto* layout = qobject_cast<QHBoxLayout*>(w.layout());
    QVERIFY(layout);
    QCOMPARE(layout->spacing(), 1);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(0)->widget(), p.edit);
    QCOMPARE(layout->itemAt(1)->widget(), p.today);
    QCOMPARE(layout->itemAt(2)->widget(), p.clear);
    QVERIFY(layout->itemAt(3)->spacerItem());
    QCOMPARE(layout->stretch(0), 1);
    QCOMPARE(layout->stretch(3), 0);

    // A form binds the date through the user property.
    QCOMPARE(w.metaObject()->userProperty().name(), "date");
    const QMetaObject* meta = w.metaObject();
    QCOMPARE(meta->property(meta->indexOfProperty("date")).notifySignal().name(), QByteArray("dateChanged"));
    QCOMPARE(meta->property(meta->indexOfProperty("dateTime")).notifySignal().name(),
        QByteArray("dateTimeChanged"));

    // Code generated from a form creates it from a parent alone: a nullable field.
    VDateEdit fromForm(&window);
    QVERIFY(!parts(fromForm).clear->isHidden());
}

void tst_VDateEdit::nullMapping()
{
    VDateEdit w(nullptr, true);
    CDateEdit* edit = parts(w).edit;
    QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
    QSignalSpy dateTimeSpy(&w, &VDateEdit::dateTimeChanged);

    // Until the application sets a date, the field holds the edit's default one.
    QCOMPARE(w.date(), QDate(2000, 1, 1));
    QCOMPARE(shownText(edit), QStringLiteral("January 01, 2000"));

    w.setDate(VCore::nullDate());
    QCOMPARE(edit->date(), edit->minimumDate());
    QCOMPARE(shownText(edit), QStringLiteral("<Not Specified>"));
    QCOMPARE(w.date(), VCore::nullDate());
    QVERIFY(!w.dateTime().isValid());
    // The signal carries the edit's raw date: the sentinel, not the null date.
    QCOMPARE(dateSpy.count(), 1);
    QCOMPARE(dateSpy.at(0).at(0).toDate(), QDate(1752, 9, 14));
    QCOMPARE(w.property("date").toDate(), VCore::nullDate());

    w.setDate(QDate(2024, 2, 29));
    QCOMPARE(w.date(), QDate(2024, 2, 29));
    QCOMPARE(shownText(edit), QStringLiteral("February 29, 2024"));
    QCOMPARE(dateSpy.count(), 2);
    QCOMPARE(dateSpy.at(1).at(0).toDate(), QDate(2024, 2, 29));
    w.setDate(QDate(2024, 2, 29));
    QCOMPARE(dateSpy.count(), 2);

    // A non-nullable field maps its minimum date the same way, only it shows it.
    VDateEdit plain(nullptr, false);
    plain.setDate(plain.minimumDate());
    QCOMPARE(plain.date(), VCore::nullDate());
    QCOMPARE(shownText(parts(plain).edit), QStringLiteral("September 14, 1752"));
    plain.setDate(VCore::nullDate());
    QCOMPARE(parts(plain).edit->date(), QDate(1752, 9, 14));

    QCOMPARE(dateTimeSpy.count(), 0);
}

void tst_VDateEdit::dateTimeMapping()
{
    VDateEdit w(nullptr, true);
    CDateEdit* edit = parts(w).edit;
    QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
    QSignalSpy dateTimeSpy(&w, &VDateEdit::dateTimeChanged);

    const QDateTime noon(QDate(2023, 7, 14), QTime(12, 30));
    w.setDateTime(noon);
    QCOMPARE(w.dateTime(), noon);
    QCOMPARE(w.date(), QDate(2023, 7, 14));
    QCOMPARE(dateSpy.count(), 1);

    // Any time on the null date empties the field.
    w.setDateTime(QDateTime(VCore::nullDate(), QTime(8, 15)));
    QCOMPARE(edit->dateTime(), edit->minimumDate().startOfDay());
    QVERIFY(!w.dateTime().isValid());
    QCOMPARE(w.date(), VCore::nullDate());
    QCOMPARE(dateSpy.count(), 2);
    QCOMPARE(dateSpy.at(1).at(0).toDate(), edit->minimumDate());

    w.setProperty("dateTime", noon);
    QCOMPARE(w.property("dateTime").toDateTime(), noon);
    QCOMPARE(dateTimeSpy.count(), 0);
}

void tst_VDateEdit::invalidDatesEmptyTheField()
{
    VDateEdit w(nullptr, true);
    w.setDate(QDate(2021, 3, 4));
    w.setDate(QDate());
    QCOMPARE(w.date(), VCore::nullDate());

    w.setDate(QDate(2021, 3, 4));
    w.setDateTime(QDateTime());
    QCOMPARE(w.date(), VCore::nullDate());
    QVERIFY(!w.dateTime().isValid());
}

void tst_VDateEdit::minimumDateMovesTheSentinel()
{
    VDateEdit w(nullptr, true);
    w.setMinimumDate(QDate(2000, 1, 1));
    QCOMPARE(w.minimumDate(), QDate(2000, 1, 1));
    w.setDate(VCore::nullDate());
    QCOMPARE(parts(w).edit->date(), QDate(2000, 1, 1));
    QCOMPARE(w.date(), VCore::nullDate());

    // A lower minimum keeps the date, which is then a real date.
    w.setMinimumDate(QDate(1990, 1, 1));
    QCOMPARE(w.date(), QDate(2000, 1, 1));
    QCOMPARE(w.dateTime().date(), QDate(2000, 1, 1));
    w.setDate(VCore::nullDate());
    QCOMPARE(parts(w).edit->date(), QDate(1990, 1, 1));
}

void tst_VDateEdit::buttons()
{
    VDateEdit w(nullptr, true);
    const Parts p = parts(w);
    QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
    QSignalSpy dateTimeSpy(&w, &VDateEdit::dateTimeChanged);

    p.today->click();
    QCOMPARE(w.date(), QDate::currentDate());
    QCOMPARE(dateSpy.count(), 1);
    QCOMPARE(dateSpy.at(0).at(0).toDate(), QDate::currentDate());

    p.clear->click();
    QCOMPARE(w.date(), VCore::nullDate());
    QCOMPARE(shownText(p.edit), QStringLiteral("<Not Specified>"));
    QCOMPARE(dateSpy.count(), 2);
    QCOMPARE(dateSpy.at(1).at(0).toDate(), QDate(1752, 9, 14));
    QCOMPARE(dateTimeSpy.count(), 0);

    // Without the nullable flag the hidden "Clear" button is not connected at all.
    VDateEdit plain(nullptr, false);
    plain.setDate(QDate(2022, 12, 31));
    parts(plain).clear->click();
    QCOMPARE(plain.date(), QDate(2022, 12, 31));
    parts(plain).today->click();
    QCOMPARE(plain.date(), QDate::currentDate());
}

void tst_VDateEdit::enabling()
{
    VDateEdit w(nullptr, true);
    const Parts p = parts(w);
    QSignalSpy enabledSpy(p.edit, &CDateEdit::enabledChanged);

    w.setEnabled(false);
    QCOMPARE(enabledSpy.count(), 1);
    QCOMPARE(enabledSpy.at(0).at(0).toBool(), false);
    QVERIFY(!p.today->isEnabled());
    QVERIFY(!p.clear->isEnabled());
    w.setEnabled(true);
    QCOMPARE(enabledSpy.count(), 2);
    QCOMPARE(enabledSpy.at(1).at(0).toBool(), true);
    QVERIFY(p.today->isEnabled());
    QVERIFY(p.clear->isEnabled());

    // The buttons follow the inner edit, even when only the edit itself is disabled.
    p.edit->setEnabled(false);
    QVERIFY(w.isEnabled());
    QVERIFY(!p.today->isEnabled());
    QVERIFY(!p.clear->isEnabled());
    p.edit->setEnabled(true);
    QVERIFY(p.today->isEnabled());
    QCOMPARE(enabledSpy.count(), 4);
}

void tst_VDateEdit::readOnly()
{
    VDateEdit w(nullptr, true);
    const Parts p = parts(w);
    QVERIFY(!w.isReadOnly());
    w.setReadOnly(true);
    QVERIFY(w.isReadOnly());
    QVERIFY(p.edit->isReadOnly());
    QVERIFY(!p.today->isEnabled());
    QVERIFY(!p.clear->isEnabled());
    QVERIFY(p.edit->isEnabled());
    w.setReadOnly(false);
    QVERIFY(!p.edit->isReadOnly());
    QVERIFY(p.today->isEnabled());
    QVERIFY(p.clear->isEnabled());
}

void tst_VDateEdit::mapperBindsDate()
{
    QStandardItemModel model(3, 1);
    model.setData(model.index(0, 0), QDate(2019, 6, 1));
    // Row 1 holds a NULL, row 2 the null date itself.
    model.setData(model.index(2, 0), VCore::nullDate());

    VDateEdit w(nullptr, true);
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(&w, 0);
    mapper.toFirst();
    QCOMPARE(w.date(), QDate(2019, 6, 1));
    mapper.toNext();
    QCOMPARE(w.date(), VCore::nullDate());
    mapper.toNext();
    QCOMPARE(w.date(), VCore::nullDate());

    w.setDate(QDate(2020, 1, 2));
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(2, 0)).toDate(), QDate(2020, 1, 2));
    parts(w).clear->click();
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(2, 0)).toDate(), VCore::nullDate());
}

void tst_VDateEdit::calendarOpensOnToday()
{
    VDateEdit w(nullptr, true);
    w.resize(400, 30);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    CDateEdit* edit = parts(w).edit;
    QCalendarWidget* calendar = edit->calendarWidget();
    QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);

    auto openPopup = [&] {
        QStyleOptionComboBox option;
        option.initFrom(edit);
        option.editable = true;
        option.subControls = QStyle::SC_All;
        const QRect arrow
            = edit->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, edit);
        QTest::mouseClick(edit, Qt::LeftButton, Qt::NoModifier, arrow.center());
        return calendar->isVisible();
    };

    // An empty field opens the calendar on today, and stays empty until a date is picked.
    w.setDate(VCore::nullDate());
    dateSpy.clear();
    QVERIFY(openPopup());
    QCOMPARE(calendar->selectedDate(), QDate::currentDate());
    QCOMPARE(w.date(), VCore::nullDate());
    calendar->window()->hide();
    QCOMPARE(w.date(), VCore::nullDate());
    QCOMPARE(dateSpy.count(), 0);

    // A date opens the calendar on itself.
    w.setDate(QDate(2015, 10, 21));
    QVERIFY(openPopup());
    QCOMPARE(calendar->selectedDate(), QDate(2015, 10, 21));
    calendar->window()->hide();
    QCOMPARE(w.date(), QDate(2015, 10, 21));
}

QTEST_MAIN(tst_VDateEdit)
#include "tst_vdateedit.moc"
