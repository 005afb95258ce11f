#include <QtTest>

#include "vmovabletabwidget.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vsettings.h>

#include <QDataWidgetMapper>
#include <QSettings>
#include <QStandardItemModel>
#include <QTabBar>

namespace {
const QString Key = QStringLiteral("customerTabs/tabOrder");

// Three tabs "A", "B", "C" added in that order.
void fill(VMovableTabWidget& tabs)
{
    for (const char* title : { "A", "B", "C" })
        tabs.addTab(new QWidget, QString::fromLatin1(title));
}

QString titles(const VMovableTabWidget& tabs)
{
    QString result;
    for (int i = 0; i < tabs.count(); ++i)
        result += tabs.tabText(i);
    return result;
}

QVariant stored()
{
    VSettings settings(nullptr);
    return settings.value(Key);
}
} // namespace

class tst_VMovableTabWidget : public QObject {
    Q_OBJECT

private slots:
    void init();
    void movingStoresOrder();
    void restoredWhenFirstShown();
    void badStoredOrder_data();
    void badStoredOrder();
    void tabsAddedAndRemoved();
    void unnamed();
    void currentOriginalIndex();
    void mapper();

private:
    VTestSettings m_settings;
};

void tst_VMovableTabWidget::init()
{
    m_settings.clear();
}

void tst_VMovableTabWidget::movingStoresOrder()
{
    VMovableTabWidget tabs;
    tabs.setObjectName(QStringLiteral("customerTabs"));
    QVERIFY(tabs.isMovable());
    fill(tabs);
    QCOMPARE(tabs.tabOrder(), QList<int>({ 0, 1, 2 }));
    QVERIFY(!stored().isValid());

    tabs.tabBar()->moveTab(0, 2);
    QCOMPARE(titles(tabs), QStringLiteral("BCA"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 1, 2, 0 }));
    QCOMPARE(stored(), QVariant(QStringLiteral("1,2,0")));
    tabs.tabBar()->moveTab(2, 1);
    QCOMPARE(stored(), QVariant(QStringLiteral("1,0,2")));

    // The store holds the value as one string, also when read by other means.
    QSettings file(m_settings.fileName(), QSettings::IniFormat);
    QCOMPARE(file.value(Key), QVariant(QStringLiteral("1,0,2")));
}

void tst_VMovableTabWidget::restoredWhenFirstShown()
{
    {
        VSettings settings(nullptr);
        settings.setValue(Key, QStringLiteral("2,0,1"));
    }
    VMovableTabWidget tabs;
    tabs.setObjectName(QStringLiteral("customerTabs"));
    fill(tabs);
    tabs.setCurrentIndex(1);
    QCOMPARE(titles(tabs), QStringLiteral("ABC"));
    tabs.show();
    QCOMPARE(titles(tabs), QStringLiteral("CAB"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 2, 0, 1 }));
    QCOMPARE(tabs.tabText(tabs.currentIndex()), QStringLiteral("B"));
    // Restoring is no move of the user's: the store is untouched, and a second show reads nothing.
    QCOMPARE(stored(), QVariant(QStringLiteral("2,0,1")));
    tabs.hide();
    tabs.applyTabOrder({ 0, 1, 2 });
    tabs.show();
    QCOMPARE(titles(tabs), QStringLiteral("ABC"));

    // A list of strings, as an INI file written by hand gives, is read as well.
    {
        VSettings settings(nullptr);
        settings.setValue(Key, QStringList({ "1", "2", "0" }));
    }
    tabs.readSettings();
    QCOMPARE(titles(tabs), QStringLiteral("BCA"));
}

void tst_VMovableTabWidget::badStoredOrder_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<bool>("applied");
    QTest::newRow("spaces") << " 2, 0,1" << true;
    QTest::newRow("letters") << "x,y,z" << false;
    QTest::newRow("one letter for tab 0") << "x,1,2" << false;
    QTest::newRow("duplicate") << "0,0,1" << false;
    QTest::newRow("too few") << "0,1" << false;
    QTest::newRow("too many") << "2,0,1,3" << false;
    QTest::newRow("out of range") << "0,1,3" << false;
    QTest::newRow("negative") << "-1,0,1" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("huge number") << "99999999999999999999,0,1" << false;
}

