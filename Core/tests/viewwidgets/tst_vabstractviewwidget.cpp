#include "viewwidgettesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vabstractviewwidget.h>
#include <vauthaction.h>
#include <vcrudtoolbar.h>
#include <vhighlightitemdelegate.h>
#include <vsearchlineedit.h>

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

#include <memory>

namespace {

const int ModelOptionsRole = Qt::UserRole + 15;
const int LinkRole = Qt::UserRole + 7;

// Records which virtual slots the widget's own connections reach.
class RecordingViewWidget : public TestViewWidget {
public:
    using TestViewWidget::TestViewWidget;
    QStringList calls;

    void dataEdited() override { calls << QStringLiteral("dataEdited"); }
#define RECORD(slot, params, args)                                                                           \
    void slot params override                                                                                \
    {                                                                                                        \
        calls << QStringLiteral(#slot);                                                                      \
        TestViewWidget::slot args;                                                                           \
    }
    RECORD(refreshToolBar, (), ())
    RECORD(updateStatusLabel, (), ())
    RECORD(showFilterActivated, (), ())
    RECORD(showOptionsActivated, (), ())
    RECORD(_clicked, (const QModelIndex& i), (i))
    RECORD(_columnsTriggered, (), ())
    RECORD(_copyTriggered, (), ())
    RECORD(_csvTriggered, (), ())
    RECORD(_dataChanged, (const QModelIndex& a, const QModelIndex& b), (a, b))
    RECORD(_deleteTriggered, (), ())
    RECORD(_editTriggered, (), ())
    RECORD(_emailTriggered, (), ())
    RECORD(_linkTriggered, (bool b), (b))
    RECORD(_modelReset, (), ())
    RECORD(_newTriggered, (), ())
    RECORD(_pdfTriggered, (), ())
    RECORD(_refreshTriggered, (), ())
    RECORD(_revertTriggered, (), ())
    RECORD(_searchTriggered, (), ())
    RECORD(_selectionChanged, (const QItemSelection& s, const QItemSelection& d), (s, d))
    RECORD(_submitTriggered, (), ())
    RECORD(_visibilityTriggered, (bool b), (b))
    RECORD(onObjectNameChanged, (const QString& n), (n))
#undef RECORD
};

// A widget framing a multi-selection table over a record model, with view id 7.
struct Fixture {
    explicit Fixture(VAbstractViewWidget::Options options = {}, int rows = 5, int modelOptions = 0)
        : model(rows)
        , widget(options)
        , view(new QTableView)
    {
        if (modelOptions) // read when the view is set
            model.setData(model.index(0, 0), modelOptions, ModelOptionsRole);
        view->setModel(&model);
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->setSelectionMode(QAbstractItemView::MultiSelection);
        widget.setView(view);
        widget.viewId = 7;
        widget.calls.clear();
    }
    void selectRows(const QList<int>& rows)
    {
        for (int row : rows)
            view->selectionModel()->select(
                model.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QString status() const { return widget.statusLabel->text(); }

    RecordModel model;
    RecordingViewWidget widget;
    QTableView* view;
};

QString argText(const QVariant& arg)
{
    const auto cell = [](const QModelIndex& i) {
        return i.isValid() ? QStringLiteral("(%1,%2)").arg(i.row()).arg(i.column()) : QStringLiteral("()");
    };
    if (arg.userType() == qMetaTypeId<QModelIndex>())
        return cell(arg.value<QModelIndex>());
    if (arg.userType() != qMetaTypeId<QModelIndexList>())
        return arg.toString();
    QStringList cells;
    for (const QModelIndex& index : arg.value<QModelIndexList>())
        cells << cell(index);
    return QLatin1Char('[') + cells.join(QLatin1Char(' ')) + QLatin1Char(']');
}

// Spies on every signal of an object; take() lists those emitted since the last call, as "name(args)".
class AllSignals {
public:
    explicit AllSignals(QObject* object)
    {
        const QMetaObject* meta = object->metaObject();
        for (int i = QWidget::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            if (method.methodType() == QMetaMethod::Signal)
                m_spies.emplace_back(
                    new QSignalSpy(object, QByteArray("2" + method.methodSignature()).constData()),
                    QString::fromLatin1(method.name()));
        }
    }
    QStringList take()
    {
        QStringList fired;
        for (auto& [spy, name] : m_spies) {
            for (const QList<QVariant>& args : qAsConst(*spy)) {
                QStringList texts;
                for (const QVariant& arg : args)
                    texts << argText(arg);
                fired << name + QLatin1Char('(') + texts.join(QLatin1Char(',')) + QLatin1Char(')');
            }
            spy->clear();
        }
        return fired;
    }

private:
    std::vector<std::pair<std::unique_ptr<QSignalSpy>, QString>> m_spies;
};

QImage image(const QIcon& icon)
{
    return icon.pixmap(16, 16).toImage();
}

QStringList layoutContent(QLayout* layout)
{
    QStringList content;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (QWidget* w = item->widget())
            content << (w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className())
                                                  : w->objectName());
        else if (item->layout())
            content << QStringLiteral("layout");
        else if (item->spacerItem())
            content << QStringLiteral("spacer %1").arg(item->spacerItem()->sizeHint().width());
    }
    return content;
}

QString states(const QList<bool>& flags)
{
    QString s;
    for (bool flag : flags)
        s += flag ? '+' : '-';
    return s;
}

QString enabledStates(const QList<QAction*>& actions)
{
    QList<bool> flags;
    for (QAction* action : actions)
        flags << action->isEnabled();
    return states(flags);
}

QStringList orNone(const QString& s)
{
    return s.isEmpty() ? QStringList() : QStringList(s);
}

} // namespace

class tst_VAbstractViewWidget : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QItemSelection>(); }
    void construction();
    void objectNames();
    void options_data();
    void options();
    void triggerForwarding();
    void viewAndModelNotifications();
    void statusText_data();
    void statusText();
    void treeStatusText();
    void colourStatus_data();
    void colourStatus();
    void refreshToolBar_data();
    void refreshToolBar();
    void deleteConfirmation_data();
    void deleteConfirmation();
    void doubleClick_data();
    void doubleClick();
    void readOnlySubmitAndRevert();
    void linking();
    void settings();
    void moveSearchToPrinterLayout();
    void setCurrentIndexAndMatch();
    void modelReplacedOrReset();
    void viewReplacedOrDeleted();

