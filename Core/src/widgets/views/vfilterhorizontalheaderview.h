#ifndef VFILTERHORIZONTALHEADERVIEW_H
#define VFILTERHORIZONTALHEADERVIEW_H

#include "veitikgip_export.h"

#include <QHeaderView>
#include <QMap>
#include <QPointer>

/**
 * @brief A horizontal header with a row of filter widgets under the section titles.
 *
 * Each column may have one filter widget (a line edit, a combo box, a date
 * edit...). The widgets become children of the header and sit exactly under
 * their sections, following them when columns are resized, moved or
 * scrolled. The filter row exists only while at least one widget is set, so
 * without widgets the header is as tall as a plain QHeaderView.
 * @code
 * auto* header = new VFilterHorizontalHeaderView(tableView);
 * tableView->setHorizontalHeader(header);
 * header->setFilterRowHeight(24);
 * header->setFilterWidget(1, new QLineEdit);
 * connect(tableView->horizontalScrollBar(), &QScrollBar::valueChanged, header,
 * &VFilterHorizontalHeaderView::onScroll);
 * @endcode
 */
class VEITIKGIP_EXPORT VFilterHorizontalHeaderView : public QHeaderView {
    Q_OBJECT
public:
    explicit VFilterHorizontalHeaderView(QWidget* parent = nullptr);

    /**
     * Makes @p widget the filter of @p column and re-parents it to the header.
     * A widget set earlier for the column is forgotten but not deleted. On a
     * visible header the new widget is placed and shown at once; otherwise it
     * is placed at the next geometry update and shown with the header.
     */
    void setFilterWidget(int column, QWidget* widget);
    /// The filter widget of @p column, or null when the column has none.
    QWidget* filterWidget(int column) const;
    /// Deletes the filter widget of @p column, if any.
    void removeFilterWidget(int column);

    void setFilterRowHeight(int height);
    /// The height of the filter row: the stored height while a filter widget is set, else 0.
    int filterRowHeight() const;

    /// The plain header's size hint, taller by filterRowHeight().
    QSize sizeHint() const override;

public slots:
    /// Re-places the filter widgets after the view scrolled horizontally to @p value.
    void onScroll(int value);

protected:
    void updateGeometries() override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

private slots:
    void onSectionResized_(int logicalIndex, int oldSize, int newSize);
    void onSectionMoved_(int logicalIndex, int oldVisualIndex, int newVisualIndex);
    // Kept for code that connects to them by name; sorting belongs to HeaderSortingAdapter.
    void onHeaderClicked(int logicalIndex, Qt::SortOrder sort);
    void onSectionClicked(int logicalIndex);

private:
    void repositionFilterRow(int first, int last);
    void notifyFilterRowHeight(int oldHeight);

    // Guarded: a filter widget deleted by its owner simply drops out of the row.
    QMap<int, QPointer<QWidget>> m_filterWidgets;
    int m_filterRowHeight = 0;
};

#endif // VFILTERHORIZONTALHEADERVIEW_H
