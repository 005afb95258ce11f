#ifndef VHTMLTREEVIEW_H
#define VHTMLTREEVIEW_H

#include "veitikgip_export.h"
#include "vtreeview.h"

/**
 * @brief A tree view whose cells hold HTML text with links.
 *
 * The cells are drawn by a VHtmlItemDelegate, installed by the constructor.
 * Moving the mouse onto a link shows the pointing hand and emits
 * linkHovered(), moving off it restores the arrow and emits linkUnhovered();
 * pressing and releasing the mouse on the same link emits linkClicked().
 * @code
 * auto tree = new VHtmlTreeView(this);
 * tree->setModel(model);   // cells like "<a href=\"https://example.org/c/17\">Anna</a>"
 * connect(tree, &VHtmlTreeView::linkClicked, this, [](const QUrl& url) { QDesktopServices::openUrl(url); });
 * @endcode
 */
class VEITIKGIP_EXPORT VHtmlTreeView : public VTreeView {
    Q_OBJECT
public:
    explicit VHtmlTreeView(QWidget* parent = nullptr);
    ~VHtmlTreeView() override;

    /**
     * The link target drawn under @p point (viewport coordinates), or an empty
     * string. The cell's HTML is laid out exactly as the HTML delegate paints
     * it, elision included, so the link found is the link the user sees there.
     */
    QString anchorAt(const QPoint& point) const;

Q_SIGNALS:
    void linkHovered(const QString& link);
    void linkUnhovered();

protected Q_SLOTS:
    /// A double click on an HTML link was followed by its first click; other cells behave as in VTreeView.
    void onDoubleClicked(const QModelIndex& index) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    class OptionSource;

    QString m_pressedAnchor;
    QString m_hoveredAnchor;
    OptionSource* m_optionSource;
};

#endif // VHTMLTREEVIEW_H
