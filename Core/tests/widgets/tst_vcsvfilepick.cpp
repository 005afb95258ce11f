#include "vtestsettings.h"

#include <vcsvfilepick.h>
#include <vsettings.h>

#include <QCoreApplication>
#include <QDir>
#include <QTest>

namespace {

// Answers the dialogs without showing them and records how they were asked.
class ScriptedFilePick : public VCsvFilePick {
public:
    QString answer;
    QStringList calls; // "open" or "save", then caption, start path and filter

protected:
    QString execOpenDialog(const QString& caption, const QString& startPath, const QString& filter) override
    {
        calls = QStringList { QStringLiteral("open"), caption, startPath, filter };
        return answer;
    }
    QString execSaveDialog(const QString& caption, const QString& startPath, const QString& filter) override
    {
        calls = QStringList { QStringLiteral("save"), caption, startPath, filter };
        return answer;
    }
};

QVariant stored(const QString& key)
{
    VSettings settings(nullptr);
    return settings.value(key);
}

} // namespace

class tst_VCsvFilePick : public QObject {
    Q_OBJECT

private slots:
    void init() { m_settings.clear(); }
    void defaults();
    void saveRemembersFolder();
    void openRemembersFolder();
    void cancelKeepsFolder();
    void readsStoredFolders();

private:
    VTestSettings m_settings;
};

void tst_VCsvFilePick::defaults()
{
    ScriptedFilePick pick;
    QCOMPARE(pick.objectName(), QStringLiteral("VCsvFilePick"));
    const QString appDir = QCoreApplication::applicationDirPath();

    pick.getSaveFileName(QStringLiteral("orders.csv"));
    QCOMPARE(pick.calls,
        QStringList({ QStringLiteral("save"), QStringLiteral("Save CSV"),
            appDir + QStringLiteral("\\orders.csv"), QStringLiteral("csv Files (*.csv)") }));

    pick.getOpenFileName(QStringLiteral("in.csv"));
    QCOMPARE(pick.calls,
        QStringList({ QStringLiteral("open"), QStringLiteral("Select CSV"),
            appDir + QStringLiteral("\\in.csv"), QStringLiteral("csv Files (*.csv)") }));

    // Nothing chosen, nothing stored.
    QVERIFY(!stored(QStringLiteral("VCsvFilePick/savePath")).isValid());
    QVERIFY(!stored(QStringLiteral("VCsvFilePick/openPath")).isValid());
}

void tst_VCsvFilePick::saveRemembersFolder()
{
    const QString appDir = QCoreApplication::applicationDirPath();
    ScriptedFilePick pick;
    pick.answer = QStringLiteral("/srv/exports/2024/customers");
    QCOMPARE(
        pick.getSaveFileName(QStringLiteral("customers.csv")), QStringLiteral("/srv/exports/2024/customers"));
    QCOMPARE(stored(QStringLiteral("VCsvFilePick/savePath")).toString(), QStringLiteral("/srv/exports/2024"));
    QCOMPARE(stored(QStringLiteral("VCsvFilePick/openPath")).toString(), appDir);

    pick.answer.clear();
    pick.getSaveFileName(QStringLiteral("next.csv"));
    QCOMPARE(pick.calls.value(2), QStringLiteral("/srv/exports/2024\\next.csv"));
    pick.getOpenFileName(QStringLiteral("next.csv"));
    QCOMPARE(pick.calls.value(2), appDir + QStringLiteral("\\next.csv"));

    // A new picker starts where the last one saved.
    ScriptedFilePick other;
    other.getSaveFileName(QStringLiteral("x.csv"));
    QCOMPARE(other.calls.value(2), QStringLiteral("/srv/exports/2024\\x.csv"));
}

void tst_VCsvFilePick::openRemembersFolder()
{
    ScriptedFilePick pick;
    // A relative answer is remembered by its absolute folder.
    pick.answer = QStringLiteral("data/in.csv");
    QCOMPARE(pick.getOpenFileName(QStringLiteral("in.csv")), QStringLiteral("data/in.csv"));
    const QString folder = QDir::current().absoluteFilePath(QStringLiteral("data"));
    QCOMPARE(stored(QStringLiteral("VCsvFilePick/openPath")).toString(), folder);
    QCOMPARE(
        stored(QStringLiteral("VCsvFilePick/savePath")).toString(), QCoreApplication::applicationDirPath());

    pick.getOpenFileName(QStringLiteral("b.csv"));
    QCOMPARE(pick.calls.value(2), folder + QStringLiteral("\\b.csv"));
}

void tst_VCsvFilePick::cancelKeepsFolder()
{
    ScriptedFilePick pick;
    pick.answer = QStringLiteral("/srv/a/first.csv");
    pick.getSaveFileName(QStringLiteral("first.csv"));
    pick.getOpenFileName(QStringLiteral("first.csv"));

    pick.answer.clear();
    QCOMPARE(pick.getSaveFileName(QStringLiteral("second.csv")), QString());
    QCOMPARE(pick.getOpenFileName(QStringLiteral("second.csv")), QString());
    QCOMPARE(stored(QStringLiteral("VCsvFilePick/savePath")).toString(), QStringLiteral("/srv/a"));
    QCOMPARE(stored(QStringLiteral("VCsvFilePick/openPath")).toString(), QStringLiteral("/srv/a"));
    pick.getSaveFileName(QStringLiteral("third.csv"));
    QCOMPARE(pick.calls.value(2), QStringLiteral("/srv/a\\third.csv"));
}

void tst_VCsvFilePick::readsStoredFolders()
{
    {
        VSettings settings(nullptr);
        settings.setValue(QStringLiteral("VCsvFilePick/openPath"), QStringLiteral("/in"));
        settings.setValue(QStringLiteral("VCsvFilePick/savePath"), QStringLiteral("/out"));
    }
    ScriptedFilePick pick;
    pick.getOpenFileName(QStringLiteral("a.csv"));
    QCOMPARE(pick.calls.value(2), QStringLiteral("/in\\a.csv"));
    pick.getSaveFileName(QStringLiteral("b.csv"));
    QCOMPARE(pick.calls.value(2), QStringLiteral("/out\\b.csv"));

    // readSettings() picks up what was stored after construction.
    {
        VSettings settings(nullptr);
        settings.setValue(QStringLiteral("VCsvFilePick/savePath"), QStringLiteral("/elsewhere"));
    }
    pick.readSettings();
    pick.getSaveFileName(QStringLiteral("b.csv"));
    QCOMPARE(pick.calls.value(2), QStringLiteral("/elsewhere\\b.csv"));
}

QTEST_MAIN(tst_VCsvFilePick)
#include "tst_vcsvfilepick.moc"
