// A record action that an application withholds (VAuthAction::authorized cleared on the toolbar
// action found by its object name) must not be reachable by any path a view widget offers, and a
// read-only view widget must offer nothing that creates, copies or deletes.

#include "viewwidgettesthelpers.h"
#include "vtestsettings.h"

#include <vauthaction.h>
#include <vcrudtoolbar.h>
#include <vtableview.h>
#include <vtableviewwidget.h>
#include <vtreeview.h>
#include <vtreeviewwidget.h>

#include <QLayout>
#include <QMenu>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace {

struct ActionInfo {
    const char* suffix;
    const char* widgetSignal;
    const char* toolBarSignal;
    const char* slot;
};

const ActionInfo Actions[] = {
    { "_New", SIGNAL(newTriggered(int)), SIGNAL(newTriggered()), "_newTriggered" },
    { "_Copy", SIGNAL(copyTriggered(int, QModelIndex)), SIGNAL(copyTriggered()), "_copyTriggered" },
    { "_Edit", SIGNAL(editTriggered(int, QModelIndex)), SIGNAL(editTriggered()), "_editTriggered" },
    { "_Delete", SIGNAL(deleteTriggered(int, QModelIndexList)), SIGNAL(deleteTriggered()),
        "_deleteTriggered" },
    { "_Email", SIGNAL(emailTriggered(int, QModelIndex)), SIGNAL(emailTriggered()), "_emailTriggered" },
    { "_Save", SIGNAL(submitTriggered(int)), SIGNAL(submitTriggered()), "_submitTriggered" },
    { "_Cancel", SIGNAL(revertTriggered(int)), SIGNAL(revertTriggered()), "_revertTriggered" },
};

const ActionInfo& info(const QString& suffix)
{
    for (const ActionInfo& action : Actions) {
        if (suffix == QLatin1String(action.suffix))
            return action;
    }
    qFatal("unknown action %s", qPrintable(suffix));
    return Actions[0];
}

// Every entry of a menu and of its sub-menus.
QList<QAction*> allEntries(const QMenu* menu)
{
    QList<QAction*> entries;
    for (QAction* action : menu->actions()) {
        entries << action;
        if (action->menu())
            entries << allEntries(action->menu());
    }
    return entries;
}

// A shown table or tree view widget named Orders, with view id 3, editing on double click, over five rows.
class Screen {
public:
    explicit Screen(bool tree)
        : model(5)
    {
        if (tree) {
            auto* treeWidget = new VTreeViewWidget(QStringLiteral("Orders"));
            treeView = new VTreeView;
            treeView->setModel(&model);
            treeWidget->setView(treeView);
            widget.reset(treeWidget);
        } else {
            auto* tableWidget = new VTableViewWidget(QStringLiteral("Orders"));
            tableView = new VTableView;
            tableView->setModel(&model);
            tableWidget->setView(tableView);
            widget.reset(tableWidget);
        }
        widget->setOptions(VAbstractViewWidget::DoubleClickEdits);
        widget->viewId = 3;
        QObject::connect(widget.get(), &VAbstractViewWidget::readOnlyChanged,
            [this](int, bool readOnly) { widgetReadOnly = readOnly; });
        widget->resize(900, 400);
        widget->show();
    }

    VCrudToolBar* toolBar() const { return widget->toolBar(); }
    QAbstractItemView* view() const { return widget->view(); }

    /// The record action the application finds by name.
    VAuthAction* action(const char* suffix) const
    {
        return widget->findChild<VAuthAction*>(
            widget->objectName() + QLatin1String("_ToolBar") + QLatin1String(suffix));
    }

    /// The context menu the view offers at row 1.
    std::unique_ptr<QMenu> contextMenu() const
    {
        if (tableView)
            return std::unique_ptr<QMenu>(tableView->createContextMenu());
        return std::unique_ptr<QMenu>(
            treeView->buildContextMenu(treeView->visualRect(model.index(1, 0)).center()));
    }

    RecordModel model;
    std::unique_ptr<VAbstractViewWidget> widget;
    VTableView* tableView = nullptr;
    VTreeView* treeView = nullptr;
    bool widgetReadOnly = false;
};

const QKeySequence ActionShortcut(Qt::CTRL + Qt::Key_F9);

// Answers delete confirmations with Yes and counts them; closes any other dialog an entry opens.
struct Dialogs {
    Dialogs()
        : watcher([this](QWidget* modal) {
            if (auto* box = qobject_cast<QMessageBox*>(modal)) {
                ++confirmations;
                box->button(QMessageBox::Yes)->click();
            } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
                dialog->reject();
            }
        })
    {
    }
    int confirmations = 0;
    ModalWatcher watcher;
};

