#include "vsearchlineedit.h"

#include <QResizeEvent>
#include <QStyle>
#include <QToolButton>

VSearchLineEdit::VSearchLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , m_button(new QToolButton(this))
{
    m_button->setFixedSize(18, 18);
    m_button->setCursor(Qt::ArrowCursor);
    m_button->setStyleSheet(buttonStyleSheetForCurrentState());

    setPlaceholderText(tr("Search"));
    setStyleSheet(styleSheetForCurrentState());

    const int f = frameWidth();
    const QSize b = m_button->sizeHint();
    const QSize minimum = minimumSizeHint();
    setMinimumSize(
        qMax(minimum.width(), b.width() + 2 * f + 2), qMax(minimum.height(), b.height() + 2 * f + 2));

    QSizePolicy policy = sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::MinimumExpanding);
    setSizePolicy(policy);

    connect(this, &QLineEdit::textChanged, this, &VSearchLineEdit::updateStyleSheets);
    connect(m_button, &QToolButton::clicked, this, [this] {
        // The magnifier shown on an empty field is decoration only.
        if (!text().isEmpty())
            clearSearch();
    });
}

int VSearchLineEdit::frameWidth() const
{
    // Asked without the widget on purpose: with it, the style sheet's border width would answer.
    return style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
}

QString VSearchLineEdit::styleSheetForCurrentState() const
{
    QString sheet = QStringLiteral("QLineEdit {");
    if (text().isEmpty()) {
        sheet += QLatin1String("font-family: 'MS Sans Serif';");
        sheet += QLatin1String("font-style: italic;");
    }
    sheet += QLatin1String("padding-left: 3px;");
    sheet += QStringLiteral("padding-right: %1px;").arg(frameWidth() + m_button->sizeHint().width() + 1);
    sheet += QLatin1String("border-width: 3px;");
    sheet += QLatin1String("border-image: url(:/images/esf-border) 3 3 3 3 stretch;");
    sheet += QLatin1String("background-color: rgba(255, 255, 255, 204);");
    sheet += QLatin1String("}");
    sheet += QLatin1String("QLineEdit:hover, QLineEdit:focus {");
    sheet += QLatin1String("background-color: rgba(255, 255, 255, 255);");
    sheet += QLatin1String("}");
    return sheet;
}

QString VSearchLineEdit::buttonStyleSheetForCurrentState() const
{
    const bool hasText = !text().isEmpty();
    QString sheet = QStringLiteral("QToolButton {");
    sheet += QLatin1String("border: none; margin: 0; padding: 0;");
    // Written without the slash after the colon, as it always has been; both forms resolve.
    sheet += QStringLiteral("background-image: url(:images/esf-%1);")
                 .arg(hasText ? QLatin1String("clear") : QLatin1String("search"));
    sheet += QLatin1String("}");
    if (hasText) {
        sheet += QLatin1String("QToolButton:hover { background-image: url(:/images/esf-clear-hover); }");
        sheet += QLatin1String("QToolButton:pressed { background-image: url(:/images/esf-clear-active); }");
    }
    return sheet;
}

void VSearchLineEdit::clearSearch()
{
    clear();
    emit textCleared();
}

void VSearchLineEdit::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    const QSize b = m_button->sizeHint();
    m_button->move(width() - frameWidth() - b.width() - 3, (height() + 1 - b.height()) / 2);
}

void VSearchLineEdit::updateStyleSheets()
{
    // Re-polishing is costly; typing usually leaves both sheets as they are.
    const QString buttonSheet = buttonStyleSheetForCurrentState();
    if (m_button->styleSheet() != buttonSheet)
        m_button->setStyleSheet(buttonSheet);
    const QString sheet = styleSheetForCurrentState();
    if (styleSheet() != sheet)
        setStyleSheet(sheet);
}
