#include "mainwindow.h"
#include "sampledatabase.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMessageBox>
#include <QPixmap>
#include <QStandardPaths>

#include <cstdio>

namespace {

void print(FILE* stream, const QString& text)
{
    std::fputs(qPrintable(text + QLatin1Char('\n')), stream);
    std::fflush(stream);
}

// Shows the window once, lets it lay out and paint, and saves what it shows.
bool saveScreenshot(MainWindow& window, const QString& fileName)
{
    window.resize(1280, 800);
    window.show();
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
    const QPixmap picture = window.grab();
    const QString dir = QFileInfo(fileName).absolutePath();
    return !picture.isNull() && QDir().mkpath(dir) && picture.save(fileName, "PNG");
}

// A screenshot is rendered offscreen, so that it needs no display and never flashes a window;
// the platform must be chosen before the application object exists.
void useOffscreenForScreenshot(int argc, char* argv[])
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "--screenshot" || arg.startsWith("--screenshot=") || arg == "-screenshot") {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            return;
        }
    }
}

} // namespace

int main(int argc, char* argv[])
{
    useOffscreenForScreenshot(argc, argv);
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("veitikgip"));
    QApplication::setApplicationName(QStringLiteral("veitikgip-demo"));
    QApplication::setApplicationVersion(QStringLiteral(VEITIKGIP_DEMO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate(
        "main", "Browses a sample database of customers, products, orders and order lines."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption databaseOption(QStringLiteral("database"),
        QApplication::translate("main",
            "Use the SQLite database <file>; it is created with sample data when missing or incomplete."),
        QApplication::translate("main", "file"));
    const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
        QApplication::translate(
            "main", "Render the window once the data is shown, save it as a PNG <file> and exit."),
        QApplication::translate("main", "file"));
    const QCommandLineOption tableOption(QStringLiteral("table"),
        QApplication::translate("main",
            "Start with the tab of <table>: customers, products, orders, order_lines or customers_orders."),
        QApplication::translate("main", "table"));
    const QCommandLineOption searchOption(QStringLiteral("search"),
        QApplication::translate("main", "Start with the search <text> in that tab, its matches highlighted."),
        QApplication::translate("main", "text"));
    const QCommandLineOption pageOption(QStringLiteral("page"),
        QApplication::translate("main", "Start on the page <name>: tables, widgets or about."),
        QApplication::translate("main", "name"));
    const QCommandLineOption collapsedOption(QStringLiteral("collapsed"),
        QApplication::translate("main", "Start with the side menu collapsed to its icons."));
    const QCommandLineOption readOnlyOption(QStringLiteral("read-only"),
        QApplication::translate("main", "Open every view read-only: records can be viewed, not changed."));
    const QCommandLineOption userOption(QStringLiteral("user"),
        QApplication::translate("main",
            "Sign in as <user>: \"viewer\" has no rights to create, copy, edit, delete or save records."),
        QApplication::translate("main", "user"));
    const QCommandLineOption panelsOption(QStringLiteral("show-panels"),
        QApplication::translate("main", "Open the filter and options panels of the views that have them."));
    parser.addOption(panelsOption);
    parser.addOption(readOnlyOption);
    parser.addOption(userOption);
    parser.addOption(databaseOption);
    parser.addOption(pageOption);
    parser.addOption(collapsedOption);
    parser.addOption(tableOption);
    parser.addOption(searchOption);
    parser.addOption(screenshotOption);
    parser.process(app);

    QString databaseFile = parser.value(databaseOption);
    if (databaseFile.isEmpty()) {
        databaseFile = QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                           .filePath(QStringLiteral("sample.sqlite"));
    }

    SampleDatabase database(databaseFile);
    if (!database.open()) {
        const QString message = QApplication::translate("main", "%1 (%2)")
                                    .arg(database.errorString(), QDir::toNativeSeparators(databaseFile));
        print(stderr, message);
        if (!parser.isSet(screenshotOption))
            QMessageBox::critical(nullptr, QApplication::applicationName(), message);
        return 1;
    }
    if (database.wasCreated()) {
        const SampleDatabase::Counts n = database.counts();
        print(stdout,
            QApplication::translate("main",
                "Created the sample database %1 in %2 ms "
                "(%3 customers, %4 products, %5 orders, %6 order lines).")
                .arg(QDir::toNativeSeparators(databaseFile))
                .arg(database.creationTime())
                .arg(n.customers)
                .arg(n.products)
                .arg(n.orders)
                .arg(n.orderLines));
    }

    QElapsedTimer loading;
    loading.start();
    MainWindow window;
    window.setWindowTitle(
        QApplication::translate("main", "veitikgip demo - %1").arg(QDir::toNativeSeparators(databaseFile)));
    if (parser.isSet(panelsOption))
        window.showPanels();
    if (parser.isSet(readOnlyOption))
        window.setReadOnly(true);
    if (parser.isSet(userOption)) {
        const QString user = parser.value(userOption);
        if (user == QLatin1String("viewer")) {
            window.withholdRecordActions();
        } else if (user != QLatin1String("admin")) {
            print(stderr,
                QApplication::translate("main", "There is no user %1 (try viewer or admin).").arg(user));
            return 2;
        }
    }
    if (parser.isSet(tableOption) && !window.setCurrentTable(parser.value(tableOption))) {
        print(
            stderr, QApplication::translate("main", "There is no table %1.").arg(parser.value(tableOption)));
        return 2;
    }

    if (parser.isSet(searchOption))
        window.search(parser.value(searchOption));
    if (parser.isSet(pageOption) && !window.setCurrentPage(parser.value(pageOption))) {
        print(stderr, QApplication::translate("main", "There is no page %1.").arg(parser.value(pageOption)));
        return 2;
    }
    window.setMenuExpanded(!parser.isSet(collapsedOption));

    const QString screenshotFile = parser.value(screenshotOption);
    if (!screenshotFile.isEmpty()) {
        if (!saveScreenshot(window, screenshotFile)) {
            print(stderr,
                QApplication::translate("main", "Cannot save the screenshot to %1")
                    .arg(QDir::toNativeSeparators(screenshotFile)));
            return 1;
        }
        print(stdout,
            QApplication::translate("main", "Loaded the tables in %1 ms (%2); screenshot saved to %3")
                .arg(loading.elapsed())
                .arg(window.loadTimes())
                .arg(QDir::toNativeSeparators(QFileInfo(screenshotFile).absoluteFilePath())));
        return 0;
    }

    window.resize(1280, 800);
    window.show();
    return app.exec();
}
