#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include "vhistorycombobox.h"
#include "vhistorycomboboxmodel.h"
#include "vtestsettings.h"

#include <vsettings.h>

class tst_VHistoryComboBox : public QObject {
    Q_OBJECT

private slots:
    void init() { m_settings.clear(); }

    void addToTop_data();
    void addToTop();
    void editsGoToTop();
    void pushTopActivated_data();
    void pushTopActivated();
    void removeTopItem();

    void construction();
    void readSettings_data();
    void readSettings();
    void saveSettings();
    void enteredTextBecomesHistory();
    void activatedEntryMovesToTop();
    void shiftDeleteRemovesTopEntry();
    void focusSelectsText();

private:
    static QVariant stored(const QString& key)
    {
        VSettings settings(nullptr);
        return settings.value(key);
    }
    static void store(const QString& key, const QVariant& value)
    {
        VSettings settings(nullptr);
        settings.setValue(key, value);
    }

    VTestSettings m_settings;
};

void tst_VHistoryComboBox::addToTop_data()
{
    QTest::addColumn<int>("maxCount");
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("after");

    const QStringList cba { "c", "b", "a" };
    QTest::newRow("new entry pushes the oldest out") << 3 << cba << "d" << QStringList { "d", "c", "b" };
    QTest::newRow("existing entry moves up") << 3 << cba << "b" << QStringList { "b", "c", "a" };
    QTest::newRow("oldest entry moves up") << 3 << cba << "a" << QStringList { "a", "c", "b" };
    QTest::newRow("top entry stays") << 3 << cba << "c" << cba;
    QTest::newRow("case-sensitive") << 3 << cba << "B" << QStringList { "B", "c", "b" };
    QTest::newRow("room left") << 5 << cba << "d" << QStringList { "d", "c", "b", "a" };
    QTest::newRow("empty list") << 3 << QStringList() << "x" << QStringList { "x" };
    QTest::newRow("empty text") << 3 << cba << "" << QStringList { "", "c", "b" };
    QTest::newRow("over-long list trimmed") << 2 << cba << "b" << QStringList { "b", "c" };
    QTest::newRow("no room at all") << 0 << cba << "d" << QStringList();
}

void tst_VHistoryComboBox::addToTop()
{
    QFETCH(int, maxCount);
    QFETCH(QStringList, before);
    QFETCH(QString, text);
    QFETCH(QStringList, after);

    VHistoryComboBoxModel model(maxCount, nullptr);
    model.setStringList(before);
    model.addToTop(text);
    QCOMPARE(model.stringList(), after);
}

void tst_VHistoryComboBox::editsGoToTop()
{
    VHistoryComboBoxModel model(3, nullptr);

    // The empty entry a combo box inserts before setting its text gives way to the text.
    model.setStringList({ "", "c", "b", "a" });
    QVERIFY(model.setData(model.index(0), QStringLiteral("b"), Qt::EditRole));
    QCOMPARE(model.stringList(), (QStringList { "b", "c", "a" }));

    // Any edited row: the text goes to the top, the row keeps its old text.
    QVERIFY(model.setData(model.index(2), QStringLiteral("z"), Qt::DisplayRole));
    QCOMPARE(model.stringList(), (QStringList { "z", "b", "c" }));

    // Other roles are not history.
    QVERIFY(!model.setData(model.index(0), QStringLiteral("tip"), Qt::ToolTipRole));
    QCOMPARE(model.stringList(), (QStringList { "z", "b", "c" }));
    QVERIFY(!model.setData(QModelIndex(), QStringLiteral("y"), Qt::EditRole));
    QCOMPARE(model.stringList(), (QStringList { "z", "b", "c" }));
}

void tst_VHistoryComboBox::pushTopActivated_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("last") << 2 << QStringList { "c", "a", "b" };
    QTest::newRow("middle") << 1 << QStringList { "b", "a", "c" };
    QTest::newRow("top") << 0 << QStringList { "a", "b", "c" };
    QTest::newRow("beyond") << 3 << QStringList { "a", "b", "c" };
    QTest::newRow("negative") << -1 << QStringList { "a", "b", "c" };
}

