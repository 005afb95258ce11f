#include <QCheckBox>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include "vauthaction.h"
#include "vcrudtoolbar.h"
#include "vsearchlineedit.h"
#include "vtestsettings.h"

namespace {

// Records the words that reach the virtual setOptions.
class RecordingToolBar : public VCrudToolBar {
public:
    using VCrudToolBar::VCrudToolBar;
    void setOptions(Options newOptions) override
    {
        appliedWords << int(newOptions);
        VCrudToolBar::setOptions(newOptions);
    }
    QList<int> appliedWords;
};

const QStringList entryNames
    = { "expandAll", "collapseAll", "refresh", "csv", "firstSeparator", "new", "copy", "edit", "delete",
          "save", "cancel", "searchSeparator", "exclude", "search", "secondSeparator", "pdf", "email" };

QList<QAction*> entries(const VCrudToolBar& tb)
{
    return { tb.expandAllAction, tb.collapseAllAction, tb.refreshAction, tb.csvAction, tb.firstSeparator,
        tb.newAction, tb.copyAction, tb.editAction, tb.deleteAction, tb.submitAction, tb.revertAction,
        tb.searchSeparator, tb.excludeAction, tb.searchEditAction, tb.secondSeparator, tb.pdfAction,
        tb.emailAction };
}

void settle(VCrudToolBar& tb)
{
    QCoreApplication::sendPostedEvents();
    tb.layout()->activate();
}

QStringList shownEntries(VCrudToolBar& tb)
{
    settle(tb);
    QStringList shown;
    const QList<QAction*> actions = entries(tb);
    for (int i = 0; i < actions.size(); ++i) {
        if (actions.at(i)->isVisible() != tb.widgetForAction(actions.at(i))->isVisible())
            shown << "mismatch:" + entryNames.at(i);
        else if (actions.at(i)->isVisible())
            shown << entryNames.at(i);
    }
    return shown;
}

QStringList without(QStringList names, const QStringList& hidden)
{
    for (const QString& name : hidden)
        names.removeAll(name);
    return names;
}

VCrudToolBar::Options word(int bits)
{
    return VCrudToolBar::Options(QFlag(bits));
}

QImage image(const QIcon& icon)
{
    return icon.pixmap(16, 16).toImage();
}

QImage image(const char* path)
{
    return image(QIcon(QString::fromLatin1(path)));
}

struct ShownToolBar {
    ShownToolBar()
        : toolBar(new RecordingToolBar(&window))
    {
        (new QVBoxLayout(&window))->addWidget(toolBar);
        window.resize(1200, 60);
        window.show();
    }
    QWidget window;
    RecordingToolBar* toolBar;
};

} // namespace

class tst_VCrudToolBar : public QObject {
    Q_OBJECT

    VTestSettings m_settings;

private slots:
    void construction()
    {
        ShownToolBar shown;
        VCrudToolBar& tb = *shown.toolBar;
        QCOMPARE(tb.actions(), entries(tb));
        QVERIFY(tb.firstSeparator->isSeparator() && tb.secondSeparator->isSeparator());
        QVERIFY(tb.searchSeparator->isSeparator());
        QCOMPARE(tb.widgetForAction(tb.excludeAction), tb.excludeCheckBox);
        QCOMPARE(tb.widgetForAction(tb.searchEditAction), tb.searchLineEdit);

        QStringList texts, tips;
        for (QAction* action : tb.actions()) {
            texts << action->text();
            tips << (action->toolTip() == QAction(action->text()).toolTip() ? QString() : action->toolTip());
            QCOMPARE(action->isEnabled(), action->isVisible());
        }
        QCOMPARE(texts,
            QStringList({ "Expand All", "Collapse All", "Refresh", "Export to Csv...", "", "New...",
                "Copy...", "Edit...", "Delete...", "Save", "Cancel", "", "", "", "", "Create a Pdf...",
                "Email..." }));
        QCOMPARE(tips,
            QStringList({ "Expand ALL", "Collapse ALL.", "Refresh the data in the view.",
                "Save the data in the view to a csv file.", "", "Create a new record.",
                "Copy currently selected record to a new record.", "Edit selected record.",
                "Delete selected records from database.", "Submit changes to database.",
                "Discard changes to ALL records.", "", "", "", "", "", "" }));
        QCOMPARE(tb.excludeCheckBox->text(), QStringLiteral("Exclude"));
        QCOMPARE(tb.excludeCheckBox->toolTip(),
            QStringLiteral("When checked, rows matching the Search text will NOT be included."));
        for (QWidget* w :
            { static_cast<QWidget*>(tb.excludeCheckBox), static_cast<QWidget*>(tb.searchLineEdit) })
            QVERIFY(w->minimumHeight() == 20 && w->maximumHeight() == 20);
        QCOMPARE(tb.maximumHeight(), 22);
        QCOMPARE(int(tb.options), 0);
        QCOMPARE(tb.searchTimer->interval(), 3000);
        QVERIFY(!tb.searchTimer->isSingleShot());
        QVERIFY(!tb.searchTimer->isActive());

        // Word 0 is not applied until it changes.
        const QStringList withoutSearch = without(entryNames, { "searchSeparator", "exclude", "search" });
        QCOMPARE(shownEntries(tb), withoutSearch);
        tb.setOptions(word(0));
        QCOMPARE(shown.toolBar->appliedWords, QList<int>({ 0 }));
        QCOMPARE(shownEntries(tb), withoutSearch);
        QCOMPARE(tb.searchLineEdit->toolTip(), QString());
    }

