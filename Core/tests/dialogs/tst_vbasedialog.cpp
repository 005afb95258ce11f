#include "vtestsettings.h"

#include <vbasedialog.h>
#include <vsettings.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

// Records the calls of the virtual hooks and exposes the protected skeleton.
class ProbeDialog : public VBaseDialog {
    Q_OBJECT
public:
    explicit ProbeDialog(const QString& name = QString())
    {
        if (!name.isEmpty())
            setObjectName(name);
        names.clear();
    }

    using VBaseDialog::buttonBox;
    using VBaseDialog::mainLayout;

    QStringList calls;
    QStringList names;

    void readSettings() override
    {
        calls << QStringLiteral("read");
        VBaseDialog::readSettings();
    }
    void saveSettings() override
    {
        // Saving must happen before the dialog hides, while the geometry is still the shown one.
        calls << (isVisible() ? QStringLiteral("save") : QStringLiteral("save-hidden"));
        VBaseDialog::saveSettings();
    }

protected slots:
    void onObjectNameChanged(const QString& objectName) override { names << objectName; }
};

namespace {
const QRect s_placed(137, 151, 423, 287);
const QRect s_elsewhere(40, 60, 333, 222);

QVariant stored(const QString& name)
{
    VSettings settings(nullptr);
    return settings.value(QStringLiteral("dialogs/") + name);
}

enum WayOut { CloseButton, EscapeKey, WindowClose, CloseCall, DoneCall };
} // namespace

Q_DECLARE_METATYPE(WayOut)

class TestVBaseDialog : public QObject {
    Q_OBJECT

private slots:
    void init();
    void skeleton();
    void metaObject();
    void geometrySavedOnEveryWayOut_data();
    void geometrySavedOnEveryWayOut();
    void restoredOnEveryShowAndSharedByName();
    void objectNameChange();
    void naturalSizeWithoutUsableValue_data();
    void naturalSizeWithoutUsableValue();

private:
    VTestSettings m_settings;
};

void TestVBaseDialog::init()
{
    m_settings.clear();
}