private:
    VTestSettings m_settings;
};

void tst_VAbstractViewWidget::construction()
{
    TestViewWidget w;
    QCOMPARE(w.viewId, -1);
    QVERIFY(!w.readOnly && !w.linkedWidget && !w.filterWidget && !w.optionsWidget && !w.view());
    QCOMPARE(w.layout(), w.mainLayout);
    QCOMPARE(layoutContent(w.mainLayout), QStringList({ "layout", "StatusWidget" }));
    QCOMPARE(layoutContent(w.headerLayout),
        QStringList({ "HeaderTitleWidget", "HeaderCrudWidget", "PrintersWidget", "layout" }));
    QCOMPARE(w.headerLayout->itemAt(3)->layout(), w.headerExtraLayout);
    QCOMPARE(layoutContent(w.headerTitleLayout), QStringList({ "HeaderLabel" }));
    QCOMPARE(layoutContent(w.headerCrudLayout), QStringList({ "Orders_ToolBar", "TitleLabel" }));
    QCOMPARE(QList<int>(
                 { w.headerLayout->stretch(0), w.headerCrudLayout->stretch(1), w.statusLayout->stretch(2) }),
        QList<int>({ 1, 1, 1 }));
    QCOMPARE(w.statusLayout->count(), 4);
    QCOMPARE(w.statusLayout->itemAt(0)->widget(), w.statusLabel);
    QCOMPARE(w.statusLayout->itemAt(1)->widget(), w.filterLabel);
    QCOMPARE(w.statusLayout->itemAt(3)->widget(), w.colourStatusLabel);
    for (QLayout* layout : w.findChildren<QLayout*>()) {
        if (layout->parentWidget() == &w
            || layout->parentWidget()->parentWidget() == &w) // not the toolbar's own
            QVERIFY(layout->contentsMargins().isNull() && layout->spacing() == 0);
    }
    const QSizePolicy policy = w.findChild<QWidget*>(QStringLiteral("StatusWidget"))->sizePolicy();
    QCOMPARE(policy.horizontalPolicy(), QSizePolicy::Ignored);
    QCOMPARE(policy.verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(w.headerLabel->alignment(), Qt::AlignCenter);

    // The five view actions, checkable/checked/enabled/visible; a hidden action is also disabled, as Qt has
    // it.
    const QList<std::tuple<QAction*, QString, QString, QString, const char*, QString>> actions = {
        { w.columnsAction, "columnsAction", "Select Columns...", "Select the visible columns for this view.",
            ":/images/selectcolumn", "--++" },
        { w.showFilterAction, "showFilterAction", "Show Filter", "Select a filter to apply to this view.",
            ":/images/filter", "+---" },
        { w.showOptionsAction, "showOptionsAction", "Show Options", "Select options to apply to this view.",
            ":/images/settings", "+---" },
        { w.linkedAction, "linkedAction", "Link to Parent",
            "Toggles synchronizing this view to its parent view.", ":/images/link", "+--+" },
        { w.visibilityAction, "visibilityAction", "", "", nullptr, "++-+" },
    };
    for (const auto& [action, name, text, tip, icon, flags] : actions) {
        QCOMPARE(action->objectName(), name);
        QCOMPARE(action->text(), text);
        QCOMPARE(action->toolTip(), tip.isEmpty() ? action->toolTip() : tip);
        QVERIFY2(
            icon ? image(action->icon()) == image(QIcon(QString::fromLatin1(icon))) : action->icon().isNull(),
            qPrintable(name));
        QCOMPARE(
            states({ action->isCheckable(), action->isChecked(), action->isEnabled(), action->isVisible() }),
            flags);
        QCOMPARE(action->parent(), &w);
    }

    // The view actions stand between refresh and CSV; submit starts disabled.
    VCrudToolBar* bar = w.toolBar();
    QCOMPARE(bar->actions().mid(0, 9),
        QList<QAction*>(
            { bar->expandAllAction, bar->collapseAllAction, bar->refreshAction, w.showOptionsAction,
                w.showFilterAction, w.linkedAction, w.columnsAction, bar->csvAction, bar->firstSeparator }));
    QCOMPARE(enabledStates({ bar->submitAction, bar->revertAction, bar->refreshAction, bar->csvAction }),
        QStringLiteral("--++"));

    // The title label shows only with a text.
    w.show();
    QVERIFY(w.titleLabel->isHidden());
    w.setHeaderText(QStringLiteral("Orders"));
    QCOMPARE(w.headerLabel->text(), QStringLiteral("Orders"));
    w.setTitleText(QStringLiteral("Open orders"));
    QCOMPARE(w.titleLabel->text(), QStringLiteral("Open orders"));
    QVERIFY(w.titleLabel->isVisible());
    w.setTitleText(QString());
    QVERIFY(!w.titleLabel->isVisible());
}

void tst_VAbstractViewWidget::objectNames()
{
    RecordingViewWidget w;
    QCOMPARE(w.objectName(), QStringLiteral("Orders"));
    for (const char* suffix : { "", "_New", "_Copy", "_Edit", "_Delete", "_Email", "_Save", "_Cancel" })
        QVERIFY2(w.findChild<QObject*>(QStringLiteral("Orders_ToolBar") + QLatin1String(suffix)), suffix);

    // A rename goes through the virtual slot and renames the toolbar's record actions.
    w.setObjectName(QStringLiteral("Customers"));
    QCOMPARE(w.calls, QStringList({ "onObjectNameChanged" }));
    QCOMPARE(w.toolBar()->objectName(), QStringLiteral("Customers_ToolBar"));
    QCOMPARE(
        w.findChild<VAuthAction*>(QStringLiteral("Customers_ToolBar_Delete")), w.toolBar()->deleteAction);
    QVERIFY(!w.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_Delete")));

    // A replacement toolbar is named and wired at once, and the old one goes.
    QPointer<VCrudToolBar> old = w.toolBar();
    auto* bar = new VCrudToolBar;
    w.setToolBar(bar);
    QVERIFY(old.isNull());
    QCOMPARE(bar->newAction->objectName(), QStringLiteral("Customers_ToolBar_New"));
    QCOMPARE(w.headerCrudLayout->itemAt(0)->widget(), bar);
    QCOMPARE(bar->actions().at(3), w.showOptionsAction);
    QVERIFY(!bar->submitAction->isEnabled());
}

void tst_VAbstractViewWidget::options_data()
{
    QTest::addColumn<int>("flags");
    // header label, toolbar, columns action, linked action, status widget, printers widget, delete action
    QTest::addColumn<QString>("shown");

    QTest::newRow("none") << 0 << "+++++-+";
    QTest::newRow("NoHeaderLabel") << 0x1 << "-++++-+";
    QTest::newRow("NoToolBar") << 0x2 << "+-+++-+";
    QTest::newRow("NoColumnsAction") << 0x10 << "++-++-+";
    QTest::newRow("NoLinkedAction") << 0x20 << "+++-+-+";
    QTest::newRow("NoStatusWidget") << 0x400 << "++++--+";
    QTest::newRow("NoDelete") << 0x800 << "+++++--";
    QTest::newRow("ShowPrinters") << 0x1000 << "+++++++";
    QTest::newRow("unassigned bits") << (0x4 | 0x80 | 0x100 | 0x200 | 0x8000) << "+++++-+";
    QTest::newRow("all") << 0x1c33 << "-----+-";
}

void tst_VAbstractViewWidget::options()
{
    QFETCH(int, flags);
    QFETCH(QString, shown);
    const auto options = VAbstractViewWidget::Options(QFlag(flags));

    // Given to the constructor, and applied later over the opposite word: setOptions always applies.
    for (int pass = 0; pass < 2; ++pass) {
        TestViewWidget w(pass == 0 ? options : VAbstractViewWidget::Options(QFlag(~flags & 0x1c33)));
        if (pass == 1) {
            // The toolbar's own word is kept; NoDelete is added to it.
            w.toolBar()->setOptions(VCrudToolBar::NoPdf);
            w.setOptions(options);
            QVERIFY(w.toolBar()->options.testFlag(VCrudToolBar::NoPdf));
        }
        QCOMPARE(w.options, options);
        QCOMPARE(w.toolBar()->options.testFlag(VCrudToolBar::NoDelete), bool(flags & 0x800));
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(states({ w.headerLabel->isVisible(), w.toolBar()->isVisible(), w.columnsAction->isVisible(),
                     w.linkedAction->isVisible(),
                     w.findChild<QWidget*>(QStringLiteral("StatusWidget"))->isVisible(),
                     w.findChild<QWidget*>(QStringLiteral("PrintersWidget"))->isVisible(),
                     w.toolBar()->deleteAction->isVisible() }),
            shown);
    }
}

void tst_VAbstractViewWidget::triggerForwarding()
{
    Fixture f(VAbstractViewWidget::NoDeleteConfirm);
    f.selectRows({ 1, 3 });
    f.view->selectionModel()->setCurrentIndex(f.model.index(3, 1), QItemSelectionModel::NoUpdate);
    VCrudToolBar* bar = f.widget.toolBar();
    bar->setOptions(VCrudToolBar::NoPdf);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    AllSignals spies(&f.widget);
    spies.take();
    f.widget.calls.clear();

    // Each trigger reaches its virtual slot (if any) and emits exactly the one signal (if any).
    const auto act = [](QAction* a) { return [a] { a->trigger(); }; };
    const auto exclude = [bar](bool on) { return [bar, on] { bar->excludeCheckBox->setChecked(on); }; };
    const QList<std::tuple<std::function<void()>, QString, QString>> triggers = {
        { act(bar->refreshAction), "_refreshTriggered", "refreshTriggered(7,true)" },
        { act(bar->newAction), "_newTriggered", "newTriggered(7)" },
        { act(bar->copyAction), "_copyTriggered", "copyTriggered(7,(3,1))" },
        { act(bar->editAction), "_editTriggered", "editTriggered(7,(3,1))" },
        { act(bar->deleteAction), "_deleteTriggered", "deleteTriggered(7,[(1,0) (3,0)])" },
        { act(bar->csvAction), "_csvTriggered", "csvTriggered(7)" },
        { act(bar->pdfAction), "_pdfTriggered", "pdfTriggered(7,(3,1))" },
        { act(bar->emailAction), "_emailTriggered", "emailTriggered(7,(3,1))" },
        { act(bar->revertAction), "_revertTriggered", "revertTriggered(7)" },
        { act(bar->submitAction), "_submitTriggered", "submitTriggered(7)" },
        { act(f.widget.columnsAction), "_columnsTriggered", "columnsTriggered(7)" },
        { act(f.widget.linkedAction), "_linkTriggered", "linkTriggered(7,true)" },
        { act(f.widget.linkedAction), "_linkTriggered", "linkTriggered(7,false)" },
        { act(f.widget.visibilityAction), "_visibilityTriggered", "visibilityTriggered(7,false)" },
        { exclude(true), "", "" },
        { [bar] {
             bar->searchLineEdit->setText(QStringLiteral("Bonn"));
             QTest::keyClick(bar->searchLineEdit, Qt::Key_Return);
         },
            "_searchTriggered", "searchTextEdited(7,Bonn,true)" },
        // Toggling Exclude with text applies the search at once.
        { exclude(false), "_searchTriggered", "searchTextEdited(7,Bonn,false)" },
        // Expand and collapse are for trees; nothing listens here.
        { act(bar->expandAllAction), "", "" },
        { act(bar->collapseAllAction), "", "" },
        { act(f.widget.showFilterAction), "showFilterActivated", "" },
        { act(f.widget.showOptionsAction), "showOptionsActivated", "" },
    };
    for (const auto& [run, slot, emitted] : triggers) {
        run();
        QCOMPARE(f.widget.calls, orNone(slot));
        QCOMPARE(spies.take(), orNone(emitted));
        f.widget.calls.clear();
    }

    // The view id is read when the signal goes out.
    f.widget.viewId = 2;
    bar->newAction->trigger();
    QCOMPARE(spies.take(), QStringList({ "newTriggered(2)" }));
}

void tst_VAbstractViewWidget::viewAndModelNotifications()
{
    Fixture f;
    AllSignals spies(&f.widget);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));

    // A click selects (the toolbar is refreshed before the signal goes out), then reports the cell.
    QObject::connect(&f.widget, &VAbstractViewWidget::selectionChanged, [&] { f.widget.calls << "signal"; });
    QTest::mouseClick(
        f.view->viewport(), Qt::LeftButton, Qt::NoModifier, f.view->visualRect(f.model.index(2, 1)).center());
    QCOMPARE(f.widget.calls,
        QStringList({ "_selectionChanged", "refreshToolBar", "updateStatusLabel", "signal", "_clicked" }));
    const QStringList fired = spies.take();
    QCOMPARE(fired.size(), 2);
    QVERIFY(fired.at(0).startsWith(QLatin1String("clicked(7,(2,1))")));
    QVERIFY(fired.at(1).startsWith(QLatin1String("selectionChanged(7,")));
    QCOMPARE(f.status(), QStringLiteral("[5 Rows][1 Selected]"));

    // A data change: the hook first, then the signal.
    f.widget.calls.clear();
    QObject::connect(&f.widget, &VAbstractViewWidget::dataChanged, [&] { f.widget.calls << "dataChanged"; });
    f.model.setData(f.model.index(4, 2), QStringLiteral("Bonn"));
    QCOMPARE(f.widget.calls, QStringList({ "_dataChanged", "dataEdited", "dataChanged" }));
    QCOMPARE(spies.take(), QStringList({ "dataChanged(7,(4,2),(4,2))" }));

    // Inserted and removed rows update the count; only a reset emits modelReset.
    f.model.appendRow(new QStandardItem(QStringLiteral("x")));
    QCOMPARE(f.status(), QStringLiteral("[6 Rows][1 Selected]"));
    f.model.removeRows(0, 2);
    QCOMPARE(f.status(), QStringLiteral("[4 Rows][1 Selected]"));
    f.model.setRowCount(0);
    QCOMPARE(f.status(), QStringLiteral("[0 Rows]"));
    QCOMPARE(spies.take().filter(QStringLiteral("modelReset")), QStringList());
    f.model.clear();
    QVERIFY(f.widget.calls.contains(QStringLiteral("_modelReset")));
    QCOMPARE(spies.take().filter(QStringLiteral("modelReset")), QStringList({ "modelReset(7)" }));
}

