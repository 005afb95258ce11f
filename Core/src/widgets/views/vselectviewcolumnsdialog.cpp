#include "vselectviewcolumnsdialog.h"

#include <logger.h>
#include <vsettings.h>

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>
#include <QVBoxLayout>

namespace {
// No separator between the object name and "ShowAll": existing settings are stored that way.
QString showAllKey(const QString& objectName)
{
    return QStringLiteral("dialogs/") + objectName + QStringLiteral("ShowAll");
}

// Gives a column that was hidden by shrinking it to nothing a usable width again.
const int ShownColumnWidth = 40;

// The header that shows and hides the columns of a table or tree view; null for other views.
// The views' own column operations (isColumnHidden, columnWidth, ...) act on it.
QHeaderView* columnHeader(QAbstractItemView* view)
{
    if (auto* table = qobject_cast<QTableView*>(view))
        return table->horizontalHeader();
    if (auto* tree = qobject_cast<QTreeView*>(view))
        return tree->header();
    return nullptr;
}
} // namespace

VSelectViewColumnsDialog::VSelectViewColumnsDialog(QAbstractItemView* view)
    : VBaseDialog()
    , m_showAll(new QCheckBox(tr("Display All"), this))
    , m_selectAll(new QPushButton(tr("Select All"), this))
    , m_selectNone(new QPushButton(tr("Select None"), this))
    , m_columns(new QListWidget(this))
    , m_view(view)
    , m_columnsLayout(new QVBoxLayout)
{
    if (!view)
        LOG_WARNING("No view given; the column list stays empty");

    setObjectName(QStringLiteral("SelectViewColumnsDialog"));
    buttonBox->button(QDialogButtonBox::Ok)->setText(tr("&OK"));
    buttonBox->button(QDialogButtonBox::Cancel)->setVisible(true);
    setWindowTitle(tr("Set Visible Columns"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/selectcolumn")));
    m_showAll->setToolTip(tr("When checked, displays all of the available columns in the list below.\n"
                             "Uncheck to hide fields that are used 'under the hood'."));

    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(m_showAll);
    buttonRow->addWidget(m_selectAll);
    buttonRow->addWidget(m_selectNone);
    m_columnsLayout->addLayout(buttonRow);
    m_columnsLayout->addWidget(m_columns, 1);
    mainLayout->insertLayout(0, m_columnsLayout);

    connect(m_showAll, &QCheckBox::stateChanged, this, [this](int) { showColumns(); });
    connect(m_selectAll, &QPushButton::clicked, this, &VSelectViewColumnsDialog::onSelectAllClicked);
    connect(m_selectNone, &QPushButton::clicked, this, &VSelectViewColumnsDialog::onSelectNoneClicked);
}

QString VSelectViewColumnsDialog::headerText(int column) const
{
    return m_view->model()
        ->headerData(column, Qt::Horizontal, Qt::DisplayRole)
        .toString()
        .replace(QLatin1Char('\n'), QLatin1Char(' '));
}

int VSelectViewColumnsDialog::modelColumn(int row) const
{
    const QListWidgetItem* item = m_columns->item(row);
    if (!item || !m_view || !m_view->model())
        return -1;
    const QString text = item->text();
    const int columns = m_view->model()->columnCount(QModelIndex());
    for (int col = 0; col < columns; ++col)
        if (headerText(col) == text)
            return col;
    return -1;
}

void VSelectViewColumnsDialog::showColumns()
{
    m_columns->clear();
    if (!m_view || !m_view->model())
        return;
    const QHeaderView* header = columnHeader(m_view);
    const bool showAll = m_showAll->isChecked();
    const int columns = m_view->model()->columnCount(QModelIndex());
    for (int col = 0; col < columns; ++col) {
        QString text = headerText(col);
        if (text.isEmpty())
            text = tr("Col %1").arg(col);
        // Columns not starting with a capital are the model's own working fields.
        if (!showAll && !text.at(0).isUpper())
            continue;
        auto* item = new QListWidgetItem(text);
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        if (header)
            item->setCheckState(header->isSectionHidden(col) ? Qt::Unchecked : Qt::Checked);
        m_columns->addItem(item);
    }
}

void VSelectViewColumnsDialog::readSettings()
{
    VSettings settings(nullptr);
    m_showAll->setChecked(settings.value(showAllKey(objectName()), false).toBool());
    VBaseDialog::readSettings();
}

void VSelectViewColumnsDialog::saveSettings()
{
    VSettings settings(nullptr);
    settings.setValue(showAllKey(objectName()), m_showAll->isChecked());
    VBaseDialog::saveSettings();
}

void VSelectViewColumnsDialog::accept()
{
    QHeaderView* header = columnHeader(m_view);
    for (int row = 0; header && row < m_columns->count(); ++row) {
        const int col = modelColumn(row);
        if (col == -1)
            continue;
        // A hidden column reports width 0 too, so it comes back at this width when ticked.
        if (header->sectionSize(col) == 0)
            header->resizeSection(col, ShownColumnWidth);
        header->setSectionHidden(col, m_columns->item(row)->data(Qt::CheckStateRole).toInt() == 0);
    }
    QDialog::accept();
}

void VSelectViewColumnsDialog::onShowAllStateChanged(int state)
{
    Q_UNUSED(state)
    showColumns();
}

void VSelectViewColumnsDialog::onSelectAllClicked()
{
    setAllCheckStates(Qt::Checked);
}

void VSelectViewColumnsDialog::onSelectNoneClicked()
{
    setAllCheckStates(Qt::Unchecked);
}

void VSelectViewColumnsDialog::onResetViewClicked() { }

void VSelectViewColumnsDialog::showEvent(QShowEvent* event)
{
    VBaseDialog::showEvent(event);
    showColumns();
}

void VSelectViewColumnsDialog::setAllCheckStates(Qt::CheckState state)
{
    for (int row = 0; row < m_columns->count(); ++row)
        m_columns->item(row)->setData(Qt::CheckStateRole, state);
}
