#include "vtestsettings.h"

#include <vsettings.h>

#include <QFile>
#include <QSettings>
#include <QtTest>

class TestVSettings : public QObject {
    Q_OBJECT

private slots:
    void init();
    void roundTrip_data();
    void roundTrip();
    void groups();
    void removeThroughSettings();
    void instancesShareOneStore();
    void persistsOnDestruction();
    void fileNameRedirects();
    void defaultLocation();
    void corruptedFile_data();
    void corruptedFile();

private:
    QByteArray fileBytes() const;

    VTestSettings m_settings;
};

void TestVSettings::init()
{
    m_settings.clear();
}

QByteArray TestVSettings::fileBytes() const
{
    QFile file(m_settings.fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestVSettings::roundTrip_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QByteArray allBytes;
    for (int i = 0; i < 256; ++i)
        allBytes.append(char(i));

    QTest::newRow("int") << "views/count" << QVariant(42);
    QTest::newRow("negative int") << "views/offset" << QVariant(-7);
    QTest::newRow("bool true") << "w/linkenabled" << QVariant(true);
    QTest::newRow("bool false") << "w/visible" << QVariant(false);
    QTest::newRow("double") << "w/ratio" << QVariant(3.25);
    QTest::newRow("string") << "dialogs/title" << QVariant(QStringLiteral("plain"));
    QTest::newRow("string with syntax")
        << "a key with spaces" << QVariant(QStringLiteral("a = b; [c] \"q\", ünïcødé\\"));
    QTest::newRow("string with line break") << "x/y" << QVariant(QStringLiteral("line\nbreak"));
    QTest::newRow("empty string") << "x/empty" << QVariant(QString());
    QTest::newRow("byte array") << "dialogs/VBaseDialog_ObjNameNotSet" << QVariant(allBytes);
    QTest::newRow("empty byte array") << "views/empty" << QVariant(QByteArray());
    QTest::newRow("string list") << "history/search"
                                 << QVariant(QStringList { QStringLiteral("a"), QStringLiteral("b, c"),
                                        QStringLiteral("d\"e") });
    QTest::newRow("one-element list") << "history/one" << QVariant(QStringList { QStringLiteral("only") });
    QTest::newRow("empty list") << "history/none" << QVariant(QStringList());
    QTest::newRow("deep key") << "group/sub/subsub/key" << QVariant(7);
}

void TestVSettings::roundTrip()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);

    {
        VSettings writer(nullptr);
        QVERIFY(!writer.contains(key));
        QCOMPARE(writer.value(key, QStringLiteral("default")).toString(), QStringLiteral("default"));
        writer.setValue(key, value);
        QVERIFY(writer.contains(key));
    }

    VSettings reader(nullptr);
    const QVariant read = reader.value(key);
    switch (value.userType()) {
    case QMetaType::QStringList:
        QCOMPARE(read.toStringList(), value.toStringList());
        break;
    case QMetaType::QByteArray:
        // Geometry and header states come back as byte arrays, byte for byte.
        QCOMPARE(read.userType(), int(QMetaType::QByteArray));
        QCOMPARE(read.toByteArray(), value.toByteArray());
        break;
    default: {
        QVariant converted = read;
        QVERIFY(converted.convert(value.userType()));
        QCOMPARE(converted, value);
    }
    }
}

void TestVSettings::groups()
{
    VSettings settings(nullptr);
    QCOMPARE(settings.group(), QString());
    settings.beginGroup(QStringLiteral("picklist"));
    settings.setValue(QStringLiteral("size"), 3);
    settings.beginGroup(QStringLiteral("inner"));
    QCOMPARE(settings.group(), QStringLiteral("picklist/inner"));
    settings.setValue(QStringLiteral("name"), QStringLiteral("n"));
    QCOMPARE(settings.value(QStringLiteral("size"), -1).toInt(), -1);
    settings.endGroup();
    QCOMPARE(settings.value(QStringLiteral("size")).toInt(), 3);
    settings.endGroup();
    QCOMPARE(settings.group(), QString());

    QCOMPARE(settings.value(QStringLiteral("picklist/size")).toInt(), 3);
    QCOMPARE(settings.value(QStringLiteral("picklist/inner/name")).toString(), QStringLiteral("n"));
    QVERIFY(!settings.contains(QStringLiteral("size")));

    // A group on one instance does not leak into the next.
    VSettings other(nullptr);
    QCOMPARE(other.group(), QString());
    QCOMPARE(other.value(QStringLiteral("picklist/size")).toInt(), 3);
}

void TestVSettings::removeThroughSettings()
{
    {
        VSettings settings(nullptr);
        settings.setValue(QStringLiteral("views/stale"), QByteArray("state"));
        settings.setValue(QStringLiteral("views/kept"), 1);
        settings.setValue(QStringLiteral("other/gone"), 2);
        settings.settings()->remove(QStringLiteral("views/stale"));
        QVERIFY(!settings.contains(QStringLiteral("views/stale")));
        QCOMPARE(settings.value(QStringLiteral("views/stale"), QStringLiteral("def")).toString(),
            QStringLiteral("def"));
        settings.remove(QStringLiteral("other/gone"));
    }
    VSettings fresh(nullptr);
    QVERIFY(!fresh.contains(QStringLiteral("views/stale")));
    QVERIFY(!fresh.contains(QStringLiteral("other/gone")));
    QCOMPARE(fresh.value(QStringLiteral("views/kept")).toInt(), 1);
    QCOMPARE(fresh.settings()->allKeys(), QStringList { QStringLiteral("views/kept") });
}

