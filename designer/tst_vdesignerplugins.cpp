#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QMetaProperty>
#include <QPluginLoader>
#include <QXmlStreamReader>
#include <QtTest>

// Loads the plugin the way Qt Designer does and checks every widget it offers.
class TestVDesignerPlugins : public QObject {
    Q_OBJECT
    QPluginLoader m_loader { QStringLiteral(VEITIKGIP_DESIGNER_PLUGIN) };
    QDesignerCustomWidgetCollectionInterface* m_collection = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setPath(
            QSettings::IniFormat, QSettings::UserScope, QDir::tempPath() + "/tst_vdesignerplugins");
        QObject* instance = m_loader.instance();
        QVERIFY2(instance, qPrintable(m_loader.errorString()));
        m_collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
        QVERIFY(m_collection);
    }

    void offersTheStandAloneWidgets()
    {
        QStringList names;
        for (QDesignerCustomWidgetInterface* w : m_collection->customWidgets())
            names << w->name();
        for (const char* expected : { "VSearchLineEdit", "VClearLineEdit", "VHistoryComboBox",
                 "VPersistentComboBox", "VClickableLabel" })
            QVERIFY2(names.contains(QLatin1String(expected)), expected);
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void everyWidgetIsCreatedAsDescribed()
    {
        for (QDesignerCustomWidgetInterface* plugin : m_collection->customWidgets()) {
            const QString name = plugin->name();
            QCOMPARE(plugin->group(), QString("veitikgip"));
            QCOMPARE(plugin->includeFile(), name.toLower() + ".h");
            QVERIFY(!plugin->toolTip().isEmpty());

            QWidget parent;
            QWidget* widget = plugin->createWidget(&parent);
            QVERIFY2(widget, qPrintable(name));
            QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), name);
            QCOMPARE(widget->parentWidget(), &parent);

            // The dom XML names the class and a default object name that Designer can use.
            QXmlStreamReader xml(plugin->domXml());
            bool foundWidget = false;
            while (!xml.atEnd()) {
                xml.readNext();
                if (xml.isStartElement() && xml.name() == QLatin1String("widget")) {
                    QCOMPARE(xml.attributes().value("class").toString(), name);
                    QVERIFY(!xml.attributes().value("name").isEmpty());
                    foundWidget = true;
                    break;
                }
            }
            QVERIFY2(foundWidget, qPrintable(name));
            QVERIFY(!xml.hasError());

            // Designer edits the designable properties the class declares.
            const QMetaObject* meta = widget->metaObject();
            for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
                const QMetaProperty property = meta->property(i);
                if (property.isDesignable() && property.isWritable())
                    QVERIFY2(property.write(widget, property.read(widget)),
                        qPrintable(name + "::" + property.name()));
            }
        }
    }
};

QTEST_MAIN(TestVDesignerPlugins)
#include "tst_vdesignerplugins.moc"
