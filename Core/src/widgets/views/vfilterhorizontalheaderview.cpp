#include "vfilterhorizontalheaderview.h"

#include <logger.h>

#include <QAbstractItemModel>

VFilterHorizontalHeaderView::VFilterHorizontalHeaderView(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(true);
    setSortIndicatorShown(true);
    connect(this, &QHeaderView::sectionResized, this, &VFilterHorizontalHeaderView::onSectionResized_);
    connect(this, &QHeaderView::sectionMoved, this, &VFilterHorizontalHeaderView::onSectionMoved_);
}

void VFilterHorizontalHeaderView::setFilterWidget(int column, QWidget* widget)
{
    if (!widget) {
        LOG_WARNING("No filter widget given for column %d", column);
        return;
    }
    const int oldHeight = filterRowHeight();
    m_filterWidgets.insert(column, widget);
    widget->setParent(this);
    widget->setStyleSheet(QStringLiteral("background-color:#FBF5EF; border:1px solid #D8D8D8"));
    notifyFilterRowHeight(oldHeight);
    // Re-parenting hides the widget; one added to a header already on screen is shown
    // in place straight away rather than at the next resize.
    if (isVisible()) {
        repositionFilterRow(0, count());
        widget->show();
    }
}

QWidget* VFilterHorizontalHeaderView::filterWidget(int column) const
{
    return m_filterWidgets.value(column).data();
}

void VFilterHorizontalHeaderView::removeFilterWidget(int column)
{
    const auto it = m_filterWidgets.find(column);
    if (it == m_filterWidgets.end())
        return;
    const int oldHeight = filterRowHeight();
    QWidget* widget = it.value().data();
    m_filterWidgets.erase(it);
    delete widget;
    notifyFilterRowHeight(oldHeight);
}

void VFilterHorizontalHeaderView::setFilterRowHeight(int height)
{
    if (height < 0) {
        LOG_WARNING("Ignoring negative filter row height %d", height);
        return;
    }
    if (height == m_filterRowHeight)
        return;
    const int oldHeight = filterRowHeight();
    m_filterRowHeight = height;
    notifyFilterRowHeight(oldHeight);
}

int VFilterHorizontalHeaderView::filterRowHeight() const
{
    for (const QPointer<QWidget>& widget : m_filterWidgets)
        if (widget)
            return m_filterRowHeight;
    return 0;
}

QSize VFilterHorizontalHeaderView::sizeHint() const
{
    QSize size = QHeaderView::sizeHint();
    size.rheight() += filterRowHeight();
    return size;
}

void VFilterHorizontalHeaderView::onScroll(int value)
{
    Q_UNUSED(value)
    repositionFilterRow(0, count());
}

void VFilterHorizontalHeaderView::updateGeometries()
{
    // The titles keep the viewport; the filter row lives in the bottom margin below it.
    setViewportMargins(0, 0, 0, filterRowHeight());
    QHeaderView::updateGeometries();
    repositionFilterRow(0, count());
}

void VFilterHorizontalHeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    QHeaderView::paintSection(painter, rect, logicalIndex);
}

void VFilterHorizontalHeaderView::onSectionResized_(int logicalIndex, int oldSize, int newSize)
{
    Q_UNUSED(logicalIndex)
    Q_UNUSED(oldSize)
    Q_UNUSED(newSize)
    repositionFilterRow(0, count());
}

void VFilterHorizontalHeaderView::onSectionMoved_(int logicalIndex, int oldVisualIndex, int newVisualIndex)
{
    Q_UNUSED(logicalIndex)
    // Only the sections between the two positions changed place.
    repositionFilterRow(qMin(oldVisualIndex, newVisualIndex), qMax(oldVisualIndex, newVisualIndex));
}

void VFilterHorizontalHeaderView::onHeaderClicked(int logicalIndex, Qt::SortOrder sort)
{
    Q_UNUSED(logicalIndex)
    Q_UNUSED(sort)
}

void VFilterHorizontalHeaderView::onSectionClicked(int logicalIndex)
{
    Q_UNUSED(logicalIndex)
}

void VFilterHorizontalHeaderView::repositionFilterRow(int first, int last)
{
    if (m_filterWidgets.isEmpty())
        return;
    // Every filter widget takes the first column's header font.
    const QVariant fontData = model() ? model()->headerData(0, Qt::Horizontal, Qt::FontRole) : QVariant();
    const QFont font = fontData.userType() == QMetaType::QFont ? fontData.value<QFont>() : QFont();
    const int top = QHeaderView::sizeHint().height();
    const int scrolled = offset();
    for (int visual = first; visual <= last; ++visual) {
        const int section = logicalIndex(visual);
        if (section < 0)
            continue;
        QWidget* widget = m_filterWidgets.value(section).data();
        if (!widget)
            continue;
        widget->move(sectionPosition(section) - scrolled, top);
        widget->resize(sectionSize(section), m_filterRowHeight);
        widget->setFont(font);
    }
}

void VFilterHorizontalHeaderView::notifyFilterRowHeight(int oldHeight)
{
    // The owning view lays its header out again on geometriesChanged(), so the header
    // grows or shrinks as the filter row appears, disappears or changes height.
    if (filterRowHeight() != oldHeight) {
        updateGeometries();
        emit geometriesChanged();
    }
}
