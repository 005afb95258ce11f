#include <QtTest>

#include "vcurrencylineedit.h"
#include "vdoublelineedit.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <QDataWidgetMapper>
#include <QLabel>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleOptionFrame>

#include <cmath>
#include <limits>

namespace {
void loseFocus(QWidget* w)
{
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QApplication::sendEvent(w, &out);
}

QList<double> doubles(const QSignalSpy& spy)
{
    QList<double> result;
    for (const QList<QVariant>& args : spy)
        result << args.at(0).toDouble();
    return result;
}

const QLocale German(QLocale::German, QLocale::Germany);
const QLocale American(QLocale::English, QLocale::UnitedStates);
} // namespace

class tst_VDoubleLineEdit : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void defaults();
    void setValue_data();
    void setValue();
    void valueSignals();
    void typing();
    void badInput();
    void decimalsAndRange();
    void mapper();
    void currencySymbol_data();
    void currencySymbol();

private:
    VTestSettings m_settings;
};

void tst_VDoubleLineEdit::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_VDoubleLineEdit::defaults()
{
    VDoubleLineEdit e;
    QCOMPARE(e.decimals(), 2);
    QCOMPARE(e.minimum(), -1e12);
    QCOMPARE(e.maximum(), 1e12);
    QVERIFY(e.isNull() && e.text().isEmpty());
    QCOMPARE(e.value(), 0.0);
    const QMetaProperty user = e.metaObject()->userProperty();
    QCOMPARE(user.name(), "value");
    QCOMPARE(user.userType(), int(QMetaType::Double));
    QCOMPARE(user.notifySignal().methodSignature(), QByteArray("valueChanged(double)"));
}

void tst_VDoubleLineEdit::setValue_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("input");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("c") << QLocale::c() << 2 << 1234.5 << "1234.50" << 1234.5;
    QTest::newRow("german comma, no grouping") << German << 2 << 1234567.5 << "1234567,50" << 1234567.5;
    QTest::newRow("american, no grouping") << American << 3 << -1234.5 << "-1234.500" << -1234.5;
    QTest::newRow("rounded") << QLocale::c() << 2 << 2.346 << "2.35" << 2.35;
    QTest::newRow("no decimals") << QLocale::c() << 0 << 2.6 << "3" << 3.0;
    QTest::newRow("negative zero") << QLocale::c() << 2 << -0.001 << "0.00" << 0.0;
    QTest::newRow("below range") << QLocale::c() << 1 << -5e12 << "-1000000000000.0" << -1e12;
}

void tst_VDoubleLineEdit::setValue()
{
    QFETCH(QLocale, locale);
    QFETCH(int, decimals);
    QFETCH(double, input);
    QFETCH(QString, text);
    QFETCH(double, value);
    VDoubleLineEdit e;
    e.setLocale(locale);
    e.setDecimals(decimals);
    e.setValue(input);
    QCOMPARE(e.text(), text);
    QCOMPARE(e.value(), value);
    QVERIFY(!e.isNull());
    QCOMPARE(e.textFromValue(input), text);
}

void tst_VDoubleLineEdit::valueSignals()
{
    VTestLogCapture log;
    VDoubleLineEdit e;
    QSignalSpy spy(&e, &VDoubleLineEdit::valueChanged);
    e.setValue(3);
    e.setValue(3);
    e.setValue(3.001); // rounds to the same value
    QCOMPARE(doubles(spy), QList<double>({ 3.0 }));
    QCOMPARE(e.text(), QStringLiteral("3.00"));

    e.setValue(std::numeric_limits<double>::infinity());
    QCOMPARE(e.value(), 3.0);
    QCOMPARE(log.messages(Logger::Warning).size(), 1);

    // NaN and resetting the property both mean "no value".
    e.setValue(std::nan(""));
    QVERIFY(e.isNull() && e.text().isEmpty());
    e.setValue(0); // from no value to 0 is a change
    QCOMPARE(e.text(), QStringLiteral("0.00"));
    QVERIFY(e.metaObject()->userProperty().reset(&e));
    QVERIFY(e.isNull());
    e.clear();
    QCOMPARE(doubles(spy), QList<double>({ 3.0, 0.0, 0.0, 0.0 }));
}

