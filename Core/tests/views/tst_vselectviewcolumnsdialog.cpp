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

class tst_VSelectViewColumnsDialog : public QObject {
    Q_OBJECT

private slots:
    void init();
    void construction();
    void listing_data();
    void listing();
    void modelColumn();
    void applyToView_data();
    void applyToView();
    void displayAllRestoresTicks();
    void settingsKey();
    void withoutView();

private:
    VTestSettings m_settings;
};

namespace {
// Headers: Name, id, Amount, (empty), First<newline>Name, Name again, note.
QStringList sampleHeaders()
{
    return { QStringLiteral("Name"), QStringLiteral("id"), QStringLiteral("Amount"), QString(),
        QStringLiteral("First\nName"), QStringLiteral("Name"), QStringLiteral("note") };
}

QListWidget* listOf(VSelectViewColumnsDialog& dialog)
{
    return dialog.findChild<QListWidget*>();
}

QCheckBox* showAllOf(VSelectViewColumnsDialog& dialog)
{
    return dialog.findChild<QCheckBox*>();
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

void setHeaders(QStandardItemModel& model, const QStringList& headers)
{
    model.setColumnCount(headers.size());
    model.setRowCount(3);
    model.setHorizontalHeaderLabels(headers);
}

// The list row showing @p text; -1 when it is not listed.
int rowOf(QListWidget* list, const QString& text)
{
    return texts(list).indexOf(text);
}
} // namespace

void tst_VSelectViewColumnsDialog::init()
{
    m_settings.clear();
}

void tst_VSelectViewColumnsDialog::construction()
{
    QStandardItemModel model;
    setHeaders(model, sampleHeaders());
    QTableView view;
    view.setModel(&model);
    VSelectViewColumnsDialog dialog(&view);

    QCOMPARE(dialog.parent(), nullptr);
    QCOMPARE(dialog.objectName(), QStringLiteral("SelectViewColumnsDialog"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Set Visible Columns"));
    const QImage icon = QIcon(QStringLiteral(":/icons/selectcolumn")).pixmap(16, 16).toImage();
    QVERIFY(!icon.isNull());
    QCOMPARE(dialog.windowIcon().pixmap(16, 16).toImage(), icon);

    auto* box = dialog.findChild<QDialogButtonBox*>();
    QVERIFY(box);
    QCOMPARE(box->button(QDialogButtonBox::Ok)->text(), QStringLiteral("&OK"));
    QVERIFY(!box->button(QDialogButtonBox::Cancel)->isHidden());

    QCheckBox* showAll = showAllOf(dialog);
    QCOMPARE(showAll->text(), QStringLiteral("Display All"));
    QVERIFY(!showAll->isChecked());
    QCOMPARE(showAll->toolTip(),
        QStringLiteral("When checked, displays all of the available columns in the list below.\n"
                       "Uncheck to hide fields that are used 'under the hood'."));
    QPushButton* selectAll = buttonOf(dialog, QStringLiteral("Select All"));
    QPushButton* selectNone = buttonOf(dialog, QStringLiteral("Select None"));
    QVERIFY(selectAll);
    QVERIFY(selectNone);
    // Three buttons of the box and the two selection buttons; no reset button.
    QCOMPARE(dialog.findChildren<QPushButton*>().size(), 4);

    // A row of check box and buttons, the list below it, the button box at the foot.
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(box->button(QDialogButtonBox::Cancel)->isVisible());
    QListWidget* list = listOf(dialog);
    QVERIFY(qAbs(showAll->geometry().center().y() - selectAll->geometry().center().y()) <= 1);
    QVERIFY(showAll->x() < selectAll->x());
    QVERIFY(selectAll->x() < selectNone->x());
    QVERIFY(showAll->geometry().bottom() < list->geometry().top());
    QVERIFY(list->geometry().bottom() < box->geometry().top());
    dialog.reject();
}

void tst_VSelectViewColumnsDialog::listing_data()
{
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<bool>("showAll");
    QTest::addColumn<QStringList>("listed");

    const QStringList nameIdAmount { QStringLiteral("Name"), QStringLiteral("id"), QStringLiteral("Amount") };
    QTest::newRow("upper-case only") << nameIdAmount << false << QStringList { "Name", "Amount" };
    QTest::newRow("display all") << nameIdAmount << true << QStringList { "Name", "id", "Amount" };
    QTest::newRow("line break") << QStringList { "First\nName", "a\nb\nc" } << true
                                << QStringList { "First Name", "a b c" };
    QTest::newRow("empty header") << QStringList { "Name", "id", "Amount", "" } << false
                                  << QStringList { "Name", "Amount", "Col 3" };
    QTest::newRow("empty header, display all")
        << QStringList { "", "x" } << true << QStringList { "Col 0", "x" };
    QTest::newRow("non-ASCII letters")
        << QStringList { QString::fromUtf8("Ärger"), QString::fromUtf8("éclair"), QString::fromUtf8("Ωmega"),
               QString::fromUtf8("ß") }
        << false << QStringList { QString::fromUtf8("Ärger"), QString::fromUtf8("Ωmega") };
    QTest::newRow("not letters") << QStringList { "1st", " Name", "_Key", "\nName", "Total" } << false
                                 << QStringList { "Total" };
}

void tst_VSelectViewColumnsDialog::listing()
{
    QFETCH(QStringList, headers);
    QFETCH(bool, showAll);
    QFETCH(QStringList, listed);

    QStandardItemModel model;
    setHeaders(model, headers);
    QTableView view;
    view.setModel(&model);
    VSelectViewColumnsDialog dialog(&view);
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

void tst_VSelectViewColumnsDialog::modelColumn()
{
    QStandardItemModel model;
    setHeaders(model, sampleHeaders());
    QTableView view;
    view.setModel(&model);
    view.setColumnHidden(2, true);
    VSelectViewColumnsDialog dialog(&view);
    showAllOf(dialog)->setChecked(true);
    dialog.showColumns();
    QListWidget* list = listOf(dialog);

    QCOMPARE(texts(list), QStringList({ "Name", "id", "Amount", "Col 3", "First Name", "Name", "note" }));
    QCOMPARE(checkStates(list), QList<int>({ 2, 2, 0, 2, 2, 2, 2 }));
    // "Col 3" names no header; either "Name" stands for the first one.
    const QList<int> columns { 0, 1, 2, -1, 4, 0, 6 };
    for (int row = 0; row < list->count(); ++row)
        QCOMPARE(dialog.modelColumn(row), columns.at(row));
    QCOMPARE(dialog.modelColumn(-1), -1);
    QCOMPARE(dialog.modelColumn(list->count()), -1);
}

void tst_VSelectViewColumnsDialog::applyToView_data()
{
    QTest::addColumn<bool>("tree");
    QTest::newRow("table view") << false;
    QTest::newRow("tree view") << true;
}

void tst_VSelectViewColumnsDialog::applyToView()
{
    QFETCH(bool, tree);

    QStandardItemModel model;
    setHeaders(model, sampleHeaders());
    QTableView table;
    QTreeView treeView;
    QAbstractItemView* view = tree ? static_cast<QAbstractItemView*>(&treeView) : &table;
    QHeaderView* header = tree ? treeView.header() : table.horizontalHeader();
    view->setModel(&model);
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(0);
    for (int col = 0; col < model.columnCount(); ++col)
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
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(widths(), QList<int>({ 70, 0, 0, 70, 0, 70, 70 }));
        QVERIFY(!header->isSectionHidden(0));
    }
    {
        // Ticking "Amount" brings it back at width 40, and so does the shrunk column;
        // unticking "Col 3" does nothing.
        VSelectViewColumnsDialog dialog(view);
        dialog.show();
        QListWidget* list = listOf(dialog);
        list->item(rowOf(list, QStringLiteral("Amount")))->setCheckState(Qt::Checked);
        list->item(rowOf(list, QStringLiteral("Col 3")))->setCheckState(Qt::Unchecked);
        list->item(4)->setCheckState(Qt::Unchecked); // the second "Name" acts on the first
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(widths(), QList<int>({ 0, 0, 40, 70, 40, 70, 70 }));
        QVERIFY(header->isSectionHidden(0));
        QVERIFY(header->isSectionHidden(1));
        QVERIFY(!header->isSectionHidden(3));
    }
    {
        // "Select All", then "Select None" and OK hide every listed column; "id" and "note" stay as they
        // were.
        header->showSection(6);
        VSelectViewColumnsDialog dialog(view);
        dialog.show();
        QListWidget* list = listOf(dialog);
        QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select All")), Qt::LeftButton);
        QCOMPARE(checkStates(list), QList<int>({ 2, 2, 2, 2, 2 }));
        QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select None")), Qt::LeftButton);
        dialog.accept();
        for (int col : { 0, 2, 4 })
            QVERIFY(header->isSectionHidden(col));
        QVERIFY(header->isSectionHidden(1));
        QVERIFY(!header->isSectionHidden(3));
        QVERIFY(!header->isSectionHidden(6));
        QCOMPARE(header->sectionSize(6), 70);
    }
}

void tst_VSelectViewColumnsDialog::displayAllRestoresTicks()
{
    QStandardItemModel model;
    setHeaders(model, sampleHeaders());
    QTableView view;
    view.setModel(&model);
    view.setColumnHidden(1, true);
    VSelectViewColumnsDialog dialog(&view);
    dialog.show();
    QListWidget* list = listOf(dialog);
    QCOMPARE(checkStates(list), QList<int>({ 2, 2, 2, 2, 2 }));
    QTest::mouseClick(buttonOf(dialog, QStringLiteral("Select None")), Qt::LeftButton);

    showAllOf(dialog)->setChecked(true);
    QCOMPARE(texts(list), QStringList({ "Name", "id", "Amount", "Col 3", "First Name", "Name", "note" }));
    QCOMPARE(checkStates(list), QList<int>({ 2, 0, 2, 2, 2, 2, 2 }));
    list->item(0)->setCheckState(Qt::Unchecked);
    showAllOf(dialog)->setChecked(false);
    QCOMPARE(checkStates(list), QList<int>({ 2, 2, 2, 2, 2 }));
    dialog.reject();
    QVERIFY(!view.isColumnHidden(0));
}

void tst_VSelectViewColumnsDialog::settingsKey()
{
    QStandardItemModel model;
    setHeaders(model, sampleHeaders());
    QTableView view;
    view.setModel(&model);
    {
        VSelectViewColumnsDialog dialog(&view);
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

    // Read back on show: the list comes up with every column.
    {
        VSelectViewColumnsDialog dialog(&view);
        QVERIFY(!showAllOf(dialog)->isChecked());
        dialog.show();
        QVERIFY(showAllOf(dialog)->isChecked());
        QCOMPARE(listOf(dialog)->count(), 7);
        showAllOf(dialog)->setChecked(false);
        dialog.accept();
    }
    QCOMPARE(settings.value(QStringLiteral("dialogs/SelectViewColumnsDialogShowAll")), QVariant(false));

    // The key follows the object name.
    VSelectViewColumnsDialog renamed(&view);
    renamed.setObjectName(QStringLiteral("Orders"));
    settings.setValue(QStringLiteral("dialogs/OrdersShowAll"), true);
    renamed.show();
    QVERIFY(showAllOf(renamed)->isChecked());
    renamed.reject();
}

void tst_VSelectViewColumnsDialog::withoutView()
{
    VSelectViewColumnsDialog dialog(nullptr);
    dialog.show();
    QCOMPARE(listOf(dialog)->count(), 0);
    QCOMPARE(dialog.modelColumn(0), -1);
    dialog.accept();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));

    // A list view is listed without check boxes and left as it is.
    QStandardItemModel model;
    setHeaders(model, { QStringLiteral("Name") });
    QListView list;
    list.setModel(&model);
    VSelectViewColumnsDialog other(&list);
    other.show();
    QCOMPARE(texts(listOf(other)), QStringList({ "Name" }));
    QVERIFY(!listOf(other)->item(0)->data(Qt::CheckStateRole).isValid());
    other.accept();
    QCOMPARE(other.result(), int(QDialog::Accepted));
}

QTEST_MAIN(tst_VSelectViewColumnsDialog)
#include "tst_vselectviewcolumnsdialog.moc"
