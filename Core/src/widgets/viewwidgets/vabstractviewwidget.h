#ifndef VABSTRACTVIEWWIDGET_H
#define VABSTRACTVIEWWIDGET_H

#include "veitikgip_export.h"

#include <QItemSelection>
#include <QModelIndex>
#include <QPointer>
#include <QUrl>
#include <QWidget>

class QAbstractItemModel;
class QAbstractItemView;
class QAction;
class QHBoxLayout;
class QItemSelectionModel;
class QLabel;
class QVBoxLayout;
class VAuthAction;
class VCrudToolBar;
class VFilterWidget;
class VOptionsWidget;

/**
 * @brief The frame around one item view: header, CRUD toolbar, view and status line.
 *
 * A view widget owns a VCrudToolBar and five view actions (select columns,
 * show filter, show options, link to parent, visibility), turns every toolbar
 * trigger and every view or model notification into a signal of its own that
 * carries its view id first, keeps the toolbar's enabled states in step with
 * the selection and the read-only state, writes the row and selection summary
 * into the status line, asks before deleting and persists its toggles under
 * "<objectName>/linkenabled", "/visible", "/filterenabled" and "/optionsenabled".
 *
 * Every trigger goes through a protected virtual slot named after its signal
 * with a leading underscore, so a subclass can override what a trigger does.
 *
 * Permissions: an application withholds a record action by clearing
 * VAuthAction::authorized on the toolbar action found by its object name
 * ("<objectName>_ToolBar_New", "_Copy", "_Edit", "_Delete", "_Email", "_Save",
 * "_Cancel"). The underscore slots check the flag again whoever calls them:
 * a withheld action emits nothing, an edit that is not authorized is only
 * let through as viewing while the widget is read-only, and in read-only mode
 * nothing creates, copies or deletes.
 *
 * Concrete widgets (VTableViewWidget, VTreeViewWidget) supply the view:
 * @code
 * auto* orders = new VTableViewWidget(QStringLiteral("Orders"), this);
 * auto* view = new VTableView;
 * view->setModel(proxy);
 * orders->setView(view);
 * orders->setHeaderText(tr("Orders"));
 * if (!user.mayDelete())
 *     orders->findChild<VAuthAction*>(QStringLiteral("Orders_ToolBar_Delete"))->authorized = false;
 * orders->toolBar()->setOptions(VCrudToolBar::NoPdf | VCrudToolBar::NoEmail);
 * @endcode
 */
class VEITIKGIP_EXPORT VAbstractViewWidget : public QWidget {
    Q_OBJECT
    friend class VAbstractViewWidgetsContainer;

public:
    /// Frame features; a set bit changes the default. Bits not listed are left to subclasses.
    enum Option {
        NoHeaderLabel = 0x1,
        NoToolBar = 0x2,
        /// Deletes are not confirmed.
        NoDeleteConfirm = 0x8,
        NoColumnsAction = 0x10,
        NoLinkedAction = 0x20,
        /// A double click on a cell without a link runs the edit trigger.
        DoubleClickEdits = 0x40,
        NoStatusWidget = 0x400,
        /// The toolbar's delete action is hidden and left alone by refreshToolBar().
        NoDelete = 0x800,
        ShowPrinters = 0x1000,
        /// setView() keeps the view's own item delegate.
        NoHighlightDelegate = 0x2000,
        /// The PDF action stays enabled without a selection.
        PdfWithoutSelection = 0x4000
    };
    Q_DECLARE_FLAGS(Options, Option)
    Q_FLAG(Options)

    /// Builds the frame; the toolbar is named "<objectName>_ToolBar".
    VAbstractViewWidget(Options options, const QString& objectName, QWidget* parent = nullptr);
    ~VAbstractViewWidget() override;

