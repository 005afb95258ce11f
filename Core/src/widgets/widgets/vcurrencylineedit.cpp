#include "vcurrencylineedit.h"

#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionFrame>

namespace {
// Room between the symbol and the amount.
const int SymbolGap = 3;
} // namespace

VCurrencyLineEdit::VCurrencyLineEdit(QWidget* parent)
    : VDoubleLineEdit(parent)
    , m_symbolLabel(new QLabel(this))
{
    setDecimals(2);
    m_symbolLabel->setObjectName(QStringLiteral("currencySymbol"));
    m_symbolLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    updateSymbol();
}

QString VCurrencyLineEdit::currencySymbol() const
{
    return locale().currencySymbol(QLocale::CurrencySymbol);
}

void VCurrencyLineEdit::changeEvent(QEvent* event)
{
    VDoubleLineEdit::changeEvent(event);
    switch (event->type()) {
    case QEvent::LocaleChange: {
        const QString before = m_symbolLabel->text();
        updateSymbol();
        if (m_symbolLabel->text() != before)
            emit currencySymbolChanged(m_symbolLabel->text());
        break;
    }
    case QEvent::FontChange:
    case QEvent::StyleChange:
        updateSymbol();
        break;
    default:
        break;
    }
}

void VCurrencyLineEdit::resizeEvent(QResizeEvent* event)
{
    VDoubleLineEdit::resizeEvent(event);
    placeSymbol();
}

void VCurrencyLineEdit::updateSymbol()
{
    const QLocale loc = locale();
    const QString symbol = currencySymbol();
    // The locale's own currency format tells on which side the symbol goes.
    m_prefix = !symbol.isEmpty() && loc.toCurrencyString(1.0).startsWith(symbol);
    m_symbolLabel->setText(symbol);
    m_symbolLabel->setAlignment((m_prefix ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    m_symbolLabel->setVisible(!symbol.isEmpty());
    const int room = symbol.isEmpty() ? 0 : fontMetrics().horizontalAdvance(symbol) + SymbolGap;
    if (m_prefix)
        setTextMargins(room, 0, 0, 0);
    else
        setTextMargins(0, 0, room, 0);
    placeSymbol();
}

void VCurrencyLineEdit::placeSymbol()
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const QMargins margins = textMargins();
    const int width = qMax(margins.left(), margins.right()) - SymbolGap;
    if (m_prefix)
        m_symbolLabel->setGeometry(contents.left(), contents.top(), width, contents.height());
    else
        m_symbolLabel->setGeometry(contents.right() - width + 1, contents.top(), width, contents.height());
}
