#include "viewwidgettesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vabstractviewwidget.h>
#include <vauthaction.h>
#include <vcrudtoolbar.h>
#include <vhighlightitemdelegate.h>
#include <vsearchlineedit.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>
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

    void refreshToolBar() override
    {
        calls << QStringLiteral("refreshToolBar");
        TestViewWidget::refreshToolBar();
    }
    void updateStatusLabel() override
    {
        calls << QStringLiteral("updateStatusLabel");
        TestViewWidget::updateStatusLabel();
    }
    void dataEdited() override { calls << QStringLiteral("dataEdited"); }

#define RECORD(slot, params, args)                                                                           \
    void slot params override                                                                                \
    {                                                                                                        \
        calls << QStringLiteral(#slot);                                                                      \
        TestViewWidget::slot args;                                                                           \
    }
    RECORD(showFilterActivated, (), ())
    RECORD(showOptionsActivated, (), ())
    RECORD(_clicked, (const QModelIndex& i), (i))
    RECORD(_columnsTriggered, (), ())
    RECORD(_copyTriggered, (), ())
    RECORD(_csvTriggered, (), ())
    RECORD(_dataChanged, (const QModelIndex& a, const QModelIndex& b), (a, b))
    RECORD(_deleteTriggered, (), ())
    RECORD(_doubleClicked, (const QModelIndex& i), (i))
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
    explicit Fixture(VAbstractViewWidget::Options options = VAbstractViewWidget::Options(), int rows = 5)
        : model(rows)
        , widget(options)
        , view(new QTableView)
    {
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

// Spies on every signal of an object, to tell exactly which ones a trigger emitted.
class AllSignals {
public:
    explicit AllSignals(QObject* object)
    {
        const QMetaObject* meta = object->metaObject();
        for (int i = QWidget::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            if (method.methodType() != QMetaMethod::Signal)
                continue;
            m_names << QString::fromLatin1(method.name());
            m_spies.emplace_back(
                new QSignalSpy(object, QByteArray("2" + method.methodSignature()).constData()));
        }
    }

    /// The signals emitted since the last call, with their arguments; clears the record.
    QStringList take()
    {
        QStringList fired;
        for (size_t i = 0; i < m_spies.size(); ++i) {
            for (const QList<QVariant>& args : qAsConst(*m_spies[i])) {
                QStringList texts;
                for (const QVariant& arg : args) {
                    if (arg.userType() == qMetaTypeId<QModelIndex>()) {
                        const QModelIndex index = arg.value<QModelIndex>();
                        texts << (index.isValid()
                                ? QStringLiteral("(%1,%2)").arg(index.row()).arg(index.column())
                                : QStringLiteral("()"));
                    } else if (arg.userType() == qMetaTypeId<QModelIndexList>()) {
                        QStringList rows;
                        for (const QModelIndex& index : arg.value<QModelIndexList>())
                            rows << QStringLiteral("(%1,%2)").arg(index.row()).arg(index.column());
                        texts << QLatin1Char('[') + rows.join(QLatin1Char(' ')) + QLatin1Char(']');
                    } else {
                        texts << arg.toString();
                    }
                }
                fired << m_names.at(int(i)) + QLatin1Char('(') + texts.join(QLatin1Char(','))
                        + QLatin1Char(')');
            }
            m_spies[i]->clear();
        }
        return fired;
    }

private:
    QStringList m_names;
    std::vector<std::unique_ptr<QSignalSpy>> m_spies;
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
        if (item->widget())
            content << (item->widget()->objectName().isEmpty()
                    ? QString::fromLatin1(item->widget()->metaObject()->className())
                    : item->widget()->objectName());
        else if (item->layout())
            content << QStringLiteral("layout");
        else if (item->spacerItem())
            content << QStringLiteral("spacer %1").arg(item->spacerItem()->sizeHint().width());
    }
    return content;
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
    void setView();
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
    void markedDeletedModel();
    void doubleClick_data();
    void doubleClick();
    void readOnly();
    void submitAndRevert();
    void linking();
    void settings();
    void moveSearchToPrinterLayout();
    void searchModes_data();
    void searchModes();
    void setCurrentIndex();
    void matchValue();
    void modelReplacedOrReset();
    void withoutView();
    void headerAndTitle();

private:
    VTestSettings m_settings;
};

void tst_VAbstractViewWidget::construction()
{
    TestViewWidget w;
    QCOMPARE(w.viewId, -1);
    QVERIFY(!w.readOnly);
    QVERIFY(!w.linkedWidget && !w.filterWidget && !w.optionsWidget && !w.view());
    QVERIFY(w.toolBar());
    QCOMPARE(w.layout(), w.mainLayout);

    // Header above, status line below; the view goes between them.
    QCOMPARE(layoutContent(w.mainLayout), QStringList({ "layout", "StatusWidget" }));
    QCOMPARE(w.mainLayout->itemAt(0)->layout(), w.headerLayout);
    QCOMPARE(layoutContent(w.headerLayout),
        QStringList({ "HeaderTitleWidget", "HeaderCrudWidget", "PrintersWidget", "layout" }));
    QCOMPARE(w.headerLayout->itemAt(3)->layout(), w.headerExtraLayout);
    QCOMPARE(w.headerLayout->stretch(0), 1);
    QCOMPARE(layoutContent(w.headerTitleLayout), QStringList({ "HeaderLabel" }));
    QCOMPARE(w.headerTitleLayout->stretch(0), 1);
    QCOMPARE(layoutContent(w.headerCrudLayout), QStringList({ "Orders_ToolBar", "TitleLabel" }));
    QCOMPARE(w.headerCrudLayout->stretch(1), 1);
    QCOMPARE(w.headerExtraLayout->count(), 0);
    QCOMPARE(w.printersLayout->count(), 0);
    QCOMPARE(w.statusLayout->count(), 4);
    QCOMPARE(w.statusLayout->itemAt(0)->widget(), w.statusLabel);
    QCOMPARE(w.statusLayout->itemAt(1)->widget(), w.filterLabel);
    QCOMPARE(w.statusLayout->stretch(2), 1);
    QCOMPARE(w.statusLayout->itemAt(3)->widget(), w.colourStatusLabel);
    for (QLayout* layout : w.findChildren<QLayout*>()) {
        if (layout->parentWidget() != &w && layout->parentWidget()->parentWidget() != &w)
            continue; // the toolbar's own layout
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
    }
    auto* statusWidget = w.findChild<QWidget*>(QStringLiteral("StatusWidget"));
    QCOMPARE(statusWidget->layout(), w.statusLayout);
    QCOMPARE(statusWidget->sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
    QCOMPARE(statusWidget->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(w.headerLabel->alignment(), Qt::AlignCenter);
    QVERIFY(w.titleLabel->isHidden());
    QVERIFY(w.findChild<QWidget*>(QStringLiteral("PrintersWidget"))->isHidden());
    QVERIFY(!statusWidget->isHidden());

    // The five view actions.
    struct Expected {
        QAction* action;
        const char* name;
        const char* text;
        const char* tip;
        const char* icon;
        bool checkable, checked, enabled, visible;
    };
    const Expected actions[] = {
        { w.columnsAction, "columnsAction", "Select Columns...", "Select the visible columns for this view.",
            ":/images/selectcolumn", false, false, true, true },
        { w.showFilterAction, "showFilterAction", "Show Filter", "Select a filter to apply to this view.",
            ":/images/filter", true, false, false, false },
        { w.showOptionsAction, "showOptionsAction", "Show Options", "Select options to apply to this view.",
            ":/images/settings", true, false, false, false },
        { w.linkedAction, "linkedAction", "Link to Parent",
            "Toggles synchronizing this view to its parent view.", ":/images/link", true, false, false,
            true },
        { w.visibilityAction, "visibilityAction", "", "", nullptr, true, true, false, true },
    };
    // A hidden action is also disabled, as Qt has it.
    for (const Expected& e : actions) {
        QCOMPARE(e.action->objectName(), QString::fromLatin1(e.name));
        QCOMPARE(e.action->text(), QString::fromLatin1(e.text));
        if (*e.tip)
            QCOMPARE(e.action->toolTip(), QString::fromLatin1(e.tip));
        if (e.icon)
            QVERIFY2(image(e.action->icon()) == image(QIcon(QString::fromLatin1(e.icon))), e.name);
        else
            QVERIFY(e.action->icon().isNull());
        QCOMPARE(e.action->isCheckable(), e.checkable);
        QCOMPARE(e.action->isChecked(), e.checked);
        QCOMPARE(e.action->isEnabled(), e.enabled);
        QCOMPARE(e.action->isVisible(), e.visible);
        QCOMPARE(e.action->parent(), &w);
    }

    // The view actions stand between refresh and CSV; submit starts disabled.
    VCrudToolBar* bar = w.toolBar();
    const QList<QAction*> head = bar->actions().mid(0, 9);
    QCOMPARE(head,
        QList<QAction*>(
            { bar->expandAllAction, bar->collapseAllAction, bar->refreshAction, w.showOptionsAction,
                w.showFilterAction, w.linkedAction, w.columnsAction, bar->csvAction, bar->firstSeparator }));
    QVERIFY(!bar->submitAction->isEnabled() && !bar->revertAction->isEnabled());
    QVERIFY(bar->refreshAction->isEnabled() && bar->csvAction->isEnabled());
}

void tst_VAbstractViewWidget::objectNames()
{
    RecordingViewWidget w(VAbstractViewWidget::Options(), QStringLiteral("Orders"));
    QCOMPARE(w.objectName(), QStringLiteral("Orders"));
    QCOMPARE(w.toolBar()->objectName(), QStringLiteral("Orders_ToolBar"));
    for (const char* suffix : { "_New", "_Copy", "_Edit", "_Delete", "_Email", "_Save", "_Cancel" })
        QVERIFY2(w.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar") + QLatin1String(suffix)), suffix);

    // A rename goes through the virtual slot and renames the toolbar's record actions.
    w.setObjectName(QStringLiteral("Customers"));
    QCOMPARE(w.calls, QStringList({ "onObjectNameChanged" }));
    QCOMPARE(w.toolBar()->objectName(), QStringLiteral("Customers_ToolBar"));
    QCOMPARE(
        w.findChild<VAuthAction*>(QStringLiteral("Customers_ToolBar_Delete")), w.toolBar()->deleteAction);
    QVERIFY(!w.findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_Delete")));

    // A replacement toolbar is named at once, and the old one goes.
    QPointer<VCrudToolBar> old = w.toolBar();
    auto* bar = new VCrudToolBar;
    w.setToolBar(bar);
    QVERIFY(old.isNull());
    QCOMPARE(bar->objectName(), QStringLiteral("Customers_ToolBar"));
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
        const auto initial = pass == 0 ? options : VAbstractViewWidget::Options(QFlag(~flags & 0x1c33));
        TestViewWidget w(initial);
        if (pass == 1) {
            // The toolbar's own word is kept; NoDelete is added to it.
            w.toolBar()->setOptions(VCrudToolBar::NoPdf);
            w.setOptions(options);
            QVERIFY(w.toolBar()->options.testFlag(VCrudToolBar::NoPdf));
        }
        QCOMPARE(w.options, options);
        QCOMPARE(w.toolBar()->options.testFlag(VCrudToolBar::NoDelete),
            options.testFlag(VAbstractViewWidget::NoDelete));
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QString states;
        for (bool visible : { w.headerLabel->isVisible(), w.toolBar()->isVisible(),
                 w.columnsAction->isVisible(), w.linkedAction->isVisible(),
                 w.findChild<QWidget*>(QStringLiteral("StatusWidget"))->isVisible(),
                 w.findChild<QWidget*>(QStringLiteral("PrintersWidget"))->isVisible(),
                 w.toolBar()->deleteAction->isVisible() })
            states += visible ? '+' : '-';
        QVERIFY2(states == shown, qPrintable(QString::number(pass) + QLatin1Char(' ') + states));
    }
}

void tst_VAbstractViewWidget::setView()
{
    RecordModel model;
    RecordingViewWidget w;
    QPointer<QTableView> first = new QTableView;
    first->setModel(&model);
    w.setView(first);
    QCOMPARE(w.view(), first.data());
    QCOMPARE(w.mainLayout->indexOf(first), 1);
    QCOMPARE(w.mainLayout->stretch(1), 1);
    QCOMPARE(first->parentWidget(), &w);
    QVERIFY(qobject_cast<VHighLightItemDelegate*>(first->itemDelegate()));

    // A new view replaces and deletes the old one.
    auto* second = new QTableView;
    second->setModel(&model);
    w.setView(second);
    QVERIFY(first.isNull());
    QCOMPARE(w.mainLayout->indexOf(second), 1);
    QCOMPARE(layoutContent(w.mainLayout), QStringList({ "layout", "QTableView", "StatusWidget" }));

    // A tree keeps its own delegate when asked to.
    TestViewWidget own(VAbstractViewWidget::NoHighlightDelegate);
    auto* tree = new QTreeView;
    QAbstractItemDelegate* delegate = tree->itemDelegate();
    own.setView(tree);
    QCOMPARE(tree->itemDelegate(), delegate);
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

    struct Trigger {
        std::function<void()> run;
        const char* slot;
        QString emitted;
    };
    const QList<Trigger> triggers = {
        { [&] { bar->refreshAction->trigger(); }, "_refreshTriggered", "refreshTriggered(7,true)" },
        { [&] { bar->newAction->trigger(); }, "_newTriggered", "newTriggered(7)" },
        { [&] { bar->copyAction->trigger(); }, "_copyTriggered", "copyTriggered(7,(3,1))" },
        { [&] { bar->editAction->trigger(); }, "_editTriggered", "editTriggered(7,(3,1))" },
        { [&] { bar->deleteAction->trigger(); }, "_deleteTriggered", "deleteTriggered(7,[(1,0) (3,0)])" },
        { [&] { bar->csvAction->trigger(); }, "_csvTriggered", "csvTriggered(7)" },
        { [&] { bar->pdfAction->trigger(); }, "_pdfTriggered", "pdfTriggered(7,(3,1))" },
        { [&] { bar->emailAction->trigger(); }, "_emailTriggered", "emailTriggered(7,(3,1))" },
        { [&] { bar->revertAction->trigger(); }, "_revertTriggered", "revertTriggered(7)" },
        { [&] { bar->submitAction->trigger(); }, "_submitTriggered", "submitTriggered(7)" },
        { [&] { f.widget.columnsAction->trigger(); }, "_columnsTriggered", "columnsTriggered(7)" },
        { [&] { f.widget.linkedAction->trigger(); }, "_linkTriggered", "linkTriggered(7,true)" },
        { [&] { f.widget.linkedAction->trigger(); }, "_linkTriggered", "linkTriggered(7,false)" },
        { [&] { f.widget.visibilityAction->trigger(); }, "_visibilityTriggered",
            "visibilityTriggered(7,false)" },
        { [&] { bar->excludeCheckBox->setChecked(true); }, "", "" },
        { [&] {
             bar->searchLineEdit->setText(QStringLiteral("Bonn"));
             QTest::keyClick(bar->searchLineEdit, Qt::Key_Return);
         },
            "_searchTriggered", "searchTextEdited(7,Bonn,true)" },
        // Toggling Exclude with text applies the search at once.
        { [&] { bar->excludeCheckBox->setChecked(false); }, "_searchTriggered",
            "searchTextEdited(7,Bonn,false)" },
        // Expand and collapse are for trees; nothing listens here.
        { [&] { bar->expandAllAction->trigger(); }, "", "" },
        { [&] { bar->collapseAllAction->trigger(); }, "", "" },
        { [&] { f.widget.showFilterAction->trigger(); }, "showFilterActivated", "" },
        { [&] { f.widget.showOptionsAction->trigger(); }, "showOptionsActivated", "" },
    };
    for (const Trigger& t : triggers) {
        t.run();
        const QString what = QString::fromLatin1(t.slot) + QLatin1Char(' ') + t.emitted;
        QVERIFY2(f.widget.calls == (*t.slot ? QStringList(QString::fromLatin1(t.slot)) : QStringList()),
            qPrintable(what + QLatin1String(" got ") + f.widget.calls.join(QLatin1Char(' '))));
        const QStringList fired = spies.take();
        QVERIFY2(fired == (t.emitted.isEmpty() ? QStringList() : QStringList(t.emitted)),
            qPrintable(what + QLatin1String(" got ") + fired.join(QLatin1Char(' '))));
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
    const QRect cell = f.view->visualRect(f.model.index(2, 1));
    QTest::mouseClick(f.view->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QCOMPARE(f.widget.calls,
        QStringList({ "_selectionChanged", "refreshToolBar", "updateStatusLabel", "signal", "_clicked" }));
    QStringList fired = spies.take();
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

    // Inserted and removed rows update the count; a reset also emits modelReset.
    f.widget.calls.clear();
    f.model.appendRow(new QStandardItem(QStringLiteral("x")));
    QCOMPARE(f.status(), QStringLiteral("[6 Rows][1 Selected]"));
    f.model.removeRows(0, 2);
    QCOMPARE(f.status(), QStringLiteral("[4 Rows][1 Selected]"));
    QVERIFY(f.widget.calls.contains(QStringLiteral("updateStatusLabel")));
    spies.take();
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
    QTest::addColumn<QString>("selection"); // "r" a whole row, "r:c" one cell
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << 0 << "" << false << "[0 Rows]";
    QTest::newRow("one row") << 1 << "" << false << "[1 Row]";
    QTest::newRow("two rows") << 2 << "" << false << "[2 Rows]";
    QTest::newRow("one selected") << 5 << "2" << false << "[5 Rows][1 Selected]";
    QTest::newRow("three of five") << 5 << "0 2 4" << false << "[5 Rows][3 Selected]";
    QTest::newRow("three of five, read only") << 5 << "0 2 4" << true << "[5 Rows][3 Selected] Read Only";
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

    Fixture f(VAbstractViewWidget::Options(), rows);
    f.widget.setReadOnly(readOnly);
    QItemSelectionModel* sm = f.view->selectionModel();
    for (const QString& part : selection.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (part.contains(QLatin1Char(':'))) {
            const QStringList rc = part.split(QLatin1Char(':'));
            sm->select(f.model.index(rc.at(0).toInt(), rc.at(1).toInt()), QItemSelectionModel::Select);
        } else {
            const QStringList range = part.split(QLatin1Char('-'));
            sm->select(QItemSelection(
                           f.model.index(range.first().toInt(), 0), f.model.index(range.last().toInt(), 2)),
                QItemSelectionModel::Select);
        }
    }
    QCOMPARE(f.status(), expected);
}

void tst_VAbstractViewWidget::treeStatusText()
{
    // Two top rows; the first has two children, of which the first has one child.
    QStandardItemModel model;
    auto* top = new QStandardItem(QStringLiteral("top"));
    auto* child = new QStandardItem(QStringLiteral("child"));
    child->appendRow(new QStandardItem(QStringLiteral("grandchild")));
    top->appendRow(child);
    top->appendRow(new QStandardItem(QStringLiteral("child 2")));
    model.appendRow(top);
    auto* single = new QStandardItem(QStringLiteral("single"));
    single->appendRow(new QStandardItem(QStringLiteral("only child")));
    model.appendRow(single);
    model.appendRow(new QStandardItem(QStringLiteral("leaf")));

    TestViewWidget w(VAbstractViewWidget::NoHighlightDelegate);
    auto* tree = new QTreeView;
    tree->setModel(&model);
    w.setView(tree);
    const auto statusAt = [&](const QModelIndex& index) {
        tree->setCurrentIndex(index);
        w.updateStatusLabel();
        return w.statusLabel->text();
    };
    QCOMPARE(statusAt(QModelIndex()), QStringLiteral("[3 Rows]"));
    QCOMPARE(statusAt(top->index()), QStringLiteral("[3 Rows, 2 Child Rows][1 Selected]"));
    QCOMPARE(statusAt(single->index()), QStringLiteral("[3 Rows, 1 Child Row][1 Selected]"));
    QCOMPARE(statusAt(model.index(2, 0)), QStringLiteral("[3 Rows][1 Selected]"));
    // A child row shows its own number of children.
    QCOMPARE(statusAt(child->index()), QStringLiteral("[1 Child Row][1 Selected]"));
    QCOMPARE(statusAt(top->child(1)->index()), QStringLiteral("[0 Child Rows][1 Selected]"));
}

void tst_VAbstractViewWidget::colourStatus_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QStringList>("backgrounds");
    QTest::addColumn<QStringList>("foregrounds");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("expected");

    const QString span = QStringLiteral("<span style='background-color:%1; color:%2'>&nbsp;%3&nbsp;</span>");
    QTest::newRow("prefix, two flags")
        << "Flags" << QStringList({ "#ff0000", "yellow" }) << QStringList({ "white", "#000000" })
        << QStringList({ "A", "B" })
        << "[Flags:" + span.arg("#ff0000", "white", "A") + span.arg("yellow", "#000000", "B") + "]";
    QTest::newRow("no prefix") << "" << QStringList({ "red" }) << QStringList({ "blue" })
                               << QStringList({ "Late" }) << "[" + span.arg("red", "blue", "Late") + "]";
    QTest::newRow("all empty: unchanged")
        << "Flags" << QStringList() << QStringList() << QStringList() << "before";
    QTest::newRow("fewer backgrounds")
        << "" << QStringList({ "red" }) << QStringList({ "a", "b" }) << QStringList({ "x", "y" })
        << "Error: Text and Colours sizes different! SZ:2 - FG:2 BG:1";
    QTest::newRow("more foregrounds")
        << "P" << QStringList({ "red" }) << QStringList({ "a", "b", "c" }) << QStringList({ "x" })
        << "Error: Text and Colours sizes different! SZ:1 - FG:3 BG:1";
    QTest::newRow("colours without texts")
        << "" << QStringList({ "red" }) << QStringList({ "blue" }) << QStringList()
        << "Error: Text and Colours sizes different! SZ:0 - FG:1 BG:1";
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
    f.model.status.insert(Qt::UserRole + 2, prefix);
    f.model.status.insert(Qt::UserRole + 3, backgrounds);
    f.model.status.insert(Qt::UserRole + 4, texts);
    f.model.status.insert(Qt::UserRole + 5, foregrounds);
    f.widget.updateStatusLabel();
    QCOMPARE(f.widget.colourStatusLabel->text(), expected);
    QCOMPARE(f.status(), QStringLiteral("[5 Rows]"));
}

void tst_VAbstractViewWidget::refreshToolBar_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("authorized");
    QTest::addColumn<bool>("linked");
    QTest::addColumn<int>("options");
    QTest::addColumn<QString>("before"); // new, copy, edit, delete, pdf
    QTest::addColumn<QString>("after");

    QTest::newRow("selected") << true << false << true << false << 0 << "-----"
                              << "+++++";
    QTest::newRow("nothing selected") << false << false << true << false << 0 << "+++++"
                                      << "+----";
    QTest::newRow("pdf without selection") << false << false << true << false << 0x4000 << "+++++"
                                           << "+---+";
    QTest::newRow("read only, selected") << true << true << true << false << 0 << "+++++"
                                         << "--+-+";
    QTest::newRow("read only, nothing selected") << false << true << true << false << 0 << "+++++"
                                                 << "-----";
    QTest::newRow("withheld, selected") << true << false << false << false << 0 << "+++++"
                                        << "----+";
    QTest::newRow("withheld, read only, selected") << true << true << false << false << 0 << "+++++"
                                                   << "--+-+";
    QTest::newRow("linked: new left alone") << true << false << true << true << 0 << "-----"
                                            << "-++++";
    QTest::newRow("linked, read only: new left alone") << false << true << true << true << 0 << "+++++"
                                                       << "+----";
    QTest::newRow("NoDelete: delete left alone") << false << false << true << false << 0x800 << "+++++"
                                                 << "+--+-";
    QTest::newRow("NoDelete, selected") << true << false << true << false << 0x800 << "-----"
                                        << "+++-+";
}

void tst_VAbstractViewWidget::refreshToolBar()
{
    QFETCH(bool, selected);
    QFETCH(bool, readOnly);
    QFETCH(bool, authorized);
    QFETCH(bool, linked);
    QFETCH(int, options);
    QFETCH(QString, before);
    QFETCH(QString, after);

    Fixture f { VAbstractViewWidget::Options(QFlag(options)) };
    TestViewWidget parent;
    if (linked)
        f.widget.setLinkedWidget(&parent);
    VCrudToolBar* bar = f.widget.toolBar();
    // The toolbar shows delete again: a hidden action cannot be enabled, so "left alone" shows only on a
    // shown one.
    bar->setOptions(VCrudToolBar::Options());
    const QList<QAction*> actions
        = { bar->newAction, bar->copyAction, bar->editAction, bar->deleteAction, bar->pdfAction };
    for (VAuthAction* action : { bar->newAction, bar->copyAction, bar->editAction, bar->deleteAction })
        action->authorized = authorized;
    f.widget.setReadOnly(readOnly);
    if (selected)
        f.selectRows({ 2 });
    for (int i = 0; i < actions.size(); ++i)
        actions.at(i)->setEnabled(before.at(i) == '+');
    f.widget.refreshToolBar();
    QString states;
    for (QAction* action : actions)
        states += action->isEnabled() ? '+' : '-';
    QCOMPARE(states, after);
}

void tst_VAbstractViewWidget::deleteConfirmation_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<QString>("selection");
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<QString>("emitted");

    QTest::newRow("yes") << 0 << "1 3" << int(QMessageBox::Yes) << 1 << "deleteTriggered(7,[(1,0) (3,0)])";
    QTest::newRow("no") << 0 << "1 3" << int(QMessageBox::No) << 1 << "";
    QTest::newRow("nothing selected") << 0 << "" << int(QMessageBox::Yes) << 0 << "";
    QTest::newRow("NoDeleteConfirm") << 0x8 << "4" << int(QMessageBox::No) << 0
                                     << "deleteTriggered(7,[(4,0)])";
}

void tst_VAbstractViewWidget::deleteConfirmation()
{
    QFETCH(int, options);
    QFETCH(QString, selection);
    QFETCH(int, answer);
    QFETCH(int, boxes);
    QFETCH(QString, emitted);

    Fixture f { VAbstractViewWidget::Options(QFlag(options)) };
    QList<int> rows;
    for (const QString& row : selection.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        rows << row.toInt();
    f.selectRows(rows);
    AllSignals spies(&f.widget);
    MessageBoxAnswer box { QMessageBox::StandardButton(answer) };
    f.widget.toolBar()->deleteAction->trigger();
    QCOMPARE(box.shown, boxes);
    QCOMPARE(spies.take(), emitted.isEmpty() ? QStringList() : QStringList(emitted));
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

void tst_VAbstractViewWidget::markedDeletedModel()
{
    RecordModel model;
    model.setData(model.index(0, 0), 0x20 | 0x1, ModelOptionsRole);
    TestViewWidget w;
    w.viewId = 3;
    auto* view = new QTableView;
    view->setModel(&model);
    w.setView(view);
    QCOMPARE(w.modelOptions(), 0x21);
    QAction* del = w.toolBar()->deleteAction;
    QCOMPARE(del->text(), QStringLiteral("Mark/Unmark Records as Deleted."));
    QCOMPARE(del->toolTip(), QStringLiteral("Click to toggle the selected records Deleted state."));
    QVERIFY(image(del->icon()) == image(QIcon(QStringLiteral(":/images/undelete"))));

    // Marking can be undone: no question asked.
    view->selectionModel()->select(
        model.index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QSignalSpy spy(&w, &VAbstractViewWidget::deleteTriggered);
    MessageBoxAnswer box(QMessageBox::No);
    del->trigger();
    QCOMPARE(box.shown, 0);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 3);
    QCOMPARE(spy.at(0).at(1).value<QModelIndexList>(), QModelIndexList({ model.index(2, 0) }));

    // Without the bit the action keeps its text.
    Fixture plain;
    QCOMPARE(plain.widget.modelOptions(), 0);
    QCOMPARE(plain.widget.toolBar()->deleteAction->text(), QStringLiteral("Delete..."));
}

void tst_VAbstractViewWidget::doubleClick_data()
{
    QTest::addColumn<bool>("doubleClickEdits");
    QTest::addColumn<bool>("link");
    QTest::addColumn<bool>("editEnabled");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("emitted");

    QTest::newRow("plain") << false << false << true << true << "doubleClicked(7,(1,2))";
    QTest::newRow("edits") << true << false << true << true << "editTriggered(7,(1,2))";
    QTest::newRow("edits, link cell") << true << true << true << true << "doubleClicked(7,(1,2))";
    QTest::newRow("edits, edit disabled") << true << false << false << true << "doubleClicked(7,(1,2))";
    QTest::newRow("invalid index") << true << false << true << false << "";
}

void tst_VAbstractViewWidget::doubleClick()
{
    QFETCH(bool, doubleClickEdits);
    QFETCH(bool, link);
    QFETCH(bool, editEnabled);
    QFETCH(bool, valid);
    QFETCH(QString, emitted);

    Fixture f(doubleClickEdits ? VAbstractViewWidget::DoubleClickEdits : VAbstractViewWidget::Options());
    const QModelIndex index = f.model.index(1, 2);
    if (link)
        f.model.setData(index, QStringLiteral("https://example.org/1"), LinkRole);
    f.view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    f.widget.toolBar()->editAction->setEnabled(editEnabled);
    AllSignals spies(&f.widget);
    spies.take();
    emit f.view->doubleClicked(valid ? index : QModelIndex());
    QCOMPARE(spies.take(), emitted.isEmpty() ? QStringList() : QStringList(emitted));
}

void tst_VAbstractViewWidget::readOnly()
{
    Fixture f;
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::readOnlyChanged);
    f.widget.setReadOnly(false);
    QCOMPARE(spy.count(), 0);
    f.widget.setReadOnly(true);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), QList<QVariant>({ 7, true }));
    QVERIFY(f.widget.readOnly);
    QCOMPARE(f.status(), QStringLiteral("[5 Rows] Read Only"));
    QCOMPARE(f.widget.toolBar()->editAction->text(), QStringLiteral("View..."));
    QVERIFY(!f.widget.toolBar()->newAction->isEnabled());
    f.widget.setReadOnly(true);
    QCOMPARE(spy.count(), 1);
    f.widget.setReadOnly(false);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1), QList<QVariant>({ 7, false }));
    QCOMPARE(f.status(), QStringLiteral("[5 Rows]"));
    QCOMPARE(f.widget.toolBar()->editAction->text(), QStringLiteral("Edit..."));
}

