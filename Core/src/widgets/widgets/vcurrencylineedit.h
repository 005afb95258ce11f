#ifndef VCURRENCYLINEEDIT_H
#define VCURRENCYLINEEDIT_H

#include "vdoublelineedit.h"

class QLabel;

/**
 * @brief A VDoubleLineEdit for money: two decimals and the currency symbol
 * of the widget's locale.
 *
 * The symbol is drawn inside the frame on the side where the locale writes
 * it ("$" before the number in the United States, "€" after it in Germany);
 * it is not part of the text, so value() stays a plain double and the text
 * remains a number to edit. Another currency is shown by giving the widget
 * another locale.
 * @code
 * auto* price = new VCurrencyLineEdit(this);
 * price->setLocale(QLocale(QLocale::German, QLocale::Germany));
 * price->setValue(12.5); // "12,50" followed by "€"
 * @endcode
 */
class VEITIKGIP_EXPORT VCurrencyLineEdit : public VDoubleLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString currencySymbol READ currencySymbol NOTIFY currencySymbolChanged)
public:
    explicit VCurrencyLineEdit(QWidget* parent = nullptr);

    /// The locale's currency symbol; empty for a locale without one.
    QString currencySymbol() const;
    /// True when the locale writes the symbol before the amount.
    bool isSymbolPrefix() const { return m_prefix; }

signals:
    void currencySymbolChanged(const QString& symbol);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateSymbol();
    void placeSymbol();

    QLabel* m_symbolLabel;
    bool m_prefix = false;
};

#endif // VCURRENCYLINEEDIT_H