void tst_VMovableTabWidget::badStoredOrder()
{
    QFETCH(QString, order);
    QFETCH(bool, applied);
    {
        VSettings settings(nullptr);
        settings.setValue(Key, order);
    }
    VTestLogCapture log;
    VMovableTabWidget tabs;
    tabs.setObjectName(QStringLiteral("customerTabs"));
    fill(tabs);
    tabs.readSettings();
    QCOMPARE(titles(tabs), applied ? QStringLiteral("CAB") : QStringLiteral("ABC"));
    QCOMPARE(log.messages(Logger::Warning).size(), applied ? 0 : 1);
}

void tst_VMovableTabWidget::tabsAddedAndRemoved()
{
    VMovableTabWidget tabs;
    tabs.setObjectName(QStringLiteral("customerTabs"));
    fill(tabs);
    // Before any move a tab inserted in the middle takes its place in the original order.
    tabs.insertTab(1, new QWidget, QStringLiteral("X"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 0, 1, 2, 3 }));
    tabs.tabBar()->moveTab(3, 0); // A X B C becomes C A X B
    QCOMPARE(titles(tabs), QStringLiteral("CAXB"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 3, 0, 1, 2 }));
    // After a move, a new tab comes last in the original order wherever it is put.
    tabs.insertTab(0, new QWidget, QStringLiteral("Y"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 4, 3, 0, 1, 2 }));
    delete tabs.widget(3); // "X"
    QCOMPARE(titles(tabs), QStringLiteral("YCAB"));
    QCOMPARE(tabs.tabOrder(), QList<int>({ 3, 2, 0, 1 }));
    tabs.removeTab(0);
    QCOMPARE(tabs.tabOrder(), QList<int>({ 2, 0, 1 }));
    QVERIFY(tabs.applyTabOrder({ 0, 1, 2 }));
    QCOMPARE(titles(tabs), QStringLiteral("ABC"));
}

void tst_VMovableTabWidget::unnamed()
{
    VTestLogCapture log;
    VMovableTabWidget tabs;
    fill(tabs);
    tabs.tabBar()->moveTab(0, 1);
    tabs.show();
    QCOMPARE(log.messages(Logger::Warning).size(), 2);
    VSettings settings(nullptr);
    QCOMPARE(settings.settings()->allKeys(), QStringList());
}

void tst_VMovableTabWidget::currentOriginalIndex()
{
    VMovableTabWidget tabs;
    QCOMPARE(tabs.currentOriginalIndex(), -1);
    QCOMPARE(tabs.metaObject()->userProperty().name(), "currentOriginalIndex");
    QSignalSpy spy(&tabs, &VMovableTabWidget::currentOriginalIndexChanged);
    fill(tabs);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 0);

    tabs.setCurrentOriginalIndex(2);
    tabs.setCurrentOriginalIndex(2);
    QCOMPARE(tabs.tabText(tabs.currentIndex()), QStringLiteral("C"));
    QCOMPARE(spy.count(), 2);
    // Moving the current tab changes its position, not its original index.
    tabs.tabBar()->moveTab(2, 0);
    QCOMPARE(tabs.currentIndex(), 0);
    QCOMPARE(tabs.currentOriginalIndex(), 2);
    QCOMPARE(spy.count(), 2);
    tabs.setCurrentIndex(1);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spy.at(2).at(0).toInt(), 0);

    VTestLogCapture log;
    tabs.setCurrentOriginalIndex(3);
    QCOMPARE(tabs.currentOriginalIndex(), 0);
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
}

void tst_VMovableTabWidget::mapper()
{
    QStandardItemModel model(2, 1);
    model.setData(model.index(0, 0), 2);
    model.setData(model.index(1, 0), 1);
    VMovableTabWidget tabs;
    fill(tabs);
    tabs.applyTabOrder({ 1, 2, 0 });
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(&tabs, 0);
    mapper.toFirst();
    QCOMPARE(tabs.tabText(tabs.currentIndex()), QStringLiteral("C"));
    mapper.toNext();
    QCOMPARE(tabs.tabText(tabs.currentIndex()), QStringLiteral("B"));
    tabs.setCurrentIndex(2); // "A"
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(1, 0)).toInt(), 0);
}

QTEST_MAIN(tst_VMovableTabWidget)
#include "tst_vmovabletabwidget.moc"
