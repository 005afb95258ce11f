#include "vcolourcombobox.h"

VColourComboBox::VColourComboBox(QWidget* parent)
    : QComboBox(parent)
{
    populateList();
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this] { emit colorChanged(color()); });
}

void VColourComboBox::populateList()
{
    const QStringList names = QColor::colorNames();
    for (const QString& name : names) {
        const int row = count();
        insertItem(row, name);
        setItemData(row, QColor(name), Qt::DecorationRole);
    }
}

QColor VColourComboBox::color() const
{
    return qvariant_cast<QColor>(itemData(currentIndex(), Qt::DecorationRole));
}

void VColourComboBox::setColor(const QColor& color)
{
    const int previous = currentIndex();
    setCurrentIndex(findData(color, Qt::DecorationRole, Qt::MatchExactly | Qt::MatchCaseSensitive));
    // The index change has already emitted the new item's colour; the value follows on purpose.
    if (currentIndex() != previous)
        emit colorChanged(color);
}
