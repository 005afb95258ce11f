#include "viewwidgettesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vcrudtoolbar.h>
#include <vhtmlitemdelegate.h>
#include <vhtmltreeview.h>
#include <vtreeview.h>
#include <vtreeviewwidget.h>

#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString AnnaUrl = QStringLiteral("https://example.org/customers/17");

// Two customers with orders; Anna's first order has one line.
struct TreeFixture {
    explicit TreeFixture(VTreeView* view = new VHtmlTreeView)
        : widget(QStringLiteral("CustomerOrders"))
        , tree(view)
    {
        model.setHorizontalHeaderLabels({ QStringLiteral("Name"), QStringLiteral("City") });
        anna = new QStandardItem(QStringLiteral("<a href=\"%1\">Anna</a>").arg(AnnaUrl));
        order = new QStandardItem(QStringLiteral("Order 1"));
        order->appendRow(new QStandardItem(QStringLiteral("Line 1")));
        anna->appendRow(order);
        anna->appendRow(new QStandardItem(QStringLiteral("Order 2")));
        model.appendRow({ anna, new QStandardItem(QStringLiteral("Bonn")) });
        model.appendRow(
            { new QStandardItem(QStringLiteral("Bernd")), new QStandardItem(QStringLiteral("Köln")) });
        tree->setObjectName(QStringLiteral("customerTree"));
        tree->setModel(&model);
        widget.setView(tree);
        widget.viewId = 2;
    }

    QStandardItemModel model;
    VTreeViewWidget widget;
    VTreeView* tree;
    QStandardItem* anna;
    QStandardItem* order;
};

// The status label is the first label of the status line.
QLabel* statusLabel(QWidget* widget)
{
    return qobject_cast<QLabel*>(
        widget->findChild<QWidget*>(QStringLiteral("StatusWidget"))->layout()->itemAt(0)->widget());
}

void moveMouse(QWidget* widget, const QPoint& pos)
{
    QMouseEvent event(
        QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

// A point of the cell at which the view finds a link.
QPoint linkPoint(VHtmlTreeView* view, const QModelIndex& index)
{
    const QRect rect = view->visualRect(index);
    for (int x = rect.left(); x <= rect.right(); ++x) {
        const QPoint point(x, rect.center().y());
        if (!view->anchorAt(point).isEmpty())
            return point;
    }
    return QPoint(-1, -1);
}

} // namespace

class tst_VTreeViewWidget : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void treeGetsToolBar();
    void linkClicked();
    void hoveredLinkBehindStatus();
    void setCurrentIndexExpands();
    void settingsAndColumns();
    void plainTreeView();

private:
    VTestSettings m_settings;
};

void tst_VTreeViewWidget::construction()
{
    TreeFixture f;
    QCOMPARE(f.widget.objectName(), QStringLiteral("CustomerOrders"));
    QCOMPARE(f.widget.toolBar()->objectName(), QStringLiteral("CustomerOrders_ToolBar"));
    // The tree keeps its HTML delegate.
    QVERIFY(qobject_cast<VHtmlItemDelegate*>(f.tree->itemDelegate()));
    QCOMPARE(statusLabel(&f.widget)->text(), QStringLiteral("[2 Rows]"));
}

void tst_VTreeViewWidget::treeGetsToolBar()
{
    TreeFixture f;
    VCrudToolBar* bar = f.widget.toolBar();
    QCOMPARE(f.tree->toolBar(), bar);

    bar->expandAllAction->trigger();
    QVERIFY(f.tree->isExpanded(f.anna->index()));
    QVERIFY(f.tree->isExpanded(f.order->index()));
    bar->collapseAllAction->trigger();
    QVERIFY(!f.tree->isExpanded(f.anna->index()));

    // A new toolbar takes over; the old one is gone and with it its connections.
    auto* next = new VCrudToolBar;
    f.widget.setToolBar(next);
    QCOMPARE(f.tree->toolBar(), next);
    next->expandAllAction->trigger();
    QVERIFY(f.tree->isExpanded(f.anna->index()));
    next->collapseAllAction->trigger();
    QVERIFY(!f.tree->isExpanded(f.anna->index()));
    delete next;
    QVERIFY(!f.tree->toolBar());
    std::unique_ptr<QMenu> menu(f.tree->createContextMenu());
    QVERIFY(menu);
}

void tst_VTreeViewWidget::linkClicked()
{
    TreeFixture f;
    f.widget.resize(500, 300);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkClicked);
    const QPoint point = linkPoint(static_cast<VHtmlTreeView*>(f.tree), f.anna->index());
    QVERIFY(point.x() >= 0);
    QTest::mouseClick(f.tree->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 2);
    QCOMPARE(spy.at(0).at(1).toUrl(), QUrl(AnnaUrl));
}

