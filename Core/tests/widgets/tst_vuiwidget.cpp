#include <QtTest>

#include "vtestsettings.h"
#include "vuiwidget.h"

class tst_VUiWidget : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void signalSignatures();

private:
    VTestSettings m_settings;
};

void tst_VUiWidget::construction()
{
    QWidget parent;
    VUiWidget named(&parent, QStringLiteral("ordersScreen"));
    QCOMPARE(named.objectName(), QStringLiteral("ordersScreen"));
    QCOMPARE(named.parentWidget(), &parent);
    // An empty name leaves the object name alone (a subclass may have set one already).
    VUiWidget unnamed;
    QCOMPARE(unnamed.objectName(), QString());
    QVERIFY(!unnamed.parentWidget());
}

void tst_VUiWidget::signalSignatures()
{
    const QMetaObject& mo = VUiWidget::staticMetaObject;
    QCOMPARE(mo.methodCount() - mo.methodOffset(), 4);
    const QList<QByteArray> expected { "linkClicked(QUrl)", "progressStart(QString,qlonglong)",
        "progressUpdate(qlonglong)", "progressFinished(QString)" };
    for (int i = 0; i < expected.size(); ++i) {
        const QMetaMethod method = mo.method(mo.methodOffset() + i);
        QCOMPARE(method.methodSignature(), expected.at(i));
        QCOMPARE(method.methodType(), QMetaMethod::Signal);
    }
    QCOMPARE(mo.method(mo.indexOfSignal("progressStart(QString,qlonglong)")).parameterNames(),
        QList<QByteArray>({ "msg", "sz" }));
}

QTEST_MAIN(tst_VUiWidget)
#include "tst_vuiwidget.moc"
