#include "vabstractviewwidget.h"

#include "vauthaction.h"
#include "vcrudtoolbar.h"
#include "vfilterwidget.h"
#include "vhighlightitemdelegate.h"
#include "voptionswidget.h"
#include "vsearchlineedit.h"

#include <logger.h>
#include <vsettings.h>

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QChildEvent>
#include <QHBoxLayout>
#include <QHash>
#include <QLabel>
#include <QMessageBox>
#include <QSet>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const int StatusPrefixRole = Qt::UserRole + 2;
const int StatusBackgroundsRole = Qt::UserRole + 3;
const int StatusTextsRole = Qt::UserRole + 4;
const int StatusForegroundsRole = Qt::UserRole + 5;
const int LinkRole = Qt::UserRole + 7;
const int ModelOptionsRole = Qt::UserRole + 15;
// Model option: deleting marks records, which can be undone, instead of removing them.
const int MarksDeletedOption = 0x20;

const char StatusWidgetName[] = "StatusWidget";
const char PrintersWidgetName[] = "PrintersWidget";

QString plural(int count)
{
    return count == 1 ? QString() : QStringLiteral("s");
}

struct RowInterval {
    int top;
    int bottom;
};

// The rows whose every column is selected, as selectedRows(0) counts them, without its cost:
// it tests each row against every range. Whole-width ranges are merged per parent and summed;
// only ranges that cover part of a row (item selection) are looked at row by row.
int countSelectedRows(const QItemSelectionModel* selection)
{
    if (!selection || !selection->model() || !selection->hasSelection())
        return 0;
    const QAbstractItemModel* model = selection->model();
    const QItemSelection ranges = selection->selection();
    QHash<QModelIndex, QVector<RowInterval>> wholeRows;
    QVector<int> partial;
    for (int i = 0; i < ranges.size(); ++i) {
        const QItemSelectionRange& range = ranges.at(i);
        if (!range.isValid())
            continue;
        if (range.left() == 0 && range.right() == model->columnCount(range.parent()) - 1)
            wholeRows[range.parent()].append({ range.top(), range.bottom() });
        else
            partial.append(i);
    }

    int count = 0;
    for (auto it = wholeRows.begin(); it != wholeRows.end(); ++it) {
        QVector<RowInterval>& intervals = it.value();
        std::sort(intervals.begin(), intervals.end(),
            [](const RowInterval& a, const RowInterval& b) { return a.top < b.top; });
        QVector<RowInterval> merged;
        for (const RowInterval& interval : intervals) {
            if (!merged.isEmpty() && interval.top <= merged.last().bottom + 1)
                merged.last().bottom = std::max(merged.last().bottom, interval.bottom);
            else
                merged.append(interval);
        }
        for (const RowInterval& interval : merged)
            count += interval.bottom - interval.top + 1;
        intervals = merged;
    }

    if (partial.isEmpty())
        return count;
    QSet<QPair<QModelIndex, int>> counted;
    for (int i : partial) {
        const QItemSelectionRange& range = ranges.at(i);
        const QModelIndex parent = range.parent();
        const QVector<RowInterval> whole = wholeRows.value(parent);
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const auto after = std::upper_bound(whole.cbegin(), whole.cend(), row,
                [](int r, const RowInterval& interval) { return r < interval.top; });
            if (after != whole.cbegin() && row <= (after - 1)->bottom)
                continue;
            if (counted.contains(qMakePair(parent, row)) || !selection->isRowSelected(row, parent))
                continue;
            counted.insert(qMakePair(parent, row));
            ++count;
        }
    }
    return count;
}

} // namespace