void tst_VDoubleLineEdit::typing()
{
    VDoubleLineEdit e;
    e.setRange(-100, 100);
    QSignalSpy spy(&e, &VDoubleLineEdit::valueChanged);
    QTest::keyClicks(&e, "12.5");
    QCOMPARE(e.text(), QStringLiteral("12.5"));
    loseFocus(&e);
    QCOMPARE(e.text(), QStringLiteral("12.50"));
    QTest::keyClicks(&e, "7x"); // letters and a third decimal are refused
    QCOMPARE(e.text(), QStringLiteral("12.50"));

    e.selectAll();
    QTest::keyClick(&e, Qt::Key_Backspace);
    QVERIFY(e.isNull());
    QTest::keyClicks(&e, "-");
    QVERIFY(e.isNull()); // a lone sign is not yet a number
    QTest::keyClicks(&e, "4");
    QCOMPARE(doubles(spy), QList<double>({ 1.0, 12.0, 12.5, 0.0, -4.0 }));
    // Another locale reformats the text and reads its decimal comma.
    e.setValue(12.5);
    e.setLocale(German);
    QCOMPARE(e.text(), QStringLiteral("12,50"));
    e.selectAll();
    QTest::keyClicks(&e, "7,25");
    QCOMPARE(e.value(), 7.25);
}

void tst_VDoubleLineEdit::badInput()
{
    VDoubleLineEdit e;
    e.setRange(0, 100);
    e.setValue(50);
    QSignalSpy spy(&e, &VDoubleLineEdit::valueChanged);

    // Each bad text keeps the value, and focus loss shows the value again.
    auto keepsValue = [&](const char* what) {
        QVERIFY2(e.value() == 50.0 && !e.isNull(), what);
        loseFocus(&e);
        QCOMPARE(e.text(), QStringLiteral("50.00"));
    };
    e.selectAll();
    QTest::keyClicks(&e, "500"); // out of range while typing
    QCOMPARE(e.text(), QStringLiteral("500"));
    keepsValue("out of range");
    e.setCursorPosition(0);
    QTest::keyClicks(&e, "-"); // no minus sign when the range has no negative numbers
    QCOMPARE(e.text(), QStringLiteral("50.00"));
    e.setText(QStringLiteral("not a number"));
    keepsValue("not a number");
    const QString huge(100000, QLatin1Char('9'));
    e.setText(huge);
    QCOMPARE(e.text().size(), e.maxLength());
    keepsValue("huge");
    e.selectAll();
    e.insert(huge); // pasted: too long to be a number
    keepsValue("pasted");
    // Only the typed "5" and "50" ever changed the value.
    QCOMPARE(doubles(spy), QList<double>({ 5.0, 50.0 }));
}

void tst_VDoubleLineEdit::decimalsAndRange()
{
    VTestLogCapture log;
    VDoubleLineEdit e;
    e.setValue(1.26);
    QSignalSpy values(&e, &VDoubleLineEdit::valueChanged);
    QSignalSpy decimals(&e, &VDoubleLineEdit::decimalsChanged);
    QSignalSpy minimums(&e, &VDoubleLineEdit::minimumChanged);
    QSignalSpy maximums(&e, &VDoubleLineEdit::maximumChanged);

    e.setDecimals(1);
    e.setDecimals(1);
    QCOMPARE(decimals.count(), 1);
    QCOMPARE(e.text(), QStringLiteral("1.3"));
    e.setDecimals(99);
    QCOMPARE(e.decimals(), 15);
    e.setDecimals(1);
    e.setRange(5, 2); // the maximum is raised to the minimum
    QCOMPARE(e.minimum(), 5.0);
    QCOMPARE(e.maximum(), 5.0);
    QCOMPARE(e.value(), 5.0);
    QCOMPARE(e.text(), QStringLiteral("5.0"));
    e.setMaximum(10);
    e.setMinimum(20); // above the maximum: both move
    QCOMPARE(e.maximum(), 20.0);
    QCOMPARE(e.value(), 20.0);
    QCOMPARE(doubles(values), QList<double>({ 1.3, 5.0, 20.0 }));
    QCOMPARE(minimums.count(), 2);
    QCOMPARE(maximums.count(), 3);
    e.setMinimum(std::nan(""));
    QCOMPARE(e.minimum(), 20.0);
    QCOMPARE(log.messages(Logger::Warning).size(), 1);

    // A range change keeps an empty edit empty.
    e.clear();
    e.setRange(30, 40);
    QVERIFY(e.isNull() && e.text().isEmpty());
}

