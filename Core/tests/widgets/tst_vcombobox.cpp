#include <QtTest>

#include "vcombobox.h"
#include "vtestsettings.h"

#include <QDataWidgetMapper>
#include <QStandardItemModel>

namespace {
void fill(VComboBox& box)
{
    box.addItem(QStringLiteral("Finland"), 246);
    box.addItem(QStringLiteral("Sweden"), 752);
    box.addItem(QStringLiteral("Norway"), 578);
    box.setItemData(0, QStringLiteral("FI"), Qt::UserRole + 1);
    box.setItemData(1, QStringLiteral("SE"), Qt::UserRole + 1);
    box.setItemData(2, QStringLiteral("NO"), Qt::UserRole + 1);
}
} // namespace

class tst_VComboBox : public QObject {
    Q_OBJECT

private slots:
    void userProperty();
    void setValue_data();
    void setValue();
    void signals_();
    void valueRole();
    void mapper();

private:
    VTestSettings m_settings;
};

void tst_VComboBox::userProperty()
{
    VComboBox box;
    const QMetaProperty user = box.metaObject()->userProperty();
    QCOMPARE(user.name(), "value");
    QCOMPARE(user.userType(), int(QMetaType::QVariant));
    QCOMPARE(user.notifySignal().methodSignature(), QByteArray("valueChanged(QVariant)"));
    QCOMPARE(box.valueRole(), int(Qt::UserRole));
    QVERIFY(!box.value().isValid());
    fill(box);
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.value(), QVariant(246));
}

void tst_VComboBox::setValue_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("index");
    QTest::newRow("int") << QVariant(752) << 1;
    QTest::newRow("qlonglong key") << QVariant(qlonglong(578)) << 2;
    QTest::newRow("unknown key") << QVariant(999) << -1;
    QTest::newRow("null") << QVariant() << -1;
    QTest::newRow("null string") << QVariant(QString()) << -1;
}

void tst_VComboBox::setValue()
{
    QFETCH(QVariant, value);
    QFETCH(int, index);
    VComboBox box;
    fill(box);
    box.setValue(value);
    QCOMPARE(box.currentIndex(), index);
    QCOMPARE(box.value(), index < 0 ? QVariant() : box.itemData(index));
    QVERIFY(box.setProperty("value", QVariant(246)));
    QCOMPARE(box.currentText(), QStringLiteral("Finland"));
}

void tst_VComboBox::signals_()
{
    VComboBox box;
    fill(box);
    QSignalSpy spy(&box, &VComboBox::valueChanged);
    box.setValue(752);
    box.setValue(752);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0), QVariant(752));

    // The user's pick changes the value too.
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(box.currentText(), QStringLiteral("Norway"));
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0), QVariant(578));

    box.setValue(QVariant());
    QCOMPARE(spy.count(), 3);
    QVERIFY(!spy.at(2).at(0).isValid());
}

void tst_VComboBox::valueRole()
{
    VComboBox box;
    fill(box);
    box.setCurrentIndex(1);
    QSignalSpy values(&box, &VComboBox::valueChanged);
    QSignalSpy roles(&box, &VComboBox::valueRoleChanged);
    box.setValueRole(Qt::UserRole + 1);
    box.setValueRole(Qt::UserRole + 1);
    QCOMPARE(roles.count(), 1);
    QCOMPARE(roles.at(0).at(0).toInt(), int(Qt::UserRole + 1));
    QCOMPARE(box.value(), QVariant(QStringLiteral("SE")));
    QCOMPARE(values.count(), 1);
    box.setValue(QStringLiteral("NO"));
    QCOMPARE(box.currentIndex(), 2);
    // The display text is not the value.
    box.setValueRole(Qt::DisplayRole);
    box.setValue(QStringLiteral("NO"));
    QCOMPARE(box.currentIndex(), -1);
    box.setValue(QStringLiteral("Sweden"));
    QCOMPARE(box.currentIndex(), 1);
}

void tst_VComboBox::mapper()
{
    QStandardItemModel model(3, 2);
    model.setData(model.index(0, 1), 752);
    model.setData(model.index(1, 1), qlonglong(246));
    VComboBox box;
    fill(box);
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(&box, 1);
    mapper.toFirst();
    QCOMPARE(box.currentText(), QStringLiteral("Sweden"));
    mapper.toNext();
    QCOMPARE(box.currentText(), QStringLiteral("Finland"));
    box.setCurrentIndex(2);
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(1, 1)), QVariant(578));
    // An empty key cell selects nothing.
    mapper.toLast();
    QCOMPARE(box.currentIndex(), -1);
    QCOMPARE(model.data(model.index(0, 1)), QVariant(752));
}

QTEST_MAIN(tst_VComboBox)
#include "tst_vcombobox.moc"
