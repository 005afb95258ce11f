#ifndef VMONTHCOMBOBOX_H
#define VMONTHCOMBOBOX_H

#include "veitikgip_export.h"

#include <QComboBox>

/**
 * @brief A combo box of the twelve months by their short names in the system locale.
 *
 * month() counts from 1 (January); it is 0 only when no item is current.
 * monthChanged() reports changes made through setMonth(), not choices the
 * user makes in the popup.
 * @code
 * auto* month = new VMonthComboBox(this);
 * month->setMonth(QDate::currentDate().month());
 * @endcode
 */
class VEITIKGIP_EXPORT VMonthComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(int month READ month WRITE setMonth NOTIFY monthChanged)
public:
    explicit VMonthComboBox(QWidget* parent = nullptr);

    int month() const;

public slots:
    /// Selects @p month (1 to 12); a month outside that range is logged and ignored.
    void setMonth(int month);

signals:
    void monthChanged(int month);
};

#endif // VMONTHCOMBOBOX_H
