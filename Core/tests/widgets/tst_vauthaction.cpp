#include <QtTest>

#include "vauthaction.h"
#include "vtestsettings.h"

class tst_VAuthAction : public QObject {
    Q_OBJECT

private slots:
    void constructors();

private:
    VTestSettings m_settings;
};

void tst_VAuthAction::constructors()
{
    QObject owner;
    VAuthAction bare(QStringLiteral("Orders_ToolBar_New"), &owner);
    VAuthAction withText(QStringLiteral("Orders_ToolBar_Copy"), &owner, QStringLiteral("Copy..."));
    VAuthAction withIcon(QIcon(QStringLiteral(":/images/delete")), QStringLiteral("Orders_ToolBar_Delete"),
        &owner, "Delete...");

    QCOMPARE(bare.objectName(), QStringLiteral("Orders_ToolBar_New"));
    QCOMPARE(bare.text(), QString());
    QCOMPARE(withText.objectName(), QStringLiteral("Orders_ToolBar_Copy"));
    QCOMPARE(withText.text(), QStringLiteral("Copy..."));
    QCOMPARE(withIcon.objectName(), QStringLiteral("Orders_ToolBar_Delete"));
    QCOMPARE(withIcon.text(), QStringLiteral("Delete..."));
    QVERIFY(withIcon.icon().pixmap(16, 16).toImage()
        == QIcon(QStringLiteral(":/images/delete")).pixmap(16, 16).toImage());
    for (VAuthAction* action : { &bare, &withText, &withIcon }) {
        QVERIFY(action->authorized);
        QCOMPARE(action->parent(), &owner);
        QCOMPARE(owner.findChild<VAuthAction*>(action->objectName()), action);
    }
}

QTEST_MAIN(tst_VAuthAction)
#include "tst_vauthaction.moc"
