#ifndef VWIDGETPLUGIN_H
#define VWIDGETPLUGIN_H

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

// One widget class as Qt Designer sees it: its name, header, tool tip and a
// factory. Every widget of the collection is described by one of these.
class VWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    using Factory = std::function<QWidget*(QWidget* parent)>;

    struct Description {
        QString className;
        QString toolTip;
        Factory create;
        bool container = false;
        QString properties; // extra <property> elements for the default instance
    };

    VWidgetPlugin(const Description& description, QObject* parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    Description m_description;
    bool m_initialized = false;
};

#endif // VWIDGETPLUGIN_H
