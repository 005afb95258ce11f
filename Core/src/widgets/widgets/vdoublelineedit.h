#ifndef VDOUBLELINEEDIT_H
#define VDOUBLELINEEDIT_H

#include "veitikgip_export.h"

#include <QLineEdit>

class QDoubleValidator;

/**
 * @brief A line edit for a floating-point value, with a number of decimals
 * and a range, written the way the widget's locale writes numbers.
 *
 * The user property `value` binds the edit to a model column through a
 * QDataWidgetMapper. An empty text means "no value": isNull() is then true
 * and value() returns 0, so a form that must keep NULL apart from 0 checks
 * isNull() (the mapper's item delegate turns a NULL cell into 0 on the way
 * in). clear() and resetting the property empty the edit. Like
 * QDoubleSpinBox, values set from code are rounded to decimals() and held
 * within the range, and numbers are shown without group separators. While
 * the user types, value() follows every text that the validator accepts; a
 * text it does not accept (a lone "-", a number out of range) leaves value()
 * as it was, and the edit shows value() again when it loses focus. The range
 * is -10^12 to 10^12 and decimals() is 2 until set.
 * @code
 * auto* weight = new VDoubleLineEdit(this);
 * weight->setDecimals(3);
 * weight->setRange(0, 1000);
 * mapper->addMapping(weight, WeightColumn);
 * @endcode
 */
class VEITIKGIP_EXPORT VDoubleLineEdit : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue RESET clear NOTIFY valueChanged USER true)
    Q_PROPERTY(int decimals READ decimals WRITE setDecimals NOTIFY decimalsChanged)
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum NOTIFY minimumChanged)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum NOTIFY maximumChanged)
public:
    explicit VDoubleLineEdit(QWidget* parent = nullptr);

    /// The value shown, or 0 when the text is empty (see isNull()).
    double value() const;
    /// True when the text is empty: the edit holds no value.
    bool isNull() const { return m_null; }

    int decimals() const { return m_decimals; }
    /// Digits after the decimal point, 0 to 15 (clamped); the value is rounded to them.
    void setDecimals(int decimals);

    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    void setMinimum(double minimum);
    void setMaximum(double maximum);
    /// Sets both bounds; a maximum below @p minimum is raised to it, as QDoubleSpinBox does.
    void setRange(double minimum, double maximum);

    /// The text that setValue(@p value) would show: the locale's notation with decimals() digits.
    QString textFromValue(double value) const;

public slots:
    /// Shows @p value, rounded and held within the range; NaN empties the edit, infinity is refused.
    void setValue(double value);

signals:
    /// The value changed, by typing or from code; also on becoming empty, with 0.
    void valueChanged(double value);
    void decimalsChanged(int decimals);
    void minimumChanged(double minimum);
    void maximumChanged(double maximum);

protected:
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void onTextChanged(const QString& text);
    void applyRange(double minimum, double maximum);
    void storeValue(bool null, double value);
    double bounded(double value) const;
    void showValue();

    QDoubleValidator* m_validator;
    double m_value = 0;
    double m_minimum;
    double m_maximum;
    int m_decimals = 2;
    bool m_null = true;
    bool m_showing = false;
};

#endif // VDOUBLELINEEDIT_H
