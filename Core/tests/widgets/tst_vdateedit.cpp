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
    QString shown() const { return edit->findChild<QLineEdit*>()->text(); }
};

Parts parts(VDateEdit& w)
{
    return { w.findChild<CDateEdit*>(), w.findChild<QToolButton*>(QStringLiteral("todayButton")),
        w.findChild<QToolButton*>(QStringLiteral("clearButton")) };
}
} // namespace

class tst_VDateEdit : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

private slots:
    void construction_data()
    {
        QTest::addColumn<bool>("nullable");
        QTest::newRow("nullable") << true;
        QTest::newRow("not nullable") << false;
    }

    void construction()
    {
        QFETCH(bool, nullable);
        QWidget window;
        VDateEdit w(&window, nullable);
        const Parts p = parts(w);
        QVERIFY(p.edit && p.today && p.clear);
        QCOMPARE(w.parentWidget(), &window);
        QCOMPARE(p.edit->displayFormat(), QStringLiteral("MMMM dd, yyyy"));
        QVERIFY(p.edit->calendarPopup() && p.edit->calendarWidget());
        QCOMPARE(p.edit->specialValueText(), nullable ? QStringLiteral("<Not Specified>") : QString());
        QCOMPARE(p.today->text(), QStringLiteral("Today"));
        QCOMPARE(p.clear->text(), QStringLiteral("Clear"));
        QCOMPARE(p.clear->isHidden(), !nullable);
        QVERIFY(!p.today->isHidden());

        // Edit, Today, Clear and a spacer, one pixel apart, the edit taking the room.
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
        const QMetaObject* meta = w.metaObject();
        QCOMPARE(meta->userProperty().name(), "date");
        QCOMPARE(
            meta->property(meta->indexOfProperty("date")).notifySignal().name(), QByteArray("dateChanged"));
        QCOMPARE(meta->property(meta->indexOfProperty("dateTime")).notifySignal().name(),
            QByteArray("dateTimeChanged"));

        // Code generated from a form creates it from a parent alone: a nullable field.
        VDateEdit fromForm(&window);
        QVERIFY(!parts(fromForm).clear->isHidden());
    }

    void nullMapping()
    {
        VDateEdit w(nullptr, true);
        const Parts p = parts(w);
        QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
        QSignalSpy dateTimeSpy(&w, &VDateEdit::dateTimeChanged);

        // Until the application sets a date, the field holds the edit's default one.
        QCOMPARE(w.date(), QDate(2000, 1, 1));
        QCOMPARE(p.shown(), QStringLiteral("January 01, 2000"));

        w.setDate(VCore::nullDate());
        QCOMPARE(p.edit->date(), p.edit->minimumDate());
        QCOMPARE(p.shown(), QStringLiteral("<Not Specified>"));
        QCOMPARE(w.date(), VCore::nullDate());
        QVERIFY(!w.dateTime().isValid());
        // The signal carries the edit's raw date: the sentinel, not the null date.
        QCOMPARE(dateSpy.count(), 1);
        QCOMPARE(dateSpy.at(0).at(0).toDate(), QDate(1752, 9, 14));
        QCOMPARE(w.property("date").toDate(), VCore::nullDate());

        w.setDate(QDate(2024, 2, 29));
        w.setDate(QDate(2024, 2, 29));
        QCOMPARE(w.date(), QDate(2024, 2, 29));
        QCOMPARE(p.shown(), QStringLiteral("February 29, 2024"));
        QCOMPARE(dateSpy.count(), 2);
        QCOMPARE(dateSpy.at(1).at(0).toDate(), QDate(2024, 2, 29));

        // Invalid dates empty the field.
        w.setDate(QDate());
        QCOMPARE(w.date(), VCore::nullDate());
        w.setDate(QDate(2021, 3, 4));
        w.setDateTime(QDateTime());
        QCOMPARE(w.date(), VCore::nullDate());
        QVERIFY(!w.dateTime().isValid());

        // A non-nullable field maps its minimum date the same way, only it shows it.
        VDateEdit plain(nullptr, false);
        plain.setDate(plain.minimumDate());
        QCOMPARE(plain.date(), VCore::nullDate());
        QCOMPARE(parts(plain).shown(), QStringLiteral("September 14, 1752"));
        plain.setDate(VCore::nullDate());
        QCOMPARE(parts(plain).edit->date(), QDate(1752, 9, 14));
        QCOMPARE(dateTimeSpy.count(), 0);
    }

    void dateTimeMapping()
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

    void minimumDateMovesTheSentinel()
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
        w.setDate(VCore::nullDate());
        QCOMPARE(parts(w).edit->date(), QDate(1990, 1, 1));
    }

    void buttons()
    {
        VDateEdit w(nullptr, true);
        const Parts p = parts(w);
        QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
        QSignalSpy dateTimeSpy(&w, &VDateEdit::dateTimeChanged);
        p.today->click();
        QCOMPARE(w.date(), QDate::currentDate());
        p.clear->click();
        QCOMPARE(w.date(), VCore::nullDate());
        QCOMPARE(p.shown(), QStringLiteral("<Not Specified>"));
        QCOMPARE(dateSpy.count(), 2);
        QCOMPARE(dateSpy.at(0).at(0).toDate(), QDate::currentDate());
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

    void enablingAndReadOnly()
    {
        VDateEdit w(nullptr, true);
        const Parts p = parts(w);
        QSignalSpy enabledSpy(p.edit, &CDateEdit::enabledChanged);
        auto buttonsEnabled = [&] { return QList<bool> { p.today->isEnabled(), p.clear->isEnabled() }; };

        w.setEnabled(false);
        QCOMPARE(buttonsEnabled(), (QList<bool> { false, false }));
        w.setEnabled(true);
        QCOMPARE(buttonsEnabled(), (QList<bool> { true, true }));
        QCOMPARE(enabledSpy.count(), 2);
        QCOMPARE(enabledSpy.at(0).at(0).toBool(), false);
        QCOMPARE(enabledSpy.at(1).at(0).toBool(), true);
        // The buttons follow the inner edit, even when only the edit itself is disabled.
        p.edit->setEnabled(false);
        QVERIFY(w.isEnabled());
        QCOMPARE(buttonsEnabled(), (QList<bool> { false, false }));
        p.edit->setEnabled(true);
        QCOMPARE(buttonsEnabled(), (QList<bool> { true, true }));
        QCOMPARE(enabledSpy.count(), 4);

        // Read-only keeps the edit enabled but not the buttons.
        QVERIFY(!w.isReadOnly());
        w.setReadOnly(true);
        QVERIFY(w.isReadOnly() && p.edit->isReadOnly() && p.edit->isEnabled());
        QCOMPARE(buttonsEnabled(), (QList<bool> { false, false }));
        w.setReadOnly(false);
        QVERIFY(!p.edit->isReadOnly());
        QCOMPARE(buttonsEnabled(), (QList<bool> { true, true }));
    }

    void mapperBindsDate()
    {
        QStandardItemModel model(3, 1);
        model.setData(model.index(0, 0), QDate(2019, 6, 1));
        // Row 1 holds a NULL, row 2 the null date itself.
        model.setData(model.index(2, 0), VCore::nullDate());
        VDateEdit w(nullptr, true);
        QDataWidgetMapper mapper;
        mapper.setModel(&model);
        mapper.addMapping(&w, 0);
        for (const QDate& expected : { QDate(2019, 6, 1), VCore::nullDate(), VCore::nullDate() }) {
            mapper.setCurrentIndex(mapper.currentIndex() + 1);
            QCOMPARE(w.date(), expected);
        }
        w.setDate(QDate(2020, 1, 2));
        QVERIFY(mapper.submit());
        QCOMPARE(model.data(model.index(2, 0)).toDate(), QDate(2020, 1, 2));
        parts(w).clear->click();
        QVERIFY(mapper.submit());
        QCOMPARE(model.data(model.index(2, 0)).toDate(), VCore::nullDate());
    }

    void calendarOpensOnToday()
    {
        VDateEdit w(nullptr, true);
        w.resize(400, 30);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        CDateEdit* edit = parts(w).edit;
        QCalendarWidget* calendar = edit->calendarWidget();
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
        QSignalSpy dateSpy(&w, &VDateEdit::dateChanged);
        QVERIFY(openPopup());
        QCOMPARE(calendar->selectedDate(), QDate::currentDate());
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
};

QTEST_MAIN(tst_VDateEdit)
#include "tst_vdateedit.moc"