void TestVSettings::instancesShareOneStore()
{
    VSettings a(nullptr);
    VSettings b(nullptr);
    QCOMPARE(a.settings()->fileName(), m_settings.fileName());
    QCOMPARE(b.settings()->fileName(), m_settings.fileName());
    QVERIFY(a.settings() != b.settings());

    a.setValue(QStringLiteral("shared/x"), 1);
    QCOMPARE(b.value(QStringLiteral("shared/x")).toInt(), 1);
    b.setValue(QStringLiteral("shared/x"), 2);
    QCOMPARE(a.value(QStringLiteral("shared/x")).toInt(), 2);
    b.settings()->remove(QStringLiteral("shared/x"));
    QVERIFY(!a.contains(QStringLiteral("shared/x")));

    // Parented instances work the same way.
    QObject owner;
    auto* child = new VSettings(&owner);
    QCOMPARE(child->parent(), &owner);
    child->setValue(QStringLiteral("shared/y"), 3);
    QCOMPARE(a.value(QStringLiteral("shared/y")).toInt(), 3);
}

void TestVSettings::persistsOnDestruction()
{
    {
        VSettings settings(nullptr);
        settings.setValue(QStringLiteral("persist/number"), 7);
        settings.setValue(QStringLiteral("persist/text"), QStringLiteral("seven"));
    }
    // On disk, not only in the process's cache.
    const QByteArray bytes = fileBytes();
    QVERIFY2(bytes.contains("[persist]\nnumber=7\ntext=seven\n"), bytes.constData());

    QSettings raw(m_settings.fileName(), QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("persist/number")).toInt(), 7);
    QCOMPARE(raw.value(QStringLiteral("persist/text")).toString(), QStringLiteral("seven"));
}

void TestVSettings::fileNameRedirects()
{
    QCOMPARE(VSettings::fileName(), m_settings.fileName());

    const QString other = m_settings.dir() + QStringLiteral("/other.ini");
    VSettings::setFileName(other);
    QCOMPARE(VSettings::fileName(), other);
    {
        VSettings settings(nullptr);
        QCOMPARE(settings.settings()->fileName(), other);
        QCOMPARE(settings.settings()->format(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("where/file"), QStringLiteral("other"));
    }
    VSettings::setFileName(m_settings.fileName());

    VSettings settings(nullptr);
    QVERIFY(!settings.contains(QStringLiteral("where/file")));
    QSettings raw(other, QSettings::IniFormat);
    QCOMPARE(raw.value(QStringLiteral("where/file")).toString(), QStringLiteral("other"));
}

void TestVSettings::defaultLocation()
{
    const QString organisation = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();

    VSettings::setFileName(QString());
    QCoreApplication::setOrganizationName(QStringLiteral("Makers"));
    QCoreApplication::setApplicationName(QStringLiteral("Front"));
    // VTestSettings points the user-scope INI path at its temporary folder.
    QCOMPARE(VSettings::fileName(), m_settings.dir() + QStringLiteral("/Makers/Front.ini"));
    QCOMPARE(VSettings(nullptr).settings()->format(), QSettings::IniFormat);

    // Without an organisation the application name stands in for it.
    QCoreApplication::setOrganizationName(QString());
    QCOMPARE(VSettings::fileName(), m_settings.dir() + QStringLiteral("/Front/Front.ini"));

    QCoreApplication::setOrganizationName(organisation);
    QCoreApplication::setApplicationName(application);
    VSettings::setFileName(m_settings.fileName());
    QCOMPARE(VSettings::fileName(), m_settings.fileName());
}

void TestVSettings::corruptedFile_data()
{
    QTest::addColumn<QByteArray>("content");

    QByteArray binary;
    for (int i = 0; i < 512; ++i)
        binary.append(char((i * 37 + 11) & 0xff));

    QTest::newRow("binary noise") << binary;
    QTest::newRow("unbalanced brackets") << QByteArray("[[[dialogs\n]]]=\n[\n=\n==\n");
    QTest::newRow("unterminated byte array") << QByteArray("[dialogs]\nbroken=@ByteArray(abc\n");
    QTest::newRow("garbage variant") << QByteArray(
        "[dialogs]\nbroken=\"@Variant(\\0\\0\\0\\x7f\\xff\\xff\")\n");
    QTest::newRow("truncated variant") << QByteArray("[dialogs]\nbroken=@Variant(\n");
    QTest::newRow("huge line") << QByteArray("[dialogs]\nbroken=") + QByteArray(1 << 20, 'x');
    QTest::newRow("nul bytes") << QByteArray("[dialogs]\nbro\0ken=1\n\0\0\0", 22);
}

void TestVSettings::corruptedFile()
{
    QFETCH(QByteArray, content);
    {
        QFile file(m_settings.fileName());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    {
        VSettings settings(nullptr);
        // Reading whatever the broken entry turned into must be harmless.
        settings.value(QStringLiteral("dialogs/broken")).toByteArray();
        QCOMPARE(settings.value(QStringLiteral("dialogs/missing"), QStringLiteral("def")).toString(),
            QStringLiteral("def"));
        QCOMPARE(settings.value(QStringLiteral("views/absent"), 5).toInt(), 5);
        settings.setValue(QStringLiteral("dialogs/new"), QByteArray("\x01\x02", 2));
        QCOMPARE(settings.value(QStringLiteral("dialogs/new")).toByteArray(), QByteArray("\x01\x02", 2));
    }
    VSettings fresh(nullptr);
    QCOMPARE(fresh.value(QStringLiteral("dialogs/new")).toByteArray(), QByteArray("\x01\x02", 2));
}

QTEST_GUILESS_MAIN(TestVSettings)
#include "tst_vsettings.moc"
