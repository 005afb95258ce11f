#ifndef FORMATMODEL_H
#define FORMATMODEL_H

#include <QSqlQueryModel>
#include <QVector>

/**
 * @brief Shows the demo's raw SQL values the way a reader expects them.
 *
 * The query keeps the values as SQLite returns them (prices as doubles, flags
 * as 0/1, discounts as fractions). This model answers the display role with
 * the formatted text ("12.99", "5 %", "Yes") and the text alignment role
 * with the column's alignment, while the edit role keeps the raw value.
 * The column filters, the search, its highlight bands and the CSV export of
 * the display role therefore all see the text the user sees; the edit role
 * export writes the data itself:
 * @code
 * auto model = new FormatModel(this);
 * model->setQuery("SELECT id, name, active FROM customers");
 * model->setColumnFormat(2, FormatModel::YesNo);
 * @endcode
 */
class FormatModel : public QSqlQueryModel {
    Q_OBJECT
public:
    enum Format {
        Text, ///< as it is, left aligned
        Number, ///< digits without group separators, right aligned
        Money, ///< two decimals, right aligned
        Percent, ///< a fraction as whole percent, empty for zero, right aligned
        YesNo ///< "Yes" or "No", centred
    };
    Q_ENUM(Format)

    explicit FormatModel(QObject* parent = nullptr);

    void setColumnFormat(int column, Format format);
    Format columnFormat(int column) const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    /// The text shown for the raw @p value in @p format; other models of the demo share it.
    static QVariant displayText(Format format, const QVariant& value);
    /// The alignment of @p format, or a null variant for text (the model's own).
    static QVariant alignment(Format format);

private:
    QVector<Format> m_formats;
};

#endif // FORMATMODEL_H
