#include <QLineEdit>
#include <QtTest>

#include "vpersistentcombobox.h"
#include "vtestsettings.h"

#include <vsettings.h>

class tst_VPersistentComboBox : public QObject {
    Q_OBJECT

private slots:
    void init() { m_settings.clear(); }

    void construction();
    void enteredPatternsStaySorted();
    void itemsWithoutDuplicates();
    void shiftDeleteRemovesCurrentItem();
    void filterIgnoresOtherObjects();
    void settingsRoundTrip_data();
    void settingsRoundTrip();
    void readSettings_data();
    void readSettings();

private:
    VTestSettings m_settings;
};

void tst_VPersistentComboBox::construction()
{
    VPersistentComboBox box;
    QVERIFY(box.isEditable());
    QCOMPARE(box.insertPolicy(), QComboBox::InsertAlphabetically);
    QCOMPARE(box.statusTip(),
        QStringLiteral("Enter regex filter, press Enter to save in the list. "
                       "Press Shift-Del to remove current item from the list."));
    QVERIFY(box.findChild<DeleteHighlightedItemWhenShiftDelPressedEventFilter*>());
    QCOMPARE(box.items(), QStringList());
}

void tst_VPersistentComboBox::enteredPatternsStaySorted()
{
    VPersistentComboBox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    for (const char* pattern : { "^ERROR", "warn.*disk", "^DEBUG", "a{1,3}", "^DEBUG" }) {
        box.lineEdit()->clear();
        QTest::keyClicks(&box, QString::fromLatin1(pattern));
        QTest::keyClick(&box, Qt::Key_Return);
    }
    QCOMPARE(box.items(), (QStringList { "^DEBUG", "^ERROR", "a{1,3}", "warn.*disk" }));
    QCOMPARE(box.count(), 4);
}

void tst_VPersistentComboBox::itemsWithoutDuplicates()
{
    VPersistentComboBox box;
    box.addItems({ "b", "a", "b", "B", "", "a", "" });
    QCOMPARE(box.count(), 7);
    QCOMPARE(box.items(), (QStringList { "b", "a", "B", "" }));
}

void tst_VPersistentComboBox::shiftDeleteRemovesCurrentItem()
{
    VPersistentComboBox box;
    box.addItems({ "alpha", "beta", "gamma" });
    box.setCurrentIndex(1);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(box.items(), (QStringList { "alpha", "gamma" }));

    // Plain Delete edits the text; Ctrl+Shift+Del is not the removal key.
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(box.items(), (QStringList { "alpha", "gamma" }));

    box.setCurrentIndex(0);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(box.items(), QStringList());
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(box.count(), 0);
}

void tst_VPersistentComboBox::filterIgnoresOtherObjects()
{
    DeleteHighlightedItemWhenShiftDelPressedEventFilter filter;
    QLineEdit edit;
    edit.installEventFilter(&filter);
    edit.setText(QStringLiteral("abc"));
    edit.setCursorPosition(0);
    QTest::keyClick(&edit, Qt::Key_X);
    QCOMPARE(edit.text(), QStringLiteral("xabc"));

    QComboBox plain;
    plain.addItems({ "one", "two" });
    plain.installEventFilter(&filter);
    QTest::keyClick(&plain, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(plain.count(), 1);
    QCOMPARE(plain.itemText(0), QStringLiteral("two"));
}

void tst_VPersistentComboBox::settingsRoundTrip_data()
{
    QTest::addColumn<QStringList>("items");
    QTest::newRow("several") << QStringList { "^A", "b+", "c?" };
    QTest::newRow("commas survive") << QStringList { "a{1,3}", "x,y" };
    QTest::newRow("one with comma") << QStringList { "a{1,3}" };
    QTest::newRow("none") << QStringList();
}

void tst_VPersistentComboBox::settingsRoundTrip()
{
    QFETCH(QStringList, items);

    VPersistentComboBox box;
    box.setObjectName(QStringLiteral("logFilter"));
    box.setSectionName(QStringLiteral("filters"));
    box.addItems(items);
    box.saveSettings();
    {
        VSettings settings(nullptr);
        QVERIFY(settings.contains(QStringLiteral("filters/logFilter")));
    }

    VPersistentComboBox reread;
    reread.setObjectName(QStringLiteral("logFilter"));
    reread.addItem(QStringLiteral("replaced on read"));
    reread.setSectionName(QStringLiteral("filters"));
    reread.readSettings();
    QCOMPARE(reread.items(), items);

    // Without a section nothing is read or written.
    VPersistentComboBox unnamed;
    unnamed.setObjectName(QStringLiteral("logFilter"));
    unnamed.addItem(QStringLiteral("kept"));
    unnamed.readSettings();
    QCOMPARE(unnamed.items(), QStringList { "kept" });
    unnamed.saveSettings();
    VSettings settings(nullptr);
    QCOMPARE(settings.settings()->allKeys(), QStringList { "filters/logFilter" });
}

void tst_VPersistentComboBox::readSettings_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("missing") << QVariant() << QStringList();
    QTest::newRow("empty string") << QVariant(QString()) << QStringList();
    QTest::newRow("plain string") << QVariant(QStringLiteral("^x,y")) << QStringList { "^x,y" };
    QTest::newRow("duplicates and blanks")
        << QVariant(QStringList { "a", "", "a", "b" }) << QStringList { "a", "b" };
    QTest::newRow("bytes") << QVariant(QByteArray("raw")) << QStringList { "raw" };
    QTest::newRow("number") << QVariant(7) << QStringList { "7" };
    QTest::newRow("rectangle") << QVariant(QRect(0, 0, 5, 5)) << QStringList();
}

void tst_VPersistentComboBox::readSettings()
{
    QFETCH(QVariant, value);
    QFETCH(QStringList, items);
    if (value.isValid()) {
        VSettings settings(nullptr);
        settings.setValue(QStringLiteral("filters/box"), value);
    }
    VPersistentComboBox box;
    box.setObjectName(QStringLiteral("box"));
    box.addItem(QStringLiteral("old"));
    box.setSectionName(QStringLiteral("filters"));
    box.readSettings();
    QCOMPARE(box.items(), items);
}

QTEST_MAIN(tst_VPersistentComboBox)
#include "tst_vpersistentcombobox.moc"
