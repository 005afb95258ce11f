#ifndef VCOLOURBOLDPICKER_H
#define VCOLOURBOLDPICKER_H

#include "veitikgip_export.h"

#include <QColor>
#include <QWidget>

class QCheckBox;
class VColourPicker;

/**
 * @brief A VColourPicker beside a "Bold" check box, for styling text.
 *
 * The picker's colour signals are passed on unchanged and the box's toggles
 * become boldChanged(). setBold() emits boldChanged() twice for one change,
 * once for the box's toggle and once of its own; receivers that count changes
 * rely on that.
 * @code
 * auto* style = new VColourBoldPicker(this);
 * connect(style, &VColourBoldPicker::boldChanged, label, &StatusLabel::setBold);
 * @endcode
 */
class VEITIKGIP_EXPORT VColourBoldPicker : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor fgColor READ fgColor WRITE setFgColor NOTIFY fgChanged)
    Q_PROPERTY(QColor bgColor READ bgColor WRITE setBgColor NOTIFY bgChanged)
    Q_PROPERTY(bool bold READ isBold WRITE setBold NOTIFY boldChanged)
public:
    explicit VColourBoldPicker(QWidget* parent = nullptr);

    QColor fgColor() const;
    QColor bgColor() const;
    bool isBold() const;

public slots:
    void setFgColor(const QColor& color);
    void setBgColor(const QColor& color);
    void setBold(bool bold);

signals:
    void fgChanged(const QColor& color);
    void bgChanged(const QColor& color);
    void boldChanged(bool bold);

private:
    VColourPicker* m_picker;
    QCheckBox* m_boldBox;
};

#endif // VCOLOURBOLDPICKER_H
