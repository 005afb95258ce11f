#include "viewtesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vclickablelabel.h>
#include <vcrudtoolbar.h>
#include <vselectviewcolumnsdialog.h>
#include <vtreeview.h>

#include <QHeaderView>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

using namespace ViewTest;

namespace {
QList<QStandardItem*> makeRow(const QString& name)
{
    return { new QStandardItem(name), new QStandardItem(name + "/1"), new QStandardItem(name + "/2") };
}

// A ─ A1 ─ A1a ─ A1a-i
//   └ A2
// B ─ B1
// C
QStandardItemModel* makeModel(QObject* parent)
{
    auto model = new QStandardItemModel(0, 3, parent);
    model->setHorizontalHeaderLabels({ "Name", "City", "Amount" });
    const QList<QStandardItem*> a = makeRow("A"), a1 = makeRow("A1"), a1a = makeRow("A1a"), b = makeRow("B");
    a1a.first()->appendRow(makeRow("A1a-i"));
    a1.first()->appendRow(a1a);
    a.first()->appendRow(a1);
    a.first()->appendRow(makeRow("A2"));
    b.first()->appendRow(makeRow("B1"));
    model->appendRow(a);
    model->appendRow(b);
    model->appendRow(makeRow("C"));
    return model;
}

QModelIndex find(const QStandardItemModel* model, const QString& name, int column = 0)
{
    const QList<QStandardItem*> items = model->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    return items.size() == 1 ? items.first()->index().siblingAtColumn(column) : QModelIndex();
}

QStringList names(const QSignalSpy& spy)
{
    QStringList result;
    for (const QList<QVariant>& args : spy)
        result << args.at(0).toModelIndex().data().toString();
    return result;
}

const QStringList s_expandEntries { "Expand All.", "Expand All from here.", "Collapse All.",
    "Collapse All from here.", "--", "--" };
} // namespace

class TestVTreeView : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

    struct Fixture {
        VTreeView view;
        QStandardItemModel* model;
        Fixture()
        {
            model = makeModel(&view);
            view.setObjectName("customerTree");
            view.setModel(model);
            view.resize(480, 320);
        }
        void show()
        {
            view.show();
            QVERIFY(QTest::qWaitForWindowExposed(&view));
        }
        QModelIndex at(const QString& name, int column = 0) const { return find(model, name, column); }
        QPoint center(const QString& name, int column = 0) const
        {
            return view.visualRect(at(name, column)).center();
        }
        bool expanded(const QString& name) const { return view.isExpanded(at(name)); }
        QMenu* menu(const QPoint& pos) { return view.buildContextMenu(pos); }
    };