void tst_VAbstractViewWidget::submitAndRevert()
{
    Fixture f;
    QVERIFY(f.widget.submit());
    QCOMPARE(f.model.submits, 1);
    QCOMPARE(f.widget.calls, QStringList({ "dataEdited" }));
    f.widget.calls.clear();
    f.model.submitResult = false;
    QVERIFY(!f.widget.submit());
    QCOMPARE(f.model.submits, 2);
    QCOMPARE(f.widget.calls, QStringList());
    f.widget.revert();
    QCOMPARE(f.model.reverts, 1);
    QCOMPARE(f.widget.calls, QStringList({ "dataEdited" }));

    f.widget.enableSubmit();
    VCrudToolBar* bar = f.widget.toolBar();
    QVERIFY(bar->submitAction->isEnabled() && bar->revertAction->isEnabled());
    QVERIFY(!bar->refreshAction->isEnabled() && !bar->csvAction->isEnabled());
}

void tst_VAbstractViewWidget::linking()
{
    Fixture f;
    TestViewWidget parent;
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkTriggered);
    f.widget.setLinkedWidget(&parent);
    f.widget.setLinkedWidget(&parent);
    QCOMPARE(f.widget.linkedWidget, &parent);
    QVERIFY(f.widget.linkedAction->isEnabled());
    QVERIFY(f.widget.linkedEnabled());
    QCOMPARE(spy.count(), 0);
    // Relinking reconnects once: a click is reported once.
    f.widget.linkedAction->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.takeFirst(), QList<QVariant>({ 7, false }));
    QVERIFY(!f.widget.linkedEnabled());

    f.widget.enableLinked(true);
    QVERIFY(f.widget.linkedAction->isChecked());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.takeFirst(), QList<QVariant>({ 7, true }));
    f.widget.enableLinked(true);
    QCOMPARE(spy.count(), 1);

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
    {
        // Nothing stored: linked and visible by default, filter and options closed.
        Fixture f;
        QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkTriggered);
        f.widget.linkedAction->setChecked(false);
        f.widget.visibilityAction->setChecked(false);
        f.widget.readSettings();
        QVERIFY(f.widget.linkedAction->isChecked());
        QVERIFY(f.widget.visibilityAction->isChecked());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0), QList<QVariant>({ 7, true }));
        QVERIFY(settings.settings()->allKeys().isEmpty());

        f.widget.linkedAction->setChecked(false);
        f.widget.showFilterAction->setChecked(true);
        f.widget.showOptionsAction->setChecked(true);
        f.widget.saveSettings();
        QStringList keys = settings.settings()->allKeys();
        keys.sort();
        QCOMPARE(keys,
            QStringList(
                { "Orders/filterenabled", "Orders/linkenabled", "Orders/optionsenabled", "Orders/visible" }));
        QCOMPARE(settings.value(QStringLiteral("Orders/linkenabled"), true).toBool(), false);
        QCOMPARE(settings.value(QStringLiteral("Orders/visible"), false).toBool(), true);
        QCOMPARE(settings.value(QStringLiteral("Orders/filterenabled"), false).toBool(), true);
        QCOMPARE(settings.value(QStringLiteral("Orders/optionsenabled"), false).toBool(), true);
    }
    {
        settings.setValue(QStringLiteral("Orders/visible"), false);
        Fixture f;
        QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkTriggered);
        f.widget.readSettings();
        QVERIFY(!f.widget.linkedAction->isChecked());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0), QList<QVariant>({ 7, false }));
        QVERIFY(!f.widget.visibilityAction->isChecked());
        // Without panels their keys are not read.
        QVERIFY(!f.widget.showFilterAction->isChecked());
        QVERIFY(!f.widget.showOptionsAction->isChecked());
    }
    {
        // A hidden link action ignores its key.
        Fixture f(VAbstractViewWidget::NoLinkedAction);
        QSignalSpy spy(&f.widget, &VAbstractViewWidget::linkTriggered);
        f.widget.readSettings();
        QCOMPARE(spy.count(), 0);
        QVERIFY(!f.widget.linkedAction->isChecked());
    }
    {
        // Garbage reads as something, never as a crash.
        settings.setValue(QStringLiteral("Orders/visible"), QStringLiteral("garbage"));
        settings.setValue(QStringLiteral("Orders/linkenabled"), QByteArray("\x01\x02"));
        Fixture f;
        f.widget.readSettings();
        QVERIFY(f.widget.visibilityAction->isChecked());
    }
}

