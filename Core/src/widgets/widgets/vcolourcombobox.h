#ifndef VCOLOURCOMBOBOX_H
#define VCOLOURCOMBOBOX_H

#include "veitikgip_export.h"

#include <QColor>
#include <QComboBox>

/**
 * @brief A combo box of the toolkit's named colours, each shown with its swatch.
 *
 * The items are QColor::colorNames() in that order. A change of the current
 * item emits colorChanged() with the item's colour; setColor() then emits it
 * once more with the value it was given, so one programmatic change is
 * signalled twice.
 * @code
 * auto* colours = new VColourComboBox(this);
 * colours->setColor(Qt::red);
 * connect(colours, &VColourComboBox::colorChanged, chart, &Chart::setSeriesColour);
 * @endcode
 */
class VEITIKGIP_EXPORT VColourComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
public:
    explicit VColourComboBox(QWidget* parent = nullptr);

    /// The current item's colour; invalid when no item is current.
    QColor color() const;
    /// Makes the item of exactly @p color current, or none when no item has it.
    void setColor(const QColor& color);

signals:
    void colorChanged(const QColor& color);

protected:
    /// Appends one item per named colour, with the colour as its decoration.
    void populateList();
};

#endif // VCOLOURCOMBOBOX_H
