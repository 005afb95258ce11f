#include <QSignalSpy>
#include <QtTest>

#include "vcolourcombobox.h"
#include "vtestsettings.h"

class tst_VColourComboBox : public QObject {
    Q_OBJECT

private slots:
    void items();
    void setColor();
    void userChoiceSignalsOnce();

private:
    static QStringList colours(const QSignalSpy& spy);

    VTestSettings m_settings;
};

QStringList tst_VColourComboBox::colours(const QSignalSpy& spy)
{
    QStringList result;
    for (const QList<QVariant>& arguments : spy) {
        const QColor colour = arguments.at(0).value<QColor>();
        result << (colour.isValid() ? colour.name() : QStringLiteral("invalid"));
    }
    return result;
}

void tst_VColourComboBox::items()
{
    VColourComboBox box;
    const QStringList names = QColor::colorNames();
    QCOMPARE(box.count(), names.size());
    QVERIFY(!box.isEditable());
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(box.itemText(i), names.at(i));
        // The swatch comes from the decoration role, so it is the colour itself.
        QCOMPARE(box.itemData(i, Qt::DecorationRole), QVariant(QColor(names.at(i))));
    }
    QCOMPARE(box.currentIndex(), 0);
    QCOMPARE(box.color(), QColor(names.first()));

    const QMetaProperty property = box.metaObject()->property(box.metaObject()->indexOfProperty("color"));
    QVERIFY(property.isWritable());
    QCOMPARE(property.notifySignal().name(), QByteArray("colorChanged"));
}

void tst_VColourComboBox::setColor()
{
    VColourComboBox box;
    QSignalSpy spy(&box, &VColourComboBox::colorChanged);
    const QStringList names = QColor::colorNames();

    // Twice for one change: the new item's colour, then the value.
    box.setColor(QColor(Qt::red));
    QCOMPARE(box.currentText(), QStringLiteral("red"));
    QCOMPARE(box.color(), QColor(Qt::red));
    QCOMPARE(colours(spy), QStringList({ "#ff0000", "#ff0000" }));

    spy.clear();
    box.setColor(QColor(255, 0, 0));
    QCOMPARE(spy.count(), 0);

    // A colour with two names selects the first of them.
    box.setColor(QColor(255, 0, 255));
    QCOMPARE(box.currentIndex(), names.indexOf(QStringLiteral("fuchsia")));
    QVERIFY(names.indexOf(QStringLiteral("fuchsia")) < names.indexOf(QStringLiteral("magenta")));
    QCOMPARE(colours(spy), QStringList({ "#ff00ff", "#ff00ff" }));

    // A colour without a name clears the selection; the second emission still carries it.
    spy.clear();
    box.setColor(QColor(1, 2, 3));
    QCOMPARE(box.currentIndex(), -1);
    QVERIFY(!box.color().isValid());
    QCOMPARE(colours(spy), QStringList({ "invalid", "#010203" }));

    // Nothing selected stays nothing selected: no signal, not even for another unnamed colour.
    spy.clear();
    box.setColor(QColor(4, 5, 6));
    box.setColor(QColor());
    QCOMPARE(spy.count(), 0);

    box.setColor(QColor(QStringLiteral("navy")));
    spy.clear();
    box.setColor(QColor());
    QCOMPARE(box.currentIndex(), -1);
    QCOMPARE(colours(spy), QStringList({ "invalid", "invalid" }));

    QVERIFY(box.setProperty("color", QColor(QStringLiteral("teal"))));
    QCOMPARE(box.currentText(), QStringLiteral("teal"));
    QCOMPARE(box.property("color").value<QColor>(), QColor(0, 128, 128));
}

void tst_VColourComboBox::userChoiceSignalsOnce()
{
    VColourComboBox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.setColor(QColor(QStringLiteral("black")));
    QSignalSpy spy(&box, &VColourComboBox::colorChanged);
    QTest::keyClick(&box, Qt::Key_Down);
    const QString next = QColor::colorNames().at(QColor::colorNames().indexOf(QStringLiteral("black")) + 1);
    QCOMPARE(box.currentText(), next);
    QCOMPARE(colours(spy), QStringList({ QColor(next).name() }));
}

QTEST_MAIN(tst_VColourComboBox)
#include "tst_vcolourcombobox.moc"