void tst_VDoubleLineEdit::mapper()
{
    QStandardItemModel model(3, 2);
    model.setData(model.index(0, 0), 12.5);
    model.setData(model.index(1, 0), -3);
    model.setData(model.index(1, 1), 99.9);
    VDoubleLineEdit e;
    VCurrencyLineEdit price;
    QDataWidgetMapper mapper;
    mapper.setModel(&model);
    mapper.addMapping(&e, 0);
    mapper.addMapping(&price, 1);
    mapper.toFirst();
    QCOMPARE(e.text(), QStringLiteral("12.50"));
    mapper.toNext();
    QCOMPARE(e.value(), -3.0);
    QCOMPARE(price.text(), QStringLiteral("99.90"));
    e.selectAll();
    QTest::keyClicks(&e, "42.25");
    price.setValue(100.456);
    QVERIFY(mapper.submit());
    QCOMPARE(model.data(model.index(1, 0)).toDouble(), 42.25);
    QCOMPARE(model.data(model.index(1, 1)), QVariant(100.46));
    QCOMPARE(model.data(model.index(0, 0)).toDouble(), 12.5);
    // The item delegate turns an empty cell into 0 before it reaches the edit.
    mapper.toLast();
    QCOMPARE(e.text(), QStringLiteral("0.00"));
}

void tst_VDoubleLineEdit::currencySymbol_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<bool>("prefix");
    QTest::addColumn<QString>("text");
    QTest::newRow("united states") << American << "$" << true << "1234.50";
    QTest::newRow("germany") << German << QString::fromUtf8("€") << false << "1234,50";
    QTest::newRow("japan") << QLocale(QLocale::Japanese, QLocale::Japan) << QString::fromUtf8("￥") << true
                           << "1234.50";
}

void tst_VDoubleLineEdit::currencySymbol()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, symbol);
    QFETCH(bool, prefix);
    QFETCH(QString, text);

    VCurrencyLineEdit e;
    QCOMPARE(e.decimals(), 2);
    QSignalSpy spy(&e, &VCurrencyLineEdit::currencySymbolChanged);
    e.setLocale(locale);
    e.setLocale(locale);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), symbol);
    QCOMPARE(e.currencySymbol(), symbol);
    QCOMPARE(e.isSymbolPrefix(), prefix);

    e.resize(160, e.sizeHint().height());
    e.show();
    QVERIFY(QTest::qWaitForWindowExposed(&e));
    e.setValue(1234.5);
    QCOMPARE(e.text(), text); // the symbol is not part of the text
    auto* label = e.findChild<QLabel*>(QStringLiteral("currencySymbol"));
    QVERIFY(label);
    QCOMPARE(label->text(), symbol);
    QVERIFY(label->isVisible() && label->testAttribute(Qt::WA_TransparentForMouseEvents));
    // The symbol sits in the margin reserved for it, inside the frame, clear of the text.
    QStyleOptionFrame option;
    option.initFrom(&e);
    option.lineWidth = e.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &e);
    const QRect contents = e.style()->subElementRect(QStyle::SE_LineEditContents, &option, &e);
    const QMargins margins = e.textMargins();
    const int room = e.fontMetrics().horizontalAdvance(symbol) + 3;
    QCOMPARE(margins, prefix ? QMargins(room, 0, 0, 0) : QMargins(0, 0, room, 0));
    QCOMPARE(label->width(), room - 3);
    if (prefix)
        QCOMPARE(label->x(), contents.left());
    else
        QCOMPARE(label->geometry().right(), contents.right());
    QCOMPARE(label->y(), contents.top());
}

QTEST_MAIN(tst_VDoubleLineEdit)
#include "tst_vdoublelineedit.moc"
