#include <QDirIterator>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QtTest>

#include "vsearchlineedit.h"
#include "vtestsettings.h"

// The icons live in the library's resources; linking it is all an application needs.
class tst_Resources : public QObject {
    Q_OBJECT

private slots:
    void everyCompiledIconDraws();
    void requiredPaths_data();
    void requiredPaths();
    void pathsWithoutSlashResolve_data();
    void pathsWithoutSlashResolve();
    void borderImageIsSliceable();
    void searchFieldImagesResolve();

private:
    static QStringList compiledPaths();
    static int paintedPixels(const QImage& image);

    VTestSettings m_settings;
};

QStringList tst_Resources::compiledPaths()
{
    QStringList paths;
    for (const QString& root : { QStringLiteral(":/images"), QStringLiteral(":/icons") }) {
        QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            paths.append(it.next());
    }
    paths.sort();
    return paths;
}

int tst_Resources::paintedPixels(const QImage& image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    int painted = 0;
    for (int y = 0; y < argb.height(); ++y)
        for (int x = 0; x < argb.width(); ++x)
            painted += qAlpha(argb.pixel(x, y)) > 0 ? 1 : 0;
    return painted;
}

void tst_Resources::everyCompiledIconDraws()
{
    const QStringList paths = compiledPaths();
    QVERIFY2(paths.size() >= 30, qPrintable(paths.join(' ')));
    for (const QString& path : paths) {
        QVERIFY2(!path.endsWith(QLatin1String(".svg")), qPrintable(path + " is listed with its extension"));
        const QPixmap pixmap = QIcon(path).pixmap(16, 16);
        QVERIFY2(!pixmap.isNull(), qPrintable(path));
        QCOMPARE(pixmap.size(), QSize(16, 16));
        // A drawing the renderer could not read comes out blank rather than null.
        QVERIFY2(paintedPixels(pixmap.toImage()) > 16, qPrintable(path));
    }
}

void tst_Resources::requiredPaths_data()
{
    QTest::addColumn<QString>("path");
    const char* paths[] = { ":/images/esf-border", ":/images/esf-search", ":/images/esf-clear",
        ":/images/esf-clear-hover", ":/images/esf-clear-active", ":/images/add", ":/images/remove",
        ":/images/refresh", ":/images/new", ":/images/copy", ":/images/edit", ":/images/view",
        ":/images/delete", ":/images/undelete", ":/images/email", ":/images/submit", ":/images/revert",
        ":/images/csv", ":/images/pdf", ":/images/filter", ":/images/settings", ":/images/link",
        ":/images/selectcolumn", ":/icons/selectcolumn", ":/images/newrecord", ":/images/editrecord",
        ":/images/readonly", ":/images/open", ":/images/clear", ":/images/copyclipboard" };
    for (const char* path : paths)
        QTest::newRow(path) << QString::fromLatin1(path);
}

void tst_Resources::requiredPaths()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
    QVERIFY(file.readAll().contains("<svg"));
    QVERIFY(!QPixmap(path).isNull());
}

void tst_Resources::pathsWithoutSlashResolve_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("add") << QStringLiteral(":images/add");
    QTest::newRow("remove") << QStringLiteral(":images/remove");
    QTest::newRow("esf-search") << QStringLiteral(":images/esf-search");
    QTest::newRow("esf-clear") << QStringLiteral(":images/esf-clear");
}

void tst_Resources::pathsWithoutSlashResolve()
{
    QFETCH(QString, path);
    QFile withoutSlash(path);
    QVERIFY2(withoutSlash.open(QIODevice::ReadOnly), qPrintable(path));
    QFile withSlash(QString(path).insert(1, QLatin1Char('/')));
    QVERIFY(withSlash.open(QIODevice::ReadOnly));
    QCOMPARE(withoutSlash.readAll(), withSlash.readAll());

    QVERIFY(!QPixmap(path).isNull());
    const QPixmap pixmap = QIcon(path).pixmap(16, 16);
    QVERIFY(!pixmap.isNull());
    QVERIFY(paintedPixels(pixmap.toImage()) > 16);
}

void tst_Resources::borderImageIsSliceable()
{
    // Sliced 3 px from each edge: the corners must hold the frame and the middle must stay clear
    // so that the field's own background shows through.
    const QImage image(QStringLiteral(":/images/esf-border"));
    QVERIFY(!image.isNull());
    QVERIFY(image.width() > 6 && image.height() > 6);
    QVERIFY(qAlpha(image.pixel(0, image.height() / 2)) > 0);
    QVERIFY(qAlpha(image.pixel(image.width() / 2, 0)) > 0);
    QCOMPARE(qAlpha(image.pixel(image.width() / 2, image.height() / 2)), 0);
}

void tst_Resources::searchFieldImagesResolve()
{
    VSearchLineEdit edit;
    QString sheets = edit.styleSheetForCurrentState() + edit.buttonStyleSheetForCurrentState();
    edit.setText(QStringLiteral("x"));
    sheets += edit.buttonStyleSheetForCurrentState();

    const QRegularExpression url(QStringLiteral("url\\(([^)]*)\\)"));
    QStringList paths;
    for (auto it = url.globalMatch(sheets); it.hasNext();)
        paths.append(it.next().captured(1));
    QCOMPARE(paths.size(), 5);
    for (const QString& path : paths)
        QVERIFY2(!QPixmap(path).isNull(), qPrintable(path));
}

QTEST_MAIN(tst_Resources)
#include "tst_resources.moc"
