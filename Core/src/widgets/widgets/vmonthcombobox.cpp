#include "vmonthcombobox.h"

#include <logger.h>

#include <QLocale>

VMonthComboBox::VMonthComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setEditable(false);
    // The short names of the date format, as QDate::shortMonthName(month) gives them.
    const QLocale locale = QLocale::system();
    for (int month = 1; month <= 12; ++month)
        addItem(locale.monthName(month, QLocale::ShortFormat));
}

int VMonthComboBox::month() const
{
    return currentIndex() + 1;
}

void VMonthComboBox::setMonth(int month)
{
    if (month < 1 || month > 12) {
        LOG_WARNING("Month %d is not between 1 and 12; the selection is kept", month);
        return;
    }
    if (month == this->month())
        return;
    setCurrentIndex(month - 1);
    emit monthChanged(month);
}
