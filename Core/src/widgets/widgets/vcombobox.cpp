#include "vcombobox.h"

VComboBox::VComboBox(QWidget* parent)
    : QComboBox(parent)
{
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this] { emit valueChanged(value()); });
}

QVariant VComboBox::value() const
{
    return currentIndex() < 0 ? QVariant() : currentData(m_valueRole);
}

void VComboBox::setValue(const QVariant& value)
{
    const int index = value.isNull() ? -1 : findData(value, m_valueRole);
    if (index == currentIndex())
        return;
    setCurrentIndex(index);
}

void VComboBox::setValueRole(int role)
{
    if (role == m_valueRole)
        return;
    const QVariant before = value();
    m_valueRole = role;
    emit valueRoleChanged(role);
    const QVariant after = value();
    if (after != before)
        emit valueChanged(after);
}
