#include "viewtesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vclearlineedit.h>
#include <vclickablelabel.h>
#include <vcrudtoolbar.h>
#include <vfilterhorizontalheaderview.h>
#include <vsortfilterproxymodel.h>
#include <vtableview.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

namespace {
// key, name, city, paid, amount
QStandardItemModel* makeModel(QObject* parent)
{
    const struct {
        int key;
        const char* name;
        const char* city;
        const char* paid;
        int amount;
    } rows[] = {
        { 10, "Anna", "Berlin", "Yes", 120 },
        { 20, "Bernd", "Bremen", "No", 3120 },
        { 30, "Clara", "Köln", "Yes", 45 },
        { 40, "Dora", "Berlin", "No", 990 },
        { 50, "Emil", "Bonn", "Yes", 7 },
    };
    auto model = new QStandardItemModel(0, 5, parent);
    model->setHorizontalHeaderLabels({ "Key", "Name", "City", "Paid", "Amount" });
    for (const auto& r : rows) {
        auto key = new QStandardItem;
        key->setData(r.key, Qt::DisplayRole);
        auto amount = new QStandardItem;
        amount->setData(r.amount, Qt::DisplayRole);
        model->appendRow(
            { key, new QStandardItem(QString::fromUtf8(r.name)), new QStandardItem(QString::fromUtf8(r.city)),
                new QStandardItem(QString::fromLatin1(r.paid)), amount });
    }
    return model;
}

QList<int> visibleKeys(const QAbstractItemModel* model)
{
    QList<int> keys;
    for (int row = 0; row < model->rowCount(); ++row)
        keys << model->index(row, 0).data().toInt();
    return keys;
}

// Closes the next modal message box and tells what it said.
struct MessageBoxCatcher {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;

    void arm()
    {
        QTimer::singleShot(0, [this] {
            auto box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return arm();
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            box->done(QMessageBox::Ok);
        });
    }
};

} // namespace

using namespace ViewTest;

class TestVTableView : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

    struct Fixture {
        VTableView view;
        VSortFilterProxyModel proxy;
        QStandardItemModel* source;
        Fixture()
        {
            source = makeModel(&proxy);
            proxy.setSourceModel(source);
            view.setObjectName("ordersView");
            view.setModel(&proxy);
            view.resize(500, 300);
        }
    };

