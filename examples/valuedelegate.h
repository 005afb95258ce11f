#ifndef VALUEDELEGATE_H
#define VALUEDELEGATE_H

#include <QStyledItemDelegate>

/**
 * @brief Shows the demo's raw SQL values the way a reader expects them.
 *
 * The models keep the values as SQLite returns them (prices as doubles,
 * flags as 0/1, discounts as fractions), so that sorting and CSV export see
 * the data itself; only the painted text is formatted:
 * @code
 * view->setItemDelegateForColumn(4, new ValueDelegate(ValueDelegate::Money, view));
 * @endcode
 */
class ValueDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    enum Format {
        Text, ///< as it is, left aligned
        Number, ///< right aligned
        Money, ///< two decimals, right aligned
        Percent, ///< a fraction shown as whole percent, right aligned
        YesNo ///< "Yes" or "No", centred
    };
    Q_ENUM(Format)

    explicit ValueDelegate(Format format, QObject* parent = nullptr);

    Format format() const { return m_format; }

    QString displayText(const QVariant& value, const QLocale& locale) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    Format m_format;
};

#endif // VALUEDELEGATE_H
