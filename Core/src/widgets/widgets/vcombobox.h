#ifndef VCOMBOBOX_H
#define VCOMBOBOX_H

#include "veitikgip_export.h"

#include <QComboBox>
#include <QVariant>

/**
 * @brief A combo box whose value is the current item's data rather than its text.
 *
 * The user property `value` is the data of the current item in valueRole()
 * (Qt::UserRole by default), so a QDataWidgetMapper binds the box to a key
 * column while the user sees and picks the item texts. Setting a value
 * selects the first item whose data equals it (QVariant comparison, so a
 * key read as qlonglong finds an item holding the int); a null value, or
 * one that no item holds, leaves no item selected (index -1).
 * @code
 * auto* country = new VComboBox(this);
 * country->addItem(tr("Finland"), 246);
 * country->addItem(tr("Sweden"), 752);
 * mapper->addMapping(country, CountryIdColumn);
 * @endcode
 */
class VEITIKGIP_EXPORT VComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged USER true)
    Q_PROPERTY(int valueRole READ valueRole WRITE setValueRole NOTIFY valueRoleChanged)
public:
    explicit VComboBox(QWidget* parent = nullptr);

    /// The current item's data in valueRole(); null when no item is current.
    QVariant value() const;

    int valueRole() const { return m_valueRole; }
    /// The item data role that holds the values.
    void setValueRole(int role);

public slots:
    void setValue(const QVariant& value);

signals:
    /// The current item changed, or another role now gives the value.
    void valueChanged(const QVariant& value);
    void valueRoleChanged(int role);

private:
    int m_valueRole = Qt::UserRole;
};

#endif // VCOMBOBOX_H
