#include "vtestsettings.h"

#include <vcore.h>
#include <vfileutils.h>
#include <vprivatable.h>

#include <QMetaEnum>
#include <QSignalSpy>
#include <QtTest>

class EditEmitter : public QObject {
    Q_OBJECT
public:
    QList<VCore::EditTypes> received;

signals:
    void editRequested(int viewId, VCore::EditTypes type);

public slots:
    void onEditRequested(int, VCore::EditTypes type) { received.append(type); }
};

namespace {
int s_privatesAlive = 0;

class CountingPrivate : public VPrivate {
public:
    CountingPrivate() { ++s_privatesAlive; }
    ~CountingPrivate() override { --s_privatesAlive; }
    int value = 17;
};

class Owner : public QObject, public VPrivatable {
public:
    Owner()
        : VPrivatable(new CountingPrivate)
    {
    }
    CountingPrivate* counting() const { return privateData<CountingPrivate>(); }
};
} // namespace

class TestVCore : public QObject {
    Q_OBJECT

private slots:
    void editTypes();
    void editTypesThroughQueuedSignal();
    void nullDate();
    void stringsToInts_data();
    void stringsToInts();
    void fileUtils_data();
    void fileUtils();
    void privatableDeletesPrivate();

private:
    VTestSettings m_settings;
};

void TestVCore::editTypes()
{
    QCOMPARE(int(VCore::EditRecord), 0);
    QCOMPARE(int(VCore::NewRecord), 1);
    QCOMPARE(int(VCore::CopyRecord), 2);

    // Registered under the name that string-based connections and QVariant use.
    const int id = QMetaType::type("VCore::EditTypes");
    QVERIFY(id != QMetaType::UnknownType);
    QCOMPARE(id, qMetaTypeId<VCore::EditTypes>());
    QCOMPARE(QByteArray(QMetaType::typeName(id)), QByteArray("VCore::EditTypes"));

    const QMetaEnum metaEnum = QMetaEnum::fromType<VCore::EditTypes>();
    QCOMPARE(metaEnum.keyCount(), 3);
    QCOMPARE(metaEnum.value(0), 0);
    QCOMPARE(metaEnum.value(2), 2);

    const QVariant v = QVariant::fromValue(VCore::CopyRecord);
    QCOMPARE(v.userType(), id);
    QCOMPARE(v.value<VCore::EditTypes>(), VCore::CopyRecord);
    QCOMPARE(v.toInt(), 2);
}

void TestVCore::editTypesThroughQueuedSignal()
{
    EditEmitter emitter;
    QVERIFY(connect(&emitter, SIGNAL(editRequested(int, VCore::EditTypes)), &emitter,
        SLOT(onEditRequested(int, VCore::EditTypes)), Qt::QueuedConnection));
    QSignalSpy spy(&emitter, &EditEmitter::editRequested);
    QVERIFY(spy.isValid());

    emit emitter.editRequested(3, VCore::NewRecord);
    emit emitter.editRequested(4, VCore::CopyRecord);
    QVERIFY(emitter.received.isEmpty());
    QTRY_COMPARE(emitter.received.size(), 2);
    QCOMPARE(emitter.received, (QList<VCore::EditTypes> { VCore::NewRecord, VCore::CopyRecord }));
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(1).value<VCore::EditTypes>(), VCore::CopyRecord);

    // Across threads the argument must be copied through the meta-type system too.
    QThread thread;
    EditEmitter receiver;
    receiver.moveToThread(&thread);
    connect(&emitter, &EditEmitter::editRequested, &receiver, &EditEmitter::onEditRequested);
    thread.start();
    emit emitter.editRequested(5, VCore::EditRecord);
    QTRY_COMPARE(receiver.received.size(), 1);
    thread.quit();
    QVERIFY(thread.wait(5000));
    QCOMPARE(receiver.received.first(), VCore::EditRecord);
}

void TestVCore::nullDate()
{
    const QDate date = VCore::nullDate();
    QVERIFY(date.isValid());
    QCOMPARE(VCore::nullDate(), date);
    QCOMPARE(date, QDate(1753, 1, 1));
    QVERIFY(date != QDate::currentDate());
}

void TestVCore::stringsToInts_data()
{
    QTest::addColumn<QStringList>("strings");
    QTest::addColumn<QList<int>>("expected");

    QTest::newRow("in order") << QStringList { "3", "1", "2" } << QList<int> { 3, 1, 2 };
    QTest::newRow("signs and spaces") << QStringList { " 4 ", "-5", "+6" } << QList<int> { 4, -5, 6 };
    QTest::newRow("garbage gives zero")
        << QStringList { "abc", "7x", "", "3.5", "0x10" } << QList<int> { 0, 0, 0, 0, 0 };
    QTest::newRow("limits") << QStringList { "2147483647", "-2147483648", "99999999999" }
                            << QList<int> { 2147483647, -2147483647 - 1, 0 };
    QTest::newRow("empty list") << QStringList {} << QList<int> {};
}

void TestVCore::stringsToInts()
{
    QFETCH(QStringList, strings);
    QFETCH(QList<int>, expected);
    QCOMPARE(VCore::stringsToInts(strings), expected);
}

void TestVCore::fileUtils_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("extension");

    QTest::newRow("absolute") << "/a/b.c"
                              << "/a"
                              << "c";
    QTest::newRow("bare name") << "b.c"
                               << ""
                               << "c";
    QTest::newRow("file in root") << "/b"
                                  << "/"
                                  << "";
    QTest::newRow("hidden file") << "a/.hidden"
                                 << "a"
                                 << "";
    QTest::newRow("dotted folder") << "a.b/c"
                                   << "a.b"
                                   << "";
    QTest::newRow("windows path") << "C:\\x\\y.txt"
                                  << "C:\\x"
                                  << "txt";
    QTest::newRow("two extensions") << "/home/me/archive.tar.gz"
                                    << "/home/me"
                                    << "gz";
    QTest::newRow("upper case") << "photo.JPG"
                                << ""
                                << "JPG";
    QTest::newRow("trailing dot") << "/a/b."
                                  << "/a"
                                  << "";
    QTest::newRow("hidden with extension") << "/a/.config.ini"
                                           << "/a"
                                           << "ini";
    QTest::newRow("empty") << ""
                           << ""
                           << "";
}

void TestVCore::fileUtils()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    QFETCH(QString, extension);
    QCOMPARE(VFileUtils::folder(path), folder);
    QCOMPARE(VFileUtils::extension(path), extension);
}

void TestVCore::privatableDeletesPrivate()
{
    QCOMPARE(s_privatesAlive, 0);
    auto* owner = new Owner;
    QCOMPARE(s_privatesAlive, 1);
    QCOMPARE(owner->counting()->value, 17);
    delete owner;
    QCOMPARE(s_privatesAlive, 0);

    // Deleting through the VPrivatable base reaches the subclass destructors.
    VPrivatable* base = new Owner;
    QCOMPARE(s_privatesAlive, 1);
    delete base;
    QCOMPARE(s_privatesAlive, 0);

    // Qt parent-child ownership ends in the same place.
    {
        QObject parent;
        auto* child = new Owner;
        child->setParent(&parent);
        QCOMPARE(s_privatesAlive, 1);
    }
    QCOMPARE(s_privatesAlive, 0);

    // A class without private state may pass null.
    delete new VPrivatable(nullptr);
}

QTEST_GUILESS_MAIN(TestVCore)
#include "tst_vcore.moc"
