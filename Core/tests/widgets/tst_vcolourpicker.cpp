#include <QCheckBox>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyleOption>
#include <QTimer>
#include <QtTest>

#include "vcolourboldpicker.h"
#include "vcolourpicker.h"
#include "vtestsettings.h"

namespace {

// Records the swatches painted and answers the colour dialog without opening it.
class TestPicker : public VColourPicker {
public:
    struct Section {
        QRect rect;
        QColor color;
    };
    struct Request {
        QColor initial;
        QString title;
    };

    QList<Section> sections;
    QList<Request> requests;
    QColor answer;

    void paintSection(QPainter* painter, QRect rect, QColor color) override
    {
        sections.append({ rect, color });
        VColourPicker::paintSection(painter, rect, color);
    }

protected:
    QColor chooseColor(const QColor& initial, const QString& title) override
    {
        requests.append({ initial, title });
        return answer;
    }
};

// Records the state of every button bevel the picker asks the style to draw.
class BevelStyle : public QProxyStyle {
public:
    QList<QPair<QRect, QStyle::State>> bevels;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override
    {
        if (element == CE_PushButtonBevel)
            const_cast<BevelStyle*>(this)->bevels.append({ option->rect, option->state });
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

void press(QWidget* w, QPoint pos, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(w, button, Qt::NoModifier, pos);
}

void release(QWidget* w, QPoint pos, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseRelease(w, button, Qt::NoModifier, pos);
}

void moveWithLeftButton(QWidget* w, QPoint pos)
{
    QMouseEvent move(
        QEvent::MouseMove, pos, w->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &move);
}

// Sends a drag enter, a drag move and a drop of @p mime at @p pos; returns whether enter and move were
// accepted.
bool dragAndDrop(QWidget* w, QMimeData* mime, QPoint pos, bool* dropAccepted = nullptr)
{
    QDragEnterEvent enter(pos, Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &enter);
    QDragMoveEvent move(pos, Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &move);
    QDropEvent drop(pos, Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &drop);
    if (dropAccepted)
        *dropAccepted = drop.isAccepted();
    return enter.isAccepted() && move.isAccepted();
}

} // namespace

class tst_VColourPicker : public QObject {
    Q_OBJECT

private slots:
    void defaults();
    void colourSignals();
    void geometry_data();
    void geometry();
    void presses_data();
    void presses();
    void clicksOpenDialogOnlyWhenActive();
    void pressedAndHoverLooks();
    void dropAcceptance_data();
    void dropAcceptance();
    void dropTarget();
    void dragOut();
    void colorDrag();
    void swatchFill();
    void boldPicker();

private:
    VTestSettings m_settings;
};

void tst_VColourPicker::defaults()
{
    VColourPicker picker;
    QCOMPARE(picker.fgColor(), QColor(Qt::black));
    QCOMPARE(picker.bgColor(), QColor(Qt::white));
    QVERIFY(picker.isActive());
    QVERIFY(!picker.dragEnabled());
    QVERIFY(picker.acceptDrops());
    QCOMPARE(picker.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    QCOMPARE(picker.sizeHint(), QSize(50, 50));
    QCOMPARE(picker.minimumSizeHint(), QSize(20, 20));

    // Designer and scripts see the four properties, none of them with a notify signal.
    const QMetaObject* meta = picker.metaObject();
    for (const char* name : { "fgColor", "bgColor", "active", "dragEnabled" }) {
        const QMetaProperty property = meta->property(meta->indexOfProperty(name));
        QVERIFY2(property.isWritable() && property.isDesignable() && !property.hasNotifySignal(), name);
    }
}

void tst_VColourPicker::colourSignals()
{
    VColourPicker picker;
    QStringList log;
    auto name = [](const QColor& c) { return c.isValid() ? c.name() : QStringLiteral("invalid"); };
    connect(&picker, &VColourPicker::fgChanged, this, [&](const QColor& c) { log << "fg " + name(c); });
    connect(&picker, &VColourPicker::bgChanged, this, [&](const QColor& c) { log << "bg " + name(c); });

    picker.setFgColor(Qt::black);
    picker.setBgColor(Qt::white);
    picker.setFgColor(QColor(Qt::red));
    picker.setFgColor(QColor(255, 0, 0));
    // An invalid colour is stored and signalled like any other.
    picker.setBgColor(QColor());
    picker.setBgColor(QColor());
    QCOMPARE(log, QStringList({ "fg #ff0000", "bg invalid" }));
    QVERIFY(!picker.bgColor().isValid());

    // Switching signals the new background first.
    log.clear();
    picker.setBgColor(Qt::blue);
    picker.switchColors();
    QCOMPARE(log, QStringList({ "bg #0000ff", "bg #ff0000", "fg #0000ff" }));
    QCOMPARE(picker.fgColor(), QColor(Qt::blue));
    QCOMPARE(picker.bgColor(), QColor(Qt::red));

    log.clear();
    picker.setBgColor(Qt::blue);
    log.clear();
    picker.switchColors();
    QCOMPARE(log, QStringList());

    // active and dragEnabled only store.
    picker.setActive(false);
    picker.setDragEnabled(true);
    QVERIFY(!picker.isActive());
    QVERIFY(picker.dragEnabled());
    QCOMPARE(log, QStringList());
}

void tst_VColourPicker::geometry_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("fg");
    QTest::addColumn<QRect>("bg");
    QTest::newRow("50 x 50") << QSize(50, 50) << QRect(0, 0, 33, 33) << QRect(16, 16, 33, 33);
    QTest::newRow("30 x 20") << QSize(30, 20) << QRect(0, 0, 20, 13) << QRect(10, 6, 20, 13);
    QTest::newRow("100 x 61") << QSize(100, 61) << QRect(0, 0, 66, 40) << QRect(33, 20, 66, 40);
    QTest::newRow("20 x 20") << QSize(20, 20) << QRect(0, 0, 13, 13) << QRect(6, 6, 13, 13);
}

void tst_VColourPicker::geometry()
{
    QFETCH(QSize, size);
    QFETCH(QRect, fg);
    QFETCH(QRect, bg);

    TestPicker picker;
    picker.setFgColor(Qt::darkGreen);
    picker.setBgColor(Qt::yellow);
    picker.resize(size);
    picker.grab();
    // Background first, so that the foreground overlaps it.
    QCOMPARE(picker.sections.size(), 2);
    QCOMPARE(picker.sections.at(0).rect, bg);
    QCOMPARE(picker.sections.at(0).color, QColor(Qt::yellow));
    QCOMPARE(picker.sections.at(1).rect, fg);
    QCOMPARE(picker.sections.at(1).color, QColor(Qt::darkGreen));
}

void tst_VColourPicker::presses_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<QString>("expected");
    // 50 x 50: foreground 0..32, background 16..48.
    QTest::newRow("foreground only") << QPoint(5, 5) << "fg";
    QTest::newRow("overlap") << QPoint(20, 20) << "fg";
    QTest::newRow("last foreground pixel") << QPoint(32, 32) << "fg";
    QTest::newRow("first background-only pixel") << QPoint(33, 33) << "bg";
    QTest::newRow("background only") << QPoint(45, 40) << "bg";
    QTest::newRow("top right corner") << QPoint(45, 5) << "";
    QTest::newRow("bottom left corner") << QPoint(5, 45) << "";
    QTest::newRow("right of the background") << QPoint(49, 30) << "";
}

void tst_VColourPicker::presses()
{
    QFETCH(QPoint, pos);
    QFETCH(QString, expected);

    TestPicker picker;
    picker.setActive(false);
    picker.resize(50, 50);
    QSignalSpy fgPressed(&picker, &VColourPicker::fgPressed);
    QSignalSpy bgPressed(&picker, &VColourPicker::bgPressed);
    QSignalSpy fgClicked(&picker, &VColourPicker::fgClicked);
    QSignalSpy bgClicked(&picker, &VColourPicker::bgClicked);

    press(&picker, pos, Qt::RightButton);
    release(&picker, pos, Qt::RightButton);
    QCOMPARE(fgPressed.count() + bgPressed.count() + fgClicked.count() + bgClicked.count(), 0);

    press(&picker, pos);
    QCOMPARE(fgPressed.count(), expected == "fg" ? 1 : 0);
    QCOMPARE(bgPressed.count(), expected == "bg" ? 1 : 0);
    QCOMPARE(fgClicked.count() + bgClicked.count(), 0);
    release(&picker, pos);
    QCOMPARE(fgClicked.count(), expected == "fg" ? 1 : 0);
    QCOMPARE(bgClicked.count(), expected == "bg" ? 1 : 0);

    // A release away from the pressed swatch is no click; the next release finds nothing pressed.
    press(&picker, pos);
    release(&picker, QPoint(45, 5));
    release(&picker, pos);
    QCOMPARE(fgClicked.count(), expected == "fg" ? 1 : 0);
    QCOMPARE(bgClicked.count(), expected == "bg" ? 1 : 0);
}

void tst_VColourPicker::clicksOpenDialogOnlyWhenActive()
{
    TestPicker picker;
    picker.resize(50, 50);
    picker.setFgColor(Qt::red);
    picker.setBgColor(Qt::green);
    QSignalSpy fgChanged(&picker, &VColourPicker::fgChanged);
    QSignalSpy bgChanged(&picker, &VColourPicker::bgChanged);
    QSignalSpy fgClicked(&picker, &VColourPicker::fgClicked);

    picker.answer = QColor(Qt::cyan);
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QCOMPARE(picker.requests.size(), 1);
    QCOMPARE(picker.requests.at(0).initial, QColor(Qt::red));
    QCOMPARE(picker.requests.at(0).title, QStringLiteral("Choose foreground color"));
    QCOMPARE(picker.fgColor(), QColor(Qt::cyan));
    QCOMPARE(fgChanged.count(), 1);

    picker.answer = QColor(Qt::magenta);
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, QPoint(40, 40));
    QCOMPARE(picker.requests.size(), 2);
    QCOMPARE(picker.requests.at(1).initial, QColor(Qt::green));
    QCOMPARE(picker.requests.at(1).title, QStringLiteral("Choose background color"));
    QCOMPARE(picker.bgColor(), QColor(Qt::magenta));
    QCOMPARE(bgChanged.count(), 1);

