#ifndef VCOLOURPICKER_H
#define VCOLOURPICKER_H

#include "veitikgip_export.h"

#include <vprivatable.h>

#include <QColor>
#include <QDrag>
#include <QWidget>

/**
 * @brief A foreground and a background colour shown as two overlapping swatches.
 *
 * As in a paint program, the foreground swatch sits in front at the top left
 * and the background swatch behind it at the bottom right; where they overlap
 * the foreground is hit. Clicking a swatch opens a colour dialog for it while
 * the picker is active. With dragEnabled a swatch can be dragged out as a
 * colour; colours, and texts that name a colour, can always be dropped on a
 * swatch.
 * @code
 * auto* picker = new VColourPicker(this);
 * connect(picker, &VColourPicker::fgChanged, editor, &NoteEditor::setTextColour);
 * @endcode
 */
class VEITIKGIP_EXPORT VColourPicker : public QWidget, public VPrivatable {
    Q_OBJECT
    Q_PROPERTY(QColor fgColor READ fgColor WRITE setFgColor DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(QColor bgColor READ bgColor WRITE setBgColor DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(bool active READ isActive WRITE setActive DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(
        bool dragEnabled READ dragEnabled WRITE setDragEnabled DESIGNABLE true SCRIPTABLE true STORED true)
public:
    explicit VColourPicker(QWidget* parent = nullptr);

    QColor fgColor() const;
    QColor bgColor() const;
    /// True when clicking a swatch opens the colour dialog (the default).
    bool isActive() const;
    /// True when the swatches can be dragged out as colours (false by default).
    bool dragEnabled() const;
    void setDragEnabled(bool enabled);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /**
     * Paints one swatch: a push-button bevel over @p rect, sunken while it is
     * held down, with a rounded rectangle of @p color inside. Override it to
     * change the look of the swatches.
     */
    virtual void paintSection(QPainter* painter, QRect rect, QColor color);

public slots:
    void setFgColor(const QColor& color);
    void setBgColor(const QColor& color);
    /// Swaps the two colours, emitting bgChanged() and then fgChanged(); nothing when they are equal.
    void switchColors();
    void setActive(bool active);

signals:
    void fgChanged(const QColor& color);
    void bgChanged(const QColor& color);
    void fgClicked();
    void bgClicked();
    void fgPressed();
    void bgPressed();

protected:
    /**
     * Asks the user for a colour, starting from @p initial; an invalid colour
     * means the user cancelled. Runs the modal QColorDialog; subclasses may
     * offer another chooser.
     */
    virtual QColor chooseColor(const QColor& initial, const QString& title);

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QRect fgRect() const;
    QRect bgRect() const;
};

/**
 * @brief The drag object that carries a colour out of a VColourPicker.
 *
 * Its mime data holds the colour as colour data, @p text as plain text and a
 * swatch image; the drag pixmap is a swatch of the style's button icon size.
 */
class VEITIKGIP_EXPORT ColorDrag : public QDrag {
    Q_OBJECT
public:
    ColorDrag(QWidget* source, const QColor& color, const QString& text);
};

#endif // VCOLOURPICKER_H
