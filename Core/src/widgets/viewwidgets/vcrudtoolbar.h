#ifndef VCRUDTOOLBAR_H
#define VCRUDTOOLBAR_H

#include "veitikgip_export.h"

#include <QToolBar>

class QCheckBox;
class QTimer;
class VAuthAction;
class VSearchLineEdit;

/**
 * @brief The toolbar of a view widget: record actions, view actions and a search field.
 *
 * The toolbar knows nothing of models or views. It shows, hides, enables and
 * relabels its actions and turns their triggers into its own parameterless
 * signals, which the owning view widget forwards with its view id. Which
 * actions are shown is governed by one option word of hide flags (setOptions()
 * or one of the three presets).
 *
 * The record actions are VAuthActions named after the toolbar ("Orders_ToolBar_New",
 * ...). An action whose authorized flag is cleared is hidden at the next
 * setOptions() and, from the moment the flag is cleared, its trigger is not
 * passed on by any means: button, menu entry, shortcut or QAction::trigger().
 * The one exception is the edit action while the toolbar is read-only or
 * view-only: it is then the "View..." action and still emits editTriggered().
 * @code
 * auto* bar = new VCrudToolBar(this);
 * bar->setObjectName(QStringLiteral("Orders_ToolBar"));
 * bar->setOptions(VCrudToolBar::NoPdf | VCrudToolBar::NoEmail | VCrudToolBar::SearchAsYouType);
 * connect(bar, &VCrudToolBar::newTriggered, this, &OrdersWidget::addOrder);
 * @endcode
 */
class VEITIKGIP_EXPORT VCrudToolBar : public QToolBar {
    Q_OBJECT
public:
    /// Hide flags (a set bit hides what it names) and the two search-mode bits.
    enum Option {
        NoRefresh = 0x1,
        NoNew = 0x2,
        NoCopy = 0x4,
        NoEdit = 0x8,
        NoDelete = 0x10,
        NoCsv = 0x20,
        NoPdf = 0x40,
        NoEmail = 0x80,
        NoSubmit = 0x100,
        NoRevert = 0x200,
        NoFirstSeparator = 0x1000,
        NoSecondSeparator = 0x2000,
        NoSearch = 0x8000,
        NoExpandAll = 0x10000,
        NoCollapseAll = 0x20000,
        SearchAsYouType = 0x100000,
        /// With SearchAsYouType: search 3000 ms after the last keystroke.
        DelayedSearch = 0x200000
    };
    Q_DECLARE_FLAGS(Options, Option)
    Q_FLAG(Options)

    explicit VCrudToolBar(QWidget* parent = nullptr);

    /**
     * Applies a new option word; does nothing when it equals the current one.
     * Record actions are shown only when their flag is clear and they are
     * authorized; the search field is rewired for the chosen search mode.
     */
    virtual void setOptions(Options newOptions);
    /// Hides everything but refresh, optionally keeping CSV export and the press-Enter search.
    virtual Options setOptionsRefreshOnly(bool showCsv, bool showSearch);
    /// Keeps refresh, new, edit, delete and CSV as they are; hides e-mail, save, cancel, expand and collapse.
    virtual Options setOptionsFormEdit(bool showCopy, bool showPdf, bool showSearch);
    /// Hides the record actions but save and cancel; keeps expand, collapse and refresh as they are.
    virtual Options setOptionsTreeViewEdit(bool showPdf, bool showSearch);
    /**
     * Disables new, copy, delete, save and cancel while @p readOnly; the edit
     * action becomes "View..." while read-only or not authorized.
     */
    virtual void setReadOnly(bool readOnly);
    /// As setReadOnly(), but new and copy keep their enabled state.
    virtual void setViewOnly(bool viewOnly);

    QAction* expandAllAction;
    QAction* collapseAllAction;
    QAction* refreshAction;
    VAuthAction* newAction;
    VAuthAction* copyAction;
    VAuthAction* editAction;
    VAuthAction* deleteAction;
    VAuthAction* emailAction;
    VAuthAction* submitAction;
    VAuthAction* revertAction;
    QAction* csvAction;
    QAction* pdfAction;
    QAction* firstSeparator;
    QAction* secondSeparator;
    QCheckBox* excludeCheckBox;
    VSearchLineEdit* searchLineEdit;
    QAction* searchEditAction;
    QAction* excludeAction;
    QAction* searchSeparator;
    Options options;
    /// Runs the delayed search; repeating, but stopped by its own timeout.
    QTimer* searchTimer;

public slots:
    /// Pending edits: enables save and cancel, disables refresh, CSV, e-mail and PDF.
    virtual void enableSubmit();
    /// No pending edits: the reverse of enableSubmit().
    virtual void disableSubmit();

signals:
    void editTriggered();
    void newTriggered();
    void copyTriggered();
    void refreshTriggered();
    void deleteTriggered();
    void csvTriggered();
    void pdfTriggered();
    void searchTriggered();
    void emailTriggered();
    void submitTriggered();
    void revertTriggered();
    void expandAllTriggered();
    void collapseAllTriggered();

protected slots:
    /// Names the record actions after the toolbar: @p objectName followed by "_New", "_Copy", ...
    virtual void onObjectNameChanged(const QString& objectName);

private:
    void forwardTrigger(QAction* action, void (VCrudToolBar::*signal)());
    void runSearch();
    void restartSearchTimer();
    void applyViewOnly(bool viewOnly);
    void excludeToggled(bool checked);
    void setEditActionViews(bool viewing);
    void setSearchWidgetsVisible(bool visible);

    // Set by setReadOnly() and setViewOnly(): the edit action then only views.
    bool m_viewOnly = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(VCrudToolBar::Options)

#endif // VCRUDTOOLBAR_H