// Tries every way the library offers to run @p action: its toolbar button (mouse, Space, Return),
// its shortcut, QAction::trigger(), every entry of the view's context menu, a real double click on
// a row, and the widget's slot called directly.
void tryEveryPath(Screen& screen, VAuthAction* action, const char* slot)
{
    QCoreApplication::sendPostedEvents();
    screen.toolBar()->layout()->activate();
    QWidget* button = screen.toolBar()->widgetForAction(action);
    if (button && button->isVisible()) {
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(button, Qt::Key_Space);
        QTest::keyClick(button, Qt::Key_Return);
    }
    action->setShortcut(ActionShortcut);
    QTest::keyClick(screen.widget.get(), Qt::Key_F9, Qt::ControlModifier);
    action->setShortcut(QKeySequence());
    action->trigger();

    const std::unique_ptr<QMenu> menu = screen.contextMenu();
    QVERIFY(menu);
    const QList<QAction*> entries = allEntries(menu.get());
    QVERIFY(!entries.contains(action));
    for (QAction* entry : entries) {
        QVERIFY(entry->text() != action->text());
        // The column chooser is a dialog about columns, not records; the rest is run.
        if (!entry->isSeparator() && !entry->menu()
            && entry->text() != QLatin1String("Select Visible Columns..."))
            entry->trigger();
    }

    const QRect cell = screen.view()->visualRect(screen.model.index(2, 1));
    QTest::mouseClick(screen.view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(screen.view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());

    QMetaObject::invokeMethod(screen.widget.get(), slot, Qt::DirectConnection);
}

} // namespace

class tst_Permissions : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void withheldActionUnreachable_data();
    void withheldActionUnreachable();
    void withheldEditStillViewsReadOnly();
    void readOnlyNeverCreatesCopiesOrDeletes_data();
    void readOnlyNeverCreatesCopiesOrDeletes();
    void grantedActionsWork();

private:
    VTestSettings m_settings;
};

void tst_Permissions::initTestCase()
{
    qRegisterMetaType<QItemSelection>();
    qRegisterMetaType<QModelIndexList>();
}

void tst_Permissions::withheldActionUnreachable_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("tree");
    for (const ActionInfo& action : Actions) {
        QTest::addRow("%s table", action.suffix) << QString::fromLatin1(action.suffix) << false;
        QTest::addRow("%s tree", action.suffix) << QString::fromLatin1(action.suffix) << true;
    }
}