void tst_VHistoryComboBox::pushTopActivated()
{
    QFETCH(int, row);
    QFETCH(QStringList, after);

    VHistoryComboBoxModel model(5, nullptr);
    model.setStringList({ "a", "b", "c" });
    QSignalSpy aboutToChange(&model, &QAbstractItemModel::layoutAboutToBeChanged);
    QSignalSpy changed(&model, &QAbstractItemModel::layoutChanged);
    model.pushTopActivated(row);
    QCOMPARE(model.stringList(), after);
    QCOMPARE(aboutToChange.count(), 1);
    QCOMPARE(changed.count(), 1);
}

void tst_VHistoryComboBox::removeTopItem()
{
    VHistoryComboBoxModel model(5, nullptr);
    QSignalSpy changed(&model, &QAbstractItemModel::layoutChanged);
    QVERIFY(!model.removeTopItem());
    QCOMPARE(changed.count(), 0);

    model.setStringList({ "a", "b" });
    QVERIFY(model.removeTopItem());
    QCOMPARE(model.stringList(), QStringList { "b" });
    QCOMPARE(changed.count(), 1);
    QVERIFY(model.removeTopItem());
    QCOMPARE(model.stringList(), QStringList());
    QVERIFY(!model.removeTopItem());
}

void tst_VHistoryComboBox::construction()
{
    store(QStringLiteral("history/orders"), QStringLiteral("b,a"));
    VHistoryComboBox box(QStringLiteral("orders"), QStringLiteral("history"), 4);
    QCOMPARE(box.objectName(), QStringLiteral("orders"));
    QVERIFY(box.isEditable());
    QCOMPARE(box.insertPolicy(), QComboBox::InsertAtTop);
    QVERIFY(box.duplicatesEnabled());
    auto* model = qobject_cast<VHistoryComboBoxModel*>(box.model());
    QVERIFY(model);
    QCOMPARE(model->maxCount(), 4);
    QCOMPARE(box.items(), (QStringList { "b", "a" }));
    QCOMPARE(box.count(), 2);

    box.addItem(QStringLiteral("a"));
    QCOMPARE(box.items(), (QStringList { "a", "b" }));
    QCOMPARE(box.itemText(0), QStringLiteral("a"));
}

void tst_VHistoryComboBox::readSettings_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("missing") << QVariant() << QStringList { "" };
    QTest::newRow("empty") << QVariant(QString()) << QStringList { "" };
    QTest::newRow("entries") << QVariant(QStringLiteral("x,y")) << QStringList { "x", "y" };
    QTest::newRow("empty parts kept")
        << QVariant(QStringLiteral("x,,y,")) << QStringList { "x", "", "y", "" };
    QTest::newRow("bytes") << QVariant(QByteArray("p,q")) << QStringList { "p", "q" };
    QTest::newRow("number") << QVariant(42) << QStringList { "42" };
    QTest::newRow("list") << QVariant(QStringList { "m", "n" }) << QStringList { "m", "n" };
    QTest::newRow("rectangle") << QVariant(QRect(1, 2, 3, 4)) << QStringList { "" };
    QTest::newRow("huge") << QVariant(QString(100000, QLatin1Char('w')))
                          << QStringList { QString(100000, 'w') };
}

void tst_VHistoryComboBox::readSettings()
{
    QFETCH(QVariant, value);
    QFETCH(QStringList, items);

    if (value.isValid())
        store(QStringLiteral("section/box"), value);
    VHistoryComboBox box(QStringLiteral("box"), QStringLiteral("section"), 10);
    QCOMPARE(box.items(), items);

    // Without a section the history stays out of the settings.
    VHistoryComboBox unstored(QStringLiteral("box"), QString(), 10);
    QCOMPARE(unstored.items(), QStringList());
    unstored.setSectionName(QStringLiteral("section"));
    unstored.readSettings();
    QCOMPARE(unstored.items(), items);
}

