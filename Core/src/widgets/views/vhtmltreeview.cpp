#include "vhtmltreeview.h"

#include "vhtmlitemdelegate.h"

#include <logger.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QTextDocument>

// The style option a delegate paints a cell with. QStyledItemDelegate fills it
// in a protected function; the view needs the same option to find its links.
class VHtmlTreeView::OptionSource : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void fill(QStyleOptionViewItem* option, const QModelIndex& index) const
    {
        initStyleOption(option, index);
    }
};

VHtmlTreeView::VHtmlTreeView(QWidget* parent)
    : VTreeView(parent)
    , m_optionSource(new OptionSource(this))
{
    setItemDelegate(new VHtmlItemDelegate(this));
}

VHtmlTreeView::~VHtmlTreeView() = default;

QString VHtmlTreeView::anchorAt(const QPoint& point) const
{
    const QModelIndex index = indexAt(point);
    if (!index.isValid())
        return QString();
    QStyleOptionViewItem option = viewOptions();
    option.rect = visualRect(index);
    if (!option.rect.contains(point))
        return QString();
    m_optionSource->fill(&option, index);
    if (option.text.isEmpty())
        return QString();

    // The delegate's geometry: the document at the top left of its aligned
    // size within the style's text rectangle.
    QTextDocument document;
    VHtmlItemDelegate::layoutCellDocument(&document, option.text, option.font, option.rect.width());
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
    const QSize size = document.size().toSize().boundedTo(textRect.size());
    const QRect documentRect = QStyle::alignedRect(option.direction, option.displayAlignment, size, textRect);
    return document.documentLayout()->anchorAt(point - documentRect.topLeft());
}

void VHtmlTreeView::onDoubleClicked(const QModelIndex& index)
{
    if (!m_pressedAnchor.isEmpty()) {
        // The release that ends this double click must not follow the link a second time.
        m_pressedAnchor.clear();
        return;
    }
    VTreeView::onDoubleClicked(index);
}

void VHtmlTreeView::mousePressEvent(QMouseEvent* event)
{
    VTreeView::mousePressEvent(event);
    m_pressedAnchor = anchorAt(event->localPos().toPoint());
}

void VHtmlTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    const QString anchor = anchorAt(event->localPos().toPoint());
    if (!anchor.isEmpty() && anchor == m_pressedAnchor) {
        const QUrl url(anchor);
        if (url.isValid())
            Q_EMIT linkClicked(url);
        else
            LOG_WARNING("Invalid URL: %s", qPrintable(anchor));
    }
    VTreeView::mouseReleaseEvent(event);
}

void VHtmlTreeView::mouseMoveEvent(QMouseEvent* event)
{
    VTreeView::mouseMoveEvent(event);
    const QString anchor = anchorAt(event->localPos().toPoint());
    if (anchor == m_hoveredAnchor) {
        // The base view sets the cursor of each new cell; a link running on
        // into the next cell keeps its hand.
        if (!anchor.isEmpty() && cursor().shape() != Qt::PointingHandCursor)
            setCursor(Qt::PointingHandCursor);
        return;
    }
    const bool left = !m_hoveredAnchor.isEmpty();
    m_hoveredAnchor = anchor;
    if (left) {
        setCursor(Qt::ArrowCursor);
        Q_EMIT linkUnhovered();
    }
    if (!anchor.isEmpty()) {
        setCursor(Qt::PointingHandCursor);
        Q_EMIT linkHovered(anchor);
    }
}
