#include "vtestsettings.h"

#include <vtableviewdockwidget.h>
#include <vtableviewwidget.h>

#include <QLabel>
#include <QMainWindow>
#include <QtTest>

class tst_VTableViewDockWidget : public QObject {
    Q_OBJECT

private slots:
    void dockAndWidget();

private:
    VTestSettings m_settings;
};

void tst_VTableViewDockWidget::dockAndWidget()
{
    QMainWindow window;
    auto* dock = new VTableViewDockWidget(&window);
    QCOMPARE(dock->parentWidget(), &window);
    QCOMPARE(dock->allowedAreas(), Qt::AllDockWidgetAreas);
    QVERIFY(!dock->isFloating());
    QVERIFY(!dock->tableViewWidget());

    // Whatever the application put there, as a table view widget or nothing.
    dock->setWidget(new QLabel(QStringLiteral("not a table")));
    QVERIFY(!dock->tableViewWidget());
    auto* orders = new VTableViewWidget(QStringLiteral("Orders"));
    dock->setWidget(orders);
    QCOMPARE(dock->tableViewWidget(), orders);

    // Every area takes it.
    for (Qt::DockWidgetArea area : { Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea, Qt::TopDockWidgetArea,
             Qt::BottomDockWidgetArea }) {
        window.addDockWidget(area, dock);
        QCOMPARE(window.dockWidgetArea(dock), area);
    }
}

QTEST_MAIN(tst_VTableViewDockWidget)
#include "tst_vtableviewdockwidget.moc"
