#include "vdoublelineedit.h"

#include <logger.h>

#include <QDoubleValidator>
#include <QEvent>
#include <QFocusEvent>

#include <cmath>

namespace {
const double DefaultBound = 1e12;
const int MaximumDecimals = 15;
} // namespace

VDoubleLineEdit::VDoubleLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_validator(new QDoubleValidator(this))
    , m_minimum(-DefaultBound)
    , m_maximum(DefaultBound)
{
    m_validator->setNotation(QDoubleValidator::StandardNotation);
    m_validator->setRange(m_minimum, m_maximum, m_decimals);
    m_validator->setLocale(locale());
    setValidator(m_validator);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    connect(this, &QLineEdit::textChanged, this, &VDoubleLineEdit::onTextChanged);
    connect(this, &QLineEdit::returnPressed, this, &VDoubleLineEdit::showValue);
}

double VDoubleLineEdit::value() const
{
    return m_null ? 0.0 : m_value;
}

void VDoubleLineEdit::setDecimals(int decimals)
{
    decimals = qBound(0, decimals, MaximumDecimals);
    if (decimals == m_decimals)
        return;
    m_decimals = decimals;
    m_validator->setDecimals(decimals);
    emit decimalsChanged(decimals);
    if (!m_null)
        storeValue(false, bounded(m_value));
    showValue();
}

void VDoubleLineEdit::setMinimum(double minimum)
{
    applyRange(minimum, qMax(minimum, m_maximum));
}

void VDoubleLineEdit::setMaximum(double maximum)
{
    applyRange(qMin(m_minimum, maximum), maximum);
}

void VDoubleLineEdit::setRange(double minimum, double maximum)
{
    applyRange(minimum, qMax(minimum, maximum));
}

void VDoubleLineEdit::applyRange(double minimum, double maximum)
{
    if (std::isnan(minimum) || std::isnan(maximum)) {
        LOG_WARNING("A range bound that is not a number is refused.");
        return;
    }
    const bool minimumChanged = minimum != m_minimum;
    const bool maximumChanged = maximum != m_maximum;
    if (!minimumChanged && !maximumChanged)
        return;
    m_minimum = minimum;
    m_maximum = maximum;
    m_validator->setRange(minimum, maximum, m_decimals);
    if (minimumChanged)
        emit this->minimumChanged(minimum);
    if (maximumChanged)
        emit this->maximumChanged(maximum);
    if (!m_null)
        storeValue(false, bounded(m_value));
    showValue();
}

QString VDoubleLineEdit::textFromValue(double value) const
{
    QLocale shown = locale();
    shown.setNumberOptions(shown.numberOptions() | QLocale::OmitGroupSeparator);
    return shown.toString(bounded(value), 'f', m_decimals);
}

void VDoubleLineEdit::setValue(double value)
{
    if (std::isnan(value)) {
        clear();
        return;
    }
    if (std::isinf(value)) {
        LOG_WARNING("An infinite value is refused.");
        return;
    }
    storeValue(false, bounded(value));
    // Also when the value is unchanged: a half-typed text gives way to the value.
    showValue();
}

void VDoubleLineEdit::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange) {
        m_validator->setLocale(locale());
        showValue();
    }
}

void VDoubleLineEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        showValue();
}

void VDoubleLineEdit::onTextChanged(const QString& text)
{
    if (m_showing)
        return;
    if (text.trimmed().isEmpty()) {
        storeValue(true, 0);
        return;
    }
    QString input = text;
    int position = 0;
    if (m_validator->validate(input, position) != QValidator::Acceptable)
        return;
    bool ok = false;
    const double typed = locale().toDouble(text, &ok);
    if (ok && std::isfinite(typed))
        storeValue(false, typed);
}

void VDoubleLineEdit::storeValue(bool null, double value)
{
    if (null == m_null && (null || value == m_value))
        return;
    m_null = null;
    m_value = null ? 0.0 : value;
    emit valueChanged(m_value);
}

double VDoubleLineEdit::bounded(double value) const
{
    // Rounded through the decimal text so that 1.005 becomes what the edit shows.
    // Adding 0.0 turns a rounded -0 into 0, which is never shown as "-0.00".
    const double rounded = QString::number(value, 'f', m_decimals).toDouble() + 0.0;
    return qBound(m_minimum, rounded, m_maximum);
}

void VDoubleLineEdit::showValue()
{
    const QString shown = m_null ? QString() : textFromValue(m_value);
    if (shown == text())
        return;
    m_showing = true;
    setText(shown);
    m_showing = false;
}
