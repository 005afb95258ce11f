#ifndef VHIGHLIGHTITEMDELEGATE_H
#define VHIGHLIGHTITEMDELEGATE_H

#include "veitikgip_export.h"

#include <QRegularExpression>
#include <QStyledItemDelegate>

/**
 * @brief Draws cells as usual and lays a translucent yellow band over every
 * occurrence of the search text, so the user sees why a row passed the filter.
 *
 * The text is matched case-insensitively as a regular expression. On a
 * VSortFilterProxyModel (or VSortFilterTreeProxyModel) it is the proxy's
 * search string; on any other model the one given to setFilterString().
 * @code
 * view->setItemDelegate(new VHighLightItemDelegate(view));
 * @endcode
 */
class VEITIKGIP_EXPORT VHighLightItemDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// The parent is normally the view, which is then repainted when the filter string changes.
    explicit VHighLightItemDelegate(QObject* parent = nullptr);

    /// Sets the text highlighted in models that are not search proxies; repaints the parent view.
    void setFilterString(const QString& text);
    /**
     * The text highlighted in @p model: the search string of a
     * VSortFilterProxyModel or VSortFilterTreeProxyModel (even when empty),
     * otherwise the text given to setFilterString().
     */
    QString filterString(const QAbstractItemModel* model) const;

    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QRegularExpression& expressionFor(const QString& pattern) const;

    QString m_filterString;
    // Compiled once per search text, not once per painted cell.
    mutable QString m_pattern;
    mutable QRegularExpression m_expression;
};

#endif // VHIGHLIGHTITEMDELEGATE_H
