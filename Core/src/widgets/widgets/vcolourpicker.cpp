#include "vcolourpicker.h"

#include <QApplication>
#include <QColorDialog>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionButton>

#include <utility>

namespace {

// The colour a drag or drop carries: its colour data, else a colour named by its text.
QColor colourFromMimeData(const QMimeData* mime)
{
    if (!mime)
        return QColor();
    if (mime->hasColor()) {
        const QVariant data = mime->colorData();
        if (data.userType() == QMetaType::QColor) {
            const QColor colour = qvariant_cast<QColor>(data);
            if (colour.isValid())
                return colour;
        }
    }
    if (mime->hasFormat(QStringLiteral("text/plain"))) {
        const QString text = mime->text();
        if (QColor::isValidColor(text))
            return QColor(text);
    }
    return QColor();
}

// The global strut accessors are compiled out with the deprecated API; the property remains.
QSize globalStrut()
{
    const QCoreApplication* app = QCoreApplication::instance();
    return app ? app->property("globalStrut").toSize() : QSize();
}

void acceptColourDrag(QDragMoveEvent* event)
{
    if (colourFromMimeData(event->mimeData()).isValid())
        event->acceptProposedAction();
    else
        event->ignore();
}

} // namespace

class VColourPickerPrivate : public VPrivate {
public:
    QColor fg = Qt::black;
    QColor bg = Qt::white;
    QPoint pressPos;
    bool fgPressed = false;
    bool bgPressed = false;
    bool active = true;
    bool dragEnabled = false;
};

VColourPicker::VColourPicker(QWidget* parent)
    : QWidget(parent)
    , VPrivatable(new VColourPickerPrivate)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAcceptDrops(true);
}

QColor VColourPicker::fgColor() const
{
    return privateData<VColourPickerPrivate>()->fg;
}

QColor VColourPicker::bgColor() const
{
    return privateData<VColourPickerPrivate>()->bg;
}

bool VColourPicker::isActive() const
{
    return privateData<VColourPickerPrivate>()->active;
}

bool VColourPicker::dragEnabled() const
{
    return privateData<VColourPickerPrivate>()->dragEnabled;
}

void VColourPicker::setDragEnabled(bool enabled)
{
    privateData<VColourPickerPrivate>()->dragEnabled = enabled;
}

void VColourPicker::setActive(bool active)
{
    privateData<VColourPickerPrivate>()->active = active;
}

void VColourPicker::setFgColor(const QColor& color)
{
    auto* d = privateData<VColourPickerPrivate>();
    if (d->fg == color)
        return;
    d->fg = color;
    emit fgChanged(color);
    update();
}

void VColourPicker::setBgColor(const QColor& color)
{
    auto* d = privateData<VColourPickerPrivate>();
    if (d->bg == color)
        return;
    d->bg = color;
    emit bgChanged(color);
    update();
}

void VColourPicker::switchColors()
{
    auto* d = privateData<VColourPickerPrivate>();
    if (d->fg == d->bg)
        return;
    std::swap(d->fg, d->bg);
    emit bgChanged(d->bg);
    emit fgChanged(d->fg);
    update();
}

QRect VColourPicker::fgRect() const
{
    // Two thirds of each side, rounded down: ((n - 1) * 2 + 2) / 3 - 1 is the last pixel.
    return QRect(QPoint(0, 0), QPoint(((width() - 1) * 2 + 2) / 3 - 1, ((height() - 1) * 2 + 2) / 3 - 1));
}

QRect VColourPicker::bgRect() const
{
    const int x = width() / 3;
    const int y = height() / 3;
    return QRect(QPoint(x, y), QPoint(x - 1 + 2 * width() / 3, y - 1 + 2 * height() / 3));
}

QSize VColourPicker::sizeHint() const
{
    const QSize strut = globalStrut();
    return QSize(qMax(qRound(1.5 * strut.width()), 50), qMax(qRound(1.5 * strut.height()), 50));
}

QSize VColourPicker::minimumSizeHint() const
{
    const QSize strut = globalStrut();
    return QSize(qMax(strut.width(), 20), qMax(strut.height(), 20));
}

QColor VColourPicker::chooseColor(const QColor& initial, const QString& title)
{
    return QColorDialog::getColor(initial, this, title);
}

void VColourPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // Background first, so that the foreground swatch overlaps it.
    paintSection(&painter, bgRect(), bgColor());
    paintSection(&painter, fgRect(), fgColor());
}

