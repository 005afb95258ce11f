#include "viewwidgettesthelpers.h"
#include "vtestsettings.h"

#include <vcrudtoolbar.h>
#include <vhighlightitemdelegate.h>
#include <vsortfilterproxymodel.h>
#include <vtableview.h>
#include <vtableviewwidget.h>

#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const int LinkRole = Qt::UserRole + 7;

// Reports when the table's settings are read and written, relative to the widget's own.
class RecordingTable : public VTableView {
public:
    QStringList* log = nullptr;
    void restoreState() override
    {
        *log << QStringLiteral("table restoreState");
        VTableView::restoreState();
    }
    void saveState(const QString& a = QString(), const QString& b = QString()) override
    {
        VSettings settings(nullptr);
        *log << QStringLiteral("table saveState, linkenabled stored: %1")
                    .arg(settings.settings()->contains(QStringLiteral("Orders/linkenabled")));
        VTableView::saveState(a, b);
    }
};

class RecordingTableWidget : public VTableViewWidget {
public:
    using VTableViewWidget::VTableViewWidget;
    QStringList log;

protected:
    void _linkTriggered(bool checked) override
    {
        log << QStringLiteral("linkTriggered");
        VTableViewWidget::_linkTriggered(checked);
    }
};

struct TableFixture {
    TableFixture()
        : model(5)
        , widget(QStringLiteral("Orders"))
        , table(new VTableView)
    {
        proxy.setSourceModel(&model);
        table->setObjectName(QStringLiteral("ordersView"));
        table->setModel(&proxy);
        widget.setView(table);
        widget.viewId = 6;
    }
    RecordModel model;
    VSortFilterProxyModel proxy;
    VTableViewWidget widget;
    VTableView* table;
};

QStringList menuEntries(const QMenu* menu)
{
    QStringList entries;
    for (const QAction* action : menu->actions())
        entries << (action->isSeparator() ? QStringLiteral("--") : action->text());
    return entries;
}

} // namespace

class tst_VTableViewWidget : public QObject {
    Q_OBJECT

private slots:
    void tableGetsToolBar();
    void linkClicked();
    void selectColumnsAndCsv();
    void otherViewIsStillAFrame();
    void settings();

private:
    VTestSettings m_settings;
};

void tst_VTableViewWidget::tableGetsToolBar()
{
    TableFixture f;
    QCOMPARE(f.widget.toolBar()->objectName(), QStringLiteral("Orders_ToolBar"));
    // The option word is 0: the table gets the highlight delegate; no printers row.
    QVERIFY(qobject_cast<VHighLightItemDelegate*>(f.table->itemDelegate()));
    QVERIFY(f.widget.findChild<QWidget*>(QStringLiteral("PrintersWidget"))->isHidden());
    QVERIFY(!f.widget.findChild<QLabel*>(QStringLiteral("HeaderLabel"))->isHidden());
    QCOMPARE(f.table->toolBar(), f.widget.toolBar());
    // Plain tool buttons add no entry to the context menu; the toolbar's separators do.
    std::unique_ptr<QMenu> menu(f.table->createContextMenu());
    QCOMPARE(menuEntries(menu.get()).count(QStringLiteral("--")), 3);

    // A new toolbar reaches the table too, and a deleted one is not used.
    auto* bar = new VCrudToolBar;
    f.widget.setToolBar(bar);
    QCOMPARE(f.table->toolBar(), bar);
    delete bar;
    QVERIFY(!f.table->toolBar() && !f.widget.toolBar());
    menu.reset(f.table->createContextMenu());
    QVERIFY(menuEntries(menu.get()).isEmpty());
}

