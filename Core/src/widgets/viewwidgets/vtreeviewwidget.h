#ifndef VTREEVIEWWIDGET_H
#define VTREEVIEWWIDGET_H

#include "vabstractviewwidget.h"

/**
 * @brief A view widget framing a VTreeView or VHtmlTreeView.
 *
 * The tree keeps its own item delegate (NoHighlightDelegate). The toolbar's
 * expand and collapse actions act on the tree, its links are forwarded as
 * linkClicked(), a link hovered in a VHtmlTreeView is shown in the status
 * line behind the row counts, and a current index set from outside is
 * expanded so that the user sees it.
 * @code
 * auto* customers = new VTreeViewWidget(QStringLiteral("CustomerOrders"), this);
 * auto* tree = new VHtmlTreeView;
 * tree->setModel(treeProxy);
 * customers->setView(tree);
 * @endcode
 */
class VEITIKGIP_EXPORT VTreeViewWidget : public VAbstractViewWidget {
    Q_OBJECT
public:
    explicit VTreeViewWidget(const QString& objectName, QWidget* parent = nullptr);

    void setToolBar(VCrudToolBar* bar) override;
    /// Frames @p v and wires a VTreeView to the toolbar and a VHtmlTreeView's link hovering to the status
    /// line.
    void setView(QAbstractItemView* v) override;
    /// Sets the current index, then expands it and its parent.
    void setCurrentIndex(const QModelIndex& index) override;
    /// Restores the tree's header layout, then the widget's toggles.
    void readSettings() override;
    /// Saves the tree's header layout, then the widget's toggles.
    void saveSettings() override;
    /// Opens the tree's column chooser.
    void selectColumns() override;

public slots:
    /// The row counts as in the base class, remembered so that a hovered link can be shown behind them.
    void updateStatusLabel() override;

protected slots:
    /// Shows @p link behind the remembered status text.
    virtual void onLinkHovered(const QString& link);
    /// Shows the remembered status text again.
    virtual void onLinkUnhovered();

protected:
    /// The status text as last computed.
    QString savedStatusText;

private:
    void connectTreeToToolBar();

    QList<QMetaObject::Connection> m_toolBarConnections;
};

#endif // VTREEVIEWWIDGET_H