    void iconsAndSignals()
    {
        VCrudToolBar tb;
        const QList<QAction*> actions = { tb.expandAllAction, tb.collapseAllAction, tb.refreshAction,
            tb.newAction, tb.copyAction, tb.editAction, tb.deleteAction, tb.emailAction, tb.submitAction,
            tb.revertAction, tb.csvAction, tb.pdfAction };
        const char* icons[] = { ":/images/add", ":/images/remove", ":/images/refresh", ":/images/new",
            ":/images/copy", ":/images/edit", ":/images/delete", ":/images/email", ":/images/submit",
            ":/images/revert", ":/images/csv", ":/images/pdf" };
        const QStringList signalOfAction
            = { "expandAllTriggered()", "collapseAllTriggered()", "refreshTriggered()", "newTriggered()",
                  "copyTriggered()", "editTriggered()", "deleteTriggered()", "emailTriggered()",
                  "submitTriggered()", "revertTriggered()", "csvTriggered()", "pdfTriggered()" };

        QStringList declared;
        const QMetaObject* meta = tb.metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                declared << QString::fromLatin1(meta->method(i).methodSignature());
        QCOMPARE(declared.size(), 13); // the twelve below and searchTriggered()
        QList<QSharedPointer<QSignalSpy>> spies;
        for (const QString& signal : declared)
            spies << QSharedPointer<QSignalSpy>::create(&tb, ("2" + signal).toLatin1().constData());
        for (int i = 0; i < actions.size(); ++i) {
            QVERIFY2(!image(icons[i]).isNull() && image(actions.at(i)->icon()) == image(icons[i]), icons[i]);
            actions.at(i)->trigger();
            QStringList fired;
            for (int s = 0; s < spies.size(); ++s)
                fired << QString("%1 x%2").arg(declared.at(s)).arg(spies.at(s)->count());
            fired = fired.filter(QRegularExpression("x[1-9]"));
            QCOMPARE(fired, QStringList(signalOfAction.at(i) + " x1"));
            for (const auto& spy : spies)
                spy->clear();
        }
    }