void tst_VAbstractViewWidget::statusText_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("selection"); // "r-r" whole rows, "r:c" one cell
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << 0 << "" << false << "[0 Rows]";
    QTest::newRow("one row") << 1 << "" << false << "[1 Row]";
    QTest::newRow("one selected") << 5 << "2" << false << "[5 Rows][1 Selected]";
    QTest::newRow("three, read only") << 5 << "0 2 4" << true << "[5 Rows][3 Selected] Read Only";
    QTest::newRow("read only") << 5 << "" << true << "[5 Rows] Read Only";
    QTest::newRow("one cell is no row") << 5 << "1:1" << false << "[5 Rows]";
    QTest::newRow("every cell of a row") << 5 << "0 3:0 3:1 3:2" << false << "[5 Rows][2 Selected]";
    QTest::newRow("cells of a selected row") << 5 << "3 3:1" << false << "[5 Rows][1 Selected]";
    QTest::newRow("overlapping ranges") << 5 << "0-2 1-3" << false << "[5 Rows][4 Selected]";
}

void tst_VAbstractViewWidget::statusText()
{
    QFETCH(int, rows);
    QFETCH(QString, selection);
    QFETCH(bool, readOnly);
    QFETCH(QString, expected);

    Fixture f({}, rows);
    f.widget.setReadOnly(readOnly);
    for (const QString& part : selection.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList cell = part.split(QLatin1Char(':')), range = part.split(QLatin1Char('-'));
        const QModelIndex from = cell.size() == 2 ? f.model.index(cell[0].toInt(), cell[1].toInt())
                                                  : f.model.index(range.first().toInt(), 0);
        const QModelIndex to = cell.size() == 2 ? from : f.model.index(range.last().toInt(), 2);
        f.view->selectionModel()->select(QItemSelection(from, to), QItemSelectionModel::Select);
    }
    QCOMPARE(f.status(), expected);
}

