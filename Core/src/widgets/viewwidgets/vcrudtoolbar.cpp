#include "vcrudtoolbar.h"

#include "vauthaction.h"
#include "vsearchlineedit.h"

#include <logger.h>

#include <QCheckBox>
#include <QTimer>

namespace {

// Bits without a flag of their own; the presets set them so that the word reads the same as ever.
constexpr int UnassignedLowBits = 0x400 | 0x800;
constexpr int UnassignedHighBits = 0x40000 | 0x80000;

const char EditIconPath[] = ":/images/edit";
const char ViewIconPath[] = ":/images/view";

VCrudToolBar::Options setOrClear(VCrudToolBar::Options word, VCrudToolBar::Option flag, bool set)
{
    return set ? word | flag : word & ~VCrudToolBar::Options(flag);
}

} // namespace

VCrudToolBar::VCrudToolBar(QWidget* parent)
    : QToolBar(parent)
    , expandAllAction(new QAction(QIcon(QStringLiteral(":/images/add")), tr("Expand All"), this))
    , collapseAllAction(new QAction(QIcon(QStringLiteral(":/images/remove")), tr("Collapse All"), this))
    , refreshAction(new QAction(QIcon(QStringLiteral(":/images/refresh")), tr("Refresh"), this))
    , newAction(
          new VAuthAction(QIcon(QStringLiteral(":/images/new")), QStringLiteral("_New"), this, tr("New...")))
    , copyAction(new VAuthAction(
          QIcon(QStringLiteral(":/images/copy")), QStringLiteral("_Copy"), this, tr("Copy...")))
    , editAction(new VAuthAction(
          QIcon(QString::fromLatin1(EditIconPath)), QStringLiteral("_Edit"), this, tr("Edit...")))
    , deleteAction(new VAuthAction(
          QIcon(QStringLiteral(":/images/delete")), QStringLiteral("_Delete"), this, tr("Delete...")))
    , emailAction(new VAuthAction(
          QIcon(QStringLiteral(":/images/email")), QStringLiteral("_Email"), this, tr("Email...")))
    , submitAction(new VAuthAction(
          QIcon(QStringLiteral(":/images/submit")), QStringLiteral("_Save"), this, tr("Save")))
    , revertAction(new VAuthAction(
          QIcon(QStringLiteral(":/images/revert")), QStringLiteral("_Cancel"), this, tr("Cancel")))
    , csvAction(new QAction(QIcon(QStringLiteral(":/images/csv")), tr("Export to Csv..."), this))
    , pdfAction(new QAction(QIcon(QStringLiteral(":/images/pdf")), tr("Create a Pdf..."), this))
    , firstSeparator(nullptr)
    , secondSeparator(nullptr)
    , excludeCheckBox(new QCheckBox(tr("Exclude"), this))
    , searchLineEdit(new VSearchLineEdit(this))
    , searchEditAction(nullptr)
    , excludeAction(nullptr)
    , searchSeparator(nullptr)
    , options()
    , searchTimer(new QTimer(this))
{
    setMaximumHeight(22);
    searchTimer->setInterval(3000);
    connect(searchTimer, &QTimer::timeout, this, &VCrudToolBar::runSearch);

    expandAllAction->setToolTip(tr("Expand ALL"));
    collapseAllAction->setToolTip(tr("Collapse ALL."));
    refreshAction->setToolTip(tr("Refresh the data in the view."));
    newAction->setToolTip(tr("Create a new record."));
    copyAction->setToolTip(tr("Copy currently selected record to a new record."));
    editAction->setToolTip(tr("Edit selected record."));
    deleteAction->setToolTip(tr("Delete selected records from database."));
    submitAction->setToolTip(tr("Submit changes to database."));
    revertAction->setToolTip(tr("Discard changes to ALL records."));
    csvAction->setToolTip(tr("Save the data in the view to a csv file."));
    excludeCheckBox->setToolTip(tr("When checked, rows matching the Search text will NOT be included."));

    addAction(expandAllAction);
    addAction(collapseAllAction);
    addAction(refreshAction);
    addAction(csvAction);
    firstSeparator = addSeparator();
    addAction(newAction);
    addAction(copyAction);
    addAction(editAction);
    addAction(deleteAction);
    addAction(submitAction);
    addAction(revertAction);
    secondSeparator = addSeparator();
    addAction(pdfAction);
    addAction(emailAction);
    searchSeparator = insertSeparator(secondSeparator);
    excludeAction = insertWidget(secondSeparator, excludeCheckBox);
    searchEditAction = insertWidget(secondSeparator, searchLineEdit);

    // The option word starts at 0, which would show the search; it stays hidden until options are applied.
    setSearchWidgetsVisible(false);
    excludeCheckBox->hide();
    searchLineEdit->hide();
    excludeCheckBox->setFixedHeight(20);
    searchLineEdit->setFixedHeight(20);

    forwardTrigger(editAction, &VCrudToolBar::editTriggered);
    forwardTrigger(newAction, &VCrudToolBar::newTriggered);
    forwardTrigger(copyAction, &VCrudToolBar::copyTriggered);
    forwardTrigger(refreshAction, &VCrudToolBar::refreshTriggered);
    forwardTrigger(deleteAction, &VCrudToolBar::deleteTriggered);
    forwardTrigger(csvAction, &VCrudToolBar::csvTriggered);
    forwardTrigger(pdfAction, &VCrudToolBar::pdfTriggered);
    forwardTrigger(emailAction, &VCrudToolBar::emailTriggered);
    forwardTrigger(submitAction, &VCrudToolBar::submitTriggered);
    forwardTrigger(revertAction, &VCrudToolBar::revertTriggered);
    forwardTrigger(expandAllAction, &VCrudToolBar::expandAllTriggered);
    forwardTrigger(collapseAllAction, &VCrudToolBar::collapseAllTriggered);

    connect(searchLineEdit, &QLineEdit::returnPressed, this, &VCrudToolBar::runSearch);
    connect(searchLineEdit, &VSearchLineEdit::textCleared, this, &VCrudToolBar::runSearch);
    connect(excludeCheckBox, &QCheckBox::toggled, this, &VCrudToolBar::excludeToggled);
    // A member pointer to a virtual slot dispatches virtually, so a subclass's override is called.
    connect(this, &QObject::objectNameChanged, this, &VCrudToolBar::onObjectNameChanged);
}

