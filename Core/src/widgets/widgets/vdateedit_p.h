#ifndef VDATEEDIT_P_H
#define VDATEEDIT_P_H

#include <QCalendarWidget>

/**
 * The calendar of CDateEdit's popup. An empty date field holds its minimum
 * date, which would open the calendar in that distant month; it opens on
 * today instead, without changing the field until the user picks a date.
 */
class VCalendarWidget_p : public QCalendarWidget {
public:
    explicit VCalendarWidget_p(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
};

#endif // VDATEEDIT_P_H