void tst_VAbstractViewWidget::treeStatusText()
{
    // Two top rows: "single" has a child, which has a child of its own; "leaf" has none.
    QStandardItemModel model;
    auto* single = new QStandardItem(QStringLiteral("single"));
    auto* child = new QStandardItem(QStringLiteral("child"));
    child->appendRow(new QStandardItem(QStringLiteral("grandchild")));
    single->appendRow(child);
    model.appendRow(single);
    model.appendRow(new QStandardItem(QStringLiteral("leaf")));

    TestViewWidget w(VAbstractViewWidget::NoHighlightDelegate);
    auto* tree = new QTreeView;
    tree->setModel(&model);
    w.setView(tree);
    QStringList texts;
    for (const QModelIndex& index : { QModelIndex(), single->index(), model.index(1, 0), child->index() }) {
        tree->setCurrentIndex(index);
        w.updateStatusLabel();
        texts << w.statusLabel->text();
    }
    // A child row shows its own number of children.
    QCOMPARE(texts,
        QStringList({ "[2 Rows]", "[2 Rows, 1 Child Row][1 Selected]", "[2 Rows][1 Selected]",
            "[1 Child Row][1 Selected]" }));
}

void tst_VAbstractViewWidget::colourStatus_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QStringList>("backgrounds");
    QTest::addColumn<QStringList>("foregrounds");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("expected");

    using L = QStringList;
    const QString span = QStringLiteral("<span style='background-color:%1; color:%2'>&nbsp;%3&nbsp;</span>");
    const QString error = QStringLiteral("Error: Text and Colours sizes different! SZ:%1 - FG:%2 BG:%3");
    QTest::newRow("prefix, two flags")
        << "Flags" << L({ "#ff0000", "yellow" }) << L({ "white", "#000000" }) << L({ "A", "B" })
        << "[Flags:" + span.arg("#ff0000", "white", "A") + span.arg("yellow", "#000000", "B") + "]";
    QTest::newRow("no prefix") << "" << L({ "red" }) << L({ "blue" }) << L({ "Late" })
                               << "[" + span.arg("red", "blue", "Late") + "]";
    QTest::newRow("all empty: unchanged") << "Flags" << L() << L() << L() << "before";
    QTest::newRow("fewer backgrounds")
        << "" << L({ "red" }) << L({ "a", "b" }) << L({ "x", "y" }) << error.arg(2).arg(2).arg(1);
    QTest::newRow("without texts") << "" << L({ "red" }) << L({ "blue" }) << L()
                                   << error.arg(0).arg(1).arg(1);
}