VAbstractViewWidget::VAbstractViewWidget(Options options, const QString& objectName, QWidget* parent)
    : QWidget(parent)
    , viewId(-1)
    , readOnly(false)
    , linkedWidget(nullptr)
    , filterWidget(nullptr)
    , optionsWidget(nullptr)
    , m_view(nullptr)
    , m_toolBar(nullptr)
    , columnsAction(
          new QAction(QIcon(QStringLiteral(":/images/selectcolumn")), tr("Select Columns..."), this))
    , showFilterAction(new QAction(QIcon(QStringLiteral(":/images/filter")), tr("Show Filter"), this))
    , showOptionsAction(new QAction(QIcon(QStringLiteral(":/images/settings")), tr("Show Options"), this))
    , linkedAction(new QAction(QIcon(QStringLiteral(":/images/link")), tr("Link to Parent"), this))
    , visibilityAction(new QAction(this))
    , headerLabel(new QLabel(this))
    , titleLabel(new QLabel(this))
    , statusLabel(new QLabel(this))
    , filterLabel(new QLabel(this))
    , colourStatusLabel(new QLabel(this))
    , headerTitleLayout(new QHBoxLayout)
    , headerCrudLayout(new QHBoxLayout)
    , printersLayout(new QHBoxLayout)
    , headerLayout(new QVBoxLayout)
    , headerExtraLayout(new QHBoxLayout)
    , statusLayout(new QHBoxLayout)
    , mainLayout(new QVBoxLayout)
    , options()
{
    qRegisterMetaType<QModelIndexList>("QModelIndexList");

    columnsAction->setObjectName(QStringLiteral("columnsAction"));
    columnsAction->setToolTip(tr("Select the visible columns for this view."));
    showFilterAction->setObjectName(QStringLiteral("showFilterAction"));
    showFilterAction->setToolTip(tr("Select a filter to apply to this view."));
    showFilterAction->setCheckable(true);
    showFilterAction->setVisible(false);
    showOptionsAction->setObjectName(QStringLiteral("showOptionsAction"));
    showOptionsAction->setToolTip(tr("Select options to apply to this view."));
    showOptionsAction->setCheckable(true);
    showOptionsAction->setVisible(false);
    linkedAction->setObjectName(QStringLiteral("linkedAction"));
    linkedAction->setToolTip(tr("Toggles synchronizing this view to its parent view."));
    linkedAction->setCheckable(true);
    linkedAction->setEnabled(false);
    visibilityAction->setObjectName(QStringLiteral("visibilityAction"));
    visibilityAction->setCheckable(true);
    visibilityAction->setChecked(true);
    visibilityAction->setEnabled(false);

    headerLabel->setObjectName(QStringLiteral("HeaderLabel"));
    headerLabel->setAlignment(Qt::AlignCenter);
    titleLabel->setObjectName(QStringLiteral("TitleLabel"));
    titleLabel->setAlignment(Qt::AlignCenter);
    titleLabel->hide();

    const QList<QBoxLayout*> layouts = { headerTitleLayout, headerCrudLayout, printersLayout, headerLayout,
        headerExtraLayout, statusLayout, mainLayout };
    for (QBoxLayout* layout : layouts) {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
    }

    auto* headerTitleWidget = new QWidget(this);
    headerTitleWidget->setObjectName(QStringLiteral("HeaderTitleWidget"));
    headerTitleWidget->setLayout(headerTitleLayout);
    headerTitleLayout->addWidget(headerLabel, 1);

    auto* headerCrudWidget = new QWidget(this);
    headerCrudWidget->setObjectName(QStringLiteral("HeaderCrudWidget"));
    headerCrudWidget->setLayout(headerCrudLayout);
    headerCrudLayout->addWidget(titleLabel, 1);

    auto* printersWidget = new QWidget(this);
    printersWidget->setObjectName(QLatin1String(PrintersWidgetName));
    printersWidget->setLayout(printersLayout);

    headerLayout->addWidget(headerTitleWidget, 1);
    headerLayout->addWidget(headerCrudWidget);
    headerLayout->addWidget(printersWidget);
    headerLayout->addLayout(headerExtraLayout);

    auto* statusWidget = new QWidget(this);
    statusWidget->setObjectName(QLatin1String(StatusWidgetName));
    statusWidget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    statusWidget->setLayout(statusLayout);
    statusLayout->addWidget(statusLabel);
    statusLayout->addWidget(filterLabel);
    statusLayout->addStretch(1);
    statusLayout->addWidget(colourStatusLabel);

    mainLayout->addLayout(headerLayout);
    mainLayout->addWidget(statusWidget);

    setToolBar(new VCrudToolBar(this));
    setLayout(mainLayout);

    setOptions(options);

    // Lambdas call the virtual slots, so that a subclass's override is reached.
    connect(columnsAction, &QAction::triggered, this, [this] { _columnsTriggered(); });
    connect(showFilterAction, &QAction::triggered, this, [this] { showFilterActivated(); });
    connect(showOptionsAction, &QAction::triggered, this, [this] { showOptionsActivated(); });
    connect(linkedAction, &QAction::triggered, this, [this](bool checked) { _linkTriggered(checked); });
    connect(
        visibilityAction, &QAction::triggered, this, [this](bool checked) { _visibilityTriggered(checked); });
    connect(
        this, &QObject::objectNameChanged, this, [this](const QString& name) { onObjectNameChanged(name); });

    setObjectName(objectName);
}

