#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include "vled.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

namespace {

class Led : public VLed {
public:
    using VLed::circleGradient;
    using VLed::circleRect;
    using VLed::VLed;
};

bool isRed(const QColor& c)
{
    return c.red() > 200 && c.green() < 60 && c.blue() < 60;
}

} // namespace

class tst_VLed : public QObject {
    Q_OBJECT

    VTestSettings m_settings;

private slots:
    void constructors()
    {
        VLed plain;
        QCOMPARE(plain.color(), QColor(Qt::red));
        QVERIFY(!plain.isChecked());
        QCOMPARE(plain.frameWidth(), 1);
        QCOMPARE(plain.shape(), VLed::Circular);
        QVERIFY(!plain.isAnimated());
        QCOMPARE(plain.period(), 1000);
        QCOMPARE(plain.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
        QVERIFY(plain.sizePolicy().hasHeightForWidth());

        VLed green(Qt::green, VLed::RectangularRaised);
        QCOMPARE(green.color(), QColor(Qt::green));
        QVERIFY(green.isChecked());
        QCOMPARE(green.shape(), VLed::RectangularRaised);
        QCOMPARE(green.sizePolicy(), QWidget().sizePolicy());
        QVERIFY(!green.sizePolicy().hasHeightForWidth());
        // Designer writes the shape by its key.
        QVERIFY(green.setProperty("shape", QStringLiteral("RectangularPlain")));
        QCOMPARE(green.shape(), VLed::RectangularPlain);

        VTestLogCapture log;
        VLed invalid(QColor(), VLed::Shape(7));
        QCOMPARE(invalid.color(), QColor(Qt::red));
        QCOMPARE(invalid.shape(), VLed::Circular);
        QVERIFY(invalid.isChecked());
        QCOMPARE(log.messages(Logger::Warning).size(), 2);
    }

    void setters()
    {
        VLed led;
        QSignalSpy colour(&led, &VLed::colorChanged);
        QSignalSpy toggled(&led, &VLed::toggled);

        led.setColor(Qt::red);
        QCOMPARE(colour.count(), 0);
        led.setColor(Qt::yellow);
        led.setColor(Qt::yellow);
        QCOMPARE(colour.count(), 1);
        QCOMPARE(colour.at(0).at(0).value<QColor>(), QColor(Qt::yellow));

        led.setChecked(false);
        QCOMPARE(toggled.count(), 0);
        led.setChecked(true);
        led.setChecked(true);
        led.toggle();
        QCOMPARE(toggled.count(), 2);
        QCOMPARE(toggled.at(0).at(0).toBool(), true);
        QCOMPARE(toggled.at(1).at(0).toBool(), false);

        led.setShape(VLed::RectangularSunken);
        led.setFrameWidth(3);

        VTestLogCapture log;
        led.setColor(QColor());
        led.setColor(QColor(QStringLiteral("no such colour")));
        led.setFrameWidth(-1);
        led.setShape(VLed::Shape(-1));
        QCOMPARE(led.color(), QColor(Qt::yellow));
        QCOMPARE(led.frameWidth(), 3);
        QCOMPARE(led.shape(), VLed::RectangularSunken);
        QCOMPARE(colour.count(), 1);
        QCOMPARE(log.messages(Logger::Warning).size(), 4);
    }

    void sizeHints_data()
    {
        QTest::addColumn<int>("shape");
        QTest::addColumn<QSize>("strut");
        QTest::addColumn<QSize>("hint");
        QTest::addColumn<int>("heightFor40");
        QTest::newRow("circular") << int(VLed::Circular) << QSize(0, 0) << QSize(25, 25) << 40;
        QTest::newRow("raised") << int(VLed::RectangularRaised) << QSize(0, 0) << QSize(25, 15) << -1;
        QTest::newRow("circular strut") << int(VLed::Circular) << QSize(30, 10) << QSize(30, 25) << 40;
        QTest::newRow("plain strut") << int(VLed::RectangularPlain) << QSize(10, 20) << QSize(25, 20) << -1;
    }

    void sizeHints()
    {
        QFETCH(int, shape);
        QFETCH(QSize, strut);
        QFETCH(QSize, hint);
        QFETCH(int, heightFor40);

        qApp->setProperty("globalStrut", strut);
        VLed led(Qt::red, VLed::Shape(shape));
        QCOMPARE(led.sizeHint(), hint);
        QCOMPARE(led.heightForWidth(40), heightFor40);
        qApp->setProperty("globalStrut", QSize(0, 0));
    }

    void circleGeometry_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("frame");
        QTest::addColumn<QRect>("ellipse");
        QTest::addColumn<QPointF>("centre");
        QTest::addColumn<QPointF>("focal");
        QTest::addColumn<qreal>("radius");
        QTest::newRow("25x25") << QSize(25, 25) << 1 << QRect(QPoint(1, 1), QPoint(23, 23)) << QPointF(12, 12)
                               << QPointF(10, 10) << 11.0;
        QTest::newRow("30x20") << QSize(30, 20) << 1 << QRect(QPoint(6, 1), QPoint(23, 18)) << QPointF(14, 9)
                               << QPointF(12, 7) << 9.0;
        // 0.45 x 31 = 13.95 and 0.1 x 31 = 3.1: both truncated, not rounded.
        QTest::newRow("31x31") << QSize(31, 31) << 1 << QRect(QPoint(1, 1), QPoint(29, 29)) << QPointF(15, 15)
                               << QPointF(12, 12) << 13.0;
        QTest::newRow("100x50 frame 2") << QSize(100, 50) << 2 << QRect(QPoint(27, 2), QPoint(72, 47))
                                        << QPointF(49, 24) << QPointF(44, 19) << 22.0;
    }