void tst_VTreeViewWidget::hoveredLinkBehindStatus()
{
    TreeFixture f;
    f.widget.resize(500, 300);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    QLabel* label = statusLabel(&f.widget);
    auto* html = static_cast<VHtmlTreeView*>(f.tree);
    const QPoint point = linkPoint(html, f.anna->index());
    QVERIFY(point.x() >= 0);
    // A row without children is current, whatever the focus did on showing.
    f.widget.setCurrentIndex(f.model.index(1, 0));

    moveMouse(f.tree->viewport(), point);
    QCOMPARE(label->text(), QStringLiteral("[2 Rows][1 Selected] ") + AnnaUrl);
    // Leaving the link restores the counts exactly.
    moveMouse(f.tree->viewport(), QPoint(f.tree->viewport()->width() - 2, f.tree->viewport()->height() - 2));
    QCOMPARE(label->text(), QStringLiteral("[2 Rows][1 Selected]"));

    // A model change while hovering replaces the remembered text.
    moveMouse(f.tree->viewport(), point);
    f.model.appendRow(new QStandardItem(QStringLiteral("Clara")));
    QCOMPARE(label->text(), QStringLiteral("[3 Rows][1 Selected]"));
    emit html->linkHovered(QStringLiteral("https://example.org/x"));
    QCOMPARE(label->text(), QStringLiteral("[3 Rows][1 Selected] https://example.org/x"));
    emit html->linkUnhovered();
    QCOMPARE(label->text(), QStringLiteral("[3 Rows][1 Selected]"));
}

void tst_VTreeViewWidget::setCurrentIndexExpands()
{
    TreeFixture f;
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::selectionChanged);
    // A grandchild: its parent and itself are expanded, the grandparent is left as it is.
    const QModelIndex line = f.order->child(0)->index();
    f.widget.setCurrentIndex(line);
    QCOMPARE(f.widget.currentIndex(), line);
    QVERIFY(f.tree->isExpanded(f.order->index()));
    QVERIFY(f.tree->isExpanded(line));
    QVERIFY(!f.tree->isExpanded(f.anna->index()));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(statusLabel(&f.widget)->text(), QStringLiteral("[0 Child Rows][1 Selected]"));

    f.widget.setCurrentIndex(f.anna->index());
    QVERIFY(f.tree->isExpanded(f.anna->index()));
    QCOMPARE(statusLabel(&f.widget)->text(), QStringLiteral("[2 Rows, 2 Child Rows][1 Selected]"));

    // An index of another model changes and expands nothing.
    QStandardItemModel other;
    auto* stranger = new QStandardItem(QStringLiteral("x"));
    stranger->appendRow(new QStandardItem(QStringLiteral("y")));
    other.appendRow(stranger);
    f.tree->collapseAll();
    VTestLogCapture log;
    f.widget.setCurrentIndex(stranger->child(0)->index());
    QCOMPARE(f.widget.currentIndex(), f.anna->index());
    QVERIFY(!f.tree->isExpanded(f.anna->index()));
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
}

void tst_VTreeViewWidget::settingsAndColumns()
{
    m_settings.clear();
    {
        TreeFixture f;
        f.tree->setColumnHidden(1, true);
        f.widget.saveSettings();
    }
    VSettings settings(nullptr);
    QVERIFY(settings.settings()->contains(QStringLiteral("views/customerTree")));
    QVERIFY(settings.settings()->contains(QStringLiteral("CustomerOrders/visible")));
    TreeFixture f;
    QVERIFY(!f.tree->isColumnHidden(1));
    f.widget.readSettings();
    QVERIFY(f.tree->isColumnHidden(1));

    ModalWatcher watcher;
    f.widget.selectColumns();
    // Trees keep the empty CSV export.
    f.widget.exportToCsv();
    QCOMPARE(watcher.seen, QStringList({ "VSelectViewColumnsDialog" }));
}

void tst_VTreeViewWidget::plainTreeView()
{
    // A VTreeView without HTML: no hover wiring, the rest as before.
    TreeFixture f(new VTreeView);
    QCOMPARE(f.tree->toolBar(), f.widget.toolBar());
    f.widget.toolBar()->expandAllAction->trigger();
    QVERIFY(f.tree->isExpanded(f.anna->index()));
    QCOMPARE(statusLabel(&f.widget)->text(), QStringLiteral("[2 Rows]"));
}

QTEST_MAIN(tst_VTreeViewWidget)
#include "tst_vtreeviewwidget.moc"