VAbstractViewWidget::~VAbstractViewWidget()
{
    // The children die after this part of the object; none of them may call back into it.
    for (QObject* child : { static_cast<QObject*>(m_toolBar), static_cast<QObject*>(m_view),
             static_cast<QObject*>(filterWidget), static_cast<QObject*>(optionsWidget) }) {
        if (child)
            disconnect(child, nullptr, this, nullptr);
    }
    if (m_view)
        m_view->removeEventFilter(this);
    for (const QMetaObject::Connection& connection : qAsConst(m_modelConnections))
        disconnect(connection);
    disconnect(m_selectionConnection);
}

VCrudToolBar* VAbstractViewWidget::toolBar()
{
    return m_toolBar;
}

void VAbstractViewWidget::setToolBar(VCrudToolBar* bar)
{
    if (!bar) {
        LOG_WARNING("A view widget needs a toolbar; %s keeps its own", qPrintable(objectName()));
        return;
    }
    if (bar == m_toolBar)
        return;
    delete m_toolBar;
    if (options.testFlag(NoDelete))
        bar->setOptions(bar->options | VCrudToolBar::NoDelete);
    m_toolBar = bar;
    if (!objectName().isEmpty())
        bar->setObjectName(objectName() + QLatin1String("_ToolBar"));
    bar->disableSubmit();
    bar->insertAction(bar->csvAction, showOptionsAction);
    bar->insertAction(bar->csvAction, showFilterAction);
    bar->insertAction(bar->csvAction, linkedAction);
    bar->insertAction(bar->csvAction, columnsAction);
    headerCrudLayout->insertWidget(0, bar);
    bar->setVisible(!options.testFlag(NoToolBar));

    connect(bar, &VCrudToolBar::refreshTriggered, this, [this] { _refreshTriggered(); });
    connect(bar, &VCrudToolBar::newTriggered, this, [this] { _newTriggered(); });
    connect(bar, &VCrudToolBar::copyTriggered, this, [this] { _copyTriggered(); });
    connect(bar, &VCrudToolBar::editTriggered, this, [this] { _editTriggered(); });
    connect(bar, &VCrudToolBar::deleteTriggered, this, [this] { _deleteTriggered(); });
    connect(bar, &VCrudToolBar::csvTriggered, this, [this] { _csvTriggered(); });
    connect(bar, &VCrudToolBar::pdfTriggered, this, [this] { _pdfTriggered(); });
    connect(bar, &VCrudToolBar::emailTriggered, this, [this] { _emailTriggered(); });
    connect(bar, &VCrudToolBar::searchTriggered, this, [this] { _searchTriggered(); });
    connect(bar, &VCrudToolBar::revertTriggered, this, [this] { _revertTriggered(); });
    connect(bar, &VCrudToolBar::submitTriggered, this, [this] { _submitTriggered(); });
    // The toolbar may also be deleted from outside; no pointer to it must survive.
    connect(bar, &QObject::destroyed, this, [this, bar] {
        if (m_toolBar == bar)
            m_toolBar = nullptr;
    });
}

bool VAbstractViewWidget::permits(const char* what, const VAuthAction* action, bool changesRecords) const
{
    if (changesRecords && readOnly) {
        LOG_WARNING("%s refused on %s: the view is read only", what, qPrintable(objectName()));
        return false;
    }
    // Without a toolbar there is no flag to consult, and a permission that cannot be read is not given.
    if (!action || !action->authorized) {
        LOG_WARNING("%s refused on %s: not authorized", what, qPrintable(objectName()));
        return false;
    }
    return true;
}

QItemSelectionModel* VAbstractViewWidget::selectionModel() const
{
    QItemSelectionModel* selection = m_view && m_view->model() ? m_view->selectionModel() : nullptr;
    // Between a model's end and the view's next reset the old selection model lingers.
    return selection && selection->model() == m_view->model() ? selection : nullptr;
}