void tst_Permissions::withheldActionUnreachable()
{
    QFETCH(QString, suffix);
    QFETCH(bool, tree);
    const ActionInfo& withheldInfo = info(suffix);

    Screen screen(tree);
    QVERIFY(QTest::qWaitForWindowActive(screen.widget.get()));
    // Shown first, withheld afterwards: the button is still on screen until the next option word.
    screen.toolBar()->setOptions(VCrudToolBar::NoPdf);
    VAuthAction* withheld = screen.action(withheldInfo.suffix);
    QVERIFY(withheld);
    withheld->authorized = false;

    QSignalSpy widgetSpy(screen.widget.get(), withheldInfo.widgetSignal);
    QSignalSpy toolBarSpy(screen.toolBar(), withheldInfo.toolBarSignal);
    const bool isEdit = suffix == QLatin1String("_Edit");
    // The withheld edit may only ever run as viewing, that is while the widget is read-only.
    int viewsWhileReadOnly = 0;
    if (isEdit)
        QObject::connect(screen.widget.get(), &VAbstractViewWidget::editTriggered, [&] {
            QVERIFY(screen.widgetReadOnly);
            ++viewsWhileReadOnly;
        });
    // Deleting is confirmed: a withheld delete must not even ask.
    Dialogs dialogs;
    QSignalSpy doubleClicks(screen.widget.get(), &VAbstractViewWidget::doubleClicked);
    QSignalSpy edits(screen.widget.get(), &VAbstractViewWidget::editTriggered);

    TestViewWidget parent;
    // Each change of state, and whether the toolbar then takes its edit action for a view action.
    const QList<QPair<QString, std::function<void()>>> changes = {
        { "stale button", [] {} },
        { "toolbar options", [&] { screen.toolBar()->setOptions(VCrudToolBar::SearchAsYouType); } },
        { "read only", [&] { screen.widget->setReadOnly(true); } },
        { "writable", [&] { screen.widget->setReadOnly(false); } },
        { "widget NoDelete",
            [&] {
                screen.widget->setOptions(
                    VAbstractViewWidget::DoubleClickEdits | VAbstractViewWidget::NoDelete);
            } },
        { "widget options", [&] { screen.widget->setOptions(VAbstractViewWidget::DoubleClickEdits); } },
        { "refresh only preset", [&] { screen.toolBar()->setOptionsRefreshOnly(true, true); } },
        { "all shown", [&] { screen.toolBar()->setOptions(VCrudToolBar::Options()); } },
        { "form edit preset", [&] { screen.toolBar()->setOptionsFormEdit(true, true, true); } },
        { "tree edit preset", [&] { screen.toolBar()->setOptionsTreeViewEdit(true, true); } },
        { "toolbar view only", [&] { screen.toolBar()->setViewOnly(true); } },
        { "toolbar not view only", [&] { screen.toolBar()->setViewOnly(false); } },
        { "toolbar read only", [&] { screen.toolBar()->setReadOnly(true); } },
        { "toolbar writable", [&] { screen.toolBar()->setReadOnly(false); } },
        { "pending edits", [&] { screen.widget->enableSubmit(); } },
        { "linked", [&] { screen.widget->setLinkedWidget(&parent); } },
        { "model reset", [&] { screen.model.reset(); } },
        { "actions enabled by hand",
            [&] {
                for (QAction* action : screen.toolBar()->actions())
                    action->setEnabled(true);
            } },
        { "renamed", [&] { screen.widget->setObjectName(QStringLiteral("Orders2")); } },
        { "read only again", [&] { screen.widget->setReadOnly(true); } },
        { "writable again", [&] { screen.widget->setReadOnly(false); } },
    };
    for (const auto& change : changes) {
        change.second();
        // Renaming keeps the flag: the application finds the same withheld action by the new name.
        QCOMPARE(screen.action(withheldInfo.suffix), withheld);
        QVERIFY(!withheld->authorized);
        tryEveryPath(screen, withheld, withheldInfo.slot);
        const QString state = QStringLiteral(" after '%1'").arg(change.first);
        if (isEdit) {
            QVERIFY2(!QTest::currentTestFailed(), qPrintable(QStringLiteral("edit while writable") + state));
        } else {
            QVERIFY2(widgetSpy.isEmpty(), qPrintable(suffix + state));
            QVERIFY2(toolBarSpy.isEmpty(), qPrintable(suffix + state));
        }
        QVERIFY2(dialogs.confirmations == 0, qPrintable(QStringLiteral("asked to confirm") + state));
        // The view still answers double clicks: as an edit when editing is allowed, else as a double click.
        QVERIFY2(
            doubleClicks.count() + edits.count() > 0, qPrintable(QStringLiteral("no double click") + state));
        doubleClicks.clear();
        edits.clear();
    }
    // Viewing did get through while read-only, so the edit check above was not idle.
    if (isEdit)
        QVERIFY(viewsWhileReadOnly > 0);
}

void tst_Permissions::withheldEditStillViewsReadOnly()
{
    Screen screen(false);
    QVERIFY(QTest::qWaitForWindowActive(screen.widget.get()));
    VAuthAction* edit = screen.action("_Edit");
    edit->authorized = false;
    screen.toolBar()->setOptions(VCrudToolBar::NoPdf);
    QVERIFY(!edit->isVisible());
    screen.widget->setCurrentIndex(screen.model.index(4, 0));
    QSignalSpy spy(screen.widget.get(), &VAbstractViewWidget::editTriggered);

    // Writable: the toolbar, even when told it is view-only, and the widget both refuse.
    edit->trigger();
    screen.toolBar()->setViewOnly(true);
    edit->trigger();
    QMetaObject::invokeMethod(screen.widget.get(), "_editTriggered", Qt::DirectConnection);
    QCOMPARE(spy.count(), 0);

    // Read-only: the edit action is the view action and reports the current row.
    screen.widget->setReadOnly(true);
    QCOMPARE(edit->text(), QStringLiteral("View..."));
    edit->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 3);
    QCOMPARE(spy.at(0).at(1).toModelIndex(), screen.model.index(4, 0));
    screen.widget->setReadOnly(false);
    edit->trigger();
    QCOMPARE(spy.count(), 1);
}

void tst_Permissions::readOnlyNeverCreatesCopiesOrDeletes_data()
{
    QTest::addColumn<bool>("tree");
    QTest::newRow("table") << false;
    QTest::newRow("tree") << true;
}