void tst_VAbstractViewWidget::colourStatus()
{
    QFETCH(QString, prefix);
    QFETCH(QStringList, backgrounds);
    QFETCH(QStringList, foregrounds);
    QFETCH(QStringList, texts);
    QFETCH(QString, expected);

    Fixture f;
    f.widget.colourStatusLabel->setText(QStringLiteral("before"));
    f.model.status = { { Qt::UserRole + 2, prefix }, { Qt::UserRole + 3, backgrounds },
        { Qt::UserRole + 4, texts }, { Qt::UserRole + 5, foregrounds } };
    f.widget.updateStatusLabel();
    QCOMPARE(f.widget.colourStatusLabel->text(), expected);
    QCOMPARE(f.status(), QStringLiteral("[5 Rows]"));
}

void tst_VAbstractViewWidget::refreshToolBar_data()
{
    QTest::addColumn<QString>("state"); // s selected, r read only, w withheld, l linked
    QTest::addColumn<int>("options");
    QTest::addColumn<QString>("change"); // new, copy, edit, delete, pdf enabled: before > after

    QTest::newRow("selected") << "s" << 0 << "----- > +++++";
    QTest::newRow("nothing selected") << "" << 0 << "+++++ > +----";
    QTest::newRow("pdf without selection") << "" << 0x4000 << "+++++ > +---+";
    QTest::newRow("read only, selected") << "sr" << 0 << "+++++ > --+-+";
    QTest::newRow("read only, nothing selected") << "r" << 0 << "+++++ > -----";
    QTest::newRow("withheld, selected") << "sw" << 0 << "+++++ > ----+";
    QTest::newRow("withheld, read only, selected") << "srw" << 0 << "+++++ > --+-+";
    QTest::newRow("linked: new left alone") << "sl" << 0 << "----- > -++++";
    QTest::newRow("linked, read only") << "rl" << 0 << "+++++ > +----";
    QTest::newRow("NoDelete: delete left alone") << "" << 0x800 << "+++++ > +--+-";
    QTest::newRow("NoDelete, selected") << "s" << 0x800 << "----- > +++-+";
}

void tst_VAbstractViewWidget::refreshToolBar()
{
    QFETCH(QString, state);
    QFETCH(int, options);
    QFETCH(QString, change);

    Fixture f { VAbstractViewWidget::Options(QFlag(options)) };
    TestViewWidget parent;
    if (state.contains('l'))
        f.widget.setLinkedWidget(&parent);
    VCrudToolBar* bar = f.widget.toolBar();
    // The toolbar shows delete again: a hidden action cannot be enabled, so "left alone" shows only on a
    // shown one.
    bar->setOptions(VCrudToolBar::Options());
    const QList<QAction*> actions
        = { bar->newAction, bar->copyAction, bar->editAction, bar->deleteAction, bar->pdfAction };
    for (VAuthAction* action : { bar->newAction, bar->copyAction, bar->editAction, bar->deleteAction })
        action->authorized = !state.contains('w');
    f.widget.setReadOnly(state.contains('r'));
    if (state.contains('s'))
        f.selectRows({ 2 });
    for (int i = 0; i < actions.size(); ++i)
        actions.at(i)->setEnabled(change.at(i) == '+');
    f.widget.refreshToolBar();
    QCOMPARE(enabledStates(actions), change.mid(8));
}

void tst_VAbstractViewWidget::deleteConfirmation_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<bool>("marksDeleted");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<QString>("emitted");

    const int yes = QMessageBox::Yes, no = QMessageBox::No;
    QTest::newRow("yes") << 0 << false << QList<int>({ 1, 3 }) << yes << 1
                         << "deleteTriggered(7,[(1,0) (3,0)])";
    QTest::newRow("no") << 0 << false << QList<int>({ 1, 3 }) << no << 1 << "";
    QTest::newRow("nothing selected") << 0 << false << QList<int>() << yes << 0 << "";
    QTest::newRow("NoDeleteConfirm") << 0x8 << false << QList<int>({ 4 }) << no << 0
                                     << "deleteTriggered(7,[(4,0)])";
    // Marking can be undone: no question asked.
    QTest::newRow("model marks deleted")
        << 0 << true << QList<int>({ 2 }) << no << 0 << "deleteTriggered(7,[(2,0)])";
}