void tst_VTableViewWidget::linkClicked()
{
    TableFixture f;
    f.model.setData(f.model.index(2, 1), QStringLiteral("https://example.org/orders/102"), LinkRole);
    f.widget.resize(500, 300);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    QSignalSpy links(&f.widget, &VAbstractViewWidget::linkClicked);
    QSignalSpy doubles(&f.widget, &VAbstractViewWidget::doubleClicked);
    const QPoint cell = f.table->visualRect(f.proxy.index(2, 1)).center();
    QTest::mouseClick(f.table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QTest::mouseDClick(f.table->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QCOMPARE(links.count(), 1);
    QCOMPARE(links.at(0).at(0).toInt(), 6);
    QCOMPARE(links.at(0).at(1).toUrl(), QUrl(QStringLiteral("https://example.org/orders/102")));
    QCOMPARE(doubles.count(), 1);
}

void tst_VTableViewWidget::selectColumnsAndCsv()
{
    TableFixture f;
    f.table->setColumnHidden(1, true);
    f.table->horizontalHeader()->moveSection(2, 0);

    {
        ModalWatcher columns;
        f.widget.selectColumns();
        QCOMPARE(columns.seen, QStringList({ "VSelectViewColumnsDialog" }));
    }

    // The export asks for a file, then writes the visible columns in the order shown, display texts.
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("orders.csv"));
    ModalWatcher answers([&](QWidget* modal) {
        if (auto* fileDialog = qobject_cast<QFileDialog*>(modal)) {
            fileDialog->selectFile(path);
            QMetaObject::invokeMethod(fileDialog, "accept");
        } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            box->accept();
        }
    });
    f.widget.exportToCsv();
    QCOMPARE(answers.seen, QStringList({ "QFileDialog", "QMessageBox" }));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.at(0), QByteArray("\"City\",\"Key\""));
    QCOMPARE(lines.at(1), QByteArray("\"City 0\",\"100\""));
    QCOMPARE(lines.size(), 7);
}

void tst_VTableViewWidget::otherViewIsStillAFrame()
{
    m_settings.clear();
    RecordModel model(3);
    VTableViewWidget w(QStringLiteral("Orders"));
    auto* list = new QListView;
    list->setObjectName(QStringLiteral("ordersList"));
    list->setModel(&model);
    w.setView(list);
    w.updateStatusLabel();
    QSignalSpy spy(&w, &VAbstractViewWidget::csvTriggered);

    ModalWatcher nothing;
    w.selectColumns();
    w.exportToCsv();
    w.readSettings();
    w.saveSettings();
    QTest::qWait(20);
    QVERIFY(nothing.seen.isEmpty());
    VSettings settings(nullptr);
    QStringList keys = settings.settings()->allKeys();
    keys.sort();
    QCOMPARE(keys,
        QStringList(
            { "Orders/filterenabled", "Orders/linkenabled", "Orders/optionsenabled", "Orders/visible" }));

    // The frame still forwards the toolbar.
    w.toolBar()->csvAction->trigger();
    QCOMPARE(spy.count(), 1);
}

void tst_VTableViewWidget::settings()
{
    m_settings.clear();
    {
        // The table's state is restored before the link is applied, and saved before the widget's keys.
        RecordModel model;
        RecordingTableWidget w(QStringLiteral("Orders"));
        auto* table = new RecordingTable;
        table->log = &w.log;
        table->setObjectName(QStringLiteral("ordersView"));
        table->setModel(&model);
        w.setView(table);
        w.readSettings();
        table->setColumnHidden(2, true);
        table->horizontalHeader()->moveSection(1, 0);
        w.saveSettings();
        QCOMPARE(w.log,
            QStringList({ "table restoreState", "linkTriggered", "table saveState, linkenabled stored: 0" }));
        VSettings settings(nullptr);
        QVERIFY(settings.settings()->contains(QStringLiteral("views/ordersView")));
        QVERIFY(settings.settings()->contains(QStringLiteral("Orders/linkenabled")));
    }
    // The header comes back in a new widget.
    TableFixture f;
    QVERIFY(!f.table->isColumnHidden(2));
    f.widget.readSettings();
    QVERIFY(f.table->isColumnHidden(2));
    QCOMPARE(f.table->horizontalHeader()->logicalIndex(0), 1);
}

QTEST_MAIN(tst_VTableViewWidget)
#include "tst_vtableviewwidget.moc"