void VAbstractViewWidget::refreshToolBar()
{
    if (m_toolBar) {
        const bool selected = countSelectedRows(selectionModel()) > 0;
        if (!linkedWidget)
            m_toolBar->newAction->setEnabled(!readOnly && m_toolBar->newAction->authorized);
        const bool deleteManaged = !options.testFlag(NoDelete);
        if (selected) {
            m_toolBar->editAction->setEnabled(readOnly || m_toolBar->editAction->authorized);
            m_toolBar->copyAction->setEnabled(!readOnly && m_toolBar->copyAction->authorized);
            if (deleteManaged)
                m_toolBar->deleteAction->setEnabled(!readOnly && m_toolBar->deleteAction->authorized);
            m_toolBar->pdfAction->setEnabled(true);
        } else {
            m_toolBar->editAction->setEnabled(false);
            m_toolBar->copyAction->setEnabled(false);
            if (deleteManaged)
                m_toolBar->deleteAction->setEnabled(false);
            m_toolBar->pdfAction->setEnabled(options.testFlag(PdfWithoutSelection));
        }
    }
    updateStatusLabel();
}

QAbstractItemView* VAbstractViewWidget::view()
{
    return m_view;
}

void VAbstractViewWidget::setView(QAbstractItemView* v)
{
    if (v == m_view)
        return;
    delete m_view;
    m_view = v;
    if (!v) {
        connectModel();
        updateStatusLabel();
        return;
    }
    if (!options.testFlag(NoHighlightDelegate))
        v->setItemDelegate(new VHighLightItemDelegate(v));
    mainLayout->insertWidget(1, v, 1);

    connect(v, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) { _clicked(index); });
    connect(v, &QAbstractItemView::doubleClicked, this,
        [this](const QModelIndex& index) { _doubleClicked(index); });
    // The view announces no change of model; a new model always brings a new selection model,
    // created as a child of the view, which is the moment to connect to both.
    v->installEventFilter(this);
    connect(v, &QObject::destroyed, this, [this, v] {
        if (m_view == v)
            m_view = nullptr;
    });
    connectModel();
    updateStatusLabel();
}

void VAbstractViewWidget::connectModel()
{
    for (const QMetaObject::Connection& connection : qAsConst(m_modelConnections))
        disconnect(connection);
    m_modelConnections.clear();
    disconnect(m_selectionConnection);
    m_connectedModel = m_view ? m_view->model() : nullptr;
    m_connectedSelection = selectionModel();

    QAbstractItemModel* model = m_connectedModel;
    if (model) {
        if (m_toolBar && (modelOptions() & MarksDeletedOption)) {
            m_toolBar->deleteAction->setIcon(QIcon(QStringLiteral(":/images/undelete")));
            m_toolBar->deleteAction->setText(tr("Mark/Unmark Records as Deleted."));
            m_toolBar->deleteAction->setToolTip(tr("Click to toggle the selected records Deleted state."));
        }
        m_modelConnections << connect(model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
                _dataChanged(topLeft, bottomRight);
            });
        m_modelConnections << connect(
            model, &QAbstractItemModel::rowsInserted, this, [this] { updateStatusLabel(); });
        m_modelConnections << connect(
            model, &QAbstractItemModel::rowsRemoved, this, [this] { updateStatusLabel(); });
        m_modelConnections << connect(
            model, &QAbstractItemModel::modelReset, this, [this] { _modelReset(); });
    }
    connectSelection();
}

void VAbstractViewWidget::connectSelection()
{
    disconnect(m_selectionConnection);
    if (m_connectedSelection)
        m_selectionConnection = connect(m_connectedSelection, &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                _selectionChanged(selected, deselected);
            });
}

void VAbstractViewWidget::scheduleModelCheck()
{
    if (m_modelCheckPending)
        return;
    m_modelCheckPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_modelCheckPending = false;
            if (!m_view || (m_view->model() == m_connectedModel && selectionModel() == m_connectedSelection))
                return;
            connectModel();
            refreshToolBar();
        },
        Qt::QueuedConnection);
}

bool VAbstractViewWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view && event->type() == QEvent::ChildAdded)
        scheduleModelCheck();
    return QWidget::eventFilter(watched, event);
}

QModelIndex VAbstractViewWidget::currentIndex() const
{
    return m_view ? m_view->currentIndex() : QModelIndex();
}