private Q_SLOTS:
    void init() { m_settings.clear(); }

    void construction()
    {
        VTableView view;
        QCOMPARE(view.selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(view.selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(view.editTriggers(), QAbstractItemView::NoEditTriggers);
        QCOMPARE(view.verticalHeader()->defaultSectionSize(), 17);
        QVERIFY(view.verticalHeader()->isHidden());
        QVERIFY(qobject_cast<VFilterHorizontalHeaderView*>(view.horizontalHeader()));
        QCOMPARE(view.horizontalHeader()->parent(), &view);
        QVERIFY(view.horizontalHeader()->sectionsMovable());
        QVERIFY(view.isSortingEnabled());
        QCOMPARE(view.contextMenuPolicy(), Qt::CustomContextMenu);
        QVERIFY(view.hasMouseTracking());
        QVERIFY(!view.showViewCommands());
        QVERIFY(!view.toolBar());
        QVERIFY(!view.horizontalHeader()->isSortIndicatorShown());
        QCOMPARE(view.horizontalHeader()->sortIndicatorSection(), -1);
    }

    void movingBetweenRowsNeverSubmits()
    {
        VTableView view;
        SubmitCountingModel model(3, 2);
        view.setModel(&model);
        view.setCurrentIndex(model.index(0, 0));
        view.setCurrentIndex(model.index(2, 1));
        QCOMPARE(model.submits, 0);
    }

    void rowHeight()
    {
        Fixture f;
        f.view.setColumnFilterWidget(1, new QLineEdit);
        f.view.setRowHeight(23);
        QCOMPARE(f.view.verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
        QCOMPARE(f.view.verticalHeader()->defaultSectionSize(), 23);
        QCOMPARE(static_cast<VFilterHorizontalHeaderView*>(f.view.horizontalHeader())->filterRowHeight(), 23);
    }

    void filterWidgetNeedsTheProxy()
    {
        VTableView view;
        view.setObjectName("plainView");
        QStandardItemModel model(2, 2);
        view.setModel(&model);
        VTestLogCapture log;
        auto edit = new QLineEdit;
        view.setColumnFilterWidget(1, edit);
        const QList<VTestLogCapture::Entry> entries = log.entries();
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries.at(0).level, Logger::Error);
        QCOMPARE(entries.at(0).message, QString("Must use VSortFilterProxyModel derived model. plainView"));
        QCOMPARE(entries.at(0).function, QString("void VTableView::setColumnFilterWidget(int, QWidget*)"));
        QCOMPARE(entries.at(0).file, QString("Core/src/widgets/views/vtableview.cpp"));
        QVERIFY(!static_cast<VFilterHorizontalHeaderView*>(view.horizontalHeader())->filterWidget(1));
        delete edit;
    }

    void lineEditFiltersOnReturnOrClear()
    {
        Fixture f;
        auto edit = new VClearLineEdit;
        f.view.setColumnFilterWidget(2, edit);
        QCOMPARE(f.proxy.filterKeyColumns(), QList<int> { 2 });
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        f.view.setCurrentIndex(f.proxy.index(3, 1));

        QTest::keyClicks(edit, "berl");
        QCOMPARE(f.proxy.rowCount(), 5);
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 10, 40 }));
        QCOMPARE(f.view.currentIndex(), f.proxy.index(0, 0));

        // The clear button re-filters (queued), with no Return.
        QMetaObject::invokeMethod(edit, "_clear");
        QTRY_COMPARE(f.proxy.rowCount(), 5);
        QCOMPARE(f.view.currentIndex(), f.proxy.index(0, 0));
    }

    void comboBoxAndHiddenColumns()
    {
        Fixture f;
        QComboBox* yesNo = f.view.createYesNoComboBox();
        QCOMPARE(yesNo->parent(), &f.view);
        QCOMPARE(yesNo->count(), 3);
        QCOMPARE(yesNo->itemText(0), QString());
        QCOMPARE(yesNo->itemText(1), QString("Yes"));
        QCOMPARE(yesNo->itemText(2), QString("No"));
        auto name = new QLineEdit;
        f.view.setColumnFilterWidget(1, name);
        f.view.setColumnFilterWidget(3, yesNo);

        yesNo->setCurrentIndex(1);
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 10, 30, 50 }));
        name->setText("d");
        yesNo->setCurrentIndex(2);
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 20, 40 }));

        // A hidden column keeps the filter string it had.
        f.view.setColumnHidden(3, true);
        yesNo->setCurrentIndex(0);
        name->setText(QString());
        QMetaObject::invokeMethod(&f.view, "onFilterChanged");
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 20, 40 }));
        QCOMPARE(f.proxy.filterFixedString(3), QString("No"));
    }

    void contextMenuEntries()
    {
        Fixture f;
        QScopedPointer<QMenu> menu(f.view.createContextMenu());
        QVERIFY(menu);
        QVERIFY(menu->actions().isEmpty());

        f.view.setShowViewCommands(true);
        menu.reset(f.view.createContextMenu());
        QCOMPARE(menuTexts(menu.data()),
            (QStringList { "Sort in Natural Order", "--", "Select Visible Columns...", "--",
                "Export Visible Columns to csv File...", "Export ALL Columns to csv File...",
                "Export Visible Columns to csv File (Edit Role)...",
                "Export ALL Columns to csv File (Edit Role)..." }));
        for (QAction* a : menu->actions())
            QVERIFY(a->isEnabled());

        // Natural order and sorting toggle each other.
        menu->actions().first()->trigger();
        QCOMPARE(f.proxy.sortRole(), int(Qt::InitialSortOrderRole));
        menu.reset(f.view.createContextMenu());
        QCOMPARE(menu->actions().first()->text(), QString("Enable Sorting"));
        menu->actions().first()->trigger();
        QCOMPARE(f.proxy.sortRole(), int(Qt::DisplayRole));

        f.view.setSortingEnabled(false);
        menu.reset(f.view.createContextMenu());
        QCOMPARE(menuTexts(menu.data()).first(), QString("--"));
        QCOMPARE(menu->actions().size(), 7);
    }

    void contextMenuFromToolBar()
    {
        Fixture f;
        VCrudToolBar toolBar(nullptr);
        // A tool button with a menu becomes a sub-menu named after its action.
        auto printButton = new QToolButton;
        auto printMenu = new QMenu(printButton);
        printMenu->addAction("A4");
        printMenu->addAction("Letter");
        printButton->setMenu(printMenu);
        QAction* printAction = toolBar.addWidget(printButton);
        printAction->setText("Print");
        printAction->setIcon(QIcon(":/images/pdf"));
        // A clickable label becomes an entry named after its tool tip.
        auto label = new VClickableLabel("3 filters");
        label->setToolTip("Edit the filters");
        QAction* labelAction = toolBar.addWidget(label);
        int staleCalls = 0;
        connect(labelAction, &QAction::triggered, [&staleCalls] { ++staleCalls; });
        // A plain button without a menu adds nothing.
        toolBar.addWidget(new QToolButton);
        toolBar.addSeparator();

        f.view.setToolBar(&toolBar);
        QCOMPARE(f.view.toolBar(), &toolBar);
        f.view.setShowViewCommands(true);
        QScopedPointer<QMenu> menu(f.view.createContextMenu());
        const QStringList texts = menuTexts(menu.data());
        // The toolbar's own separators come first (new, copy, ... are plain buttons and add nothing).
        QStringList expected;
        for (QAction* a : toolBar.actions()) {
            if (a->isSeparator())
                expected << "--";
            else if (a == printAction)
                expected << "Print";
            else if (a == labelAction)
                expected << "Edit the filters";
        }
        expected << "Sort in Natural Order"
                 << "--"
                 << "Select Visible Columns..."
                 << "--"
                 << "Export Visible Columns to csv File..."
                 << "Export ALL Columns to csv File..."
                 << "Export Visible Columns to csv File (Edit Role)..."
                 << "Export ALL Columns to csv File (Edit Role)...";
        QCOMPARE(texts, expected);
        QCOMPARE(texts.count("--"), 4 + 2); // first, search, second and the one added here

        const int printIndex = texts.indexOf("Print");
        QMenu* subMenu = menu->actions().at(printIndex)->menu();
        QCOMPARE(subMenu, printMenu);
        QCOMPARE(subMenu->title(), QString("Print"));
        QVERIFY(!subMenu->icon().isNull());
        QCOMPARE(menuTexts(subMenu), (QStringList { "A4", "Letter" }));

        QAction* labelEntry = menu->actions().at(texts.indexOf("Edit the filters"));
        QCOMPARE(labelEntry, labelAction);
        QSignalSpy clicked(label, &VClickableLabel::clicked);
        labelEntry->trigger();
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(staleCalls, 0);

        // Building the menu again connects the label once, not twice.
        menu.reset(f.view.createContextMenu());
        labelAction->trigger();
        QCOMPARE(clicked.count(), 2);

        // Without the view commands only the toolbar's part remains.
        f.view.setShowViewCommands(false);
        menu.reset(f.view.createContextMenu());
        QCOMPARE(menuTexts(menu.data()), expected.mid(0, expected.indexOf("Sort in Natural Order")));
    }

    void naturalOrderAfterSorting()
    {
        Fixture f;
        f.view.sortByColumn(4, Qt::AscendingOrder);
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 50, 30, 10, 40, 20 }));
        QMetaObject::invokeMethod(&f.view, "sortEnableToggled");
        QCOMPARE(f.proxy.sortRole(), int(Qt::InitialSortOrderRole));
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 10, 20, 30, 40, 50 }));
        QMetaObject::invokeMethod(&f.view, "sortEnableToggled");
        QCOMPARE(visibleKeys(&f.proxy), (QList<int> { 50, 30, 10, 40, 20 }));
    }

    void csvExport_data()
    {
        QTest::addColumn<bool>("visibleOnly");
        QTest::addColumn<int>("role");
        QTest::addColumn<QByteArray>("bytes");

        // Column Amount moved to the front, City hidden.
        QTest::newRow("visible") << true << int(Qt::DisplayRole)
                                 << QByteArray("\"Amount\",\"Key\",\"Name\",\"Paid\"\n"
                                               "\"120\",\"10\",\"Anna\",\"Yes\"\n"
                                               "\"3120\",\"20\",\"Bernd\",\"No\"\n"
                                               "\"45\",\"30\",\"Clara\",\"Yes\"\n"
                                               "\"990\",\"40\",\"Dora\",\"No\"\n"
                                               "\"7\",\"50\",\"Emil\",\"Yes\"\n");
        QTest::newRow("all") << false << int(Qt::EditRole)
                             << QByteArray("\"Amount\",\"Key\",\"Name\",\"City\",\"Paid\"\n"
                                           "\"120\",\"10\",\"Anna\",\"Berlin\",\"Yes\"\n"
                                           "\"3120\",\"20\",\"Bernd\",\"Bremen\",\"No\"\n"
                                           "\"45\",\"30\",\"Clara\",\"K\xc3\xb6ln\",\"Yes\"\n"
                                           "\"990\",\"40\",\"Dora\",\"Berlin\",\"No\"\n"
                                           "\"7\",\"50\",\"Emil\",\"Bonn\",\"Yes\"\n");
    }

    void csvExport()
    {
        QFETCH(bool, visibleOnly);
        QFETCH(int, role);
        QFETCH(QByteArray, bytes);

        Fixture f;
        f.view.horizontalHeader()->moveSection(4, 0);
        f.view.setColumnHidden(2, true);
        const QString path = m_settings.dir() + "/export.csv";
        MessageBoxCatcher box;
        box.arm();
        f.view.writeToCsv(path, visibleOnly, role);
        QCOMPARE(box.title, QString("File Saved"));
        QCOMPARE(box.text, QString("Data exported to '%1'.").arg(path));
        QCOMPARE(box.icon, QMessageBox::Information);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes);
        QCOMPARE(f.view.visibleColumns(), (QList<int> { 0, 1, 3, 4 }));
    }

    void csvExportToUnwritablePath()
    {
        Fixture f;
        f.view.setCurrentIndex(f.proxy.index(2, 0));
        MessageBoxCatcher box;
        box.arm();
        f.view.writeToCsv("/nonexistent-folder/x.csv", true, Qt::DisplayRole);
        QCOMPARE(box.title, QString("Save Error"));
        QCOMPARE(box.text, QString("There was an error saving the csv file."));
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(f.view.currentIndex(), f.proxy.index(2, 0));
        QVERIFY(!QFile::exists("/nonexistent-folder/x.csv"));
    }

    void links_data() { addLinkRows(); }

    void links()
    {
        QFETCH(QString, link);
        QFETCH(int, flags);
        QFETCH(QString, emitted);

        Fixture f;
        f.source->item(1, 1)->setData(link, linkRole);
        f.source->item(1, 1)->setData(flags, linkFlagsRole);
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        QSignalSpy spy(&f.view, &VTableView::linkClicked);
        VTestLogCapture log;
        const QRect cell = f.view.visualRect(f.proxy.index(1, 1));
        QTest::mouseClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QTest::mouseDClick(f.view.viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        if (emitted.isEmpty()) {
            QCOMPARE(spy.count(), 0);
        } else {
            QCOMPARE(spy.count(), 1);
            QCOMPARE(spy.at(0).at(0).toUrl(), QUrl(emitted));
        }
        if (QTest::currentDataTag() == QByteArray("invalid")) {
            QCOMPARE(log.messages(Logger::Error).size(), 1);
            QVERIFY(log.messages(Logger::Error).first().startsWith("Invalid URL: "));
        }
        const QStringList debug = log.messages(Logger::Debug);
        QVERIFY(!debug.isEmpty());
        for (const VTestLogCapture::Entry& e : log.entries())
            QCOMPARE(e.function, QString("virtual void VTableView::onDoubleClicked(const QModelIndex&)"));
    }

    void linkCursor()
    {
        Fixture f;
        f.source->item(2, 1)->setData(int(Qt::PointingHandCursor), cursorRole);
        f.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f.view));
        const QPoint linkCell = f.view.visualRect(f.proxy.index(2, 1)).center();
        const QPoint plainCell = f.view.visualRect(f.proxy.index(1, 1)).center();
        moveMouse(f.view.viewport(), linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);
        moveMouse(f.view.viewport(), plainCell);
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        moveMouse(f.view.viewport(), linkCell);
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);
        // Moving within the same cell does not read the model again.
        f.source->item(2, 1)->setData(int(Qt::WaitCursor), cursorRole);
        moveMouse(f.view.viewport(), linkCell + QPoint(2, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::PointingHandCursor);

        // Entering a header puts the arrow back.
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(f.view.horizontalHeader(), &enter);
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);

        // A model reset while hovering leaves the view usable.
        f.source->clear();
        moveMouse(f.view.viewport(), linkCell + QPoint(1, 0));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
    }

    void headerStateRoundTrip()
    {
        QByteArray saved;
        {
            Fixture f;
            f.view.horizontalHeader()->moveSection(4, 1);
            f.view.setColumnHidden(2, true);
            f.view.setColumnWidth(1, 77);
            f.view.saveState("ignored", "also ignored");
            VSettings settings;
            saved = settings.value("views/ordersView").toByteArray();
            QCOMPARE(saved, f.view.horizontalHeader()->saveState());
        }
        Fixture f;
        f.view.restoreState();
        QCOMPARE(f.view.horizontalHeader()->visualIndex(4), 1);
        QVERIFY(f.view.isColumnHidden(2));
        QCOMPARE(f.view.columnWidth(1), 77);
        VSettings settings;
        QVERIFY(settings.contains("views/ordersView"));
    }

    void damagedHeaderStateIsRemoved_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("text") << QVariant("garbage");
        QTest::newRow("number") << QVariant(42);
        QTest::newRow("random bytes") << QVariant(QByteArray::fromHex("ff000000000000000100000000deadbeef"));
        QTest::newRow("list") << QVariant(QStringList { "a", "b" });
        QTest::newRow("huge count") << QVariant(
            QByteArray::fromHex("000000ff00000000000000010000000000000000000000007fffffff"));
    }

    void damagedHeaderStateIsRemoved()
    {
        QFETCH(QVariant, stored);
        {
            VSettings settings;
            settings.setValue("views/ordersView", stored);
        }
        Fixture f;
        f.view.restoreState();
        QCOMPARE(f.view.horizontalHeader()->count(), 5);
        VSettings settings;
        QVERIFY(!settings.contains("views/ordersView"));
    }

    void staleHeaderStateIsRemoved()
    {
        {
            Fixture f;
            f.source->setColumnCount(3);
            f.view.horizontalHeader()->moveSection(2, 0);
            f.view.saveState();
        }
        Fixture f;
        f.view.restoreState();
        QCOMPARE(f.view.horizontalHeader()->count(), 5);
        QCOMPARE(f.view.horizontalHeader()->visualIndex(2), 2);
        VSettings settings;
        QVERIFY(!settings.contains("views/ordersView"));
    }

    void mutatedHeaderStatesNeverBreakTheHeader()
    {
        Fixture f;
        f.view.horizontalHeader()->moveSection(4, 0);
        f.view.horizontalHeader()->moveSection(1, 3);
        f.view.setColumnHidden(2, true);
        f.view.setColumnWidth(3, 55);
        f.view.sortByColumn(1, Qt::DescendingOrder);
        const QByteArray good = f.view.horizontalHeader()->saveState();

        QRandomGenerator random(20261121);
        int accepted = 0;
        for (int i = 0; i < 400; ++i) {
            QByteArray bad = good;
            switch (i % 4) {
            case 0:
                bad[random.bounded(bad.size())] = char(random.bounded(256));
                break;
            case 1:
                bad.truncate(random.bounded(bad.size()));
                break;
            case 2:
                bad.insert(random.bounded(bad.size()), char(random.bounded(256)));
                break;
            default:
                for (int k = 0; k < 4; ++k)
                    bad[random.bounded(bad.size())] = char(random.bounded(256));
            }
            {
                VSettings settings;
                settings.setValue("views/ordersView", bad);
            }
            VTableView view;
            view.setObjectName("ordersView");
            view.setModel(&f.proxy);
            view.restoreState();
            QCOMPARE(view.horizontalHeader()->count(), 5);
            VSettings settings;
            if (settings.contains("views/ordersView"))
                ++accepted;
        }
        // Some flips land in values that do not matter (widths, flags) and are kept.
        QVERIFY(accepted < 400);
    }

    void keepSelectionAcrossRefresh()
    {
        Fixture f;
        f.view.setSelectionMode(QAbstractItemView::MultiSelection);
        QItemSelectionModel* selection = f.view.selectionModel();
        f.view.setCurrentIndex(f.proxy.index(3, 0));
        selection->select(f.proxy.index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        // A single cell is not a selected row, as for selectedRows(0).
        selection->select(f.proxy.index(4, 2), QItemSelectionModel::Select);
        f.view.preserveSelection();

        // A refresh that reorders and resets the rows.
        f.view.sortByColumn(1, Qt::DescendingOrder);
        f.source->insertRow(0, { new QStandardItem("60"), new QStandardItem("Fritz") });
        selection->clear();
        QVERIFY(selection->selectedRows().isEmpty());

        f.view.restoreSelection();
        QCOMPARE(f.view.currentIndex().data(Qt::EditRole).toInt(), 40);
        QCOMPARE(f.view.currentIndex().column(), 0);
        QList<int> selected;
        for (const QModelIndex& i : selection->selectedRows(0))
            selected << i.data(Qt::EditRole).toInt();
        std::sort(selected.begin(), selected.end());
        QCOMPARE(selected, (QList<int> { 20, 40 }));

        // Rows gone after the refresh are simply not selected again.
        f.source->removeRow(f.source->findItems("20").first()->row());
        selection->clear();
        f.view.restoreSelection();
        QCOMPARE(selection->selectedRows(0).size(), 1);
        QCOMPARE(selection->selectedRows(0).first().data().toInt(), 40);
    }
};

QTEST_MAIN(TestVTableView)
#include "tst_vtableview.moc"