void tst_VAbstractViewWidget::deleteConfirmation()
{
    QFETCH(int, options);
    QFETCH(bool, marksDeleted);
    QFETCH(QList<int>, rows);
    QFETCH(int, answer);
    QFETCH(int, boxes);
    QFETCH(QString, emitted);

    Fixture f { VAbstractViewWidget::Options(QFlag(options)), 5, marksDeleted ? 0x21 : 0 };
    QAction* del = f.widget.toolBar()->deleteAction;
    QCOMPARE(f.widget.modelOptions(), marksDeleted ? 0x21 : 0);
    QCOMPARE(del->text(),
        marksDeleted ? QStringLiteral("Mark/Unmark Records as Deleted.") : QStringLiteral("Delete..."));
    if (marksDeleted) {
        QCOMPARE(del->toolTip(), QStringLiteral("Click to toggle the selected records Deleted state."));
        QVERIFY(image(del->icon()) == image(QIcon(QStringLiteral(":/images/undelete"))));
    }
    f.selectRows(rows);
    AllSignals spies(&f.widget);
    MessageBoxAnswer box { QMessageBox::StandardButton(answer) };
    del->trigger();
    QCOMPARE(box.shown, boxes);
    QCOMPARE(spies.take(), orNone(emitted));
    if (boxes == 0)
        return;
    QCOMPARE(box.title, QStringLiteral("Confirm Record Delete"));
    QCOMPARE(box.text, QStringLiteral("<b>Warning: deleting records cannot be undone!</b>"));
    QCOMPARE(box.informativeText, QStringLiteral("Delete the selected records?"));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QVERIFY(image(box.windowIcon) == image(QIcon(QStringLiteral(":/images/delete"))));
}

void tst_VAbstractViewWidget::doubleClick_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<bool>("link");
    QTest::addColumn<bool>("editEnabled");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("emitted");

    const int edits = VAbstractViewWidget::DoubleClickEdits;
    QTest::newRow("plain") << 0 << false << true << true << "doubleClicked(7,(1,2))";
    QTest::newRow("edits") << edits << false << true << true << "editTriggered(7,(1,2))";
    QTest::newRow("edits, link cell") << edits << true << true << true << "doubleClicked(7,(1,2))";
    QTest::newRow("edits, edit disabled") << edits << false << false << true << "doubleClicked(7,(1,2))";
    QTest::newRow("invalid index") << edits << false << true << false << "";
}

void tst_VAbstractViewWidget::doubleClick()
{
    QFETCH(int, options);
    QFETCH(bool, link);
    QFETCH(bool, editEnabled);
    QFETCH(bool, valid);
    QFETCH(QString, emitted);

    Fixture f { VAbstractViewWidget::Options(QFlag(options)) };
    const QModelIndex index = f.model.index(1, 2);
    if (link)
        f.model.setData(index, QStringLiteral("https://example.org/1"), LinkRole);
    f.view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    f.widget.toolBar()->editAction->setEnabled(editEnabled);
    AllSignals spies(&f.widget);
    emit f.view->doubleClicked(valid ? index : QModelIndex());
    QCOMPARE(spies.take(), orNone(emitted));
}

void tst_VAbstractViewWidget::readOnlySubmitAndRevert()
{
    Fixture f;
    VCrudToolBar* bar = f.widget.toolBar();
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::readOnlyChanged);
    f.widget.setReadOnly(false);
    f.widget.setReadOnly(true);
    f.widget.setReadOnly(true);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), QList<QVariant>({ 7, true }));
    QCOMPARE(f.status(), QStringLiteral("[5 Rows] Read Only"));
    QCOMPARE(bar->editAction->text(), QStringLiteral("View..."));
    QVERIFY(!bar->newAction->isEnabled());
    f.widget.setReadOnly(false);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1), QList<QVariant>({ 7, false }));
    QCOMPARE(f.status(), QStringLiteral("[5 Rows]"));
    QCOMPARE(bar->editAction->text(), QStringLiteral("Edit..."));

    // A successful submit and every revert call the edit hook.
    f.widget.calls.clear();
    QVERIFY(f.widget.submit());
    QCOMPARE(f.widget.calls, QStringList({ "dataEdited" }));
    f.model.submitResult = false;
    QVERIFY(!f.widget.submit());
    f.widget.revert();
    QCOMPARE(QList<int>({ f.model.submits, f.model.reverts }), QList<int>({ 2, 1 }));
    QCOMPARE(f.widget.calls, QStringList({ "dataEdited", "dataEdited" }));

    f.widget.enableSubmit();
    QCOMPARE(enabledStates({ bar->submitAction, bar->revertAction, bar->refreshAction, bar->csvAction }),
        QStringLiteral("++--"));
}

void tst_VAbstractViewWidget::linking()
{
    Fixture f;
    TestViewWidget parent;
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkTriggered);
    f.widget.setLinkedWidget(&parent);
    f.widget.setLinkedWidget(&parent);
    QCOMPARE(f.widget.linkedWidget, &parent);
    QVERIFY(f.widget.linkedAction->isEnabled() && f.widget.linkedEnabled());
    // Relinking reconnects once: a click is reported once.
    f.widget.linkedAction->trigger();
    QVERIFY(!f.widget.linkedEnabled());
    f.widget.enableLinked(true);
    f.widget.enableLinked(true);
    QVERIFY(f.widget.linkedAction->isChecked());
    // enableLinked() reports each call, even one that changes nothing.
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spy.at(0), QList<QVariant>({ 7, false }));
    QCOMPARE(spy.at(1), QList<QVariant>({ 7, true }));
    QCOMPARE(spy.at(2), spy.at(1));

    // A widget is not its own parent.
    VTestLogCapture log;
    f.widget.setLinkedWidget(&f.widget);
    QCOMPARE(f.widget.linkedWidget, &parent);
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
}

