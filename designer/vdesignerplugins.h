#ifndef VDESIGNERPLUGINS_H
#define VDESIGNERPLUGINS_H

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

/// The collection of veitikgip widgets offered to Qt Designer.
class VDesignerPlugins : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit VDesignerPlugins(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;
};

#endif // VDESIGNERPLUGINS_H