    // Cancelling the dialog (an invalid answer) keeps the colour.
    picker.answer = QColor();
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QCOMPARE(picker.requests.size(), 3);
    QCOMPARE(picker.fgColor(), QColor(Qt::cyan));
    QCOMPARE(fgChanged.count(), 1);

    picker.setActive(false);
    picker.answer = QColor(Qt::gray);
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, QPoint(40, 40));
    QCOMPARE(fgClicked.count(), 3);
    QCOMPARE(picker.requests.size(), 3);
    QCOMPARE(picker.fgColor(), QColor(Qt::cyan));
}

void tst_VColourPicker::pressedAndHoverLooks()
{
    BevelStyle style;
    VColourPicker picker;
    picker.setStyle(&style);
    picker.resize(60, 45);
    const QRect fg(0, 0, 40, 30);
    const QRect bg(20, 15, 40, 30);

    auto looks = [&] {
        style.bevels.clear();
        picker.grab();
        QStringList result;
        for (const auto& bevel : qAsConst(style.bevels)) {
            QString look = bevel.first == fg ? "fg" : bevel.first == bg ? "bg" : "?";
            look += (bevel.second & QStyle::State_Sunken) ? " sunken" : "";
            look += (bevel.second & QStyle::State_Raised) ? " raised" : "";
            look += (bevel.second & QStyle::State_MouseOver) ? " hover" : "";
            result << look;
        }
        return result.join(", ");
    };

    QCursor::setPos(picker.mapToGlobal(QPoint(200, 200)));
    QCOMPARE(looks(), QStringLiteral("bg raised, fg raised"));

    picker.setActive(false);
    press(&picker, QPoint(25, 20));
    QCOMPARE(looks(), QStringLiteral("bg raised, fg sunken"));
    release(&picker, QPoint(25, 20));
    press(&picker, QPoint(50, 40));
    QCOMPARE(looks(), QStringLiteral("bg sunken, fg raised"));
    release(&picker, QPoint(50, 40));
    QCOMPARE(looks(), QStringLiteral("bg raised, fg raised"));

    // Hover follows the cursor; in the overlap only the foreground is hovered.
    QCursor::setPos(picker.mapToGlobal(QPoint(25, 20)));
    QCOMPARE(looks(), QStringLiteral("bg raised, fg raised hover"));
    QCursor::setPos(picker.mapToGlobal(QPoint(50, 40)));
    QCOMPARE(looks(), QStringLiteral("bg raised hover, fg raised"));
    QCursor::setPos(picker.mapToGlobal(QPoint(55, 5)));
    QCOMPARE(looks(), QStringLiteral("bg raised, fg raised"));
    picker.setStyle(nullptr);
}