    void circleGeometry()
    {
        QFETCH(QSize, size);
        QFETCH(int, frame);
        QFETCH(QRect, ellipse);
        QFETCH(QPointF, centre);
        QFETCH(QPointF, focal);
        QFETCH(qreal, radius);

        Led led;
        led.resize(size);
        led.setFrameWidth(frame);
        QCOMPARE(led.circleRect(), ellipse);

        const QRadialGradient unlit = led.circleGradient();
        QCOMPARE(unlit.center(), centre);
        QCOMPARE(unlit.focalPoint(), focal);
        QCOMPARE(unlit.radius(), radius);
        QCOMPARE(unlit.spread(), QGradient::PadSpread);
        const QGradientStops offStops { { 0.0, led.palette().color(QPalette::Light) },
            { 0.75, led.palette().color(QPalette::Window) } };
        QCOMPARE(unlit.stops(), offStops);

        led.setChecked(true);
        const QGradientStops onStops { { 0.0, led.palette().color(QPalette::Light) },
            { 0.75, QColor(Qt::red) } };
        QCOMPARE(led.circleGradient().stops(), onStops);
    }

    void circlePainting()
    {
        VLed led;
        led.resize(30, 20);
        const QColor window = led.palette().color(QPalette::Window);
        const QImage off = led.grab().toImage();
        led.setChecked(true);
        const QImage on = led.grab().toImage();

        // The circle of side 18 spans columns 6 to 23; the pen's antialiased edge reaches one pixel beyond.
        for (int y = 0; y < 20; ++y) {
            for (int x : { 0, 4, 25, 29 }) {
                QCOMPARE(on.pixel(x, y), window.rgb());
                QCOMPARE(off.pixel(x, y), window.rgb());
            }
        }
        QVERIFY(on.pixel(6, 10) != window.rgb());
        QVERIFY(on.pixel(23, 10) != window.rgb());
        // Lit in its colour near the rim, pale at the highlight up and left of the centre.
        QVERIFY(isRed(on.pixel(20, 12)));
        QVERIFY(!isRed(off.pixel(20, 12)));
        QVERIFY(QColor(on.pixel(12, 7)).green() > 150);
    }

    void rectangularLooks_data()
    {
        QTest::addColumn<int>("shape");
        QTest::addColumn<int>("topRole");
        QTest::addColumn<int>("bottomRole");
        QTest::newRow("sunken") << int(VLed::RectangularSunken) << int(QPalette::Dark)
                                << int(QPalette::Light);
        QTest::newRow("raised") << int(VLed::RectangularRaised) << int(QPalette::Light)
                                << int(QPalette::Dark);
        QTest::newRow("plain") << int(VLed::RectangularPlain) << int(QPalette::WindowText)
                               << int(QPalette::WindowText);
    }

