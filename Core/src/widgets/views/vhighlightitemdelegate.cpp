#include "vhighlightitemdelegate.h"

#include <logger.h>
#include <vsortfilterproxymodel.h>
#include <vsortfiltertreeproxymodel.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>

namespace {
const QColor s_bandColor(255, 255, 0, 100);
} // namespace

VHighLightItemDelegate::VHighLightItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

void VHighLightItemDelegate::setFilterString(const QString& text)
{
    if (text == m_filterString)
        return;
    m_filterString = text;
    auto* view = qobject_cast<QAbstractItemView*>(parent());
    if (!view)
        return;
    LOG_DEBUG() << "Updating view" << text;
    view->update();
    // The cells live on the viewport, which the scroll area's own update() does not repaint.
    view->viewport()->update();
}

QString VHighLightItemDelegate::filterString(const QAbstractItemModel* model) const
{
    // The tree proxy derives from the flat one, so one cast covers both.
    if (auto* proxy = qobject_cast<const VSortFilterProxyModel*>(model))
        return proxy->searchString();
    return m_filterString;
}

const QRegularExpression& VHighLightItemDelegate::expressionFor(const QString& pattern) const
{
    if (pattern != m_pattern) {
        m_pattern = pattern;
        m_expression = QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
        m_expression.optimize();
        if (!m_expression.isValid())
            LOG_DEBUG("Not highlighting \"%s\": %s", qUtf8Printable(pattern),
                qUtf8Printable(m_expression.errorString()));
    }
    return m_expression;
}

void VHighLightItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);

    const QString pattern = filterString(index.model());
    if (pattern.isEmpty())
        return;
    const QRegularExpression& expression = expressionFor(pattern);
    // An invalid pattern matches nothing (and QRegularExpression would warn on every match).
    if (!expression.isValid())
        return;

    const QString text = index.data(Qt::DisplayRole).toString();
    QRegularExpressionMatch match = expression.match(text);
    if (!match.hasMatch() || match.capturedLength() == 0)
        return;

    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const QFontMetrics metrics(opt.font);
    const bool alignRight = index.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight;
    const QStyle* style = opt.widget ? opt.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, opt.widget) + 1;
    const QRect& rect = opt.rect;

    while (match.hasMatch() && match.capturedLength() > 0) {
        const int start = match.capturedStart();
        const int length = match.capturedLength();
        const int band = metrics.boundingRect(match.captured()).width();
        int x;
        if (alignRight)
            x = rect.right() - margin - band - metrics.boundingRect(text.mid(start + length)).width();
        else
            x = rect.left() + margin + metrics.boundingRect(text.left(start)).width();
        // Cut at the cell's edges: a right-aligned text wider than the cell would reach into its left
        // neighbour.
        const int left = qMax(x, rect.left());
        const int right = qMin(x + band, rect.right());
        if (left < right)
            painter->fillRect(QRect(left, rect.top(), right - left, rect.height()), s_bandColor);
        match = expression.match(text, start + length);
    }
}