void tst_VColourPicker::dropAcceptance_data()
{
    QTest::addColumn<QVariant>("colorData");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QColor>("dropped");
    QTest::newRow("colour data") << QVariant(QColor(10, 20, 30)) << QString() << true << QColor(10, 20, 30);
    QTest::newRow("colour data wins over text")
        << QVariant(QColor(Qt::blue)) << "red" << true << QColor(Qt::blue);
    QTest::newRow("colour name") << QVariant() << "red" << true << QColor(Qt::red);
    QTest::newRow("hex name") << QVariant() << "#336699" << true << QColor(0x33, 0x66, 0x99);
    QTest::newRow("text naming no colour") << QVariant() << "reddish" << false << QColor();
    QTest::newRow("empty text") << QVariant() << "" << false << QColor();
    QTest::newRow("invalid colour data") << QVariant(QColor()) << QString() << false << QColor();
    QTest::newRow("invalid colour data, colour name")
        << QVariant(QColor()) << "green" << true << QColor(0, 128, 0);
    QTest::newRow("colour data that is a string")
        << QVariant(QStringLiteral("red")) << QString() << false << QColor();
}

void tst_VColourPicker::dropAcceptance()
{
    QFETCH(QVariant, colorData);
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    QFETCH(QColor, dropped);

    VColourPicker picker;
    picker.resize(50, 50);
    QSignalSpy bgChanged(&picker, &VColourPicker::bgChanged);
    QMimeData mime;
    if (colorData.isValid())
        mime.setColorData(colorData);
    if (!text.isNull())
        mime.setText(text);

    bool dropAccepted = false;
    QCOMPARE(dragAndDrop(&picker, &mime, QPoint(45, 45), &dropAccepted), accepted);
    QCOMPARE(dropAccepted, accepted);
    QCOMPARE(bgChanged.count(), accepted ? 1 : 0);
    QCOMPARE(picker.bgColor(), accepted ? dropped : QColor(Qt::white));
    QCOMPARE(picker.fgColor(), QColor(Qt::black));
}

