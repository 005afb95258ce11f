#include "widgetspage.h"

#include <logger.h>
#include <vclearlineedit.h>
#include <vclickablelabel.h>
#include <vcolourboldpicker.h>
#include <vcolourcombobox.h>
#include <vcolourpicker.h>
#include <vcombobox.h>
#include <vcore.h>
#include <vcurrencylineedit.h>
#include <vdateedit.h>
#include <vdoublelineedit.h>
#include <vhistorycombobox.h>
#include <vlabellineedit.h>
#include <vled.h>
#include <vmonthcombobox.h>
#include <vmovabletabwidget.h>
#include <vpersistentcombobox.h>
#include <vsearchlineedit.h>

#include <QCheckBox>
#include <QDate>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

QGroupBox* group(const QString& title, QFormLayout*& form)
{
    auto* box = new QGroupBox(title);
    form = new QFormLayout(box);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A narrow window puts a wide field under its label rather than scrolling sideways.
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    return box;
}

// A fixed-size LED: the round one would otherwise grow with the row's height.
VLed* led(const QColor& color, VLed::Shape shape, const QString& name)
{
    auto* lamp = new VLed(color, shape);
    lamp->setObjectName(name);
    lamp->setFixedSize(shape == VLed::Circular ? QSize(22, 22) : QSize(34, 18));
    return lamp;
}

QWidget* row(std::initializer_list<QWidget*> widgets)
{
    auto* holder = new QWidget;
    auto* layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* w : widgets)
        layout->addWidget(w);
    layout->addStretch(1);
    return holder;
}

QGroupBox* indicators()
{
    QFormLayout* form;
    QGroupBox* box = group(WidgetsPage::tr("Indicators"), form);

    VLed* power = led(Qt::green, VLed::Circular, QStringLiteral("powerLed"));
    auto* powerSwitch = new QCheckBox(WidgetsPage::tr("Power"));
    powerSwitch->setObjectName(QStringLiteral("powerCheckBox"));
    powerSwitch->setChecked(true);
    QObject::connect(powerSwitch, &QCheckBox::toggled, power, &VLed::setChecked);
    QObject::connect(powerSwitch, &QCheckBox::toggled, power,
        [](bool on) { LOG_INFO("Power LED %s", on ? "on" : "off"); });
    form->addRow(WidgetsPage::tr("VLed:"), row({ power, powerSwitch }));

    form->addRow(WidgetsPage::tr("Shapes:"),
        row({ led(QColor(220, 40, 40), VLed::RectangularSunken, QStringLiteral("sunkenLed")),
            led(QColor(240, 190, 0), VLed::RectangularRaised, QStringLiteral("raisedLed")),
            led(QColor(30, 110, 230), VLed::RectangularPlain, QStringLiteral("plainLed")) }));

    VLed* busy = led(QColor(255, 140, 0), VLed::Circular, QStringLiteral("blinkingLed"));
    busy->setPeriod(600);
    busy->setAnimated(true);
    auto* blinking = new QCheckBox(WidgetsPage::tr("Blinking"));
    blinking->setObjectName(QStringLiteral("blinkingCheckBox"));
    blinking->setChecked(true);
    QObject::connect(blinking, &QCheckBox::toggled, busy, &VLed::setAnimated);
    form->addRow(WidgetsPage::tr("Blinking:"), row({ busy, blinking }));

    VLed* flash = led(QColor(0, 170, 90), VLed::Circular, QStringLiteral("flashLed"));
    flash->setChecked(false);
    auto* clickMe = new VClickableLabel(WidgetsPage::tr("<u>Flash it</u>"));
    clickMe->setObjectName(QStringLiteral("flashLabel"));
    clickMe->setCursor(Qt::PointingHandCursor);
    QObject::connect(clickMe, &VClickableLabel::clicked, flash, &VLed::blink);
    form->addRow(WidgetsPage::tr("VClickableLabel:"), row({ flash, clickMe }));
    return box;
}

