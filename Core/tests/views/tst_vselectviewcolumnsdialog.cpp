#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

#include <vsettings.h>

#include "vselectviewcolumnsdialog.h"
#include "vtestsettings.h"

namespace {
const QStringList s_headers { "Name", "id", "Amount", "", "First\nName", "Name", "note" };
const QStringList s_allListed { "Name", "id", "Amount", "Col 3", "First Name", "Name", "note" };

QListWidget* listOf(VSelectViewColumnsDialog& dialog)
{
    return dialog.findChild<QListWidget*>();
}
QCheckBox* showAllOf(VSelectViewColumnsDialog& dialog)
{
    return dialog.findChild<QCheckBox*>();
}
QPushButton* buttonOf(VSelectViewColumnsDialog& dialog, QDialogButtonBox::StandardButton which)
{
    return dialog.findChild<QDialogButtonBox*>()->button(which);
}
QPushButton* buttonOf(VSelectViewColumnsDialog& dialog, const QString& text)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == text)
            return button;
    return nullptr;
}

QStringList texts(QListWidget* list)
{
    QStringList result;
    for (int row = 0; row < list->count(); ++row)
        result << list->item(row)->text();
    return result;
}

QList<int> checkStates(QListWidget* list)
{
    QList<int> result;
    for (int row = 0; row < list->count(); ++row)
        result << list->item(row)->data(Qt::CheckStateRole).toInt();
    return result;
}

struct Table {
    QStandardItemModel model { 3, 0 };
    QTableView view;
    explicit Table(const QStringList& headers = s_headers)
    {
        model.setColumnCount(headers.size());
        model.setHorizontalHeaderLabels(headers);
        view.setModel(&model);
    }
};
} // namespace

class tst_VSelectViewColumnsDialog : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