private Q_SLOTS:
    void init() { m_settings.clear(); }

    void construction()
    {
        VTreeView view;
        QVERIFY(view.hasMouseTracking());
        QCOMPARE(view.contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(!view.toolBar());
        // Moving the current row does not submit the model.
        SubmitCountingModel model(3, 2);
        view.setModel(&model);
        view.setCurrentIndex(model.index(0, 0));
        view.setCurrentIndex(model.index(2, 1));
        QCOMPARE(model.submits, 0);
    }

    void contextMenuEntries()
    {
        Fixture f;
        f.show();
        QScopedPointer<QMenu> menu(f.menu(f.center("B", 1)));
        QCOMPARE(menuTexts(menu.data()), (s_expandEntries + QStringList { "Select Visible Columns..." }));
        QVERIFY(menu->toolTipsVisible());
        QCOMPARE(menu->parent(), &f.view);
        const QImage add = QIcon(":/images/add").pixmap(16, 16).toImage();
        const QImage remove = QIcon(":/images/remove").pixmap(16, 16).toImage();
        QVERIFY(!add.isNull() && !remove.isNull() && add != remove);
        for (int i = 0; i < 4; ++i) {
            QVERIFY(menu->actions().at(i)->isEnabled());
            QCOMPARE(menu->actions().at(i)->icon().pixmap(16, 16).toImage(), i < 2 ? add : remove);
        }

        // Over no row there is nothing to expand from.
        menu.reset(f.menu(QPoint(5, f.view.viewport()->height() - 3)));
        QVERIFY(menuEntry(menu.data(), "Expand All.")->isEnabled());
        QVERIFY(!menuEntry(menu.data(), "Expand All from here.")->isEnabled());
        QVERIFY(!menuEntry(menu.data(), "Collapse All from here.")->isEnabled());
        menuEntry(menu.data(), "Expand All from here.")->trigger();
        QVERIFY(!f.expanded("A"));

        menuEntry(menu.data(), "Expand All.")->trigger();
        QVERIFY(f.expanded("A1a") && f.expanded("B"));
        menuEntry(menu.data(), "Collapse All.")->trigger();
        QVERIFY(!f.expanded("A") && !f.expanded("A1") && !f.expanded("B"));
    }

    void contextMenuRunsAtTheMouse()
    {
        Fixture f;
        f.view.move(40, 30);
        f.show();
        const QPoint pos = f.center("B", 1);
        QPoint shownAt;
        QStringList shownTexts;
        QTimer closer;
        connect(&closer, &QTimer::timeout, [&] {
            if (auto menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                closer.stop();
                shownAt = menu->pos();
                shownTexts = menuTexts(menu);
                menu->close();
            }
        });
        closer.start(10);
        QContextMenuEvent event(QContextMenuEvent::Mouse, pos, f.view.viewport()->mapToGlobal(pos));
        QApplication::sendEvent(f.view.viewport(), &event);
        QCOMPARE(shownAt, f.view.viewport()->mapToGlobal(pos));
        QCOMPARE(shownTexts, (s_expandEntries + QStringList { "Select Visible Columns..." }));
        QCOMPARE(f.view.findChildren<QMenu*>().size(), 0);
    }

    void contextMenuWithToolBar()
    {
        Fixture f;
        VCrudToolBar bar;
        bar.clear();
        auto button = new QToolButton;
        auto buttonMenu = new QMenu(button);
        buttonMenu->addAction("First report");
        button->setMenu(buttonMenu);
        bar.addSeparator();
        bar.addWidget(button)->setText("Reports");
        bar.addWidget(new QToolButton); // a button without a menu adds nothing
        auto label = new VClickableLabel;
        label->setToolTip("Show all records");
        QAction* labelAction = bar.addWidget(label);
        f.view.setToolBar(&bar);
        QCOMPARE(f.view.toolBar(), &bar);
        QScopedPointer<QMenu> menu(f.menu(QPoint(1, 1)));
        QCOMPARE(menuTexts(menu.data()),
            (s_expandEntries
                + QStringList { "Reports", "Show all records", "--", "Select Visible Columns..." }));
        QCOMPARE(menu->actions().at(6)->menu(), buttonMenu);
        QCOMPARE(menu->actions().at(7), labelAction);
        QSignalSpy clicked(label, &VClickableLabel::clicked);
        labelAction->trigger();
        QCOMPARE(clicked.count(), 1);
    }

    void collapseFromHereOnADeepBranch()
    {
        Fixture f;
        f.show();
        f.view.expandAll();
        f.view.setExpanded(f.at("A1a-i"), true);
        QSignalSpy collapsed(&f.view, &QTreeView::collapsed);
        QScopedPointer<QMenu> menu(f.menu(f.center("A", 2)));
        menuEntry(menu.data(), "Collapse All from here.")->trigger();
        // From the top down, each node before the rows below it; B stays open.
        QCOMPARE(names(collapsed), (QStringList { "A", "A1", "A1a", "A1a-i", "A2" }));
        for (const char* name : { "A", "A1", "A1a", "A1a-i", "A2" })
            QVERIFY2(!f.expanded(name), name);
        QVERIFY(f.expanded("B"));
        // Expanding the top node again shows its children collapsed.
        f.view.setExpanded(f.at("A"), true);
        QVERIFY(f.view.visualRect(f.at("A1")).isValid());
        QVERIFY(!f.view.visualRect(f.at("A1a")).isValid());
    }

    void expandFromHereOnAColumnTwoCell()
    {
        Fixture f;
        // A child under the column-2 cell of A1: expanding the row must not reach it.
        QStandardItem* amount = f.model->itemFromIndex(f.at("A1", 2));
        amount->appendRow(makeRow("hidden"));
        f.show();
        f.view.setExpanded(f.at("A"), true);
        QSignalSpy expanded(&f.view, &QTreeView::expanded);
        QScopedPointer<QMenu> menu(f.menu(f.center("A1", 2)));
        menuEntry(menu.data(), "Expand All from here.")->trigger();
        // From the bottom up.
        QCOMPARE(names(expanded), (QStringList { "A1a-i", "A1a", "A1" }));
        QVERIFY(!f.view.isExpanded(amount->index()) && !f.expanded("A2") && !f.expanded("B"));
        QVERIFY(f.view.visualRect(f.at("A1a-i")).isValid());

        // Called directly with an index of no model, or of a leaf.
        f.view.expandNode(QModelIndex(), true);
        f.view.expandNode(f.at("C", 1), false);
        QVERIFY(f.expanded("A1a"));
    }

    void selectVisibleColumns()
    {
        Fixture f;
        f.view.setColumnHidden(1, true);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
        bool shown = false;
        QTimer closer;
        connect(&closer, &QTimer::timeout, [&] {
            if (auto dialog = qobject_cast<VSelectViewColumnsDialog*>(QApplication::activeModalWidget())) {
                closer.stop();
                shown = true;
                dialog->reject();
            }
        });
        closer.start(10);
        QScopedPointer<QMenu> menu(f.menu(QPoint(1, 1)));
        menuEntry(menu.data(), "Select Visible Columns...")->trigger();
        QVERIFY(shown);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
    }

    void links_data() { addLinkRows(); }

    void links()
    {
        QFETCH(QString, link);
        QFETCH(int, flags);
        QFETCH(QString, emitted);

        Fixture f;
        f.show();
        f.model->setData(f.at("C", 1), link, linkRole);
        f.model->setData(f.at("C", 1), flags, linkFlagsRole);
        QSignalSpy spy(&f.view, &VTreeView::linkClicked);
        VTestLogCapture log;
        QTest::mouseClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, f.center("C", 1));
        QTest::mouseDClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, f.center("C", 1));
        QCOMPARE(spy.count(), emitted.isEmpty() ? 0 : 1);
        if (!emitted.isEmpty())
            QCOMPARE(spy.at(0).at(0).toUrl(), QUrl(emitted));
        const QStringList warnings = log.messages(Logger::Warning);
        const bool invalid = QTest::currentDataTag() == QByteArray("invalid");
        QCOMPARE(warnings.size(), invalid ? 1 : 0);
        if (invalid)
            QVERIFY2(warnings.first().startsWith("Invalid URL: "), qPrintable(warnings.first()));
        QVERIFY(!log.messages(Logger::Debug).isEmpty());
        for (const VTestLogCapture::Entry& e : log.entries()) {
            QCOMPARE(e.function, QString("virtual void VTreeView::onDoubleClicked(const QModelIndex&)"));
            QCOMPARE(e.file, QString("Core/src/widgets/views/vtreeview.cpp"));
        }
    }

    void linkCursor()
    {
        Fixture f;
        f.view.expandAll();
        // Rows with the same number under different parents are different cells.
        f.model->setData(f.at("A1", 1), int(Qt::PointingHandCursor), cursorRole);
        f.show();
        QWidget* viewport = f.view.viewport();
        const QPoint linkCell = f.center("A1", 1);
        const struct {
            QPoint pos;
            Qt::CursorShape shape;
        } moves[] = { { linkCell, Qt::PointingHandCursor }, { f.center("B1", 1), Qt::ArrowCursor },
            { linkCell, Qt::PointingHandCursor }, { f.center("A1", 2), Qt::ArrowCursor },
            { linkCell, Qt::PointingHandCursor } };
        for (const auto& m : moves) {
            moveMouse(viewport, m.pos);
            QCOMPARE(f.view.cursor().shape(), m.shape);
        }
        // Moving within the same cell does not read the model again.
        f.model->setData(f.at("A1", 1), int(Qt::WaitCursor), cursorRole);
        moveMouse(viewport, linkCell + QPoint(2, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);
        // Entering the header puts the arrow back, and the next move reads the cell again.
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(f.view.header(), &enter);
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        moveMouse(viewport, linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::WaitCursor);
        // A model reset while hovering leaves the view usable.
        f.model->clear();
        moveMouse(viewport, linkCell + QPoint(1, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        QScopedPointer<QMenu> menu(f.menu(linkCell));
        QVERIFY(!menuEntry(menu.data(), "Expand All from here.")->isEnabled());
    }

    void gridLines()
    {
        Fixture f;
        f.view.setSelectionMode(QAbstractItemView::NoSelection);
        f.view.setFocusPolicy(Qt::NoFocus);
        f.view.setColumnWidth(0, 120);
        f.view.setColumnWidth(1, 100);
        f.view.setColumnWidth(2, 100);
        f.view.header()->moveSection(2, 1);
        f.show();
        const QImage image = f.view.viewport()->grab().toImage();
        auto grid = [&](int x, int y) { return (image.pixel(x, y) & 0xffffff) == 0xD3D3D3; };

        // Every row: one-pixel lines on the right of each cell (the stretched last one at the viewport's
        // edge) and on its last line.
        for (const char* name : { "A", "B", "C" }) {
            const QRect amount = f.view.visualRect(f.at(name, 2));
            QCOMPARE(amount.left(), 120);
            QCOMPARE(f.view.visualRect(f.at(name, 1)).left(), 220);
            const int y = amount.top() + 2;
            QVERIFY(grid(119, y) && grid(219, y) && grid(f.view.viewport()->width() - 1, y));
            QVERIFY(!grid(118, y) && !grid(120, y) && !grid(218, y));
            for (int x : { 60, 170, 300 })
                QVERIFY(grid(x, amount.bottom()) && !grid(x, amount.bottom() - 1)
                    && !grid(x, amount.bottom() + 1));
        }
        // Below the last row nothing is drawn.
        const int below = f.view.visualRect(f.at("C")).bottom() + 5;
        QVERIFY(!grid(119, below) && !grid(60, below));
    }

    void headerStateRoundTrip()
    {
        {
            Fixture f;
            f.view.header()->moveSection(2, 0);
            f.view.setColumnHidden(1, true);
            f.view.setColumnWidth(0, 77);
            f.view.saveState();
            QCOMPARE(VSettings().value("views/customerTree").toByteArray(), f.view.header()->saveState());
        }
        Fixture f;
        f.view.restoreState();
        QCOMPARE(f.view.header()->visualIndex(2), 0);
        QCOMPARE(f.view.columnWidth(0), 77);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
        // Without a model nothing happens, and the entry stays.
        VTreeView bare;
        bare.setObjectName("customerTree");
        bare.restoreState();
        QCOMPARE(bare.header()->count(), 0);
        QVERIFY(VSettings().contains("views/customerTree"));
    }

    void badHeaderStateIsIgnored_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("missing") << QVariant();
        QTest::newRow("text") << QVariant("garbage");
        QTest::newRow("random bytes") << QVariant(QByteArray::fromHex("ff000000000000000100000000deadbeef"));
        QTest::newRow("huge count") << QVariant(
            QByteArray::fromHex("000000ff00000000000000010000000000000000000000007fffffff"));
        QTest::newRow("truncated") << QVariant(QByteArray());
        QTest::newRow("other column count") << QVariant(QByteArray("two columns"));
    }

    void badHeaderStateIsIgnored()
    {
        QFETCH(QVariant, stored);
        const QByteArray tag = QTest::currentDataTag();
        if (tag == "truncated") {
            const QByteArray good = Fixture().view.header()->saveState();
            stored = good.left(good.size() - 20);
        } else if (tag == "other column count") {
            Fixture f;
            f.model->setColumnCount(2);
            f.view.header()->moveSection(1, 0);
            stored = f.view.header()->saveState();
        }
        if (stored.isValid())
            VSettings().setValue("views/customerTree", stored);
        Fixture f;
        f.view.header()->moveSection(2, 0);
        f.view.restoreState();
        // Not applied: the header is as it was, and the bad entry is removed.
        QCOMPARE(f.view.header()->count(), 3);
        QCOMPARE(f.view.header()->visualIndex(2), 0);
        QCOMPARE(f.view.header()->visualIndex(1), 2);
        QVERIFY(!VSettings().contains("views/customerTree"));
    }
};

QTEST_MAIN(TestVTreeView)
#include "tst_vtreeview.moc"
