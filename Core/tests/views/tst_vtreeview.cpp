#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vclickablelabel.h>
#include <vcrudtoolbar.h>
#include <vselectviewcolumnsdialog.h>
#include <vtreeview.h>

#include <QHeaderView>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

namespace {
const int s_cursorRole = Qt::UserRole + 6;
const int s_linkRole = Qt::UserRole + 7;
const int s_linkFlagsRole = Qt::UserRole + 8;

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
    const QList<QStandardItem*> a = makeRow("A");
    const QList<QStandardItem*> a1 = makeRow("A1");
    const QList<QStandardItem*> a1a = makeRow("A1a");
    const QList<QStandardItem*> b = makeRow("B");
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

QStringList menuTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* a : menu->actions())
        texts << (a->isSeparator() ? QStringLiteral("--") : a->text());
    return texts;
}

QAction* entry(const QMenu* menu, const QString& text)
{
    for (QAction* a : menu->actions()) {
        if (a->text() == text)
            return a;
    }
    return nullptr;
}

// QTest::mouseMove only moves the cursor in Qt 5; views need the event itself.
void moveMouse(QWidget* widget, const QPoint& pos)
{
    QMouseEvent event(
        QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

class SubmitCountingModel : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;
    int submits = 0;
    bool submit() override
    {
        ++submits;
        return true;
    }
};
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
        QPoint center(const QString& name, int column = 0) const
        {
            return view.visualRect(find(model, name, column)).center();
        }
    };