void tst_VAbstractViewWidget::moveSearchToPrinterLayout()
{
    Fixture f(VAbstractViewWidget::ShowPrinters);
    VCrudToolBar* bar = f.widget.toolBar();
    bar->setOptions(VCrudToolBar::NoPdf);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    f.widget.moveSearchToPrinterLayout(8, 2);
    QCOMPARE(f.widget.printersLayout->count(), 4);
    QCOMPARE(f.widget.printersLayout->itemAt(0)->spacerItem()->sizeHint().width(), 8);
    QCOMPARE(f.widget.printersLayout->itemAt(1)->widget(), bar->excludeCheckBox);
    QCOMPARE(f.widget.printersLayout->itemAt(2)->widget(), bar->searchLineEdit);
    QCOMPARE(f.widget.printersLayout->stretch(3), 2);
    QVERIFY(!bar->actions().contains(bar->excludeAction));
    QVERIFY(!bar->actions().contains(bar->searchEditAction));
    QVERIFY(!bar->searchSeparator->isVisible());
    QVERIFY(bar->searchLineEdit->isVisible() && bar->excludeCheckBox->isVisible());
    QCOMPARE(
        bar->searchLineEdit->parentWidget(), f.widget.findChild<QWidget*>(QStringLiteral("PrintersWidget")));

    // The search works from its new place and still follows the toolbar's option word.
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::searchTextEdited);
    bar->searchLineEdit->setText(QStringLiteral("Name 3"));
    QTest::keyClick(bar->searchLineEdit, Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0), QList<QVariant>({ 7, QStringLiteral("Name 3"), false }));
    bar->setOptions(VCrudToolBar::NoSearch);
    QVERIFY(!bar->searchLineEdit->isVisible() && !bar->excludeCheckBox->isVisible());
    bar->setOptions(VCrudToolBar::Options());
    QVERIFY(bar->searchLineEdit->isVisible() && bar->excludeCheckBox->isVisible());

    // A second move changes nothing; without spacing and stretch only the two widgets move.
    f.widget.moveSearchToPrinterLayout(8, 2);
    QCOMPARE(f.widget.printersLayout->count(), 4);
    TestViewWidget plain;
    plain.moveSearchToPrinterLayout(0, 0);
    QCOMPARE(layoutContent(plain.printersLayout), QStringList({ "QCheckBox", "VSearchLineEdit" }));
}