    void rectangularLooks()
    {
        QFETCH(int, shape);
        QFETCH(int, topRole);
        QFETCH(int, bottomRole);

        VLed led(Qt::blue, VLed::Shape(shape));
        led.resize(40, 20);
        led.setFrameWidth(3);
        const QPalette palette = led.palette();
        const QImage on = led.grab().toImage();
        led.setChecked(false);
        const QImage off = led.grab().toImage();

        for (int y : { 0, 2 })
            QCOMPARE(on.pixel(20, y), palette.color(QPalette::ColorRole(topRole)).rgb());
        for (int y : { 17, 19 })
            QCOMPARE(on.pixel(20, y), palette.color(QPalette::ColorRole(bottomRole)).rgb());
        for (const QPoint& p : { QPoint(3, 3), QPoint(20, 10), QPoint(36, 16) }) {
            QCOMPARE(on.pixel(p), QColor(Qt::blue).rgb());
            QCOMPARE(off.pixel(p), palette.color(QPalette::Window).rgb());
        }
        QCOMPARE(off.pixel(20, 0), palette.color(QPalette::ColorRole(topRole)).rgb());
    }

    void blinking()
    {
        VLed led;
        led.setPeriod(40);
        QSignalSpy toggled(&led, &VLed::toggled);
        QElapsedTimer clock;
        clock.start();
        led.setAnimated(true);
        QVERIFY(led.isAnimated());
        QTRY_VERIFY_WITH_TIMEOUT(toggled.count() >= 4, 5000);
        // A coarse timer may fire up to 5% early.
        QVERIFY(clock.elapsed() >= 4 * 38);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(toggled.at(i).at(0).toBool(), i % 2 == 0);

        // Stopping keeps the current state.
        led.setAnimated(false);
        QVERIFY(!led.isAnimated());
        const bool state = led.isChecked();
        const int count = toggled.count();
        QTest::qWait(3 * 40);
        QCOMPARE(toggled.count(), count);
        QCOMPARE(led.isChecked(), state);
    }

    void periods()
    {
        VLed led;
        QSignalSpy toggled(&led, &VLed::toggled);
        // Not blinking: only stored, used by the next start.
        led.setPeriod(5000);
        led.setAnimated(true);
        QTest::qWait(100);
        QCOMPARE(toggled.count(), 0);

        // Blinking: restarts at once with the new period.
        led.setPeriod(20);
        QVERIFY(led.isAnimated());
        QTRY_VERIFY_WITH_TIMEOUT(toggled.count() >= 3, 2000);

        VTestLogCapture log;
        led.setPeriod(0);
        led.setPeriod(-100);
        QCOMPARE(led.period(), 20);
        QCOMPARE(log.messages(Logger::Warning).size(), 2);
        QVERIFY(led.isAnimated());
        const int count = toggled.count();
        QTRY_VERIFY_WITH_TIMEOUT(toggled.count() >= count + 2, 2000);
    }

    void oneShotBlink()
    {
        VLed led;
        QSignalSpy toggled(&led, &VLed::toggled);
        QElapsedTimer clock;
        clock.start();
        led.blink();
        QVERIFY(led.isChecked());
        QCOMPARE(toggled.count(), 1);
        QTRY_COMPARE(toggled.count(), 2);
        QVERIFY(clock.elapsed() >= 290);
        QCOMPARE(toggled.at(1).at(0).toBool(), false);
        QVERIFY(!led.isAnimated());

        // While blinking continuously a flash does nothing.
        led.setPeriod(5000);
        led.setAnimated(true);
        led.blink();
        QVERIFY(!led.isChecked());
        QCOMPARE(toggled.count(), 2);
    }

    void destroyedWhileBlinking()
    {
        auto* blinking = new VLed;
        blinking->setPeriod(10);
        blinking->setAnimated(true);
        auto* flashing = new VLed;
        flashing->blink();
        QTest::qWait(20);
        delete blinking;
        delete flashing;

        // A lamp that may reuse their memory sees no stray tick or pending flash.
        VLed after;
        after.setChecked(true);
        QSignalSpy toggled(&after, &VLed::toggled);
        QTest::qWait(350);
        QCOMPARE(toggled.count(), 0);
        QVERIFY(after.isChecked());
    }

    void clicks()
    {
        VLed led;
        led.resize(25, 25);
        led.show();
        QVERIFY(QTest::qWaitForWindowExposed(&led));
        QSignalSpy clicked(&led, &VLed::clicked);
        QSignalSpy toggled(&led, &VLed::toggled);
        QTest::mouseClick(&led, Qt::LeftButton);
        QTest::mouseClick(&led, Qt::RightButton);
        QTest::mouseClick(&led, Qt::MiddleButton);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(toggled.count(), 0);
        QVERIFY(!led.isChecked());
    }
};

QTEST_MAIN(tst_VLed)
#include "tst_vled.moc"