void tst_VColourPicker::dropTarget()
{
    VColourPicker picker;
    picker.resize(50, 50);
    QSignalSpy fgChanged(&picker, &VColourPicker::fgChanged);
    QSignalSpy bgChanged(&picker, &VColourPicker::bgChanged);
    QMimeData mime;
    mime.setText(QStringLiteral("red"));

    QVERIFY(dragAndDrop(&picker, &mime, QPoint(40, 40)));
    QCOMPARE(picker.bgColor(), QColor(Qt::red));
    QCOMPARE(bgChanged.count(), 1);

    mime.setText(QStringLiteral("orange"));
    QVERIFY(dragAndDrop(&picker, &mime, QPoint(25, 25)));
    QCOMPARE(picker.fgColor(), QColor(QStringLiteral("orange")));
    QCOMPARE(picker.bgColor(), QColor(Qt::red));
    QCOMPARE(fgChanged.count(), 1);

    // Outside both swatches the drop changes nothing and is not taken.
    mime.setText(QStringLiteral("navy"));
    bool dropAccepted = true;
    QVERIFY(dragAndDrop(&picker, &mime, QPoint(45, 5), &dropAccepted));
    QVERIFY(!dropAccepted);
    QCOMPARE(fgChanged.count() + bgChanged.count(), 2);
}

