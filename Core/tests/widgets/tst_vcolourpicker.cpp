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
    QList<QPair<QRect, QColor>> sections;
    QList<QPair<QColor, QString>> requests;
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

// Logs the colour changes of @p picker as "fg #rrggbb" or "bg invalid".
template <typename Picker>
void logSignals(Picker* picker, QStringList* log)
{
    auto name = [](const QColor& c) { return c.isValid() ? c.name() : QStringLiteral("invalid"); };
    QObject::connect(picker, &Picker::fgChanged, [=](const QColor& c) { *log << "fg " + name(c); });
    QObject::connect(picker, &Picker::bgChanged, [=](const QColor& c) { *log << "bg " + name(c); });
}

void logPresses(VColourPicker* picker, QStringList* log)
{
    QObject::connect(picker, &VColourPicker::fgPressed, [=] { *log << "fgPressed"; });
    QObject::connect(picker, &VColourPicker::bgPressed, [=] { *log << "bgPressed"; });
    QObject::connect(picker, &VColourPicker::fgClicked, [=] { *log << "fgClicked"; });
    QObject::connect(picker, &VColourPicker::bgClicked, [=] { *log << "bgClicked"; });
}

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

// Sends drag enter, drag move and drop; returns whether enter and move were accepted.
bool dragAndDrop(QWidget* w, QMimeData* mime, QPoint pos, bool* dropAccepted)
{
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(pos, actions, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &enter);
    QDragMoveEvent move(pos, actions, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &move);
    QDropEvent drop(pos, actions, mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &drop);
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
    void dragOut();
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
    QVERIFY(picker.isActive() && !picker.dragEnabled() && picker.acceptDrops());
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
    logSignals(&picker, &log);
    picker.setFgColor(Qt::black);
    picker.setBgColor(Qt::white);
    picker.setFgColor(QColor(Qt::red));
    picker.setFgColor(QColor(255, 0, 0));
    picker.setBgColor(QColor()); // stored and signalled like any other colour
    picker.setBgColor(QColor());
    QVERIFY(!picker.bgColor().isValid());
    picker.setBgColor(Qt::blue);
    picker.switchColors(); // the new background first
    QCOMPARE(picker.fgColor(), QColor(Qt::blue));
    QCOMPARE(picker.bgColor(), QColor(Qt::red));
    // Equal colours switch silently; active and dragEnabled only store.
    picker.setBgColor(Qt::blue);
    picker.switchColors();
    picker.setActive(false);
    picker.setDragEnabled(true);
    QVERIFY(!picker.isActive() && picker.dragEnabled());
    QCOMPARE(log,
        QStringList({ "fg #ff0000", "bg invalid", "bg #0000ff", "bg #ff0000", "fg #0000ff", "bg #0000ff" }));
}

void tst_VColourPicker::geometry_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("fg");
    QTest::addColumn<QRect>("bg");
    QTest::newRow("50 x 50") << QSize(50, 50) << QRect(0, 0, 33, 33) << QRect(16, 16, 33, 33);
    QTest::newRow("30 x 20") << QSize(30, 20) << QRect(0, 0, 20, 13) << QRect(10, 6, 20, 13);
    QTest::newRow("100 x 61") << QSize(100, 61) << QRect(0, 0, 66, 40) << QRect(33, 20, 66, 40);
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
    QCOMPARE(picker.sections,
        (QList<QPair<QRect, QColor>> { { bg, QColor(Qt::yellow) }, { fg, QColor(Qt::darkGreen) } }));
}

void tst_VColourPicker::presses_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<QString>("swatch");
    // 50 x 50: foreground 0..32, background 16..48.
    QTest::newRow("overlap") << QPoint(20, 20) << "fg";
    QTest::newRow("last foreground pixel") << QPoint(32, 32) << "fg";
    QTest::newRow("first background-only pixel") << QPoint(33, 33) << "bg";
    QTest::newRow("top right corner") << QPoint(45, 5) << "";
    QTest::newRow("right of the background") << QPoint(49, 30) << "";
}