void tst_VAbstractViewWidget::searchModes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("whileTyping");
    QTest::addColumn<QStringList>("afterReturn");

    const QStringList none;
    QTest::newRow("press Enter") << 0 << none << QStringList({ "searchTextEdited(7,Bonn,false)" });
    QTest::newRow("as you type") << int(VCrudToolBar::SearchAsYouType)
                                 << QStringList({ "searchTextEdited(7,B,false)",
                                        "searchTextEdited(7,Bo,false)", "searchTextEdited(7,Bon,false)",
                                        "searchTextEdited(7,Bonn,false)" })
                                 << none;
    QTest::newRow("delayed") << int(VCrudToolBar::SearchAsYouType | VCrudToolBar::DelayedSearch) << none
                             << none;
}

void tst_VAbstractViewWidget::searchModes()
{
    QFETCH(int, mode);
    QFETCH(QStringList, whileTyping);
    QFETCH(QStringList, afterReturn);

    Fixture f;
    VCrudToolBar* bar = f.widget.toolBar();
    bar->setOptions(VCrudToolBar::NoPdf | VCrudToolBar::Options(QFlag(mode)));
    // The delay is the timer's own; shortened so that the test waits for it, not for three seconds.
    bar->searchTimer->setInterval(40);
    f.widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.widget));
    AllSignals spies(&f.widget);
    QSignalSpy searches(&f.widget, &VAbstractViewWidget::searchTextEdited);
    QTest::keyClicks(bar->searchLineEdit, QStringLiteral("Bonn"));
    QCOMPARE(spies.take(), whileTyping);
    QTest::keyClick(bar->searchLineEdit, Qt::Key_Return);
    QCOMPARE(spies.take(), afterReturn);
    if (mode & VCrudToolBar::DelayedSearch) {
        // One search for all four keystrokes, one interval after the last, and none after it.
        QTRY_COMPARE_WITH_TIMEOUT(searches.count(), 1, 2000);
        QCOMPARE(spies.take(), QStringList({ "searchTextEdited(7,Bonn,false)" }));
        QTest::qWait(3 * bar->searchTimer->interval());
        QCOMPARE(spies.take(), QStringList());
    }
    // Exclude applies the text at once, in its new sense.
    bar->excludeCheckBox->setChecked(true);
    QCOMPARE(spies.take(), QStringList({ "searchTextEdited(7,Bonn,true)" }));
}