private Q_SLOTS:
    void init() { m_settings.clear(); }

    void construction()
    {
        VTreeView view;
        QVERIFY(view.hasMouseTracking());
        QCOMPARE(view.contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(!view.toolBar());
        VCrudToolBar bar;
        view.setToolBar(&bar);
        QCOMPARE(view.toolBar(), &bar);

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
        QScopedPointer<QMenu> menu(f.view.buildContextMenu(f.center("B", 1)));
        QCOMPARE(menuTexts(menu.data()),
            (QStringList { "Expand All.", "Expand All from here.", "Collapse All.", "Collapse All from here.",
                "--", "--", "Select Visible Columns..." }));
        QVERIFY(menu->toolTipsVisible());
        QCOMPARE(menu->parent(), &f.view);
        // Icons from the library's resources: add for the expand entries, remove for the collapse ones.
        const QImage add = QIcon(":/images/add").pixmap(16, 16).toImage();
        const QImage remove = QIcon(":/images/remove").pixmap(16, 16).toImage();
        QVERIFY(!add.isNull() && !remove.isNull() && add != remove);
        const QList<QAction*> actions = menu->actions();
        for (int i = 0; i < 4; ++i) {
            QVERIFY(actions.at(i)->isEnabled());
            QCOMPARE(actions.at(i)->icon().pixmap(16, 16).toImage(), i < 2 ? add : remove);
        }

        // Over no row there is nothing to expand from.
        menu.reset(f.view.buildContextMenu(QPoint(5, f.view.viewport()->height() - 3)));
        QVERIFY(entry(menu.data(), "Expand All.")->isEnabled());
        QVERIFY(!entry(menu.data(), "Expand All from here.")->isEnabled());
        QVERIFY(!entry(menu.data(), "Collapse All from here.")->isEnabled());
        entry(menu.data(), "Expand All from here.")->trigger();
        QVERIFY(!f.view.isExpanded(find(f.model, "A")));

        // The whole tree.
        entry(menu.data(), "Expand All.")->trigger();
        QVERIFY(f.view.isExpanded(find(f.model, "A1a")));
        QVERIFY(f.view.isExpanded(find(f.model, "B")));
        entry(menu.data(), "Collapse All.")->trigger();
        QVERIFY(!f.view.isExpanded(find(f.model, "A")));
        QVERIFY(!f.view.isExpanded(find(f.model, "A1")));
        QVERIFY(!f.view.isExpanded(find(f.model, "B")));
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
            auto menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            closer.stop();
            shownAt = menu->pos();
            shownTexts = menuTexts(menu);
            QVERIFY(menu->toolTipsVisible());
            menu->close();
        });
        closer.start(10);
        QContextMenuEvent event(QContextMenuEvent::Mouse, pos, f.view.viewport()->mapToGlobal(pos));
        QApplication::sendEvent(f.view.viewport(), &event);
        QCOMPARE(shownAt, f.view.viewport()->mapToGlobal(pos));
        QCOMPARE(shownTexts.first(), QString("Expand All."));
        QCOMPARE(shownTexts.last(), QString("Select Visible Columns..."));
        // The menu is gone once it has run.
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
        QAction* buttonAction = bar.addWidget(button);
        buttonAction->setText("Reports");
        bar.addWidget(new QToolButton); // a button without a menu adds nothing
        auto label = new VClickableLabel;
        label->setToolTip("Show all records");
        QAction* labelAction = bar.addWidget(label);
        f.view.setToolBar(&bar);

        QScopedPointer<QMenu> menu(f.view.buildContextMenu(QPoint(1, 1)));
        QCOMPARE(menuTexts(menu.data()),
            (QStringList { "Expand All.", "Expand All from here.", "Collapse All.", "Collapse All from here.",
                "--", "--", "Reports", "Show all records", "--", "Select Visible Columns..." }));
        QCOMPARE(menu->actions().at(6)->menu(), buttonMenu);
        QCOMPARE(menu->actions().at(7), labelAction);

        // The entry acts as a click on the label.
        QSignalSpy clicked(label, &VClickableLabel::clicked);
        labelAction->trigger();
        QCOMPARE(clicked.count(), 1);

        // No sorting or export commands, whatever the model.
        for (const QString& text : menuTexts(menu.data())) {
            QVERIFY(!text.contains("Sort"));
            QVERIFY(!text.contains("csv"));
        }
    }

    void collapseFromHereOnADeepBranch()
    {
        Fixture f;
        f.show();
        f.view.expandAll();
        f.view.setExpanded(find(f.model, "A1a-i"), true);
        QSignalSpy collapsed(&f.view, &QTreeView::collapsed);

        // From a cell of column 2: the row of A.
        QScopedPointer<QMenu> menu(f.view.buildContextMenu(f.center("A", 2)));
        entry(menu.data(), "Collapse All from here.")->trigger();
        for (const char* name : { "A", "A1", "A1a", "A1a-i", "A2" })
            QVERIFY2(!f.view.isExpanded(find(f.model, name)), name);
        QVERIFY(f.view.isExpanded(find(f.model, "B")));
        // From the top down, each node before the rows below it.
        QCOMPARE(names(collapsed), (QStringList { "A", "A1", "A1a", "A1a-i", "A2" }));

        // Expanding the top node again shows its children collapsed.
        f.view.setExpanded(find(f.model, "A"), true);
        QVERIFY(!f.view.isExpanded(find(f.model, "A1")));
        QVERIFY(f.view.visualRect(find(f.model, "A1")).isValid());
        QVERIFY(!f.view.visualRect(find(f.model, "A1a")).isValid());
    }

    void expandFromHereOnAColumnTwoCell()
    {
        Fixture f;
        // A child under the column-2 cell of A1: expanding "the cell" would reach it, expanding the row does
        // not.
        QStandardItem* amount = f.model->itemFromIndex(find(f.model, "A1", 2));
        amount->appendRow(makeRow("hidden"));
        f.show();
        f.view.setExpanded(find(f.model, "A"), true);
        QSignalSpy expanded(&f.view, &QTreeView::expanded);

        QScopedPointer<QMenu> menu(f.view.buildContextMenu(f.center("A1", 2)));
        entry(menu.data(), "Expand All from here.")->trigger();
        for (const char* name : { "A1", "A1a", "A1a-i" })
            QVERIFY2(f.view.isExpanded(find(f.model, name)), name);
        QVERIFY(!f.view.isExpanded(amount->index()));
        QVERIFY(!f.view.isExpanded(amount->child(0)->index()));
        QVERIFY(!f.view.isExpanded(find(f.model, "A2")));
        QVERIFY(!f.view.isExpanded(find(f.model, "B")));
        // From the bottom up.
        QCOMPARE(names(expanded), (QStringList { "A1a-i", "A1a", "A1" }));
        QVERIFY(f.view.visualRect(find(f.model, "A1a-i")).isValid());

        // Called directly with an index of no model, or of a leaf.
        f.view.expandNode(QModelIndex(), true);
        f.view.expandNode(find(f.model, "C", 1), false);
        QVERIFY(f.view.isExpanded(find(f.model, "A1a")));
    }

    void selectVisibleColumns()
    {
        Fixture f;
        f.view.setColumnHidden(1, true);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
        QString shown;
        QTimer closer;
        connect(&closer, &QTimer::timeout, [&] {
            auto dialog = qobject_cast<VSelectViewColumnsDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            closer.stop();
            shown = dialog->metaObject()->className();
            dialog->reject();
        });
        closer.start(10);
        QScopedPointer<QMenu> menu(f.view.buildContextMenu(QPoint(1, 1)));
        entry(menu.data(), "Select Visible Columns...")->trigger();
        QCOMPARE(shown, QString("VSelectViewColumnsDialog"));
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
    }

    void links_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("emitted");

        QTest::newRow("plain link") << "https://example.org/orders?id=10" << 0
                                    << "https://example.org/orders?id=10";
        QTest::newRow("other flag bits") << "mailto:anna@example.org" << 4 << "mailto:anna@example.org";
        QTest::newRow("flag bit 0") << "https://example.org" << 1 << QString();
        QTest::newRow("flag bit 1") << "https://example.org" << 2 << QString();
        QTest::newRow("no link") << QString() << 0 << QString();
        QTest::newRow("invalid") << "http://exa mple.org:99999999" << 0 << QString();
    }

    void links()
    {
        QFETCH(QString, link);
        QFETCH(int, flags);
        QFETCH(QString, emitted);

        Fixture f;
        f.show();
        const QModelIndex cell = find(f.model, "C", 1);
        f.model->setData(cell, link, s_linkRole);
        f.model->setData(cell, flags, s_linkFlagsRole);
        QSignalSpy spy(&f.view, &VTreeView::linkClicked);
        VTestLogCapture log;
        const QPoint pos = f.view.visualRect(cell).center();
        QTest::mouseClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, pos);
        QTest::mouseDClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, pos);
        if (emitted.isEmpty()) {
            QCOMPARE(spy.count(), 0);
        } else {
            QCOMPARE(spy.count(), 1);
            QCOMPARE(spy.at(0).at(0).toUrl(), QUrl(emitted));
        }
        const QStringList warnings = log.messages(Logger::Warning);
        if (QTest::currentDataTag() == QByteArray("invalid")) {
            QCOMPARE(warnings.size(), 1);
            QVERIFY2(warnings.first().startsWith("Invalid URL: "), qPrintable(warnings.first()));
        } else {
            QVERIFY(warnings.isEmpty());
        }
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
        f.model->setData(find(f.model, "A1", 1), int(Qt::PointingHandCursor), s_cursorRole);
        f.show();
        const QPoint linkCell = f.center("A1", 1);
        moveMouse(f.view.viewport(), linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);
        moveMouse(f.view.viewport(), f.center("B1", 1));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        moveMouse(f.view.viewport(), linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);
        moveMouse(f.view.viewport(), f.center("A1", 2));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        moveMouse(f.view.viewport(), linkCell);
        // Moving within the same cell does not read the model again.
        f.model->setData(find(f.model, "A1", 1), int(Qt::WaitCursor), s_cursorRole);
        moveMouse(f.view.viewport(), linkCell + QPoint(2, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);

        // Entering the header puts the arrow back, and the next move reads the cell again.
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(f.view.header(), &enter);
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        moveMouse(f.view.viewport(), linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::WaitCursor);

        // A model reset while hovering leaves the view usable.
        f.model->clear();
        moveMouse(f.view.viewport(), linkCell + QPoint(1, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        QScopedPointer<QMenu> menu(f.view.buildContextMenu(linkCell));
        QVERIFY(!entry(menu.data(), "Expand All from here.")->isEnabled());
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
        const QRgb grid = qRgb(0xD3, 0xD3, 0xD3);
        auto at = [&](int x, int y) { return image.pixel(x, y) & 0xffffff; };

        // Every row: one-pixel lines on the last column and the last line of each cell.
        for (const char* name : { "A", "B", "C" }) {
            const QRect amount = f.view.visualRect(find(f.model, name, 2));
            const QRect city = f.view.visualRect(find(f.model, name, 1));
            QCOMPARE(amount.left(), 120);
            QCOMPARE(city.left(), 220);
            const int y = amount.top() + 2;
            QCOMPARE(at(119, y), grid & 0xffffff);
            QCOMPARE(at(219, y), grid & 0xffffff);
            QVERIFY(at(118, y) != (grid & 0xffffff));
            QVERIFY(at(120, y) != (grid & 0xffffff));
            QVERIFY(at(218, y) != (grid & 0xffffff));
            // The stretched last column is outlined at the viewport's edge.
            QCOMPARE(at(f.view.viewport()->width() - 1, y), grid & 0xffffff);
            for (int x : { 60, 170, 300 }) {
                QCOMPARE(at(x, amount.bottom()), grid & 0xffffff);
                QVERIFY(at(x, amount.bottom() - 1) != (grid & 0xffffff));
                QVERIFY(at(x, amount.bottom() + 1) != (grid & 0xffffff));
            }
        }
        // Below the last row nothing is drawn.
        const int below = f.view.visualRect(find(f.model, "C")).bottom() + 5;
        QVERIFY(at(119, below) != (grid & 0xffffff));
        QVERIFY(at(60, below) != (grid & 0xffffff));
    }

    void headerStateRoundTrip()
    {
        QByteArray saved;
        {
            Fixture f;
            f.view.header()->moveSection(2, 0);
            f.view.setColumnHidden(1, true);
            f.view.setColumnWidth(0, 77);
            f.view.saveState();
            VSettings settings;
            saved = settings.value("views/customerTree").toByteArray();
            QCOMPARE(saved, f.view.header()->saveState());
        }
        Fixture f;
        f.view.restoreState();
        QCOMPARE(f.view.header()->visualIndex(2), 0);
        QVERIFY(f.view.isColumnHidden(1));
        QCOMPARE(f.view.columnWidth(0), 77);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 2 }));
        VSettings settings;
        QVERIFY(settings.contains("views/customerTree"));

        // Without a model nothing happens, and the entry stays.
        VTreeView bare;
        bare.setObjectName("customerTree");
        bare.restoreState();
        QCOMPARE(bare.header()->count(), 0);
        QVERIFY(settings.contains("views/customerTree"));
    }

    void missingHeaderStateLeavesTheHeader()
    {
        Fixture f;
        f.view.header()->moveSection(1, 0);
        f.view.restoreState();
        QCOMPARE(f.view.header()->visualIndex(1), 0);
        VSettings settings;
        QVERIFY(!settings.contains("views/customerTree"));
    }

    void badHeaderStateIsRemoved_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("text") << QVariant("garbage");
        QTest::newRow("number") << QVariant(42);
        QTest::newRow("random bytes") << QVariant(QByteArray::fromHex("ff000000000000000100000000deadbeef"));
        QTest::newRow("list") << QVariant(QStringList { "a", "b" });
        QTest::newRow("huge count") << QVariant(
            QByteArray::fromHex("000000ff00000000000000010000000000000000000000007fffffff"));
        QTest::newRow("truncated") << QVariant(QByteArray());
        QTest::newRow("other column count") << QVariant(QByteArray("two columns"));
    }

    void badHeaderStateIsRemoved()
    {
        QFETCH(QVariant, stored);
        if (QTest::currentDataTag() == QByteArray("truncated")) {
            Fixture f;
            const QByteArray good = f.view.header()->saveState();
            stored = good.left(good.size() - 20);
        } else if (QTest::currentDataTag() == QByteArray("other column count")) {
            Fixture f;
            f.model->setColumnCount(2);
            f.view.header()->moveSection(1, 0);
            stored = f.view.header()->saveState();
        }
        {
            VSettings settings;
            settings.setValue("views/customerTree", stored);
        }
        Fixture f;
        f.view.header()->moveSection(2, 0);
        f.view.restoreState();
        // Not applied: the header is as it was, with the model's columns.
        QCOMPARE(f.view.header()->count(), 3);
        QCOMPARE(f.view.header()->visualIndex(2), 0);
        QCOMPARE(f.view.header()->visualIndex(1), 2);
        VSettings settings;
        QVERIFY(!settings.contains("views/customerTree"));
    }
};

QTEST_MAIN(TestVTreeView)
#include "tst_vtreeview.moc"