void VAbstractViewWidget::setCurrentIndex(const QModelIndex& index)
{
    const QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    if (index.isValid() && index.model() != model) {
        const auto name = [](const QAbstractItemModel* m) {
            if (!m)
                return QStringLiteral("(none)");
            return m->objectName().isEmpty() ? QString::fromLatin1(m->metaObject()->className())
                                             : m->objectName();
        };
        LOG_WARNING("VAbstractViewWidget::setCurrentIndex Mismatched models. View model: %s, index model: %s",
            qPrintable(name(model)), qPrintable(name(index.model())));
        return;
    }
    if (!m_view)
        return;
    // A model replaced behind the widget's back is picked up here at the latest.
    if (model != m_connectedModel || selectionModel() != m_connectedSelection)
        connectModel();
    disconnect(m_selectionConnection);
    m_view->setCurrentIndex(index);
    connectSelection();
    // Nobody hears of the new selection, but the toolbar and the status line must show it.
    refreshToolBar();
}

QModelIndex VAbstractViewWidget::matchValue(const QVariant& value, int column, int role) const
{
    const QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    if (!model || column < 0 || column >= model->columnCount())
        return QModelIndex();
    const int rows = model->rowCount();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model->index(row, column);
        if (index.data(role) == value)
            return index;
    }
    return QModelIndex();
}

void VAbstractViewWidget::readSettings()
{
    VSettings settings(nullptr);
    const QString name = objectName();
    if (linkedAction->isVisible()) {
        const bool linked = settings.value(name + QLatin1String("/linkenabled"), true).toBool();
        linkedAction->setChecked(linked);
        _linkTriggered(linked);
    }
    visibilityAction->setChecked(settings.value(name + QLatin1String("/visible"), true).toBool());
    if (filterWidget)
        setPanelShown(filterWidget, showFilterAction,
            settings.value(name + QLatin1String("/filterenabled"), false).toBool(), tr("Show Filter"),
            tr("Hide Filter"));
    if (optionsWidget)
        setPanelShown(optionsWidget, showOptionsAction,
            settings.value(name + QLatin1String("/optionsenabled"), false).toBool(), tr("Show Options"),
            tr("Hide Options"));
}

void VAbstractViewWidget::saveSettings()
{
    VSettings settings(nullptr);
    const QString name = objectName();
    settings.setValue(name + QLatin1String("/linkenabled"), linkedAction->isChecked());
    settings.setValue(name + QLatin1String("/filterenabled"), showFilterAction->isChecked());
    settings.setValue(name + QLatin1String("/visible"), visibilityAction->isChecked());
    settings.setValue(name + QLatin1String("/optionsenabled"), showOptionsAction->isChecked());
}

void VAbstractViewWidget::selectColumns() { }

void VAbstractViewWidget::exportToCsv() { }

void VAbstractViewWidget::updateStatusLabel()
{
    const QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    const bool tree = qobject_cast<QTreeView*>(m_view);
    const QModelIndex current = m_view ? m_view->currentIndex() : QModelIndex();
    // The children belong to the row, whichever of its cells is current; no current row has none.
    const QModelIndex currentRow = current.isValid() ? current.sibling(current.row(), 0) : QModelIndex();
    const int rows = model ? model->rowCount() : 0;
    const int children = model && currentRow.isValid() ? model->rowCount(currentRow) : 0;

    QString text;
    if (tree && currentRow.parent().isValid())
        text = tr("[%1 Child Row%2]").arg(QString::number(children), plural(children));
    else if (tree && children != 0)
        text = tr("[%1 Row%2, %3 Child Row%4]")
                   .arg(QString::number(rows), plural(rows), QString::number(children), plural(children));
    else
        text = tr("[%1 Row%2]").arg(QString::number(rows), plural(rows));
    const int selected = countSelectedRows(selectionModel());
    if (selected > 0)
        text += tr("[%1 Selected]").arg(selected);
    if (readOnly)
        text += tr(" Read Only");
    statusLabel->setText(text);

    if (model)
        updateColourStatus(model);
}

void VAbstractViewWidget::updateColourStatus(const QAbstractItemModel* model)
{
    const QString prefix = model->data(QModelIndex(), StatusPrefixRole).toString();
    const QStringList backgrounds = model->data(QModelIndex(), StatusBackgroundsRole).toStringList();
    const QStringList texts = model->data(QModelIndex(), StatusTextsRole).toStringList();
    const QStringList foregrounds = model->data(QModelIndex(), StatusForegroundsRole).toStringList();
    if (texts.isEmpty() && backgrounds.isEmpty() && foregrounds.isEmpty())
        return;
    if (texts.isEmpty() || texts.size() != backgrounds.size() || texts.size() != foregrounds.size()) {
        colourStatusLabel->setText(tr("Error: Text and Colours sizes different! SZ:%1 - FG:%2 BG:%3")
                                       .arg(texts.size())
                                       .arg(foregrounds.size())
                                       .arg(backgrounds.size()));
        return;
    }
    QString status = prefix.isEmpty() ? QString() : prefix + QLatin1Char(':');
    const QString span = QStringLiteral("<span style='background-color:%1; color:%2'>&nbsp;%3&nbsp;</span>");
    for (int i = 0; i < texts.size(); ++i)
        status += span.arg(backgrounds.at(i), foregrounds.at(i), texts.at(i));
    colourStatusLabel->setText(QLatin1Char('[') + status + QLatin1Char(']'));
}

