#ifndef VHTMLITEMDELEGATE_H
#define VHTMLITEMDELEGATE_H

#include "veitikgip_export.h"

#include <QStyledItemDelegate>

class QTextDocument;

/**
 * @brief Draws each cell's text as rich text (HTML), elided with "..." to the
 * cell width, and tells which link lies under a point.
 *
 * The HTML tree view uses anchorAt() for its link cursor and link clicks.
 * @code
 * view->setItemDelegate(new VHtmlItemDelegate(view));
 * @endcode
 */
class VEITIKGIP_EXPORT VHtmlItemDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit VHtmlItemDelegate(QObject* parent = nullptr);

    /**
     * The link target under @p point in the document coordinates of @p html,
     * laid out in a plain QTextDocument, or an empty string.
     */
    QString anchorAt(QString html, const QPoint& point) const;

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /**
     * Fills @p document with @p html as a cell @p width pixels wide shows it:
     * the default font @p font, a margin of 2, one line sized to its content,
     * and, when that is wider than the cell, the text cut and ended with "..."
     * so that it fits.
     */
    static void layoutCellDocument(
        QTextDocument* document, const QString& html, const QFont& font, int width);
};

#endif // VHTMLITEMDELEGATE_H