void VCrudToolBar::forwardTrigger(QAction* action, void (VCrudToolBar::*signal)())
{
    auto* authAction = qobject_cast<VAuthAction*>(action);
    connect(action, &QAction::triggered, this, [this, authAction, signal] {
        // The permission is checked here, not only when the buttons are laid out: a cleared flag
        // must also stop a stale visible button, a menu entry, a shortcut and QAction::trigger().
        // Read-only or view-only, the edit action is the view action, which needs no right to edit.
        const bool viewing = authAction == editAction && m_viewOnly;
        if (authAction && !authAction->authorized && !viewing) {
            LOG_WARNING(
                "Action %s is not authorized; its trigger is ignored", qPrintable(authAction->objectName()));
            return;
        }
        emit(this->*signal)();
    });
}

void VCrudToolBar::runSearch()
{
    searchTimer->stop();
    emit searchTriggered();
}

void VCrudToolBar::restartSearchTimer()
{
    searchTimer->start();
}

void VCrudToolBar::setSearchWidgetsVisible(bool visible)
{
    searchSeparator->setVisible(visible);
    excludeAction->setVisible(visible);
    searchEditAction->setVisible(visible);
}

void VCrudToolBar::setOptions(Options newOptions)
{
    if (newOptions == options)
        return;
    options = newOptions;

    expandAllAction->setVisible(!options.testFlag(NoExpandAll));
    collapseAllAction->setVisible(!options.testFlag(NoCollapseAll));
    refreshAction->setVisible(!options.testFlag(NoRefresh));
    csvAction->setVisible(!options.testFlag(NoCsv));
    firstSeparator->setVisible(!options.testFlag(NoFirstSeparator));
    secondSeparator->setVisible(!options.testFlag(NoSecondSeparator));
    pdfAction->setVisible(!options.testFlag(NoPdf));

    const auto showRecordAction = [this](VAuthAction* action, Option hideFlag) {
        action->setVisible(!options.testFlag(hideFlag) && action->authorized);
    };
    showRecordAction(editAction, NoEdit);
    showRecordAction(newAction, NoNew);
    showRecordAction(copyAction, NoCopy);
    showRecordAction(deleteAction, NoDelete);
    showRecordAction(submitAction, NoSubmit);
    showRecordAction(revertAction, NoRevert);
    showRecordAction(emailAction, NoEmail);

    setSearchWidgetsVisible(!options.testFlag(NoSearch));

    disconnect(searchLineEdit, &QLineEdit::textChanged, this, nullptr);
    disconnect(searchLineEdit, &QLineEdit::returnPressed, this, nullptr);
    if (options.testFlag(SearchAsYouType) && options.testFlag(DelayedSearch)) {
        searchLineEdit->setToolTip(tr("Delayed search applied as you type."));
        connect(searchLineEdit, &QLineEdit::textChanged, this, &VCrudToolBar::restartSearchTimer);
    } else if (options.testFlag(SearchAsYouType)) {
        searchLineEdit->setToolTip(tr("Search applied as you type."));
        connect(searchLineEdit, &QLineEdit::textChanged, this, &VCrudToolBar::searchTriggered);
    } else {
        searchLineEdit->setToolTip(tr("Press Enter to apply search."));
        connect(searchLineEdit, &QLineEdit::returnPressed, this, &VCrudToolBar::runSearch);
    }
}

