#include "vdateedit.h"

#include "vdateedit_p.h"

#include <vcore.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>

VCalendarWidget_p::VCalendarWidget_p(QWidget* parent)
    : QCalendarWidget(parent)
{
}

void VCalendarWidget_p::showEvent(QShowEvent* event)
{
    if (selectedDate() == minimumDate()) {
        // The popup sets the edit's date whenever the selection changes; showing today must not.
        const QSignalBlocker blocker(this);
        setSelectedDate(QDate::currentDate());
    }
    QCalendarWidget::showEvent(event);
}

CDateEdit::CDateEdit(QWidget* parent)
    : QDateEdit(parent)
{
    setCalendarPopup(true);
    setCalendarWidget(new VCalendarWidget_p(this));
}

void CDateEdit::changeEvent(QEvent* event)
{
    QDateEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        emit enabledChanged(isEnabled());
}

VDateEdit::VDateEdit(QWidget* parent, bool nullable)
    : QWidget(parent)
    , m_edit(new CDateEdit(this))
    , m_todayButton(new QToolButton(this))
    , m_clearButton(new QToolButton(this))
{
    m_edit->setDisplayFormat(QStringLiteral("MMMM dd, yyyy"));
    if (nullable)
        m_edit->setSpecialValueText(tr("<Not Specified>"));

    m_todayButton->setObjectName(QStringLiteral("todayButton"));
    m_todayButton->setText(tr("Today"));
    m_clearButton->setObjectName(QStringLiteral("clearButton"));
    m_clearButton->setText(tr("Clear"));
    if (!nullable)
        m_clearButton->hide();

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(1);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_todayButton);
    layout->addWidget(m_clearButton);
    layout->addStretch(0);
    setFocusProxy(m_edit);

    connect(m_edit, &CDateEdit::enabledChanged, this, &VDateEdit::dateEnableChanged);
    // The raw date goes out, so an emptied field signals the minimum date.
    connect(m_edit, &QDateEdit::dateChanged, this, &VDateEdit::dateChanged);
    connect(m_todayButton, &QToolButton::clicked, this, &VDateEdit::onTodayClicked);
    if (nullable)
        connect(m_clearButton, &QToolButton::clicked, this, &VDateEdit::onClearClicked);
}

QDate VDateEdit::date() const
{
    const QDate inner = m_edit->date();
    return inner == m_edit->minimumDate() ? VCore::nullDate() : inner;
}

QDateTime VDateEdit::dateTime() const
{
    return m_edit->date() == m_edit->minimumDate() ? QDateTime() : m_edit->dateTime();
}

void VDateEdit::setDate(const QDate& date)
{
    // A mapper writes a default-constructed QDate for a NULL field, which the edit would ignore.
    if (date == VCore::nullDate() || !date.isValid())
        m_edit->setDate(m_edit->minimumDate());
    else
        m_edit->setDate(date);
}

void VDateEdit::setDateTime(const QDateTime& dateTime)
{
    if (dateTime.date() != VCore::nullDate() && dateTime.isValid())
        m_edit->setDateTime(dateTime);
    else
        m_edit->setDateTime(m_edit->minimumDate().startOfDay());
}

void VDateEdit::setReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
    m_todayButton->setEnabled(!readOnly);
    m_clearButton->setEnabled(!readOnly);
}

bool VDateEdit::isReadOnly() const
{
    return m_edit->isReadOnly();
}

void VDateEdit::setMinimumDate(const QDate& date)
{
    m_edit->setMinimumDate(date);
}

QDate VDateEdit::minimumDate() const
{
    return m_edit->minimumDate();
}

void VDateEdit::onTodayClicked()
{
    setDateTime(QDateTime::currentDateTime());
}

void VDateEdit::onClearClicked()
{
    setDateTime(VCore::nullDate().startOfDay());
}

void VDateEdit::dateEnableChanged(bool enabled)
{
    m_todayButton->setEnabled(enabled);
    m_clearButton->setEnabled(enabled);
}