void tst_VColourPicker::presses()
{
    QFETCH(QPoint, pos);
    QFETCH(QString, swatch);
    TestPicker picker;
    picker.setActive(false);
    picker.resize(50, 50);
    QStringList log;
    logPresses(&picker, &log);

    press(&picker, pos, Qt::RightButton);
    release(&picker, pos, Qt::RightButton);
    QCOMPARE(log, QStringList());
    press(&picker, pos);
    QCOMPARE(log, swatch.isEmpty() ? QStringList() : QStringList { swatch + "Pressed" });
    release(&picker, pos);
    // A release away from the pressed swatch is no click; the next release finds nothing pressed.
    press(&picker, pos);
    release(&picker, QPoint(45, 5));
    release(&picker, pos);
    const QStringList once { swatch + "Pressed", swatch + "Clicked" };
    QCOMPARE(log, swatch.isEmpty() ? QStringList() : once + once.mid(0, 1));
}

void tst_VColourPicker::clicksOpenDialogOnlyWhenActive()
{
    TestPicker picker;
    picker.resize(50, 50);
    picker.setFgColor(Qt::red);
    picker.setBgColor(Qt::green);
    QStringList log;
    logSignals(&picker, &log);
    QSignalSpy fgClicked(&picker, &VColourPicker::fgClicked);
    auto click = [&](QPoint pos, const QColor& answer) {
        picker.answer = answer;
        QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, pos);
    };

    click(QPoint(20, 20), Qt::cyan);
    click(QPoint(40, 40), Qt::magenta);
    click(QPoint(5, 5), QColor()); // a cancelled dialog keeps the colour
    picker.setActive(false);
    click(QPoint(5, 5), Qt::gray);
    click(QPoint(40, 40), Qt::gray);
    QCOMPARE(fgClicked.count(), 3);
    QCOMPARE(picker.requests,
        (QList<QPair<QColor, QString>> { { QColor(Qt::red), "Choose foreground color" },
            { QColor(Qt::green), "Choose background color" },
            { QColor(Qt::cyan), "Choose foreground color" } }));
    QCOMPARE(log, QStringList({ "fg #00ffff", "bg #ff00ff" }));
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
    QStringList seen;
    for (const QPoint pos : { QPoint(25, 20), QPoint(50, 40) }) {
        press(&picker, pos);
        seen << looks();
        release(&picker, pos);
    }
    seen << looks();
    // Hover follows the cursor; in the overlap only the foreground is hovered.
    for (const QPoint pos : { QPoint(25, 20), QPoint(50, 40), QPoint(55, 5) }) {
        QCursor::setPos(picker.mapToGlobal(pos));
        seen << looks();
    }
    QCOMPARE(seen,
        QStringList({ "bg raised, fg sunken", "bg sunken, fg raised", "bg raised, fg raised",
            "bg raised, fg raised hover", "bg raised hover, fg raised", "bg raised, fg raised" }));
    picker.setStyle(nullptr);
}

void tst_VColourPicker::dropAcceptance_data()
{
    QTest::addColumn<QVariant>("colorData");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("expected"); // the change signalled, or empty
    const QPoint bg(45, 45);
    QTest::newRow("colour data") << QVariant(QColor(10, 20, 30)) << QString() << bg << true << "bg #0a141e";
    QTest::newRow("colour data wins over text")
        << QVariant(QColor(Qt::blue)) << "red" << bg << true << "bg #0000ff";
    QTest::newRow("colour name") << QVariant() << "red" << bg << true << "bg #ff0000";
    QTest::newRow("hex name") << QVariant() << "#336699" << bg << true << "bg #336699";
    QTest::newRow("text naming no colour") << QVariant() << "reddish" << bg << false << "";
    QTest::newRow("empty text") << QVariant() << "" << bg << false << "";
    QTest::newRow("invalid colour data") << QVariant(QColor()) << QString() << bg << false << "";
    QTest::newRow("invalid data, colour name") << QVariant(QColor()) << "green" << bg << true << "bg #008000";
    QTest::newRow("colour data that is a string")
        << QVariant(QStringLiteral("red")) << QString() << bg << false << "";
    QTest::newRow("overlap takes foreground")
        << QVariant() << "orange" << QPoint(25, 25) << true << "fg #ffa500";
    // Outside both swatches the drag is accepted but the drop is not taken.
    QTest::newRow("outside the swatches") << QVariant() << "navy" << QPoint(45, 5) << true << "";
}