void tst_VAbstractViewWidget::settings()
{
    m_settings.clear();
    VSettings settings(nullptr);
    // Reads settings into a fresh widget whose link and visibility are off; "calls" holds the link signals.
    const auto read = [](VAbstractViewWidget::Options options = {}) {
        auto f = std::make_unique<Fixture>(options);
        QSignalSpy spy(&f->widget, &VAbstractViewWidget::linkTriggered);
        f->widget.linkedAction->setChecked(false);
        f->widget.visibilityAction->setChecked(false);
        f->widget.readSettings();
        f->widget.calls.clear();
        for (const QList<QVariant>& args : qAsConst(spy))
            f->widget.calls << args.at(0).toString() + QLatin1Char(',') + args.at(1).toString();
        return f;
    };
    {
        // Nothing stored: linked and visible by default, nothing written by reading.
        auto f = read();
        QVERIFY(f->widget.linkedAction->isChecked() && f->widget.visibilityAction->isChecked());
        QCOMPARE(f->widget.calls, QStringList({ "7,true" }));
        QVERIFY(settings.settings()->allKeys().isEmpty());

        f->widget.showFilterAction->setChecked(true);
        f->widget.showOptionsAction->setChecked(true);
        f->widget.linkedAction->setChecked(false);
        f->widget.saveSettings();
        QStringList stored;
        for (const char* key : { "filterenabled", "linkenabled", "optionsenabled", "visible" })
            stored << settings.value(QStringLiteral("Orders/") + QLatin1String(key)).toString();
        QCOMPARE(stored, QStringList({ "true", "false", "true", "true" }));
        QCOMPARE(settings.settings()->allKeys().size(), 4);
    }
    {
        settings.setValue(QStringLiteral("Orders/visible"), false);
        auto f = read();
        QVERIFY(!f->widget.linkedAction->isChecked() && !f->widget.visibilityAction->isChecked());
        QCOMPARE(f->widget.calls, QStringList({ "7,false" }));
        // Without panels their keys are not read.
        QVERIFY(!f->widget.showFilterAction->isChecked() && !f->widget.showOptionsAction->isChecked());
    }
    // A hidden link action ignores its key.
    QCOMPARE(read(VAbstractViewWidget::NoLinkedAction)->widget.calls, QStringList());
    // Garbage reads as something, never as a crash.
    settings.setValue(QStringLiteral("Orders/visible"), QStringLiteral("garbage"));
    settings.setValue(QStringLiteral("Orders/linkenabled"), QByteArray("\x01\x02"));
    QVERIFY(read()->widget.visibilityAction->isChecked());
}

void tst_VAbstractViewWidget::moveSearchToPrinterLayout()
{
    Fixture f(VAbstractViewWidget::ShowPrinters);
    VCrudToolBar* bar = f.widget.toolBar();
    bar->setOptions(VCrudToolBar::NoPdf);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    // A second move changes nothing.
    f.widget.moveSearchToPrinterLayout(8, 2);
    f.widget.moveSearchToPrinterLayout(8, 2);
    QCOMPARE(layoutContent(f.widget.printersLayout).mid(0, 3),
        QStringList({ "spacer 8", "QCheckBox", "VSearchLineEdit" }));
    QCOMPARE(f.widget.printersLayout->count(), 4);
    QCOMPARE(f.widget.printersLayout->itemAt(1)->widget(), bar->excludeCheckBox);
    QCOMPARE(f.widget.printersLayout->stretch(3), 2);
    QVERIFY(!bar->actions().contains(bar->excludeAction) && !bar->actions().contains(bar->searchEditAction));
    QVERIFY(!bar->searchSeparator->isVisible());

    // The search works from its new place and still follows the toolbar's option word.
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::searchTextEdited);
    bar->searchLineEdit->setText(QStringLiteral("Name 3"));
    QTest::keyClick(bar->searchLineEdit, Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), QList<QVariant>({ 7, QStringLiteral("Name 3"), false }));
    for (auto options :
        { VCrudToolBar::Options(), VCrudToolBar::Options(VCrudToolBar::NoSearch), VCrudToolBar::Options() }) {
        bar->setOptions(options);
        QCOMPARE(bar->searchLineEdit->isVisible() && bar->excludeCheckBox->isVisible(), !options);
    }

    // Without spacing and stretch only the two widgets move.
    TestViewWidget plain;
    plain.moveSearchToPrinterLayout(0, 0);
    QCOMPARE(plain.printersLayout->count(), 2);
    QCOMPARE(layoutContent(plain.printersLayout), QStringList({ "QCheckBox", "VSearchLineEdit" }));
}

void tst_VAbstractViewWidget::setCurrentIndexAndMatch()
{
    Fixture f;
    f.model.setObjectName(QStringLiteral("orders"));
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::selectionChanged);
    f.widget.setCurrentIndex(f.model.index(3, 1));
    QCOMPARE(f.widget.currentIndex(), f.model.index(3, 1));
    QCOMPARE(spy.count(), 0);
    // The toolbar and the status line follow all the same; the signal is back for the user's next selection.
    QCOMPARE(f.status(), QStringLiteral("[5 Rows][1 Selected]"));
    QVERIFY(f.widget.toolBar()->copyAction->isEnabled());
    f.selectRows({ 0 });
    QCOMPARE(spy.count(), 1);

    // An index of another model changes nothing; an invalid one clears the current row.
    RecordModel other;
    other.setObjectName(QStringLiteral("customers"));
    VTestLogCapture log;
    f.widget.setCurrentIndex(other.index(1, 0));
    QCOMPARE(f.widget.currentIndex(), f.model.index(3, 1));
    QCOMPARE(f.status(), QStringLiteral("[5 Rows][2 Selected]"));
    const QStringList warnings = log.messages(Logger::Warning);
    QCOMPARE(warnings.size(), 1);
    QVERIFY(
        warnings.at(0).startsWith(QLatin1String("VAbstractViewWidget::setCurrentIndex Mismatched models.")));
    QVERIFY(warnings.at(0).contains(QLatin1String("orders"))
        && warnings.at(0).contains(QLatin1String("customers")));
    f.widget.setCurrentIndex(QModelIndex());
    QVERIFY(!f.widget.currentIndex().isValid());
    QCOMPARE(log.messages(Logger::Warning).size(), 1);

    QCOMPARE(f.widget.matchValue(103, 0, Qt::DisplayRole), f.model.index(3, 0));
    QCOMPARE(f.widget.matchValue(QStringLiteral("City 1"), 2, Qt::DisplayRole), f.model.index(1, 2));
    for (int column : { 0, 7, -1 })
        QVERIFY(!f.widget.matchValue(column ? 103 : 999, column, Qt::DisplayRole).isValid());
}