void VAbstractViewWidget::dataEdited() { }

void VAbstractViewWidget::enableSubmit()
{
    if (m_toolBar)
        m_toolBar->enableSubmit();
}

void VAbstractViewWidget::revert()
{
    QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    if (!model)
        return;
    model->revert();
    dataEdited();
}

bool VAbstractViewWidget::submit()
{
    QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    if (!model || !model->submit())
        return false;
    dataEdited();
    return true;
}

void VAbstractViewWidget::setPanelShown(
    QWidget* panel, QAction* action, bool shown, const QString& showText, const QString& hideText)
{
    panel->setVisible(shown);
    action->setChecked(shown);
    action->setText(shown ? hideText : showText);
}

void VAbstractViewWidget::showFilterActivated()
{
    if (filterWidget)
        setPanelShown(
            filterWidget, showFilterAction, filterWidget->isHidden(), tr("Show Filter"), tr("Hide Filter"));
}

void VAbstractViewWidget::showOptionsActivated()
{
    if (optionsWidget)
        setPanelShown(optionsWidget, showOptionsAction, optionsWidget->isHidden(), tr("Show Options"),
            tr("Hide Options"));
}

void VAbstractViewWidget::_clicked(const QModelIndex& index)
{
    emit clicked(viewId, index);
}

void VAbstractViewWidget::_columnsTriggered()
{
    emit columnsTriggered(viewId);
}

void VAbstractViewWidget::_copyTriggered()
{
    if (!permits("Copy", m_toolBar ? m_toolBar->copyAction : nullptr, true))
        return;
    emit copyTriggered(viewId, currentIndex());
}

void VAbstractViewWidget::_csvTriggered()
{
    emit csvTriggered(viewId);
}

void VAbstractViewWidget::_dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    dataEdited();
    emit dataChanged(viewId, topLeft, bottomRight);
}

void VAbstractViewWidget::_deleteTriggered()
{
    if (!permits("Delete", m_toolBar ? m_toolBar->deleteAction : nullptr, true))
        return;
    QItemSelectionModel* selection = selectionModel();
    const QModelIndexList rows = selection ? selection->selectedRows(0) : QModelIndexList();
    if (!rows.isEmpty() && confirmRemoveRows())
        emit deleteTriggered(viewId, rows);
}

void VAbstractViewWidget::_doubleClicked(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    if (options.testFlag(DoubleClickEdits) && index.data(LinkRole).toString().isEmpty() && m_toolBar
        && m_toolBar->editAction->isEnabled()) {
        _editTriggered();
        return;
    }
    emit doubleClicked(viewId, index);
}

void VAbstractViewWidget::_editTriggered()
{
    // Read-only, the edit action is the view action: forms then open read-only, which anyone may.
    if (!readOnly && !permits("Edit", m_toolBar ? m_toolBar->editAction : nullptr, false))
        return;
    emit editTriggered(viewId, currentIndex());
}

void VAbstractViewWidget::_emailTriggered()
{
    if (!permits("Email", m_toolBar ? m_toolBar->emailAction : nullptr, false))
        return;
    emit emailTriggered(viewId, currentIndex());
}

void VAbstractViewWidget::_linkClicked(const QUrl& url)
{
    emit linkClicked(viewId, url);
}

void VAbstractViewWidget::_linkTriggered(bool checked)
{
    emit linkTriggered(viewId, checked);
}

void VAbstractViewWidget::_modelReset()
{
    // A reset clears the selection without a word; the toolbar must not offer actions on rows that are gone.
    refreshToolBar();
    emit modelReset(viewId);
}

void VAbstractViewWidget::_newTriggered()
{
    if (!permits("New", m_toolBar ? m_toolBar->newAction : nullptr, true))
        return;
    emit newTriggered(viewId);
}