void TestVBaseDialog::skeleton()
{
    ProbeDialog dialog;
    QCOMPARE(dialog.objectName(), QStringLiteral("VBaseDialog_ObjNameNotSet"));
    QVERIFY(dialog.isWindow());
    QCOMPARE(dialog.windowFlags(),
        Qt::WindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::CustomizeWindowHint
            | Qt::WindowCloseButtonHint));
    QVERIFY(!dialog.isModal());

    QCOMPARE(dialog.layout(), dialog.mainLayout);
    QCOMPARE(dialog.mainLayout->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(dialog.mainLayout->spacing(), 1);

    QDialogButtonBox* box = dialog.buttonBox;
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(box->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(box->layout()->spacing(), 4);

    auto* row = dialog.findChild<QHBoxLayout*>(QStringLiteral("buttonBoxLayout"));
    QVERIFY(row);
    QCOMPARE(row->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(row->spacing(), 0);
    QCOMPARE(row->count(), 1);
    QCOMPARE(row->itemAt(0)->widget(), box);
    QCOMPARE(dialog.mainLayout->count(), 1);
    QCOMPARE(dialog.mainLayout->itemAt(0)->layout(), row);

    QPushButton* ok = box->button(QDialogButtonBox::Ok);
    QPushButton* cancel = box->button(QDialogButtonBox::Cancel);
    QCOMPARE(ok->text(), QStringLiteral("&Close"));
    QCOMPARE(box->buttonRole(ok), QDialogButtonBox::AcceptRole);
    QCOMPARE(cancel->text(), QStringLiteral("&Cancel"));
    QVERIFY(cancel->isHidden());

    // Nothing is read or written before the dialog is shown.
    QVERIFY(dialog.calls.isEmpty() && dialog.names.isEmpty());
    QVERIFY(VSettings(nullptr).settings()->allKeys().isEmpty());

    dialog.show();
    QVERIFY(ok->isVisible() && !cancel->isVisible());
    QCOMPARE(dialog.calls, QStringList { "read" });
}

void TestVBaseDialog::metaObject()
{
    const QMetaObject& mo = VBaseDialog::staticMetaObject;
    QCOMPARE(QByteArray(mo.superClass()->className()), QByteArray("QDialog"));
    QCOMPARE(mo.methodCount() - mo.methodOffset(), 2);
    QCOMPARE(mo.propertyCount(), mo.propertyOffset());

    const QMetaMethod nameChanged = mo.method(mo.indexOfSlot("onObjectNameChanged(QString)"));
    QCOMPARE(nameChanged.access(), QMetaMethod::Protected);
    QCOMPARE(nameChanged.parameterNames(), QList<QByteArray> { "objectName" });
    QVERIFY(nameChanged.methodIndex() >= mo.methodOffset());
    const QMetaMethod done = mo.method(mo.indexOfSlot("done(int)"));
    QCOMPARE(done.access(), QMetaMethod::Public);
    QVERIFY(done.methodIndex() >= mo.methodOffset());
}

void TestVBaseDialog::geometrySavedOnEveryWayOut_data()
{
    QTest::addColumn<WayOut>("way");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("calls");
    const QStringList once { "read", "save" };
    QTest::newRow("&Close button") << CloseButton << int(QDialog::Accepted) << once;
    QTest::newRow("Escape") << EscapeKey << int(QDialog::Rejected) << once;
    // The close event saves, and QDialog turns it into reject(), which saves again through done().
    QTest::newRow("window close button")
        << WindowClose << int(QDialog::Rejected) << once + QStringList("save");
    QTest::newRow("close()") << CloseCall << int(QDialog::Rejected) << once + QStringList("save");
    QTest::newRow("done(7)") << DoneCall << 7 << once;
}

void TestVBaseDialog::geometrySavedOnEveryWayOut()
{
    QFETCH(WayOut, way);
    QFETCH(int, result);
    QFETCH(QStringList, calls);
    {
        ProbeDialog dialog(QStringLiteral("wayOut"));
        QStringList signalLog;
        connect(&dialog, &QDialog::accepted, this, [&] { signalLog << "accepted"; });
        connect(&dialog, &QDialog::rejected, this, [&] { signalLog << "rejected"; });
        connect(&dialog, &QDialog::finished, this, [&](int r) { signalLog << QString::number(r); });
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.setGeometry(s_placed);
        QCOMPARE(dialog.geometry(), s_placed);
        QVERIFY(!stored(QStringLiteral("wayOut")).isValid());

        switch (way) {
        case CloseButton:
            QTest::mouseClick(dialog.buttonBox->button(QDialogButtonBox::Ok), Qt::LeftButton);
            break;
        case EscapeKey:
            QTest::keyClick(&dialog, Qt::Key_Escape);
            break;
        case WindowClose: // what the window manager's close button does
            dialog.windowHandle()->close();
            break;
        case CloseCall:
            QVERIFY(dialog.close());
            break;
        case DoneCall:
            dialog.done(7);
            break;
        }
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), result);
        const QStringList named { "rejected", "accepted" };
        QCOMPARE(signalLog,
            (result <= 1 ? QStringList(named.at(result)) : QStringList()) << QString::number(result));
        QCOMPARE(dialog.calls, calls);
    }
    QCOMPARE(stored(QStringLiteral("wayOut")).userType(), int(QMetaType::QByteArray));
    QCOMPARE(VSettings(nullptr).settings()->allKeys(), QStringList { "dialogs/wayOut" });
    ProbeDialog again(QStringLiteral("wayOut"));
    again.show();
    QCOMPARE(again.geometry(), s_placed);
}