VCrudToolBar::Options VCrudToolBar::setOptionsRefreshOnly(bool showCsv, bool showSearch)
{
    Options word(QFlag(~int(NoRefresh | SearchAsYouType | DelayedSearch)));
    if (showCsv)
        word &= ~Options(NoCsv);
    if (showSearch)
        word &= ~Options(NoSearch);
    setOptions(word);
    return word;
}

VCrudToolBar::Options VCrudToolBar::setOptionsFormEdit(bool showCopy, bool showPdf, bool showSearch)
{
    Options word = options | NoEmail | NoSubmit | NoRevert | NoExpandAll | NoCollapseAll
        | Options(QFlag(UnassignedLowBits | UnassignedHighBits));
    word = setOrClear(word, NoCopy, !showCopy);
    word = setOrClear(word, NoPdf, !showPdf);
    word = setOrClear(word, NoSearch, !showSearch);
    setOptions(word);
    return word;
}

VCrudToolBar::Options VCrudToolBar::setOptionsTreeViewEdit(bool showPdf, bool showSearch)
{
    Options word = options | NoNew | NoCopy | NoEdit | NoDelete | NoCsv | NoEmail | NoSecondSeparator
        | Options(QFlag(UnassignedLowBits | UnassignedHighBits));
    word = setOrClear(word, NoPdf, !showPdf);
    word = setOrClear(word, NoSearch, !showSearch);
    setOptions(word);
    return word;
}

void VCrudToolBar::setEditActionViews(bool viewing)
{
    if (viewing) {
        editAction->setIcon(QIcon(QString::fromLatin1(ViewIconPath)));
        editAction->setToolTip(tr("View selected record."));
        editAction->setText(tr("View..."));
    } else {
        editAction->setIcon(QIcon(QString::fromLatin1(EditIconPath)));
        editAction->setToolTip(tr("Edit selected record."));
        editAction->setText(tr("Edit..."));
    }
}

void VCrudToolBar::setReadOnly(bool readOnly)
{
    newAction->setEnabled(!readOnly);
    copyAction->setEnabled(!readOnly);
    applyViewOnly(readOnly);
}

void VCrudToolBar::setViewOnly(bool viewOnly)
{
    applyViewOnly(viewOnly);
}

void VCrudToolBar::applyViewOnly(bool viewOnly)
{
    m_viewOnly = viewOnly;
    deleteAction->setEnabled(!viewOnly);
    submitAction->setEnabled(!viewOnly);
    revertAction->setEnabled(!viewOnly);
    // A user without the right to edit is never offered "Edit...", even while not read-only.
    setEditActionViews(viewOnly || !editAction->authorized);
}

void VCrudToolBar::enableSubmit()
{
    submitAction->setEnabled(true);
    revertAction->setEnabled(true);
    refreshAction->setEnabled(false);
    csvAction->setEnabled(false);
    emailAction->setEnabled(false);
    pdfAction->setEnabled(false);
}

void VCrudToolBar::disableSubmit()
{
    submitAction->setEnabled(false);
    revertAction->setEnabled(false);
    refreshAction->setEnabled(true);
    csvAction->setEnabled(true);
    emailAction->setEnabled(true);
    pdfAction->setEnabled(true);
}

void VCrudToolBar::onObjectNameChanged(const QString& objectName)
{
    newAction->setObjectName(objectName + QLatin1String("_New"));
    copyAction->setObjectName(objectName + QLatin1String("_Copy"));
    editAction->setObjectName(objectName + QLatin1String("_Edit"));
    deleteAction->setObjectName(objectName + QLatin1String("_Delete"));
    emailAction->setObjectName(objectName + QLatin1String("_Email"));
    submitAction->setObjectName(objectName + QLatin1String("_Save"));
    revertAction->setObjectName(objectName + QLatin1String("_Cancel"));
}

void VCrudToolBar::excludeToggled(bool checked)
{
    searchLineEdit->setPlaceholderText(checked ? tr("Exclude") : tr("Search"));
    if (!searchTimer->isActive() && !searchLineEdit->text().isEmpty())
        emit searchTriggered();
}