    virtual VCrudToolBar* toolBar();
    /// Replaces the toolbar (the previous one is deleted); the view actions move to the new one.
    virtual void setToolBar(VCrudToolBar* bar);
    /**
     * Enables new, copy, edit, delete and PDF for the current selection, the
     * read-only state and the actions' authorized flags, then updates the status line.
     */
    virtual void refreshToolBar();
    virtual QAbstractItemView* view();
    /// Replaces the view (the previous one is deleted) and places it between the header and the status line.
    virtual void setView(QAbstractItemView* v);
    virtual QModelIndex currentIndex() const;
    /**
     * Makes @p index the view's current index without emitting selectionChanged().
     * An index of another model is refused with a warning.
     */
    virtual void setCurrentIndex(const QModelIndex& index);
    /// The first top-level index in @p column whose data for @p role equals @p value, or an invalid index.
    virtual QModelIndex matchValue(const QVariant& value, int column, int role) const;
    virtual void readSettings();
    virtual void saveSettings();
    virtual void selectColumns();
    virtual void exportToCsv();

public slots:
    /// Writes "[5 Rows][3 Selected] Read Only" and the model's coloured status into the status line.
    virtual void updateStatusLabel();

public:
    /// Called after a data change, a successful submit and a revert; empty.
    virtual void dataEdited();

public slots:
    void enableSubmit();
    /// Reverts the view's model, then calls dataEdited().
    virtual void revert();
    /// Submits the view's model; on success calls dataEdited() and returns true.
    virtual bool submit();

protected slots:
    virtual void showFilterActivated();
    virtual void showOptionsActivated();
    virtual void _clicked(const QModelIndex& index);
    virtual void _columnsTriggered();
    virtual void _copyTriggered();
    virtual void _csvTriggered();
    virtual void _dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    virtual void _deleteTriggered();
    virtual void _doubleClicked(const QModelIndex& index);
    virtual void _editTriggered();
    virtual void _emailTriggered();
    virtual void _linkClicked(const QUrl& url);
    virtual void _linkTriggered(bool checked);
    virtual void _modelReset();
    virtual void _newTriggered();
    virtual void _pdfTriggered();
    virtual void _refreshTriggered();
    virtual void _revertTriggered();
    virtual void _searchTriggered();
    virtual void _selectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    virtual void _submitTriggered();
    virtual void _visibilityTriggered(bool checked);

public:
    /**
     * Asks "Delete the selected records?" in a modal box (No is the default).
     * True at once with NoDeleteConfirm or when the model marks records deleted.
     */
    virtual bool confirmRemoveRows();

protected slots:
    virtual void onObjectNameChanged(const QString& objectName);

public:
    void setHeaderText(const QString& text);
    /// Sets the title beside the toolbar; an empty title hides it.
    void setTitleText(const QString& text);
    /// Checks or unchecks "Link to Parent" and emits linkTriggered() as a click would.
    void enableLinked(bool enabled);
    bool linkedEnabled() const;
    /// Links this view to the parent view @p w and enables "Link to Parent", checked.
    void setLinkedWidget(VAbstractViewWidget* w);
    /// Puts a filter panel, hidden, under the header and offers "Show Filter".
    void setFilterWidget(VFilterWidget* w);
    /// While "Show Filter" is offered: enables it, or disables it and closes the panel.
    void setFilterEnabled(bool enabled);
    bool filterEnabled() const;
    /// Puts an options panel, hidden, under the header (right of a filter panel) and offers "Show Options".
    void setOptionsWidget(VOptionsWidget* w);
    void setOptions(Options o);
    /// The option bits of the model (row 0, column 0, role Qt::UserRole + 15); 0x20: deletes only mark
    /// records.
    int modelOptions() const;
    void setReadOnly(bool ro);
    /// Shows the filter panel's description in the status line.
    void refreshFilterLabel();
    /// Moves the search field and Exclude into the printers row, after @p spacing pixels, followed by @p
    /// stretch.
    void moveSearchToPrinterLayout(int spacing, int stretch);

    /// The id every signal carries first; -1 until a container assigns it.
    int viewId;

signals:
    void clicked(int viewId, const QModelIndex& index);
    void columnsTriggered(int viewId);
    void copyTriggered(int viewId, const QModelIndex& index);
    void csvTriggered(int viewId);
    void dataChanged(int viewId, const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void deleteTriggered(int viewId, const QModelIndexList& rows);
    void doubleClicked(int viewId, const QModelIndex& index);
    void editTriggered(int viewId, const QModelIndex& index);
    void emailTriggered(int viewId, const QModelIndex& index);
    void linkClicked(int viewId, const QUrl& url);
    void linkTriggered(int viewId, bool checked);
    void modelReset(int viewId);
    void newTriggered(int viewId);
    void optionsChanged(int viewId);
    void pdfTriggered(int viewId, const QModelIndex& index);
    void progressFinished(const QString& label);
    void progressStart(const QString& label, qlonglong maximum);
    void progressUpdate(qlonglong value);
    void readOnlyChanged(int viewId, bool readOnly);
    void refreshTriggered(int viewId, bool selectFirst);
    void revertTriggered(int viewId);
    void searchTextEdited(int viewId, const QString& text, bool excludeMode);
    void selectionChanged(int viewId, const QItemSelection& selected, const QItemSelection& deselected);
    void submitTriggered(int viewId);
    void visibilityTriggered(int viewId, bool visible);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

    bool readOnly;
    VAbstractViewWidget* linkedWidget;
    VFilterWidget* filterWidget;
    VOptionsWidget* optionsWidget;
    // Named apart from view() and toolBar(), which return them.
    QAbstractItemView* m_view;
    VCrudToolBar* m_toolBar;
    QAction* columnsAction;
    QAction* showFilterAction;
    QAction* showOptionsAction;
    QAction* linkedAction;
    QAction* visibilityAction;
    QLabel* headerLabel;
    QLabel* titleLabel;
    QLabel* statusLabel;
    QLabel* filterLabel;
    QLabel* colourStatusLabel;
    QHBoxLayout* headerTitleLayout;
    QHBoxLayout* headerCrudLayout;
    QHBoxLayout* printersLayout;
    QVBoxLayout* headerLayout;
    QHBoxLayout* headerExtraLayout;
    QHBoxLayout* statusLayout;
    QVBoxLayout* mainLayout;
    Options options;

private:
    bool permits(const char* what, const VAuthAction* action, bool changesRecords) const;
    QItemSelectionModel* selectionModel() const;
    void connectModel();
    void scheduleModelCheck();
    void connectSelection();
    void updateColourStatus(const QAbstractItemModel* model);
    void filterPanelGone();
    void optionsPanelGone();
    void setPanelShown(
        QWidget* panel, QAction* action, bool shown, const QString& showText, const QString& hideText);

    QPointer<QAbstractItemModel> m_connectedModel;
    QPointer<QItemSelectionModel> m_connectedSelection;
    QList<QMetaObject::Connection> m_modelConnections;
    QMetaObject::Connection m_selectionConnection;
    bool m_modelCheckPending = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(VAbstractViewWidget::Options)

#endif // VABSTRACTVIEWWIDGET_H