    void objectNames()
    {
        QWidget owner;
        auto* tb = new RecordingToolBar(&owner);
        const auto names = [tb] {
            QStringList result;
            for (QAction* action : tb->actions())
                result << action->objectName();
            return result;
        };
        QCOMPARE(names(),
            QStringList({ "", "", "", "", "", "_New", "_Copy", "_Edit", "_Delete", "_Save", "_Cancel", "", "",
                "", "", "", "_Email" }));
        tb->setObjectName(QStringLiteral("Orders_ToolBar"));
        QCOMPARE(names(),
            QStringList({ "", "", "", "", "", "Orders_ToolBar_New", "Orders_ToolBar_Copy",
                "Orders_ToolBar_Edit", "Orders_ToolBar_Delete", "Orders_ToolBar_Save",
                "Orders_ToolBar_Cancel", "", "", "", "", "", "Orders_ToolBar_Email" }));
        QCOMPARE(owner.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_Delete")), tb->deleteAction);
        tb->setObjectName(QStringLiteral("Customers_ToolBar"));
        QCOMPARE(tb->revertAction->objectName(), QStringLiteral("Customers_ToolBar_Cancel"));
        QVERIFY(!owner.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_New")));
    }

    void visibilityPerOptionWord_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<QStringList>("hidden");
        const QList<QPair<int, QStringList>> rows = {
            { 0x1, { "refresh" } }, { 0x2, { "new" } }, { 0x4, { "copy" } }, { 0x8, { "edit" } },
            { 0x10, { "delete" } }, { 0x20, { "csv" } }, { 0x40, { "pdf" } }, { 0x80, { "email" } },
            { 0x100, { "save" } }, { 0x200, { "cancel" } }, { 0x400, {} }, { 0x1000, { "firstSeparator" } },
            { 0x2000, { "secondSeparator" } }, { 0x8000, { "searchSeparator", "exclude", "search" } },
            { 0x10000, { "expandAll" } }, { 0x20000, { "collapseAll" } }, { 0x300000, {} },
            { 0x33061,
                { "refresh", "csv", "pdf", "expandAll", "collapseAll", "firstSeparator", "secondSeparator" } }
        };
        for (const auto& row : rows)
            QTest::addRow("0x%x", row.first) << row.first << row.second;
    }

    void visibilityPerOptionWord()
    {
        QFETCH(int, bits);
        QFETCH(QStringList, hidden);
        ShownToolBar shown;
        VCrudToolBar& tb = *shown.toolBar;
        tb.setOptions(word(~0));
        tb.setOptions(word(bits));
        QCOMPARE(int(tb.options), bits);
        QCOMPARE(shownEntries(tb), without(entryNames, hidden));
    }

    void presets_data()
    {
        QTest::addColumn<int>("preset");
        QTest::addColumn<QList<bool>>("arguments");
        QTest::addColumn<int>("startWord");
        QTest::addColumn<int>("expectedWord");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QString>("searchTip");

        const QString enter = "Press Enter to apply search.";
        QTest::newRow("refresh only") << 0 << QList<bool> { false, false } << 0 << int(0xFFCFFFFE)
                                      << QStringList { "refresh" } << enter;
        QTest::newRow("refresh only, csv, search")
            << 0 << QList<bool> { true, true } << 0x300000 << int(0xFFCF7FDE)
            << QStringList { "refresh", "csv", "searchSeparator", "exclude", "search" } << enter;
        QTest::newRow("form edit") << 1 << QList<bool> { false, false, false } << 0 << 0xF8FC4
                                   << QStringList { "refresh", "csv", "firstSeparator", "new", "edit",
                                          "delete", "secondSeparator" }
                                   << enter;
        QTest::newRow("form edit, copy, pdf, search")
            << 1 << QList<bool> { true, true, true } << (0x1 | 0x300000 | 0x4 | 0x40 | 0x8000) << 0x3F0F81
            << QStringList { "csv", "firstSeparator", "new", "copy", "edit", "delete", "searchSeparator",
                   "exclude", "search", "secondSeparator", "pdf" }
            << "Delayed search applied as you type.";
        QTest::newRow("tree") << 2 << QList<bool> { false, false } << 0 << 0xCACFE
                              << QStringList { "expandAll", "collapseAll", "refresh", "firstSeparator",
                                     "save", "cancel" }
                              << enter;
        QTest::newRow("tree, pdf, search")
            << 2 << QList<bool> { true, true } << (0x100000 | 0x1000 | 0x40 | 0x8000) << 0x1C3CBE
            << QStringList { "expandAll", "collapseAll", "refresh", "save", "cancel", "searchSeparator",
                   "exclude", "search", "pdf" }
            << "Search applied as you type.";
    }

    void presets()
    {
        QFETCH(int, preset);
        QFETCH(QList<bool>, arguments);
        QFETCH(int, startWord);
        QFETCH(int, expectedWord);
        QFETCH(QStringList, shown);
        QFETCH(QString, searchTip);

        ShownToolBar window;
        RecordingToolBar& tb = *window.toolBar;
        tb.setOptions(word(0x400));
        tb.setOptions(word(startWord));
        tb.appliedWords.clear();
        VCrudToolBar::Options result;
        if (preset == 0)
            result = tb.setOptionsRefreshOnly(arguments.at(0), arguments.at(1));
        else if (preset == 1)
            result = tb.setOptionsFormEdit(arguments.at(0), arguments.at(1), arguments.at(2));
        else
            result = tb.setOptionsTreeViewEdit(arguments.at(0), arguments.at(1));

        QCOMPARE(int(result), expectedWord);
        QCOMPARE(tb.appliedWords, QList<int>({ expectedWord }));
        QCOMPARE(shownEntries(tb), shown);
        QCOMPARE(tb.searchLineEdit->toolTip(), searchTip);
    }

    void withheldActionNeverReachable_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("signal");
        QTest::newRow("new") << "_New" << SIGNAL(newTriggered());
        QTest::newRow("edit") << "_Edit" << SIGNAL(editTriggered());
        QTest::newRow("delete") << "_Delete" << SIGNAL(deleteTriggered());
        QTest::newRow("save") << "_Save" << SIGNAL(submitTriggered());
    }