void tst_VAbstractViewWidget::setCurrentIndex()
{
    Fixture f;
    f.model.setObjectName(QStringLiteral("orders"));
    QSignalSpy spy(&f.widget, &VAbstractViewWidget::selectionChanged);
    f.widget.setCurrentIndex(f.model.index(3, 1));
    QCOMPARE(f.widget.currentIndex(), f.model.index(3, 1));
    QCOMPARE(spy.count(), 0);
    // The toolbar and the status line follow all the same.
    QCOMPARE(f.status(), QStringLiteral("[5 Rows][1 Selected]"));
    QVERIFY(f.widget.toolBar()->copyAction->isEnabled());

    // The connection is back for the user's next selection.
    f.selectRows({ 0 });
    QCOMPARE(spy.count(), 1);

    // An index of another model changes nothing.
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
    QVERIFY(warnings.at(0).contains(QLatin1String("orders")));
    QVERIFY(warnings.at(0).contains(QLatin1String("customers")));

    // An invalid index clears the current row.
    f.widget.setCurrentIndex(QModelIndex());
    QVERIFY(!f.widget.currentIndex().isValid());
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
}

void tst_VAbstractViewWidget::matchValue()
{
    Fixture f;
    QCOMPARE(f.widget.matchValue(103, 0, Qt::DisplayRole), f.model.index(3, 0));
    QCOMPARE(f.widget.matchValue(QStringLiteral("City 1"), 2, Qt::DisplayRole), f.model.index(1, 2));
    QVERIFY(!f.widget.matchValue(999, 0, Qt::DisplayRole).isValid());
    QVERIFY(!f.widget.matchValue(103, 7, Qt::DisplayRole).isValid());
    QVERIFY(!f.widget.matchValue(103, -1, Qt::DisplayRole).isValid());
}