void VColourPicker::paintSection(QPainter* painter, QRect rect, QColor color)
{
    const auto* d = privateData<VColourPickerPrivate>();
    QStyleOptionButton option;
    option.initFrom(this);
    option.rect = rect;

    if (rect.contains(3, 3) && d->fgPressed)
        option.state |= QStyle::State_Sunken;
    else if (rect.contains(width() - 4, height() - 4) && d->bgPressed)
        option.state |= QStyle::State_Sunken;
    else
        option.state |= QStyle::State_Raised;

    const QPoint cursor = mapFromGlobal(QCursor::pos());
    const QRect fg = fgRect();
    const bool hovered = rect == fg ? fg.contains(cursor) : rect.contains(cursor) && !fg.contains(cursor);
    if (hovered)
        option.state |= QStyle::State_MouseOver;
    else
        option.state &= ~QStyle::State_MouseOver;

    style()->drawControl(QStyle::CE_PushButtonBevel, &option, painter, this);

    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    const int margin = (rect.height() - contents.height()) / 2;
    QRect swatch = rect.adjusted(margin, margin, -margin, -margin);
    if (option.state & QStyle::State_Sunken)
        swatch.translate(style()->pixelMetric(QStyle::PM_ButtonShiftHorizontal, &option, this),
            style()->pixelMetric(QStyle::PM_ButtonShiftVertical, &option, this));

    const QColor fill = (option.state & QStyle::State_Enabled)
        ? color
        : palette().color(QPalette::Disabled, QPalette::Window);
    // An invalid colour means "no colour": the swatch stays an empty button rather than black.
    if (!fill.isValid())
        return;
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawRoundedRect(swatch, 3.0, 3.0, Qt::AbsoluteSize);
    painter->restore();
}

void VColourPicker::mousePressEvent(QMouseEvent* event)
{
    auto* d = privateData<VColourPickerPrivate>();
    d->pressPos = event->localPos().toPoint();
    if (event->button() != Qt::LeftButton)
        return;
    if (fgRect().contains(d->pressPos)) {
        d->fgPressed = true;
        d->bgPressed = false;
        emit fgPressed();
        update();
    } else if (bgRect().contains(d->pressPos)) {
        d->fgPressed = false;
        d->bgPressed = true;
        emit bgPressed();
        update();
    }
}

void VColourPicker::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    auto* d = privateData<VColourPickerPrivate>();
    const QPoint pos = event->localPos().toPoint();
    // The dialog runs its own event loop, in which the picker may be destroyed.
    QPointer<VColourPicker> guard(this);
    if (d->fgPressed && fgRect().contains(pos)) {
        emit fgClicked();
        if (guard && d->active) {
            const QColor colour = chooseColor(d->fg, tr("Choose foreground color"));
            if (guard && colour.isValid())
                setFgColor(colour);
        }
    } else if (d->bgPressed && bgRect().contains(pos)) {
        emit bgClicked();
        if (guard && d->active) {
            const QColor colour = chooseColor(d->bg, tr("Choose background color"));
            if (guard && colour.isValid())
                setBgColor(colour);
        }
    }
    if (!guard)
        return;
    d->fgPressed = false;
    d->bgPressed = false;
    update();
}

void VColourPicker::mouseMoveEvent(QMouseEvent* event)
{
    auto* d = privateData<VColourPickerPrivate>();
    if (!d->fgPressed && !d->bgPressed) {
        if (testAttribute(Qt::WA_Hover))
            update();
        return;
    }
    if (!d->dragEnabled)
        return;
    if ((event->localPos().toPoint() - d->pressPos).manhattanLength() < QApplication::startDragDistance())
        return;
    const QColor colour = d->fgPressed ? d->fg : d->bg;
    QPointer<VColourPicker> guard(this);
    // Qt deletes the drag object once the drag is over.
    auto* drag = new ColorDrag(this, colour, colour.name());
    drag->exec(Qt::MoveAction);
    if (!guard)
        return;
    d->fgPressed = false;
    d->bgPressed = false;
    update();
}

void VColourPicker::dragEnterEvent(QDragEnterEvent* event)
{
    acceptColourDrag(event);
}

void VColourPicker::dragMoveEvent(QDragMoveEvent* event)
{
    acceptColourDrag(event);
}

void VColourPicker::dropEvent(QDropEvent* event)
{
    const QColor colour = colourFromMimeData(event->mimeData());
    if (!colour.isValid()) {
        event->ignore();
        return;
    }
    if (fgRect().contains(event->pos())) {
        setFgColor(colour);
    } else if (bgRect().contains(event->pos())) {
        setBgColor(colour);
    } else {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
}

ColorDrag::ColorDrag(QWidget* source, const QColor& color, const QString& text)
    : QDrag(source)
{
    const QStyle* style = source ? source->style() : QApplication::style();
    const int size = style->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, source);
    QPixmap pixmap(size, size);
    pixmap.fill(color);
    setPixmap(pixmap);

    auto* mime = new QMimeData;
    mime->setColorData(color);
    mime->setText(text);
    mime->setImageData(pixmap.toImage());
    setMimeData(mime);
}