    void withheldActionNeverReachable()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, signal);

        ShownToolBar shown;
        VCrudToolBar& tb = *shown.toolBar;
        tb.setObjectName(QStringLiteral("Orders_ToolBar"));
        shown.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&shown.window));

        // Withheld by name before any option word: the button is still on screen but dead.
        auto* withheld = shown.window.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar") + suffix);
        QVERIFY(withheld);
        withheld->authorized = false;
        withheld->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_F9));
        QSignalSpy withheldSpy(&tb, signal.toLatin1().constData());
        tb.refreshAction->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_F10));
        QSignalSpy controlSpy(&tb, &VCrudToolBar::refreshTriggered);
        const auto tryAllPaths = [&](bool click) {
            if (click)
                QTest::mouseClick(tb.widgetForAction(withheld), Qt::LeftButton);
            withheld->trigger();
            QTest::keyClick(&shown.window, Qt::Key_F9, Qt::ControlModifier);
        };
        settle(tb);
        QVERIFY(tb.widgetForAction(withheld)->isVisible());
        tryAllPaths(true);
        QCOMPARE(withheldSpy.count(), 0);
        QTest::mouseClick(tb.widgetForAction(tb.refreshAction), Qt::LeftButton);
        QTest::keyClick(&shown.window, Qt::Key_F10, Qt::ControlModifier);
        QCOMPARE(controlSpy.count(), 2);

        // Each change, and whether it makes the toolbar read-only or view-only.
        const QList<QPair<std::function<void()>, bool>> changes
            = { { [&] { tb.setOptions(word(0x400)); }, false },
                  { [&] { tb.setOptionsFormEdit(true, true, true); }, false },
                  { [&] { tb.setOptionsTreeViewEdit(true, true); }, false },
                  { [&] { tb.setReadOnly(true); }, true }, { [&] { tb.setReadOnly(false); }, false },
                  { [&] { tb.setViewOnly(true); }, true }, { [&] { tb.setViewOnly(false); }, false },
                  { [&] { tb.enableSubmit(); }, false } };
        for (int i = 0; i < changes.size(); ++i) {
            changes.at(i).first();
            settle(tb);
            QVERIFY2(!withheld->isVisible() && !tb.widgetForAction(withheld)->isVisible(),
                qPrintable(QString::number(i)));
            tryAllPaths(false);
            // Read-only or view-only, a withheld edit action still views.
            const bool viewing = suffix == QLatin1String("_Edit") && changes.at(i).second;
            QVERIFY2(withheldSpy.count() == (viewing ? 1 : 0), qPrintable(QString::number(i)));
            withheldSpy.clear();
        }

        withheld->authorized = true;
        tb.setOptions(word(0));
        QCOMPARE(shownEntries(tb), entryNames);
        withheld->trigger();
        QCOMPARE(withheldSpy.count(), 1);
    }

    void authorizationReadAtChangedOptionWord()
    {
        VCrudToolBar tb;
        tb.setOptions(word(0x400));
        tb.deleteAction->authorized = false;
        tb.setOptions(word(0x400));
        QVERIFY(tb.deleteAction->isVisible());
        tb.setOptions(word(0x800));
        QVERIFY(!tb.deleteAction->isVisible());
        tb.deleteAction->authorized = true;
        tb.setOptions(word(0x10));
        QVERIFY(!tb.deleteAction->isVisible());
        tb.setOptions(word(0));
        QVERIFY(tb.deleteAction->isVisible());
    }

    void readOnlyAndViewOnly_data()
    {
        QTest::addColumn<bool>("viewOnlyCall");
        QTest::addColumn<bool>("value");
        QTest::addColumn<bool>("editAuthorized");
        QTest::addColumn<QString>("enabled"); // new, copy, edit, delete, save, cancel
        QTest::addColumn<bool>("viewing");

        QTest::newRow("read only") << false << true << true << "--+---" << true;
        QTest::newRow("writable") << false << false << true << "++++++" << false;
        QTest::newRow("writable, edit withheld") << false << false << false << "++++++" << true;
        QTest::newRow("view only") << true << true << true << "--+---" << true;
        QTest::newRow("not view only") << true << false << true << "--++++" << false;
        QTest::newRow("not view only, edit withheld") << true << false << false << "--++++" << true;
    }

    void readOnlyAndViewOnly()
    {
        QFETCH(bool, viewOnlyCall);
        QFETCH(bool, value);
        QFETCH(bool, editAuthorized);
        QFETCH(QString, enabled);
        QFETCH(bool, viewing);

        ShownToolBar shown;
        VCrudToolBar& tb = *shown.toolBar;
        tb.editAction->authorized = editAuthorized;
        // View-only rows start read-only: new and copy stay disabled.
        tb.setReadOnly(!value || viewOnlyCall);
        if (viewOnlyCall)
            tb.setViewOnly(value);
        else
            tb.setReadOnly(value);

        QString states;
        for (QAction* action :
            { tb.newAction, tb.copyAction, tb.editAction, tb.deleteAction, tb.submitAction, tb.revertAction })
            states += action->isEnabled() ? '+' : '-';
        QCOMPARE(states, enabled);
        QCOMPARE(tb.editAction->text(), viewing ? QStringLiteral("View...") : QStringLiteral("Edit..."));
        QCOMPARE(tb.editAction->toolTip(),
            viewing ? QStringLiteral("View selected record.") : QStringLiteral("Edit selected record."));
        QVERIFY(image(tb.editAction->icon()) == image(viewing ? ":/images/view" : ":/images/edit"));
        QVERIFY(image(":/images/view") != image(":/images/edit"));

        settle(tb);
        QSignalSpy editSpy(&tb, &VCrudToolBar::editTriggered);
        QTest::mouseClick(tb.widgetForAction(tb.editAction), Qt::LeftButton);
        // A withheld edit action only works as the view action.
        QCOMPARE(editSpy.count(), editAuthorized || value ? 1 : 0);
    }

    void submitStates()
    {
        VCrudToolBar tb;
        const auto states = [&tb] {
            QString result;
            for (QAction* action :
                QList<QAction*> { tb.submitAction, tb.revertAction, tb.refreshAction, tb.csvAction,
                    tb.emailAction, tb.pdfAction, tb.newAction, tb.editAction, tb.expandAllAction })
                result += action->isEnabled() ? '+' : '-';
            return result;
        };
        tb.enableSubmit();
        QCOMPARE(states(), QStringLiteral("++----+++"));
        tb.disableSubmit();
        QCOMPARE(states(), QStringLiteral("--+++++++"));
    }

    void searchModes_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<int>("afterTyping");
        QTest::addColumn<bool>("timerPending");
        QTest::addColumn<int>("afterEnter");

        QTest::newRow("press Enter") << 0x40 << "Press Enter to apply search." << 0 << false << 1;
        QTest::newRow("as you type") << 0x100000 << "Search applied as you type." << 3 << false << 3;
        QTest::newRow("delayed") << 0x300000 << "Delayed search applied as you type." << 0 << true << 0;
    }

    void searchModes()
    {
        QFETCH(int, bits);
        QFETCH(QString, tip);
        QFETCH(int, afterTyping);
        QFETCH(bool, timerPending);
        QFETCH(int, afterEnter);

        VCrudToolBar tb;
        // Switching modes and reapplying a word must not pile up connections.
        for (int bitsBefore : { 0x100000, 0x300000, 0x40, bits, bits })
            tb.setOptions(word(bitsBefore));
        QCOMPARE(tb.searchLineEdit->toolTip(), tip);
        QSignalSpy spy(&tb, &VCrudToolBar::searchTriggered);
        QTest::keyClicks(tb.searchLineEdit, QStringLiteral("abc"));
        QCOMPARE(spy.count(), afterTyping);
        QCOMPARE(tb.searchTimer->isActive(), timerPending);
        QTest::keyClick(tb.searchLineEdit, Qt::Key_Return);
        QCOMPARE(spy.count(), afterEnter);
    }

    void delayedSearch()
    {
        VCrudToolBar tb;
        tb.setOptions(VCrudToolBar::SearchAsYouType | VCrudToolBar::DelayedSearch);
        QSignalSpy spy(&tb, &VCrudToolBar::searchTriggered);

        QTest::keyClicks(tb.searchLineEdit, QStringLiteral("ab"));
        QElapsedTimer clock;
        clock.start();
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, 3600);
        QVERIFY2(clock.elapsed() >= 2800, qPrintable(QString::number(clock.elapsed())));

        QTest::keyClick(tb.searchLineEdit, Qt::Key_C);
        QTest::qWait(500);
        const int before = tb.searchTimer->remainingTime();
        QTest::keyClick(tb.searchLineEdit, Qt::Key_D);
        QVERIFY2(tb.searchTimer->remainingTime() > before, "a keystroke starts the count again");

        tb.searchTimer->setInterval(100);
        QTest::keyClicks(tb.searchLineEdit, QStringLiteral("efghi"));
        QCOMPARE(spy.count(), 1);
        QTRY_COMPARE(spy.count(), 2);
        QVERIFY(!tb.searchTimer->isActive());
        QTest::qWait(350);
        QCOMPARE(spy.count(), 2);
    }

    void clearButtonSearches()
    {
        VCrudToolBar tb;
        tb.setOptions(VCrudToolBar::SearchAsYouType | VCrudToolBar::DelayedSearch);
        QSignalSpy spy(&tb, &VCrudToolBar::searchTriggered);
        QTest::keyClicks(tb.searchLineEdit, QStringLiteral("abc"));
        QVERIFY(tb.searchTimer->isActive());
        QTest::mouseClick(tb.searchLineEdit->findChild<QToolButton*>(), Qt::LeftButton);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!tb.searchTimer->isActive());
        QCOMPARE(tb.searchLineEdit->text(), QString());

        tb.setOptions(word(0x40));
        tb.searchLineEdit->setText(QStringLiteral("x"));
        tb.searchLineEdit->clearSearch();
        QCOMPARE(spy.count(), 2);
        tb.setOptions(VCrudToolBar::SearchAsYouType);
        tb.searchLineEdit->setText(QStringLiteral("x"));
        tb.searchLineEdit->clearSearch();
        QCOMPARE(spy.count(), 5);
    }

    void excludeToggle()
    {
        ShownToolBar shown;
        VCrudToolBar& tb = *shown.toolBar;
        tb.setOptions(word(0x40));
        QVERIFY(shownEntries(tb).contains("exclude"));
        QSignalSpy spy(&tb, &VCrudToolBar::searchTriggered);

        QTest::mouseClick(tb.excludeCheckBox, Qt::LeftButton);
        QVERIFY(tb.excludeCheckBox->isChecked());
        QCOMPARE(tb.searchLineEdit->placeholderText(), QStringLiteral("Exclude"));
        tb.excludeCheckBox->setChecked(false);
        QCOMPARE(tb.searchLineEdit->placeholderText(), QStringLiteral("Search"));
        QCOMPARE(spy.count(), 0);

        tb.searchLineEdit->setText(QStringLiteral("Smith"));
        QTest::mouseClick(tb.excludeCheckBox, Qt::LeftButton);
        QCOMPARE(spy.count(), 1);
        QTest::mouseClick(tb.excludeCheckBox, Qt::LeftButton);
        QCOMPARE(spy.count(), 2);

        tb.setOptions(VCrudToolBar::SearchAsYouType | VCrudToolBar::DelayedSearch);
        QTest::keyClick(tb.searchLineEdit, Qt::Key_S);
        tb.excludeCheckBox->setChecked(true);
        QCOMPARE(tb.searchLineEdit->placeholderText(), QStringLiteral("Exclude"));
        QCOMPARE(spy.count(), 2);
        tb.searchTimer->stop();
        tb.excludeCheckBox->setChecked(false);
        QCOMPARE(spy.count(), 3);
    }
};

QTEST_MAIN(tst_VCrudToolBar)
#include "tst_vcrudtoolbar.moc"