void tst_VAbstractViewWidget::modelReplacedOrReset()
{
    Fixture f;
    f.widget.show();
    f.selectRows({ 1, 2 });
    VCrudToolBar* bar = f.widget.toolBar();
    const QList<QAction*> rowActions = { bar->deleteAction, bar->editAction, bar->copyAction };
    QCOMPARE(enabledStates(rowActions), QStringLiteral("+++"));

    // A reset drops the selection silently; the toolbar must not offer to act on rows that are gone.
    f.model.clear();
    QCOMPARE(f.status(), QStringLiteral("[0 Rows]"));
    QCOMPARE(enabledStates(rowActions), QStringLiteral("---"));

    // A model set on the view behind the widget's back is picked up; the old one no longer speaks for it.
    RecordModel replacement(3);
    f.view->setModel(&replacement);
    QTRY_COMPARE(f.status(), QStringLiteral("[3 Rows]"));
    QSignalSpy selectionSpy(&f.widget, &VAbstractViewWidget::selectionChanged);
    f.view->selectionModel()->select(
        replacement.index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(selectionSpy.count(), 1);
    QVERIFY(bar->deleteAction->isEnabled());
    replacement.appendRow(new QStandardItem);
    f.model.appendRow(new QStandardItem);
    QCOMPARE(f.status(), QStringLiteral("[4 Rows][1 Selected]"));

    // The model deleted while selected.
    auto* doomed = new RecordModel(2);
    f.view->setModel(doomed);
    QTRY_COMPARE(f.status(), QStringLiteral("[2 Rows]"));
    f.view->selectionModel()->select(
        doomed->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    delete doomed;
    f.widget.updateStatusLabel();
    QCOMPARE(f.status(), QStringLiteral("[0 Rows]"));
    f.widget.refreshToolBar();
    QVERIFY(!bar->deleteAction->isEnabled());
    QCOMPARE(f.widget.modelOptions(), 0);
    QVERIFY(!f.widget.submit());
}

void tst_VAbstractViewWidget::viewReplacedOrDeleted()
{
    RecordingViewWidget w(VAbstractViewWidget::NoDeleteConfirm);
    w.viewId = 4;
    RecordModel model;
    QPointer<QTableView> first = new QTableView;
    first->setModel(&model);
    w.setView(first);
    QCOMPARE(w.mainLayout->stretch(1), 1);
    QCOMPARE(first->parentWidget(), &w);
    QVERIFY(qobject_cast<VHighLightItemDelegate*>(first->itemDelegate()));
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[5 Rows]"));
    // A new view replaces and deletes the old one; null takes it away.
    auto* second = new QTableView;
    w.setView(second);
    QVERIFY(first.isNull());
    QCOMPARE(layoutContent(w.mainLayout), QStringList({ "layout", "QTableView", "StatusWidget" }));
    w.setView(nullptr);
    QVERIFY(!w.view());
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows]"));
    // A tree keeps its own delegate when asked to.
    TestViewWidget own(VAbstractViewWidget::NoHighlightDelegate);
    auto* tree = new QTreeView;
    QAbstractItemDelegate* delegate = tree->itemDelegate();
    own.setView(tree);
    QCOMPARE(tree->itemDelegate(), delegate);

    // Without a view: nothing to act on, nothing to warn about but a foreign index.
    VTestLogCapture log;
    AllSignals spies(&w);
    VCrudToolBar* bar = w.toolBar();
    w.refreshToolBar();
    QCOMPARE(enabledStates({ bar->newAction, bar->editAction, bar->copyAction, bar->deleteAction }),
        QStringLiteral("+---"));
    QVERIFY(!w.currentIndex().isValid() && !w.submit() && !w.matchValue(1, 0, Qt::DisplayRole).isValid());
    w.setCurrentIndex(QModelIndex());
    QVERIFY(log.messages(Logger::Warning).isEmpty());
    w.setCurrentIndex(model.index(0, 0));
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
    w.setReadOnly(true);
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows] Read Only"));
    w.setReadOnly(false);
    spies.take();
    // Triggers still report, with an invalid index; deleting needs rows.
    for (QAction* action :
        QList<QAction*>({ bar->newAction, bar->editAction, bar->deleteAction, bar->pdfAction }))
        action->trigger();
    w._doubleClicked(model.index(0, 0));
    QCOMPARE(spies.take(),
        QStringList(
            { "doubleClicked(4,(0,0))", "editTriggered(4,())", "newTriggered(4)", "pdfTriggered(4,())" }));

    // A view or toolbar deleted from outside leaves no dangling pointer.
    auto* view = new QTableView;
    w.setView(view);
    delete view;
    QVERIFY(!w.view());
    delete w.toolBar();
    QVERIFY(!w.toolBar());
    w.refreshToolBar();
    w.setOptions(VAbstractViewWidget::NoDelete);
    w.moveSearchToPrinterLayout(1, 1);
    w.enableSubmit();
    // No flag to read is no permission, except for viewing while read-only.
    w._newTriggered();
    w._editTriggered();
    w._deleteTriggered();
    w.setReadOnly(true);
    w._editTriggered();
    w._copyTriggered();
    QCOMPARE(spies.take(), QStringList({ "editTriggered(4,())", "readOnlyChanged(4,true)" }));
}

QTEST_MAIN(tst_VAbstractViewWidget)
#include "tst_vabstractviewwidget.moc"
