#include <QtTest>

#include "vlabellineedit.h"
#include "vtestsettings.h"

#include <QDataWidgetMapper>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>

class tst_VLabelLineEdit : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void textAndLabel();
    void mapper();

private:
    VTestSettings m_settings;
};

void tst_VLabelLineEdit::construction()
{
    QWidget parent;
    VLabelLineEdit w(QStringLiteral("&City"), &parent);
    QCOMPARE(w.parentWidget(), &parent);
    QCOMPARE(w.label(), QStringLiteral("&City"));
    QCOMPARE(w.labelWidget()->buddy(), w.lineEdit());
    QCOMPARE(w.focusProxy(), w.lineEdit());
    QVERIFY(!w.labelWidget()->isHidden());
    // Caption first, then the edit, which takes the spare width.
    auto* layout = qobject_cast<QHBoxLayout*>(w.layout());
    QVERIFY(layout);
    QCOMPARE(layout->itemAt(0)->widget(), w.labelWidget());
    QCOMPARE(layout->itemAt(1)->widget(), w.lineEdit());
    QCOMPARE(layout->stretch(1), 1);
    QCOMPARE(layout->contentsMargins(), QMargins());

    const QMetaProperty user = w.metaObject()->userProperty();
    QCOMPARE(user.name(), "text");
    QCOMPARE(user.notifySignal().methodSignature(), QByteArray("textChanged(QString)"));

    VLabelLineEdit bare;
    QCOMPARE(bare.label(), QString());
    QVERIFY(bare.labelWidget()->isHidden());
}

void tst_VLabelLineEdit::textAndLabel()
{
    VLabelLineEdit w;
    QSignalSpy texts(&w, &VLabelLineEdit::textChanged);
    QSignalSpy labels(&w, &VLabelLineEdit::labelChanged);

    w.setText(QStringLiteral("Oulu"));
    w.setText(QStringLiteral("Oulu"));
    QCOMPARE(w.lineEdit()->text(), QStringLiteral("Oulu"));
    QCOMPARE(texts.count(), 1);
    QCOMPARE(texts.at(0).at(0).toString(), QStringLiteral("Oulu"));

    // Typing into the edit is reported by the field.
    w.lineEdit()->clear();
    QTest::keyClicks(w.lineEdit(), "Turku");
    QCOMPARE(w.text(), QStringLiteral("Turku"));
    QCOMPARE(texts.count(), 7);
    QCOMPARE(texts.last().at(0).toString(), QStringLiteral("Turku"));

    w.setLabel(QStringLiteral("Town"));
    w.setLabel(QStringLiteral("Town"));
    QCOMPARE(labels.count(), 1);
    QCOMPARE(labels.at(0).at(0).toString(), QStringLiteral("Town"));
    QCOMPARE(w.labelWidget()->text(), QStringLiteral("Town"));
    QVERIFY(!w.labelWidget()->isHidden());
    w.setLabel(QString());
    QVERIFY(w.labelWidget()->isHidden());
    QCOMPARE(labels.count(), 2);
}

void tst_VLabelLineEdit::mapper()
{
    QStandardItemModel model(2, 2);
    model.setData(model.index(0, 1), QStringLiteral("Oulu"));
    model.setData(model.index(1, 1), QStringLiteral("Espoo"));
    VLabelLineEdit w(QStringLiteral("City"));
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(&w, 1);
    mapper.toFirst();
    QCOMPARE(w.text(), QStringLiteral("Oulu"));
    mapper.toNext();
    QCOMPARE(w.text(), QStringLiteral("Espoo"));
    w.lineEdit()->selectAll();
    QTest::keyClicks(w.lineEdit(), "Vantaa");
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(1, 1)).toString(), QStringLiteral("Vantaa"));
    QCOMPARE(model.data(model.index(0, 1)).toString(), QStringLiteral("Oulu"));
}

QTEST_MAIN(tst_VLabelLineEdit)
#include "tst_vlabellineedit.moc"
