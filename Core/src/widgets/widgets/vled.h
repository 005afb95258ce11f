#ifndef VLED_H
#define VLED_H

#include "veitikgip_export.h"

#include <vprivatable.h>

#include <QColor>
#include <QRadialGradient>
#include <QWidget>

/**
 * @brief A small indicator lamp: round with a radial highlight, or a sunken, raised or plain panel.
 *
 * The lamp is lit in color() while checked and shows the window colour otherwise.
 * It can blink continuously (setAnimated(), one toggle per period()) or flash once
 * (blink()). Clicking it emits clicked() but does not toggle it.
 * @code
 * auto* led = new VLed(Qt::green, VLed::Circular, this); // starts lit
 * connect(connection, &Connection::busy, led, &VLed::setAnimated);
 * @endcode
 */
class VEITIKGIP_EXPORT VLed : public QWidget, public VPrivatable {
    Q_OBJECT
    Q_PROPERTY(QColor color READ color WRITE setColor)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked)
    Q_PROPERTY(Shape shape READ shape WRITE setShape)
    Q_PROPERTY(int frameWidth READ frameWidth WRITE setFrameWidth)
    Q_PROPERTY(bool animated READ isAnimated WRITE setAnimated)
    Q_PROPERTY(int period READ period WRITE setPeriod)

public:
    enum Shape { Circular = 0, RectangularSunken = 1, RectangularRaised = 2, RectangularPlain = 3 };
    Q_ENUM(Shape)

    /// An unlit red round lamp that keeps its aspect ratio (height for width).
    explicit VLed(QWidget* parent = nullptr);
    /// A lamp of @p color and @p shape that starts lit; the size policy stays the widget default.
    VLed(const QColor& color, Shape shape, QWidget* parent = nullptr);
    ~VLed() override;

    QColor color() const;
    bool isChecked() const;
    Shape shape() const;
    /// Pen width of the round lamp, frame width of the panels.
    int frameWidth() const;
    /// Whether the lamp blinks continuously.
    bool isAnimated() const;
    /// The blinking interval in milliseconds.
    int period() const;

    QSize sizeHint() const override;
    int heightForWidth(int width) const override;

public slots:
    /// Sets the lit colour; an invalid colour is refused.
    void setColor(const QColor& c);
    void setChecked(bool checked);
    void setShape(Shape shape);
    void toggle();
    /// Sets the frame width; a negative width is refused.
    void setFrameWidth(int width);
    /// Starts or stops continuous blinking; the lamp keeps its state when it stops.
    void setAnimated(bool animated);
    /// Sets the blinking interval; takes effect at once when blinking. A period below 1 ms is refused.
    void setPeriod(int period);
    /// Lights the lamp for 300 ms, unless it blinks continuously.
    void blink();

signals:
    void colorChanged(QColor color);
    void toggled(bool checked);
    void clicked();

protected:
    /// The square in which the round lamp is drawn: side min(width, height) - 2 x frame width, centred.
    QRect circleRect() const;
    /// The round lamp's highlight: Light at the focal point, the fill colour from 0.75 outwards.
    QRadialGradient circleGradient() const;

    void timerEvent(QTimerEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

#endif // VLED_H
