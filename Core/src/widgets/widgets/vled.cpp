#include "vled.h"

#include <logger.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QTimer>
#include <QTimerEvent>
#include <qdrawutil.h>

namespace {

constexpr int kBlinkDuration = 300;

} // namespace

class VLedPrivate : public VPrivate {
public:
    QColor color { Qt::red };
    bool checked = false;
    int frameWidth = 1;
    VLed::Shape shape = VLed::Circular;
    int timerId = -1;
    int period = 1000;

    QColor fill(const QPalette& palette) const { return checked ? color : palette.color(QPalette::Window); }

    // Timers of the lamp die with it, so no tick reaches a destroyed lamp.
    void startBlinking(QObject* lamp)
    {
        const int id = lamp->startTimer(period, Qt::CoarseTimer);
        timerId = id > 0 ? id : -1;
    }
};

namespace {

// The palette with the colour group the widget is drawn in (disabled, inactive or active).
QPalette currentPalette(const QWidget* widget)
{
    QStyleOption option;
    option.initFrom(widget);
    return option.palette;
}

} // namespace

VLed::VLed(QWidget* parent)
    : QWidget(parent)
    , VPrivatable(new VLedPrivate)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

VLed::VLed(const QColor& color, Shape shape, QWidget* parent)
    : QWidget(parent)
    , VPrivatable(new VLedPrivate)
{
    auto* d = privateData<VLedPrivate>();
    if (color.isValid())
        d->color = color;
    else
        LOG_WARNING("Invalid lamp colour, the lamp stays %s", qUtf8Printable(d->color.name()));
    if (shape >= Circular && shape <= RectangularPlain)
        d->shape = shape;
    else
        LOG_WARNING("Unknown lamp shape %d, the lamp stays round", int(shape));
    // A lamp made with a colour is meant to be seen lit.
    d->checked = true;
}

VLed::~VLed() = default;

QColor VLed::color() const
{
    return privateData<VLedPrivate>()->color;
}

bool VLed::isChecked() const
{
    return privateData<VLedPrivate>()->checked;
}

VLed::Shape VLed::shape() const
{
    return privateData<VLedPrivate>()->shape;
}

int VLed::frameWidth() const
{
    return privateData<VLedPrivate>()->frameWidth;
}

bool VLed::isAnimated() const
{
    return privateData<VLedPrivate>()->timerId != -1;
}

int VLed::period() const
{
    return privateData<VLedPrivate>()->period;
}

QSize VLed::sizeHint() const
{
    // Read as a property: the static accessor is compiled out with the APIs deprecated in Qt 5.15.
    const QSize strut = qApp->property("globalStrut").toSize();
    const int minimumHeight = shape() == Circular ? 25 : 15;
    return QSize(qMax(strut.width(), 25), qMax(strut.height(), minimumHeight));
}

int VLed::heightForWidth(int width) const
{
    return shape() == Circular ? width : -1;
}

void VLed::setColor(const QColor& c)
{
    auto* d = privateData<VLedPrivate>();
    if (!c.isValid()) {
        LOG_WARNING("Invalid colour refused by the lamp %s", qUtf8Printable(objectName()));
        return;
    }
    if (c == d->color)
        return;
    d->color = c;
    emit colorChanged(c);
    update();
}

void VLed::setChecked(bool checked)
{
    auto* d = privateData<VLedPrivate>();
    if (checked == d->checked)
        return;
    d->checked = checked;
    emit toggled(checked);
    update();
}

void VLed::setShape(Shape shape)
{
    auto* d = privateData<VLedPrivate>();
    if (shape < Circular || shape > RectangularPlain) {
        LOG_WARNING("Unknown lamp shape %d refused", int(shape));
        return;
    }
    if (shape == d->shape)
        return;
    d->shape = shape;
    updateGeometry();
    update();
}

void VLed::toggle()
{
    setChecked(!isChecked());
}

void VLed::setFrameWidth(int width)
{
    auto* d = privateData<VLedPrivate>();
    if (width < 0) {
        LOG_WARNING("Negative frame width %d refused", width);
        return;
    }
    if (width == d->frameWidth)
        return;
    d->frameWidth = width;
    update();
}

void VLed::setAnimated(bool animated)
{
    auto* d = privateData<VLedPrivate>();
    if (animated == isAnimated())
        return;
    if (animated) {
        d->startBlinking(this);
    } else {
        killTimer(d->timerId);
        d->timerId = -1;
    }
    update();
}

void VLed::setPeriod(int period)
{
    auto* d = privateData<VLedPrivate>();
    // A zero interval would toggle on every pass of the event loop.
    if (period < 1) {
        LOG_WARNING("Blinking period %d ms refused, it stays %d ms", period, d->period);
        return;
    }
    if (period == d->period)
        return;
    d->period = period;
    if (isAnimated()) {
        killTimer(d->timerId);
        d->startBlinking(this);
    }
}

void VLed::blink()
{
    if (isAnimated())
        return;
    setChecked(true);
    // The single shot is bound to this lamp and is dropped if it is destroyed first.
    QTimer::singleShot(kBlinkDuration, this, [this] { setChecked(false); });
}

QRect VLed::circleRect() const
{
    const int w = width();
    const int h = height();
    const int d = qMin(w, h);
    const int f = frameWidth();
    return QRect(QPoint((w - d) / 2 + f, (h - d) / 2 + f),
        QPoint((w - 1) + (d - w) / 2 - f, (h - 1) + (d - h) / 2 - f));
}

QRadialGradient VLed::circleGradient() const
{
    const int w = width();
    const int h = height();
    const int d = qMin(w, h);
    const QPoint centre((w - 1) / 2, (h - 1) / 2);
    // Integer forms of 0.1 x d and 0.45 x d, truncated as the lamp has always been drawn.
    const int offset = d / 10;
    const int radius = d * 45 / 100;
    const QPalette palette = currentPalette(this);
    QRadialGradient gradient(centre, radius, centre - QPoint(offset, offset));
    gradient.setColorAt(0.0, palette.color(QPalette::Light));
    gradient.setColorAt(0.75, privateData<VLedPrivate>()->fill(palette));
    return gradient;
}

void VLed::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == privateData<VLedPrivate>()->timerId)
        toggle();
    else
        QWidget::timerEvent(event);
}

void VLed::mouseReleaseEvent(QMouseEvent* event)
{
    // Deliberately neither toggles nor passes the release on.
    if (event->button() == Qt::LeftButton)
        emit clicked();
}

void VLed::paintEvent(QPaintEvent*)
{
    const auto* d = privateData<VLedPrivate>();
    const QPalette palette = currentPalette(this);
    QPainter painter(this);
    if (d->shape == Circular) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(circleGradient());
        QPen pen = painter.pen();
        pen.setWidth(d->frameWidth);
        pen.setColor(palette.color(QPalette::WindowText));
        painter.setPen(pen);
        painter.drawEllipse(circleRect());
        return;
    }

    const QBrush brush(d->fill(palette), Qt::SolidPattern);
    if (d->shape == RectangularPlain)
        qDrawPlainRect(&painter, rect(), palette.color(QPalette::WindowText), d->frameWidth, &brush);
    else
        qDrawShadePanel(&painter, rect(), palette, d->shape == RectangularSunken, d->frameWidth, &brush);
}