void tst_VColourPicker::dropAcceptance()
{
    QFETCH(QVariant, colorData);
    QFETCH(QString, text);
    QFETCH(QPoint, pos);
    QFETCH(bool, accepted);
    QFETCH(QString, expected);

    VColourPicker picker;
    picker.resize(50, 50);
    QStringList log;
    logSignals(&picker, &log);
    QMimeData mime;
    if (colorData.isValid())
        mime.setColorData(colorData);
    if (!text.isNull())
        mime.setText(text);

    bool dropAccepted = false;
    QCOMPARE(dragAndDrop(&picker, &mime, pos, &dropAccepted), accepted);
    QCOMPARE(dropAccepted, !expected.isEmpty());
    QCOMPARE(log, expected.isEmpty() ? QStringList() : QStringList(expected));
    if (!expected.isEmpty())
        QCOMPARE((expected.startsWith("fg") ? picker.fgColor() : picker.bgColor()).name(), expected.mid(3));
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

    // Drag disabled: moving starts nothing and the release still clicks.
    press(&picker, QPoint(40, 40));
    moveWithLeftButton(&picker, QPoint(40 - distance, 40 - distance));
    QVERIFY(!picker.findChild<ColorDrag*>());
    release(&picker, QPoint(40, 40));
    QCOMPARE(bgClicked.count(), 1);

    picker.setDragEnabled(true);
    press(&picker, QPoint(40, 40));
    // One pixel short of the drag distance is no drag yet; a key press ends any platform drag loop.
    moveWithLeftButton(&picker, QPoint(40 - distance + 1, 40));
    QVERIFY(!picker.findChild<ColorDrag*>());

    QTimer::singleShot(0, &picker, [&] { QTest::keyClick(&picker, Qt::Key_Escape); });
    moveWithLeftButton(&picker, QPoint(40 - distance, 40));
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

    // The drag shows and carries a swatch of its colour, an icon in size.
    const ColorDrag own(&picker, QColor(Qt::darkCyan), QStringLiteral("teal-ish"));
    const int size = picker.style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, &picker);
    QCOMPARE(own.source(), &picker);
    QCOMPARE(own.pixmap().size(), QSize(size, size));
    QCOMPARE(own.pixmap().toImage().pixelColor(size / 2, size / 2), QColor(Qt::darkCyan));
    QCOMPARE(own.mimeData()->text(), QStringLiteral("teal-ish"));
    const QImage image = qvariant_cast<QImage>(own.mimeData()->imageData());
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
    QVERIFY(empty != QColor(Qt::black) && empty != QColor(Qt::red));
    // A disabled picker fills its swatches with the disabled window colour.
    picker.setFgColor(QColor(Qt::red));
    picker.setEnabled(false);
    const QImage image = picker.grab().toImage();
    QCOMPARE(image.pixelColor(20, 20), picker.palette().color(QPalette::Disabled, QPalette::Window));
    QCOMPARE(image.pixelColor(45, 45), image.pixelColor(20, 20));
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
    QVERIFY(layout->indexOf(picker) == 0 && layout->indexOf(box) == 1);

    QStringList log;
    logSignals(&bold, &log);
    connect(
        &bold, &VColourBoldPicker::boldChanged, this, [&](bool on) { log << (on ? "bold" : "not bold"); });
    bold.setFgColor(Qt::red);
    picker->setBgColor(Qt::blue);
    QCOMPARE(bold.fgColor(), QColor(Qt::red));
    QCOMPARE(bold.bgColor(), QColor(Qt::blue));
    picker->switchColors();
    QCOMPARE(bold.property("fgColor").value<QColor>(), QColor(Qt::blue));
    // setBold: one change, two emissions; an unchanged value none. The user's toggle is passed on once.
    QVERIFY(!bold.isBold());
    bold.setBold(false);
    bold.setBold(true);
    QVERIFY(bold.isBold());
    box->click();
    QCOMPARE(log,
        QStringList({ "fg #ff0000", "bg #0000ff", "bg #ff0000", "fg #0000ff", "bold", "bold", "not bold" }));

    const QMetaObject* meta = bold.metaObject();
    QCOMPARE(meta->property(meta->indexOfProperty("bold")).notifySignal().name(), QByteArray("boldChanged"));
    QCOMPARE(meta->property(meta->indexOfProperty("fgColor")).notifySignal().name(), QByteArray("fgChanged"));
    QCOMPARE(meta->property(meta->indexOfProperty("bgColor")).notifySignal().name(), QByteArray("bgChanged"));
}

QTEST_MAIN(tst_VColourPicker)
#include "tst_vcolourpicker.moc"