void tst_Permissions::readOnlyNeverCreatesCopiesOrDeletes()
{
    QFETCH(bool, tree);
    Screen screen(tree);
    QVERIFY(QTest::qWaitForWindowActive(screen.widget.get()));
    screen.toolBar()->setOptions(VCrudToolBar::NoPdf);
    screen.widget->setReadOnly(true);
    QSignalSpy newSpy(screen.widget.get(), &VAbstractViewWidget::newTriggered);
    QSignalSpy copySpy(screen.widget.get(), &VAbstractViewWidget::copyTriggered);
    QSignalSpy deleteSpy(screen.widget.get(), &VAbstractViewWidget::deleteTriggered);
    QSignalSpy edits(screen.widget.get(), &VAbstractViewWidget::editTriggered);
    Dialogs dialogs;

    // Every action authorized, and switched back on by every means the widget and toolbar offer.
    const QList<std::function<void()>> changes = {
        [] {},
        [&] { screen.toolBar()->setReadOnly(false); },
        [&] { screen.toolBar()->setViewOnly(false); },
        [&] {
            for (QAction* action : screen.toolBar()->actions())
                action->setEnabled(true);
        },
        [&] { screen.toolBar()->setOptionsFormEdit(true, true, true); },
        [&] {
            screen.widget->setOptions(
                VAbstractViewWidget::DoubleClickEdits | VAbstractViewWidget::NoDeleteConfirm);
        },
        [&] { screen.model.reset(); },
        [&] { screen.widget->refreshToolBar(); },
    };
    for (int i = 0; i < changes.size(); ++i) {
        changes.at(i)();
        for (const char* suffix : { "_New", "_Copy", "_Delete" })
            tryEveryPath(screen, screen.action(suffix), info(QString::fromLatin1(suffix)).slot);
        QVERIFY2(
            newSpy.isEmpty() && copySpy.isEmpty() && deleteSpy.isEmpty(), qPrintable(QString::number(i)));
        QCOMPARE(dialogs.confirmations, 0);
    }
    // Viewing is what read-only leaves: the double clicks opened the current row for viewing.
    QVERIFY(edits.count() > 0);
    QCOMPARE(edits.at(0).at(0).toInt(), 3);
}

void tst_Permissions::grantedActionsWork()
{
    // The same paths with nothing withheld: each of them does reach the widget.
    Screen screen(false);
    QVERIFY(QTest::qWaitForWindowActive(screen.widget.get()));
    screen.toolBar()->setOptions(VCrudToolBar::NoPdf);
    VAuthAction* newAction = screen.action("_New");
    QSignalSpy spy(screen.widget.get(), &VAbstractViewWidget::newTriggered);
    QCoreApplication::sendPostedEvents();
    screen.toolBar()->layout()->activate();
    QWidget* button = screen.toolBar()->widgetForAction(newAction);
    QVERIFY(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(spy.count(), 2);
    newAction->setShortcut(ActionShortcut);
    QTest::keyClick(screen.widget.get(), Qt::Key_F9, Qt::ControlModifier);
    QCOMPARE(spy.count(), 3);
    newAction->trigger();
    QCOMPARE(spy.count(), 4);
    QMetaObject::invokeMethod(screen.widget.get(), "_newTriggered", Qt::DirectConnection);
    QCOMPARE(spy.count(), 5);
    QCOMPARE(spy.at(4).at(0).toInt(), 3);

    // A real double click edits the row.
    QSignalSpy edits(screen.widget.get(), &VAbstractViewWidget::editTriggered);
    const QRect cell = screen.view()->visualRect(screen.model.index(2, 1));
    QTest::mouseClick(screen.view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(screen.view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QCOMPARE(edits.count(), 1);
    QCOMPARE(edits.at(0).at(1).toModelIndex(), screen.model.index(2, 1));

    // A granted delete asks first, then reports the selected row.
    QSignalSpy deletes(screen.widget.get(), &VAbstractViewWidget::deleteTriggered);
    MessageBoxAnswer box(QMessageBox::Yes);
    screen.action("_Delete")->trigger();
    QCOMPARE(box.shown, 1);
    QCOMPARE(deletes.count(), 1);
    QCOMPARE(deletes.at(0).at(1).value<QModelIndexList>(), QModelIndexList({ screen.model.index(2, 0) }));
}

QTEST_MAIN(tst_Permissions)
#include "tst_permissions.moc"
