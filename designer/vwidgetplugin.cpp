#include "vwidgetplugin.h"

#include <QIcon>

VWidgetPlugin::VWidgetPlugin(const Description& description, QObject* parent)
    : QObject(parent)
    , m_description(description)
{
}

QString VWidgetPlugin::name() const
{
    return m_description.className;
}

QString VWidgetPlugin::group() const
{
    return QStringLiteral("veitikgip");
}

QString VWidgetPlugin::toolTip() const
{
    return m_description.toolTip;
}

QString VWidgetPlugin::whatsThis() const
{
    return m_description.toolTip;
}

QString VWidgetPlugin::includeFile() const
{
    // Installed headers are flat and named after the class in lower case.
    return m_description.className.toLower() + QStringLiteral(".h");
}

QIcon VWidgetPlugin::icon() const
{
    return QIcon();
}

bool VWidgetPlugin::isContainer() const
{
    return m_description.container;
}

QWidget* VWidgetPlugin::createWidget(QWidget* parent)
{
    return m_description.create(parent);
}

bool VWidgetPlugin::isInitialized() const
{
    return m_initialized;
}

void VWidgetPlugin::initialize(QDesignerFormEditorInterface*)
{
    m_initialized = true;
}

QString VWidgetPlugin::domXml() const
{
    QString objectName = m_description.className.mid(1);
    if (!objectName.isEmpty())
        objectName[0] = objectName.at(0).toLower();
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">%3</widget></ui>")
        .arg(m_description.className, objectName, m_description.properties);
}