void VAbstractViewWidget::_pdfTriggered()
{
    emit pdfTriggered(viewId, currentIndex());
}

void VAbstractViewWidget::_refreshTriggered()
{
    emit refreshTriggered(viewId, true);
}

void VAbstractViewWidget::_revertTriggered()
{
    if (!permits("Cancel", m_toolBar ? m_toolBar->revertAction : nullptr, false))
        return;
    emit revertTriggered(viewId);
}

void VAbstractViewWidget::_searchTriggered()
{
    if (!m_toolBar)
        return;
    emit searchTextEdited(viewId, m_toolBar->searchLineEdit->text(), m_toolBar->excludeCheckBox->isChecked());
}

void VAbstractViewWidget::_selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    refreshToolBar();
    emit selectionChanged(viewId, selected, deselected);
}

void VAbstractViewWidget::_submitTriggered()
{
    if (!permits("Save", m_toolBar ? m_toolBar->submitAction : nullptr, false))
        return;
    emit submitTriggered(viewId);
}

void VAbstractViewWidget::_visibilityTriggered(bool checked)
{
    emit visibilityTriggered(viewId, checked);
}

bool VAbstractViewWidget::confirmRemoveRows()
{
    if (options.testFlag(NoDeleteConfirm) || (modelOptions() & MarksDeletedOption))
        return true;
    QMessageBox box(this);
    box.setWindowTitle(tr("Confirm Record Delete"));
    box.setWindowIcon(QIcon(QStringLiteral(":/images/delete")));
    box.setIcon(QMessageBox::Warning);
    box.setText(tr("<b>Warning: deleting records cannot be undone!</b>"));
    box.setInformativeText(tr("Delete the selected records?"));
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void VAbstractViewWidget::onObjectNameChanged(const QString& objectName)
{
    if (m_toolBar)
        m_toolBar->setObjectName(objectName + QLatin1String("_ToolBar"));
}

void VAbstractViewWidget::setHeaderText(const QString& text)
{
    headerLabel->setText(text);
}

void VAbstractViewWidget::setTitleText(const QString& text)
{
    titleLabel->setText(text);
    titleLabel->setVisible(!text.isEmpty());
}

void VAbstractViewWidget::enableLinked(bool enabled)
{
    linkedAction->setChecked(enabled);
    _linkTriggered(enabled);
}

bool VAbstractViewWidget::linkedEnabled() const
{
    return linkedAction->isChecked();
}

void VAbstractViewWidget::setLinkedWidget(VAbstractViewWidget* w)
{
    if (w == this) {
        LOG_WARNING("%s cannot be linked to itself", qPrintable(objectName()));
        return;
    }
    disconnect(linkedAction, &QAction::triggered, this, nullptr);
    linkedWidget = w;
    // Without a parent there is nothing to synchronize to.
    linkedAction->setEnabled(w != nullptr);
    linkedAction->setChecked(w != nullptr);
    connect(linkedAction, &QAction::triggered, this, [this](bool checked) { _linkTriggered(checked); });
}

void VAbstractViewWidget::setFilterWidget(VFilterWidget* w)
{
    if (w == filterWidget)
        return;
    // Replaced before the old panel goes, so that its destroyed() finds nothing to forget.
    VFilterWidget* previous = filterWidget;
    filterWidget = w;
    delete previous;
    if (!w) {
        filterPanelGone();
        return;
    }
    w->hide();
    w->setMinimumSize(1, 1);
    headerExtraLayout->insertWidget(0, w);
    showFilterAction->setVisible(true);
    connect(w, &VFilterWidget::applyClicked, this, &VAbstractViewWidget::refreshFilterLabel);
    connect(w, &QObject::destroyed, this, [this, w] {
        if (filterWidget == w) {
            filterWidget = nullptr;
            filterPanelGone();
        }
    });
    refreshFilterLabel();
}

void VAbstractViewWidget::filterPanelGone()
{
    showFilterAction->setVisible(false);
    showFilterAction->setChecked(false);
    showFilterAction->setText(tr("Show Filter"));
    refreshFilterLabel();
}

void VAbstractViewWidget::setFilterEnabled(bool enabled)
{
    if (!showFilterAction->isVisible())
        return;
    showFilterAction->setEnabled(enabled);
    if (!enabled) {
        showFilterAction->setChecked(false);
        if (filterWidget)
            filterWidget->hide();
        showFilterAction->setText(tr("Show Filter"));
    }
}

bool VAbstractViewWidget::filterEnabled() const
{
    return showFilterAction->isEnabled();
}

void VAbstractViewWidget::setOptionsWidget(VOptionsWidget* w)
{
    if (w == optionsWidget)
        return;
    VOptionsWidget* previous = optionsWidget;
    optionsWidget = w;
    delete previous;
    if (!w) {
        optionsPanelGone();
        return;
    }
    w->hide();
    w->setMinimumSize(1, 1);
    headerExtraLayout->addWidget(w);
    showOptionsAction->setVisible(true);
    connect(w, &VOptionsWidget::optionsChanged, this, [this, w] {
        // An empty description clears the tooltip too; that is intended.
        showOptionsAction->setToolTip(w->description());
        emit optionsChanged(viewId);
        updateStatusLabel();
    });
    connect(w, &QObject::destroyed, this, [this, w] {
        if (optionsWidget == w) {
            optionsWidget = nullptr;
            optionsPanelGone();
        }
    });
}

void VAbstractViewWidget::optionsPanelGone()
{
    showOptionsAction->setVisible(false);
    showOptionsAction->setChecked(false);
    showOptionsAction->setText(tr("Show Options"));
}

void VAbstractViewWidget::setOptions(Options o)
{
    options = o;
    headerLabel->setVisible(!o.testFlag(NoHeaderLabel));
    if (m_toolBar)
        m_toolBar->setVisible(!o.testFlag(NoToolBar));
    columnsAction->setVisible(!o.testFlag(NoColumnsAction));
    linkedAction->setVisible(!o.testFlag(NoLinkedAction));
    if (auto* statusWidget = findChild<QWidget*>(QLatin1String(StatusWidgetName), Qt::FindDirectChildrenOnly))
        statusWidget->setVisible(!o.testFlag(NoStatusWidget));
    if (auto* printersWidget
        = findChild<QWidget*>(QLatin1String(PrintersWidgetName), Qt::FindDirectChildrenOnly))
        printersWidget->setVisible(o.testFlag(ShowPrinters));
    if (o.testFlag(NoDelete) && m_toolBar)
        m_toolBar->setOptions(m_toolBar->options | VCrudToolBar::NoDelete);
}

int VAbstractViewWidget::modelOptions() const
{
    const QAbstractItemModel* model = m_view ? m_view->model() : nullptr;
    return model ? model->index(0, 0).data(ModelOptionsRole).toInt() : 0;
}

void VAbstractViewWidget::setReadOnly(bool ro)
{
    if (ro == readOnly)
        return;
    readOnly = ro;
    if (m_toolBar)
        m_toolBar->setReadOnly(ro);
    updateStatusLabel();
    emit readOnlyChanged(viewId, ro);
}

void VAbstractViewWidget::refreshFilterLabel()
{
    const QString description = filterWidget ? filterWidget->description() : QString();
    if (description.isEmpty())
        filterLabel->clear();
    else
        filterLabel->setText(tr(" [<b>%1</b>]").arg(description));
}

void VAbstractViewWidget::moveSearchToPrinterLayout(int spacing, int stretch)
{
    if (!m_toolBar)
        return;
    QWidget* printersWidget = printersLayout->parentWidget();
    if (m_toolBar->searchLineEdit->parentWidget() == printersWidget) {
        LOG_WARNING("The search of %s is already in the printers row", qPrintable(objectName()));
        return;
    }
    // Removing the widget actions makes the toolbar give their widgets back, hidden and without parent.
    m_toolBar->removeAction(m_toolBar->excludeAction);
    m_toolBar->removeAction(m_toolBar->searchEditAction);
    if (spacing != 0)
        printersLayout->addSpacing(spacing);
    printersLayout->addWidget(m_toolBar->excludeCheckBox);
    printersLayout->addWidget(m_toolBar->searchLineEdit);
    if (stretch != 0)
        printersLayout->addStretch(stretch);
    m_toolBar->searchSeparator->setVisible(false);

    // The toolbar's option word keeps deciding whether the search is shown.
    VCrudToolBar* bar = m_toolBar;
    const auto follow = [bar] {
        bar->excludeCheckBox->setVisible(bar->excludeAction->isVisible());
        bar->searchLineEdit->setVisible(bar->searchEditAction->isVisible());
    };
    follow();
    connect(bar->excludeAction, &QAction::changed, bar, follow);
    connect(bar->searchEditAction, &QAction::changed, bar, follow);
}