void tst_VColourPicker::dragOut()
{
    TestPicker picker;
    picker.setActive(false);
    picker.setFgColor(QColor(0x12, 0x34, 0x56));
    picker.setBgColor(QColor(0xab, 0xcd, 0xef));
    picker.resize(50, 50);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    QSignalSpy bgClicked(&picker, &VColourPicker::bgClicked);
    const int distance = QApplication::startDragDistance();

    // Drag disabled: moving with the swatch held starts nothing and the release still clicks.
    press(&picker, QPoint(40, 40));
    moveWithLeftButton(&picker, QPoint(40 - distance, 40 - distance));
    QVERIFY(!picker.findChild<ColorDrag*>());
    release(&picker, QPoint(40, 40));
    QCOMPARE(bgClicked.count(), 1);

    picker.setDragEnabled(true);
    press(&picker, QPoint(40, 40));
    // One pixel short of the drag distance is still a click in the making.
    moveWithLeftButton(&picker, QPoint(40 - distance + 1, 40));
    QVERIFY(!picker.findChild<ColorDrag*>());

    // Should the platform run a drag loop, a key press ends it.
    QTimer::singleShot(0, &picker, [&] { QTest::keyClick(&picker, Qt::Key_Escape); });
    moveWithLeftButton(&picker, QPoint(40 - distance, 40));
    // The drag is over; Qt deletes the drag object later.
    const ColorDrag* drag = picker.findChild<ColorDrag*>();
    QVERIFY(drag);
    QCOMPARE(qvariant_cast<QColor>(drag->mimeData()->colorData()), QColor(0xab, 0xcd, 0xef));
    QCOMPARE(drag->mimeData()->text(), QStringLiteral("#abcdef"));
    QTRY_VERIFY(!picker.findChild<ColorDrag*>());
    // The drag took the press: the release afterwards is no click.
    release(&picker, QPoint(40, 40));
    QCOMPARE(bgClicked.count(), 1);

    // The foreground swatch carries the foreground colour.
    press(&picker, QPoint(20, 20));
    QTimer::singleShot(0, &picker, [&] { QTest::keyClick(&picker, Qt::Key_Escape); });
    moveWithLeftButton(&picker, QPoint(20, 20 + distance));
    drag = picker.findChild<ColorDrag*>();
    QVERIFY(drag);
    QCOMPARE(drag->mimeData()->text(), QStringLiteral("#123456"));
}

void tst_VColourPicker::colorDrag()
{
    QWidget source;
    const ColorDrag drag(&source, QColor(Qt::darkCyan), QStringLiteral("teal-ish"));
    const int size = source.style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, &source);
    QCOMPARE(drag.source(), &source);
    QCOMPARE(drag.pixmap().size(), QSize(size, size));
    QCOMPARE(drag.pixmap().toImage().pixelColor(size / 2, size / 2), QColor(Qt::darkCyan));
    const QMimeData* mime = drag.mimeData();
    QVERIFY(mime);
    QCOMPARE(qvariant_cast<QColor>(mime->colorData()), QColor(Qt::darkCyan));
    QCOMPARE(mime->text(), QStringLiteral("teal-ish"));
    const QImage image = qvariant_cast<QImage>(mime->imageData());
    QCOMPARE(image.size(), QSize(size, size));
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::darkCyan));
}