QGroupBox* colours()
{
    QFormLayout* form;
    QGroupBox* box = group(WidgetsPage::tr("Colours"), form);

    auto* sample = new QLabel(WidgetsPage::tr("Text in these colours"));
    sample->setObjectName(QStringLiteral("colourSample"));
    sample->setAutoFillBackground(true);
    sample->setMargin(4);
    auto paintSample = [sample](const QColor& fg, const QColor& bg) {
        QPalette palette = sample->palette();
        palette.setColor(QPalette::WindowText, fg);
        palette.setColor(QPalette::Window, bg);
        sample->setPalette(palette);
    };

    auto* picker = new VColourPicker;
    picker->setObjectName(QStringLiteral("colourPicker"));
    picker->setFixedSize(48, 48);
    picker->setActive(true);
    picker->setDragEnabled(true);
    picker->setToolTip(WidgetsPage::tr("Click a swatch to choose its colour; drag it onto the other picker"));
    picker->setFgColor(QColor(20, 60, 140));
    picker->setBgColor(QColor(255, 240, 190));
    QObject::connect(picker, &VColourPicker::fgChanged, sample,
        [picker, paintSample] { paintSample(picker->fgColor(), picker->bgColor()); });
    QObject::connect(picker, &VColourPicker::bgChanged, sample,
        [picker, paintSample] { paintSample(picker->fgColor(), picker->bgColor()); });
    paintSample(picker->fgColor(), picker->bgColor());
    form->addRow(WidgetsPage::tr("VColourPicker:"), row({ picker }));

    auto* boldPicker = new VColourBoldPicker;
    boldPicker->setObjectName(QStringLiteral("colourBoldPicker"));
    boldPicker->setFgColor(picker->fgColor());
    boldPicker->setBgColor(picker->bgColor());
    QObject::connect(boldPicker, &VColourBoldPicker::fgChanged, picker, &VColourPicker::setFgColor);
    QObject::connect(boldPicker, &VColourBoldPicker::bgChanged, picker, &VColourPicker::setBgColor);
    QObject::connect(boldPicker, &VColourBoldPicker::boldChanged, sample, [sample](bool bold) {
        QFont font = sample->font();
        font.setBold(bold);
        sample->setFont(font);
    });
    form->addRow(WidgetsPage::tr("VColourBoldPicker:"), row({ boldPicker }));
    form->addRow(WidgetsPage::tr("Result:"), sample);

    auto* combo = new VColourComboBox;
    combo->setObjectName(QStringLiteral("colourComboBox"));
    VLed* lamp = led(Qt::red, VLed::Circular, QStringLiteral("colourLed"));
    combo->setColor(Qt::red);
    QObject::connect(combo, &VColourComboBox::colorChanged, lamp, [lamp](const QColor& colour) {
        lamp->setColor(colour);
        LOG_INFO("LED colour %s", qPrintable(colour.name()));
    });
    form->addRow(WidgetsPage::tr("VColourComboBox:"), row({ combo, lamp }));
    return box;
}

QGroupBox* dates()
{
    QFormLayout* form;
    QGroupBox* box = group(WidgetsPage::tr("Dates: VDateEdit, VMonthComboBox"), form);

    auto* empty = new VDateEdit(nullptr, true);
    empty->setObjectName(QStringLiteral("emptyDateEdit"));
    empty->setDate(VCore::nullDate());
    form->addRow(WidgetsPage::tr("Empty:"), empty);

    auto* due = new VDateEdit(nullptr, true);
    due->setObjectName(QStringLiteral("dueDateEdit"));
    due->setDate(QDate(2024, 12, 24));
    form->addRow(WidgetsPage::tr("With a date:"), due);

    auto* fixed = new VDateEdit(nullptr, false);
    fixed->setObjectName(QStringLiteral("requiredDateEdit"));
    fixed->setDate(QDate(2024, 6, 1));
    form->addRow(WidgetsPage::tr("Required:"), fixed);

    auto* echo = new QLabel;
    echo->setObjectName(QStringLiteral("dateEcho"));
    auto showDate = [echo, due] {
        const QDate date = due->date();
        echo->setText(date == VCore::nullDate() || !date.isValid()
                ? WidgetsPage::tr("No date")
                : QLocale().toString(date, QLocale::LongFormat));
    };
    QObject::connect(due, &VDateEdit::dateChanged, echo, showDate);
    showDate();
    form->addRow(WidgetsPage::tr("date() reads:"), echo);

    auto* month = new VMonthComboBox;
    month->setObjectName(QStringLiteral("monthComboBox"));
    month->setMonth(QDate::currentDate().month());
    auto* monthEcho = new QLabel;
    auto showMonth = [monthEcho](int m) { monthEcho->setText(WidgetsPage::tr("month() = %1").arg(m)); };
    QObject::connect(month, &VMonthComboBox::monthChanged, monthEcho, showMonth);
    showMonth(month->month());
    form->addRow(WidgetsPage::tr("VMonthComboBox:"), row({ month, monthEcho }));
    return box;
}