private slots:
    void init() { m_settings.clear(); }

    void construction()
    {
        Table t;
        VSelectViewColumnsDialog dialog(&t.view);
        QCOMPARE(dialog.parent(), nullptr);
        QCOMPARE(dialog.objectName(), QStringLiteral("SelectViewColumnsDialog"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Set Visible Columns"));
        const QImage icon = QIcon(QStringLiteral(":/icons/selectcolumn")).pixmap(16, 16).toImage();
        QVERIFY(!icon.isNull());
        QCOMPARE(dialog.windowIcon().pixmap(16, 16).toImage(), icon);
        QCOMPARE(buttonOf(dialog, QDialogButtonBox::Ok)->text(), QStringLiteral("&OK"));
        QCheckBox* showAll = showAllOf(dialog);
        QCOMPARE(showAll->text(), QStringLiteral("Display All"));
        QVERIFY(!showAll->isChecked());
        QCOMPARE(showAll->toolTip(),
            QStringLiteral("When checked, displays all of the available columns in the list below.\n"
                           "Uncheck to hide fields that are used 'under the hood'."));
        QPushButton* selectAll = buttonOf(dialog, QStringLiteral("Select All"));
        QPushButton* selectNone = buttonOf(dialog, QStringLiteral("Select None"));
        QVERIFY(selectAll && selectNone);
        // OK, Cancel and the two selection buttons; no reset button.
        QCOMPARE(dialog.findChildren<QPushButton*>().size(), 4);

        // A row of check box and buttons, the list below it, the button box at the foot.
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(buttonOf(dialog, QDialogButtonBox::Cancel)->isVisible());
        QVERIFY(qAbs(showAll->geometry().center().y() - selectAll->geometry().center().y()) <= 1);
        QVERIFY(showAll->x() < selectAll->x() && selectAll->x() < selectNone->x());
        QVERIFY(showAll->geometry().bottom() < listOf(dialog)->geometry().top());
        QVERIFY(
            listOf(dialog)->geometry().bottom() < dialog.findChild<QDialogButtonBox*>()->geometry().top());
    }

    void listing_data()
    {
        QTest::addColumn<QStringList>("headers");
        QTest::addColumn<bool>("showAll");
        QTest::addColumn<QStringList>("listed");

        QTest::newRow("upper-case only")
            << QStringList { "Name", "id", "Amount" } << false << QStringList { "Name", "Amount" };
        QTest::newRow("display all") << QStringList { "Name", "id", "Amount" } << true
                                     << QStringList { "Name", "id", "Amount" };
        QTest::newRow("line break") << QStringList { "First\nName", "a\nb\nc" } << true
                                    << QStringList { "First Name", "a b c" };
        QTest::newRow("empty header") << QStringList { "Name", "id", "Amount", "" } << false
                                      << QStringList { "Name", "Amount", "Col 3" };
        QTest::newRow("empty header, display all")
            << QStringList { "", "x" } << true << QStringList { "Col 0", "x" };
        QTest::newRow("non-ASCII letters")
            << QStringList { "Ärger", "éclair", "Ωmega", "ß" } << false << QStringList { "Ärger", "Ωmega" };
        QTest::newRow("not letters") << QStringList { "1st", " Name", "_Key", "\nName", "Total" } << false
                                     << QStringList { "Total" };
    }

    void listing()
    {
        QFETCH(QStringList, headers);
        QFETCH(bool, showAll);
        QFETCH(QStringList, listed);

        Table t(headers);
        VSelectViewColumnsDialog dialog(&t.view);
        showAllOf(dialog)->setChecked(showAll);
        dialog.showColumns();
        QListWidget* list = listOf(dialog);
        QCOMPARE(texts(list), listed);
        for (int row = 0; row < list->count(); ++row) {
            QCOMPARE(
                list->item(row)->flags(), Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
            QCOMPARE(list->item(row)->checkState(), Qt::Checked);
        }
    }

    void modelColumn()
    {
        Table t;
        t.view.setColumnHidden(2, true);
        VSelectViewColumnsDialog dialog(&t.view);
        showAllOf(dialog)->setChecked(true);
        dialog.showColumns();
        QListWidget* list = listOf(dialog);
        QCOMPARE(texts(list), s_allListed);
        QCOMPARE(checkStates(list), QList<int>({ 2, 2, 0, 2, 2, 2, 2 }));
        // "Col 3" names no header; either "Name" stands for the first one.
        const QList<int> columns { -1, 0, 1, 2, -1, 4, 0, 6, -1 };
        for (int row = -1; row <= list->count(); ++row)
            QCOMPARE(dialog.modelColumn(row), columns.at(row + 1));
    }

    void applyToView_data()
    {
        QTest::addColumn<bool>("tree");
        QTest::newRow("table view") << false;
        QTest::newRow("tree view") << true;
    }

    void applyToView()
    {
        QFETCH(bool, tree);
        Table t;
        QTreeView treeView;
        QAbstractItemView* view = tree ? static_cast<QAbstractItemView*>(&treeView) : &t.view;
        QHeaderView* header = tree ? treeView.header() : t.view.horizontalHeader();
        view->setModel(&t.model);
        header->setStretchLastSection(false);
        header->setMinimumSectionSize(0);
        for (int col = 0; col < t.model.columnCount(); ++col)
            header->resizeSection(col, 70);
        header->resizeSection(4, 0); // "First Name": hidden by shrinking it
        header->hideSection(1); // "id", not listed
        header->hideSection(2); // "Amount"
        const auto widths = [header] {
            QList<int> result;
            for (int col = 0; col < header->count(); ++col)
                result << header->sectionSize(col);
            return result;
        };
        {
            // Cancel applies nothing.
            VSelectViewColumnsDialog dialog(view);
            dialog.show();
            QListWidget* list = listOf(dialog);
            QCOMPARE(texts(list), QStringList({ "Name", "Amount", "Col 3", "First Name", "Name" }));
            QCOMPARE(checkStates(list), QList<int>({ 2, 0, 2, 2, 2 }));
            QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select None")), Qt::LeftButton);
            QCOMPARE(checkStates(list), QList<int>({ 0, 0, 0, 0, 0 }));
            buttonOf(dialog, QDialogButtonBox::Cancel)->click();
            QCOMPARE(dialog.result(), int(QDialog::Rejected));
            QCOMPARE(widths(), QList<int>({ 70, 0, 0, 70, 0, 70, 70 }));
            QVERIFY(!header->isSectionHidden(0));
        }
        {
            // Ticking "Amount" brings it back at width 40, and so does the shrunk column; unticking "Col 3"
            // does nothing; the second "Name" acts on the first.
            VSelectViewColumnsDialog dialog(view);
            dialog.show();
            QListWidget* list = listOf(dialog);
            list->item(1)->setCheckState(Qt::Checked);
            list->item(2)->setCheckState(Qt::Unchecked);
            list->item(4)->setCheckState(Qt::Unchecked);
            buttonOf(dialog, QDialogButtonBox::Ok)->click();
            QCOMPARE(dialog.result(), int(QDialog::Accepted));
            QVERIFY(!dialog.isVisible());
            QCOMPARE(widths(), QList<int>({ 0, 0, 40, 70, 40, 70, 70 }));
            QVERIFY(header->isSectionHidden(0) && header->isSectionHidden(1) && !header->isSectionHidden(3));
        }
        {
            // "Select All", then "Select None" and OK hide every listed column; "id" and "note" stay as they
            // were.
            header->showSection(6);
            VSelectViewColumnsDialog dialog(view);
            dialog.show();
            QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select All")), Qt::LeftButton);
            QCOMPARE(checkStates(listOf(dialog)), QList<int>({ 2, 2, 2, 2, 2 }));
            QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select None")), Qt::LeftButton);
            dialog.accept();
            for (int col : { 0, 1, 2, 4 })
                QVERIFY(header->isSectionHidden(col));
            QVERIFY(!header->isSectionHidden(3) && !header->isSectionHidden(6));
            QCOMPARE(header->sectionSize(6), 70);
        }
    }

    void displayAllRestoresTicks()
    {
        Table t;
        t.view.setColumnHidden(1, true);
        VSelectViewColumnsDialog dialog(&t.view);
        dialog.show();
        QListWidget* list = listOf(dialog);
        QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select None")), Qt::LeftButton);
        showAllOf(dialog)->setChecked(true);
        QCOMPARE(texts(list), s_allListed);
        QCOMPARE(checkStates(list), QList<int>({ 2, 0, 2, 2, 2, 2, 2 }));
        list->item(0)->setCheckState(Qt::Unchecked);
        showAllOf(dialog)->setChecked(false);
        QCOMPARE(checkStates(list), QList<int>({ 2, 2, 2, 2, 2 }));
        dialog.reject();
        QVERIFY(!t.view.isColumnHidden(0));
    }

    void settingsKey()
    {
        Table t;
        {
            VSelectViewColumnsDialog dialog(&t.view);
            dialog.show();
            QCOMPARE(listOf(dialog)->count(), 5);
            showAllOf(dialog)->setChecked(true);
            dialog.reject();
        }
        VSettings settings(nullptr);
        settings.sync();
        QCOMPARE(settings.value(QStringLiteral("dialogs/SelectViewColumnsDialogShowAll")), QVariant(true));
        QVERIFY(settings.contains(QStringLiteral("dialogs/SelectViewColumnsDialog")));
        QFile file(m_settings.fileName());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("\nSelectViewColumnsDialogShowAll=true\n"));
        {
            // Read back on show: the list comes up with every column.
            VSelectViewColumnsDialog dialog(&t.view);
            QVERIFY(!showAllOf(dialog)->isChecked());
            dialog.show();
            QVERIFY(showAllOf(dialog)->isChecked());
            QCOMPARE(listOf(dialog)->count(), 7);
            showAllOf(dialog)->setChecked(false);
            dialog.accept();
        }
        QCOMPARE(settings.value(QStringLiteral("dialogs/SelectViewColumnsDialogShowAll")), QVariant(false));
        // The key follows the object name.
        VSelectViewColumnsDialog renamed(&t.view);
        renamed.setObjectName(QStringLiteral("Orders"));
        settings.setValue(QStringLiteral("dialogs/OrdersShowAll"), true);
        renamed.show();
        QVERIFY(showAllOf(renamed)->isChecked());
    }

    void withoutView()
    {
        VSelectViewColumnsDialog dialog(nullptr);
        dialog.show();
        QCOMPARE(listOf(dialog)->count(), 0);
        QCOMPARE(dialog.modelColumn(0), -1);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        // A list view is listed without check boxes and left as it is.
        Table t({ "Name" });
        QListView list;
        list.setModel(&t.model);
        VSelectViewColumnsDialog other(&list);
        other.show();
        QCOMPARE(texts(listOf(other)), QStringList({ "Name" }));
        QVERIFY(!listOf(other)->item(0)->data(Qt::CheckStateRole).isValid());
        other.accept();
        QCOMPARE(other.result(), int(QDialog::Accepted));
    }
};

QTEST_MAIN(tst_VSelectViewColumnsDialog)
#include "tst_vselectviewcolumnsdialog.moc"