void tst_VHistoryComboBox::saveSettings()
{
    VHistoryComboBox box(QStringLiteral("customers"), QStringLiteral("search"), 3);
    box.addItem(QStringLiteral("Smith"));
    box.addItem(QStringLiteral("Jones"));
    box.saveSettings();
    // The empty entry read from an empty store is history too, until it is pushed out.
    QCOMPARE(stored(QStringLiteral("search/customers")), QVariant(QStringLiteral("Jones,Smith,")));

    box.addItem(QStringLiteral("Brown, Ltd"));
    box.saveSettings();
    QCOMPARE(stored(QStringLiteral("search/customers")), QVariant(QStringLiteral("Brown, Ltd,Jones,Smith")));
    // A comma inside an entry splits it on the next read.
    VHistoryComboBox reread(QStringLiteral("customers"), QStringLiteral("search"), 3);
    QCOMPARE(reread.items(), (QStringList { "Brown", " Ltd", "Jones", "Smith" }));

    VHistoryComboBox unstored(QStringLiteral("nowhere"), QString(), 3);
    unstored.addItem(QStringLiteral("x"));
    unstored.saveSettings();
    VSettings settings(nullptr);
    QCOMPARE(settings.settings()->allKeys(), QStringList { "search/customers" });
}

void tst_VHistoryComboBox::enteredTextBecomesHistory()
{
    store(QStringLiteral("history/parts"), QStringLiteral("c,b,a"));
    VHistoryComboBox box(QStringLiteral("parts"), QStringLiteral("history"), 3);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QSignalSpy selected(&box, &VHistoryComboBox::itemSelected);

    box.lineEdit()->clear();
    QTest::keyClicks(&box, QStringLiteral("d"));
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.items(), (QStringList { "d", "c", "b" }));
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.currentText(), QStringLiteral("d"));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.at(0).at(0).toString(), QStringLiteral("d"));

    box.lineEdit()->clear();
    QTest::keyClicks(&box, QStringLiteral("b"));
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.items(), (QStringList { "b", "d", "c" }));
    QCOMPARE(box.currentText(), QStringLiteral("b"));
    QCOMPARE(selected.count(), 2);
    QCOMPARE(selected.at(1).at(0).toString(), QStringLiteral("b"));
}

void tst_VHistoryComboBox::activatedEntryMovesToTop()
{
    store(QStringLiteral("history/parts"), QStringLiteral("c,b,a"));
    VHistoryComboBox box(QStringLiteral("parts"), QStringLiteral("history"), 3);
    QSignalSpy selected(&box, &VHistoryComboBox::itemSelected);
    emit box.activated(2);
    QCOMPARE(box.items(), (QStringList { "a", "c", "b" }));
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.currentText(), QStringLiteral("a"));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.at(0).at(0).toString(), QStringLiteral("a"));
}

void tst_VHistoryComboBox::shiftDeleteRemovesTopEntry()
{
    store(QStringLiteral("history/parts"), QStringLiteral("c,b,a"));
    VHistoryComboBox box(QStringLiteral("parts"), QStringLiteral("history"), 3);
    box.setCurrentIndex(2);

    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(box.items(), (QStringList { "b", "a" }));
    QCOMPARE(stored(QStringLiteral("history/parts")), QVariant(QStringLiteral("b,a")));

    // Delete alone, or with another modifier as well, is ordinary editing.
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(box.items(), (QStringList { "b", "a" }));

    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(box.items(), QStringList());
    QCOMPARE(stored(QStringLiteral("history/parts")), QVariant(QString()));
}

void tst_VHistoryComboBox::focusSelectsText()
{
    store(QStringLiteral("history/parts"), QStringLiteral("gearbox"));
    VHistoryComboBox box(QStringLiteral("parts"), QStringLiteral("history"), 3);
    QCOMPARE(box.currentText(), QStringLiteral("gearbox"));

    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&box, &focusIn);
    QTRY_COMPARE(box.lineEdit()->selectedText(), QStringLiteral("gearbox"));

    QFocusEvent focusOut(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&box, &focusOut);
    QTRY_COMPARE(box.lineEdit()->selectedText(), QString());
    QCOMPARE(box.currentText(), QStringLiteral("gearbox"));
}

QTEST_MAIN(tst_VHistoryComboBox)
#include "tst_vhistorycombobox.moc"