QGroupBox* texts()
{
    QFormLayout* form;
    QGroupBox* box = group(WidgetsPage::tr("Text input"), form);

    auto* search = new VSearchLineEdit;
    search->setObjectName(QStringLiteral("demoSearchLineEdit"));
    search->setPlaceholderText(WidgetsPage::tr("Search"));
    search->setText(WidgetsPage::tr("Lamp"));
    form->addRow(WidgetsPage::tr("VSearchLineEdit:"), search);

    auto* clear = new VClearLineEdit;
    clear->setObjectName(QStringLiteral("demoClearLineEdit"));
    clear->setText(WidgetsPage::tr("Clear me"));
    QObject::connect(clear, &VClearLineEdit::clearTriggered, clear, [] { LOG_INFO("Line edit cleared"); });
    form->addRow(WidgetsPage::tr("VClearLineEdit:"), clear);

    auto* history = new VHistoryComboBox(QStringLiteral("demoHistory"), QStringLiteral("widgets"), 10);
    if (history->count() == 0) {
        for (const char* text : { "Berlin", "Vienna", "Lisbon" })
            history->addItem(QString::fromLatin1(text));
    }
    history->lineEdit()->setPlaceholderText(WidgetsPage::tr("Type a city, press Return"));
    history->setToolTip(WidgetsPage::tr("Type and press Return: the entry moves to the top and is kept"));
    QObject::connect(history, &VHistoryComboBox::itemSelected, history, [history](const QString& text) {
        LOG_INFO("History entry chosen: %s", qPrintable(text));
        history->saveSettings();
    });
    form->addRow(WidgetsPage::tr("VHistoryComboBox:"), history);

    auto* patterns = new VPersistentComboBox;
    patterns->setObjectName(QStringLiteral("demoPatterns"));
    patterns->setSectionName(QStringLiteral("widgets"));
    patterns->readSettings();
    if (patterns->count() == 0)
        patterns->addItems(
            { QStringLiteral("^KIT-"), QStringLiteral("Pro|Deluxe"), QStringLiteral("\\d{4}$") });
    patterns->setToolTip(WidgetsPage::tr("Sorted entries; Shift+Del removes the highlighted one"));
    form->addRow(WidgetsPage::tr("VPersistentComboBox:"), patterns);

    auto* caption = new VLabelLineEdit(WidgetsPage::tr("&City"));
    caption->setObjectName(QStringLiteral("demoLabelLineEdit"));
    caption->setText(QStringLiteral("Ljubljana"));
    form->addRow(WidgetsPage::tr("VLabelLineEdit:"), caption);
    return box;
}

QGroupBox* numbers()
{
    QFormLayout* form;
    QGroupBox* box = group(WidgetsPage::tr("Numbers and choices"), form);

    auto* quantity = new VDoubleLineEdit;
    quantity->setObjectName(QStringLiteral("quantityEdit"));
    quantity->setDecimals(3);
    quantity->setRange(0, 1000);
    quantity->setToolTip(WidgetsPage::tr("Three decimals, from 0 to 1000; empty means no value"));
    quantity->setValue(12.5);
    form->addRow(WidgetsPage::tr("VDoubleLineEdit:"), quantity);

    auto* price = new VCurrencyLineEdit;
    price->setObjectName(QStringLiteral("priceEdit"));
    price->setValue(129.99);
    form->addRow(WidgetsPage::tr("VCurrencyLineEdit:"), price);

    auto* total = new QLabel;
    total->setObjectName(QStringLiteral("totalLabel"));
    auto showTotal = [total, quantity, price] {
        total->setText(price->textFromValue(quantity->value() * price->value()) + QLatin1Char(' ')
            + price->currencySymbol());
    };
    QObject::connect(quantity, &VDoubleLineEdit::valueChanged, total, showTotal);
    QObject::connect(price, &VDoubleLineEdit::valueChanged, total, showTotal);
    showTotal();
    form->addRow(WidgetsPage::tr("Amount:"), total);

    auto* country = new VComboBox;
    country->setObjectName(QStringLiteral("countryComboBox"));
    country->addItem(WidgetsPage::tr("Finland"), 246);
    country->addItem(WidgetsPage::tr("Slovenia"), 705);
    country->addItem(WidgetsPage::tr("Sweden"), 752);
    country->setValue(705);
    auto* key = new QLabel;
    auto showKey = [key](const QVariant& value) {
        key->setText(WidgetsPage::tr("value() = %1").arg(value.toString()));
    };
    QObject::connect(country, &VComboBox::valueChanged, key, showKey);
    showKey(country->value());
    form->addRow(WidgetsPage::tr("VComboBox:"), row({ country, key }));
    return box;
}

QGroupBox* tabs()
{
    auto* box = new QGroupBox(WidgetsPage::tr("VMovableTabWidget: drag a tab"));
    auto* layout = new QVBoxLayout(box);
    auto* tabWidget = new VMovableTabWidget;
    tabWidget->setObjectName(QStringLiteral("demoTabs"));
    for (const QString& name :
        { WidgetsPage::tr("General"), WidgetsPage::tr("Address"), WidgetsPage::tr("Notes") }) {
        auto* label = new QLabel(WidgetsPage::tr("The %1 tab").arg(name));
        label->setAlignment(Qt::AlignCenter);
        tabWidget->addTab(label, name);
    }
    tabWidget->setMinimumHeight(90);
    layout->addWidget(tabWidget);
    return box;
}

} // namespace

WidgetsPage::WidgetsPage(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("widgetsPage"));
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    // The date editors with their buttons and the text inputs are the widest: the middle column.
    grid->addWidget(indicators(), 0, 0);
    grid->addWidget(dates(), 0, 1);
    grid->addWidget(colours(), 0, 2);
    grid->addWidget(numbers(), 1, 0);
    grid->addWidget(texts(), 1, 1);
    grid->addWidget(tabs(), 1, 2);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(2, 2);
    grid->setRowStretch(2, 1);

    // Scrolls rather than squeezes when the window is small.
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}