void tst_VAbstractViewWidget::modelReplacedOrReset()
{
    Fixture f;
    f.widget.show();
    f.selectRows({ 1, 2 });
    VCrudToolBar* bar = f.widget.toolBar();
    QVERIFY(bar->deleteAction->isEnabled());

    // A reset drops the selection silently; the toolbar must not offer to act on rows that are gone.
    QSignalSpy resetSpy(&f.widget, &VAbstractViewWidget::modelReset);
    f.model.clear();
    QCOMPARE(resetSpy.count(), 1);
    QCOMPARE(f.status(), QStringLiteral("[0 Rows]"));
    QVERIFY(
        !bar->deleteAction->isEnabled() && !bar->editAction->isEnabled() && !bar->copyAction->isEnabled());

    // A model set on the view behind the widget's back is picked up.
    RecordModel replacement(3);
    f.view->setModel(&replacement);
    QTRY_COMPARE(f.status(), QStringLiteral("[3 Rows]"));
    QSignalSpy selectionSpy(&f.widget, &VAbstractViewWidget::selectionChanged);
    f.view->selectionModel()->select(
        replacement.index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(selectionSpy.count(), 1);
    QCOMPARE(f.status(), QStringLiteral("[3 Rows][1 Selected]"));
    QVERIFY(bar->deleteAction->isEnabled());
    replacement.appendRow(new QStandardItem);
    QCOMPARE(f.status(), QStringLiteral("[4 Rows][1 Selected]"));
    // The old model no longer speaks for the view.
    f.model.appendRow(new QStandardItem);
    QCOMPARE(f.status(), QStringLiteral("[4 Rows][1 Selected]"));

    // The model deleted while selected.
    {
        auto* doomed = new RecordModel(2);
        f.view->setModel(doomed);
        QTRY_COMPARE(f.status(), QStringLiteral("[2 Rows]"));
        f.view->selectionModel()->select(
            doomed->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        delete doomed;
    }
    f.widget.updateStatusLabel();
    QCOMPARE(f.status(), QStringLiteral("[0 Rows]"));
    f.widget.refreshToolBar();
    QVERIFY(!bar->deleteAction->isEnabled());
    QCOMPARE(f.widget.modelOptions(), 0);
    QVERIFY(!f.widget.submit());
}

void tst_VAbstractViewWidget::withoutView()
{
    RecordingViewWidget w(VAbstractViewWidget::NoDeleteConfirm);
    w.viewId = 4;
    AllSignals spies(&w);
    VTestLogCapture log;
    w.updateStatusLabel();
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows]"));
    w.refreshToolBar();
    VCrudToolBar* bar = w.toolBar();
    QVERIFY(bar->newAction->isEnabled());
    QVERIFY(
        !bar->editAction->isEnabled() && !bar->copyAction->isEnabled() && !bar->deleteAction->isEnabled());
    QVERIFY(!w.currentIndex().isValid());
    QVERIFY(!w.submit());
    w.revert();
    QCOMPARE(w.modelOptions(), 0);
    QVERIFY(!w.matchValue(1, 0, Qt::DisplayRole).isValid());
    w.setCurrentIndex(QModelIndex());
    QVERIFY(log.messages(Logger::Warning).isEmpty());
    RecordModel model;
    w.setCurrentIndex(model.index(0, 0));
    QCOMPARE(log.messages(Logger::Warning).size(), 1);
    w.selectColumns();
    w.exportToCsv();
    w.readSettings();
    w.saveSettings();
    w.setReadOnly(true);
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows] Read Only"));
    w.setReadOnly(false);
    spies.take();

    // Triggers still report, with an invalid index; deleting needs rows.
    bar->newAction->trigger();
    bar->editAction->trigger();
    bar->deleteAction->trigger();
    bar->pdfAction->trigger();
    w._doubleClicked(model.index(0, 0));
    QCOMPARE(spies.take(),
        QStringList(
            { "doubleClicked(4,(0,0))", "editTriggered(4,())", "newTriggered(4)", "pdfTriggered(4,())" }));

    // A view set and taken away again.
    QPointer<QTableView> view = new QTableView;
    view->setModel(&model);
    w.setView(view);
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[5 Rows]"));
    w.setView(nullptr);
    QVERIFY(view.isNull());
    QVERIFY(!w.view());
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows]"));

    // A view deleted from outside leaves no dangling pointer.
    view = new QTableView;
    w.setView(view);
    delete view;
    QVERIFY(!w.view());
    w.refreshToolBar();

    // So does a toolbar deleted from outside.
    delete w.toolBar();
    QVERIFY(!w.toolBar());
    w.refreshToolBar();
    w.setOptions(VAbstractViewWidget::NoDelete);
    w.moveSearchToPrinterLayout(1, 1);
    w.enableSubmit();
    // No flag to read is no permission, except for viewing while read-only.
    spies.take();
    w._newTriggered();
    w._editTriggered();
    w._deleteTriggered();
    QCOMPARE(spies.take(), QStringList());
    w.setReadOnly(true);
    spies.take();
    w._editTriggered();
    w._copyTriggered();
    QCOMPARE(spies.take(), QStringList({ "editTriggered(4,())" }));
}

void tst_VAbstractViewWidget::headerAndTitle()
{
    TestViewWidget w;
    w.show();
    w.setHeaderText(QStringLiteral("Orders"));
    QCOMPARE(w.headerLabel->text(), QStringLiteral("Orders"));
    w.setTitleText(QStringLiteral("Open orders"));
    QCOMPARE(w.titleLabel->text(), QStringLiteral("Open orders"));
    QVERIFY(w.titleLabel->isVisible());
    w.setTitleText(QString());
    QVERIFY(!w.titleLabel->isVisible());
}

QTEST_MAIN(tst_VAbstractViewWidget)
#include "tst_vabstractviewwidget.moc"