void TestVBaseDialog::restoredOnEveryShowAndSharedByName()
{
    ProbeDialog first(QStringLiteral("shared"));
    first.show();
    first.setGeometry(s_placed);
    first.accept();
    QCOMPARE(first.calls, (QStringList { "read", "save" }));

    // A second dialog of the same name opens where the first was left and writes the same key.
    ProbeDialog second(QStringLiteral("shared"));
    second.show();
    QCOMPARE(second.geometry(), s_placed);
    second.setGeometry(s_elsewhere);
    second.reject();
    QCOMPARE(VSettings(nullptr).settings()->allKeys(), QStringList { "dialogs/shared" });

    // Reshown, the first dialog follows the stored value, not its own last geometry.
    first.show();
    QCOMPARE(first.geometry(), s_elsewhere);
    QCOMPARE(first.calls, (QStringList { "read", "save", "read" }));
    first.accept();

    // Dialogs that never get a name share the placeholder's key.
    {
        ProbeDialog unnamed;
        unnamed.show();
        unnamed.setGeometry(s_placed);
        unnamed.accept();
    }
    QVERIFY(!stored(QStringLiteral("VBaseDialog_ObjNameNotSet")).toByteArray().isEmpty());
    ProbeDialog otherUnnamed;
    otherUnnamed.show();
    QCOMPARE(otherUnnamed.geometry(), s_placed);
}

void TestVBaseDialog::objectNameChange()
{
    ProbeDialog dialog;
    dialog.setObjectName(QStringLiteral("orders"));
    dialog.setObjectName(QStringLiteral("orders"));
    QCOMPARE(dialog.names, QStringList { "orders" });

    // The new name is the key at the next show and close.
    {
        ProbeDialog writer(QStringLiteral("orders"));
        writer.show();
        writer.setGeometry(s_elsewhere);
        writer.accept();
    }
    dialog.show();
    QCOMPARE(dialog.geometry(), s_elsewhere);
    dialog.setGeometry(s_placed);
    dialog.accept();
    QCOMPARE(VSettings(nullptr).settings()->allKeys(), QStringList { "dialogs/orders" });

    dialog.setObjectName(QStringLiteral("customers"));
    QCOMPARE(dialog.names, (QStringList { "orders", "customers" }));
    dialog.show();
    dialog.accept();
    QCOMPARE(
        VSettings(nullptr).settings()->allKeys(), (QStringList { "dialogs/customers", "dialogs/orders" }));

    ProbeDialog reader(QStringLiteral("orders"));
    reader.show();
    QCOMPARE(reader.geometry(), s_placed);
}

void TestVBaseDialog::naturalSizeWithoutUsableValue_data()
{
    QTest::addColumn<QVariant>("value");

    QByteArray halfGeometry;
    {
        ProbeDialog source(QStringLiteral("source"));
        source.show();
        source.setGeometry(s_placed);
        halfGeometry = source.saveGeometry();
        halfGeometry.truncate(halfGeometry.size() / 2);
        source.hide();
    }

    QByteArray magicThenNothing; // a geometry header with nothing after it
    QDataStream(&magicThenNothing, QIODevice::WriteOnly) << quint32(0x1D9D0CB) << quint16(3);

    QTest::newRow("no key") << QVariant();
    QTest::newRow("string") << QVariant(QStringLiteral("garbage"));
    QTest::newRow("random bytes") << QVariant(QByteArray::fromHex("5e2a9c01ff7b3d88c4e0a61973b2"));
    QTest::newRow("empty bytes") << QVariant(QByteArray());
    QTest::newRow("truncated geometry") << QVariant(magicThenNothing);
    QTest::newRow("geometry cut in half") << QVariant(halfGeometry);
}

void TestVBaseDialog::naturalSizeWithoutUsableValue()
{
    QFETCH(QVariant, value);
    QSize natural;
    {
        ProbeDialog reference(QStringLiteral("reference"));
        reference.show();
        natural = reference.size();
    }
    QVERIFY(natural.width() > 0 && natural.height() > 0);

    if (value.isValid())
        VSettings(nullptr).setValue(QStringLiteral("dialogs/garbage"), value);

    ProbeDialog dialog(QStringLiteral("garbage"));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.size(), natural);
    QCOMPARE(dialog.calls, QStringList { "read" });
    // Closing replaces the garbage with a real geometry.
    dialog.accept();
    QCOMPARE(stored(QStringLiteral("garbage")).toByteArray(), dialog.saveGeometry());
}

QTEST_MAIN(TestVBaseDialog)
#include "tst_vbasedialog.moc"