void tst_VColourPicker::swatchFill()
{
    VColourPicker picker;
    picker.resize(60, 60);
    picker.setFgColor(QColor(Qt::red));
    QCOMPARE(picker.grab().toImage().pixelColor(20, 20), QColor(Qt::red));
    // With no colour the button face shows, not black.
    picker.setFgColor(QColor());
    const QColor empty = picker.grab().toImage().pixelColor(20, 20);
    QVERIFY(empty != QColor(Qt::black));
    QVERIFY(empty != QColor(Qt::red));
    // A disabled picker fills its swatches with the disabled window colour.
    picker.setFgColor(QColor(Qt::red));
    picker.setEnabled(false);
    const QColor disabled = picker.palette().color(QPalette::Disabled, QPalette::Window);
    const QImage image = picker.grab().toImage();
    QCOMPARE(image.pixelColor(20, 20), disabled);
    QCOMPARE(image.pixelColor(45, 45), disabled);
}

void tst_VColourPicker::boldPicker()
{
    VColourBoldPicker bold;
    auto* picker = bold.findChild<VColourPicker*>();
    auto* box = bold.findChild<QCheckBox*>();
    QVERIFY(picker && box);
    QCOMPARE(box->text(), QStringLiteral("Bold"));
    QCOMPARE(bold.focusProxy(), picker);
    auto* layout = qobject_cast<QHBoxLayout*>(bold.layout());
    QVERIFY(layout);
    QCOMPARE(layout->spacing(), 10);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->indexOf(picker), 0);
    QCOMPARE(layout->indexOf(box), 1);

    QSignalSpy fgChanged(&bold, &VColourBoldPicker::fgChanged);
    QSignalSpy bgChanged(&bold, &VColourBoldPicker::bgChanged);
    QSignalSpy boldChanged(&bold, &VColourBoldPicker::boldChanged);

    bold.setFgColor(Qt::red);
    picker->setBgColor(Qt::blue);
    QCOMPARE(fgChanged.count(), 1);
    QCOMPARE(bgChanged.count(), 1);
    QCOMPARE(bold.fgColor(), QColor(Qt::red));
    QCOMPARE(bold.bgColor(), QColor(Qt::blue));
    picker->switchColors();
    QCOMPARE(fgChanged.count(), 2);
    QCOMPARE(bgChanged.count(), 2);
    QCOMPARE(bold.property("fgColor").value<QColor>(), QColor(Qt::blue));

    // setBold: one change, two emissions; an unchanged value none.
    QVERIFY(!bold.isBold());
    bold.setBold(false);
    QCOMPARE(boldChanged.count(), 0);
    bold.setBold(true);
    QVERIFY(bold.isBold());
    QCOMPARE(boldChanged.count(), 2);
    QCOMPARE(boldChanged.at(0).at(0).toBool(), true);
    QCOMPARE(boldChanged.at(1).at(0).toBool(), true);
    // The user's toggle is passed on once.
    box->click();
    QCOMPARE(boldChanged.count(), 3);
    QCOMPARE(boldChanged.at(2).at(0).toBool(), false);

    const QMetaObject* meta = bold.metaObject();
    QCOMPARE(meta->property(meta->indexOfProperty("bold")).notifySignal().name(), QByteArray("boldChanged"));
    QCOMPARE(meta->property(meta->indexOfProperty("fgColor")).notifySignal().name(), QByteArray("fgChanged"));
    QCOMPARE(meta->property(meta->indexOfProperty("bgColor")).notifySignal().name(), QByteArray("bgChanged"));
}

QTEST_MAIN(tst_VColourPicker)
#include "tst_vcolourpicker.moc"
