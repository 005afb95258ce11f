#ifndef ORDERFILTERWIDGET_H
#define ORDERFILTERWIDGET_H

#include <vfilterwidget.h>

#include <QDate>

class QComboBox;
class VDateEdit;

/**
 * @brief The orders' filter panel: an order date range and one state.
 *
 * Both dates may be left "<Not Specified>" to leave that end of the range
 * open; the state box starts at "All". The screen applies the values to its
 * proxy on applyClicked(); filterText() describes them for the status line.
 */
class OrderFilterWidget : public VFilterWidget {
    Q_OBJECT
public:
    explicit OrderFilterWidget(QWidget* parent = nullptr);

    /// The first order date shown, or a null date for no lower bound.
    QDate from() const;
    /// The last order date shown, or a null date for no upper bound.
    QDate to() const;
    /// The state chosen, as stored ("Shipped"), or empty for all.
    QString status() const;

    QString filterText() const override;

private:
    VDateEdit* m_from;
    VDateEdit* m_to;
    QComboBox* m_status;
};

#endif // ORDERFILTERWIDGET_H
