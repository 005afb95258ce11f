#include "vdesignerplugins.h"

#include "vwidgetplugin.h"

#include <vburgermenu.h>
#include <vclearlineedit.h>
#include <vclickablelabel.h>
#include <vcolourboldpicker.h>
#include <vcolourcombobox.h>
#include <vcolourpicker.h>
#include <vcombobox.h>
#include <vcurrencylineedit.h>
#include <vdateedit.h>
#include <vdoublelineedit.h>
#include <vhistorycombobox.h>
#include <vlabellineedit.h>
#include <vled.h>
#include <vloggerwidget.h>
#include <vmonthcombobox.h>
#include <vmovabletabwidget.h>
#include <vpersistentcombobox.h>
#include <vsearchlineedit.h>
#include <vuiwidget.h>

namespace {
template <typename T>
VWidgetPlugin::Factory simple()
{
    return [](QWidget* parent) { return new T(parent); };
}

VWidgetPlugin::Description describe(const char* className, const QString& toolTip,
    const VWidgetPlugin::Factory& create, const QString& properties = QString(), bool container = false)
{
    VWidgetPlugin::Description d;
    d.className = QString::fromLatin1(className);
    d.toolTip = toolTip;
    d.create = create;
    d.properties = properties;
    d.container = container;
    return d;
}
} // namespace

VDesignerPlugins::VDesignerPlugins(QObject* parent)
    : QObject(parent)
{
    const QList<VWidgetPlugin::Description> widgets = {
        describe("VSearchLineEdit", tr("Search field with a clear button"), simple<VSearchLineEdit>()),
        describe("VClearLineEdit", tr("Line edit that reports clearing"), simple<VClearLineEdit>()),
        describe("VHistoryComboBox", tr("Editable combo box that remembers its entries"),
            [](QWidget* parent) {
                return new VHistoryComboBox(QStringLiteral("historyComboBox"), QString(), 10, parent);
            }),
        describe(
            "VPersistentComboBox", tr("Combo box of stored filter entries"), simple<VPersistentComboBox>()),
        describe("VBurgerMenu", tr("Collapsible side menu of actions"), simple<VBurgerMenu>()),
        describe("VLed", tr("LED lamp that lights, toggles and blinks"), simple<VLed>()),
        describe("VColourPicker", tr("Foreground and background colour swatches"), simple<VColourPicker>()),
        describe("VColourBoldPicker", tr("Colour swatches with a bold toggle"), simple<VColourBoldPicker>()),
        describe("VColourComboBox", tr("Combo box of named colours"), simple<VColourComboBox>()),
        describe("VDateEdit", tr("Date edit that can be empty"), simple<VDateEdit>()),
        describe("VMonthComboBox", tr("Combo box of month names"), simple<VMonthComboBox>()),
        describe("VLoggerWidget", tr("Log viewer with a level filter"), simple<VLoggerWidget>()),
        describe("VDoubleLineEdit", tr("Line edit for a decimal number"), simple<VDoubleLineEdit>()),
        describe("VCurrencyLineEdit", tr("Line edit for an amount of money"), simple<VCurrencyLineEdit>()),
        describe("VLabelLineEdit", tr("Line edit with a caption"), simple<VLabelLineEdit>()),
        describe("VComboBox", tr("Combo box bound to its items' data"), simple<VComboBox>()),
        describe("VMovableTabWidget", tr("Tab widget that keeps the user's tab order"),
            simple<VMovableTabWidget>()),
        describe("VUiWidget", tr("Base widget of application screens"), simple<VUiWidget>(), QString(), true),
        describe("VClickableLabel", tr("Label that emits clicked()"), simple<VClickableLabel>(),
            QStringLiteral("<property name=\"text\"><string>Click me</string></property>")),
    };
    for (const VWidgetPlugin::Description& d : widgets)
        m_widgets.append(new VWidgetPlugin(d, this));
}

QList<QDesignerCustomWidgetInterface*> VDesignerPlugins::customWidgets() const
{
    return m_widgets;
}
