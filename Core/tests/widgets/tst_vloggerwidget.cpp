#include <QtTest>

#include "logwidgetappender.h"
#include "vloggerwidget.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <logger.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QTextEdit>
#include <QThread>
#include <QToolBar>
#include <QVBoxLayout>

#include <atomic>

namespace {
QTextEdit* textArea(const VLoggerWidget& w)
{
    return w.findChild<QTextEdit*>();
}

QStringList lines(const VLoggerWidget& w)
{
    const QString text = textArea(w)->toPlainText();
    return text.isEmpty() ? QStringList() : text.split('\n');
}

QAction* action(const VLoggerWidget& w, const QString& text)
{
    for (QAction* a : w.findChild<QToolBar*>()->actions()) {
        if (a->text() == text)
            return a;
    }
    return nullptr;
}

QImage iconImage(const QIcon& icon)
{
    return icon.pixmap(16, 16).toImage();
}

// "INFO  12:34:56.789 text": level padded to five, time to the millisecond, message.
const QString LinePattern = QStringLiteral("^%1 \\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d %2$");
} // namespace

class tst_VLoggerWidget : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void appenderFormat();
    void levelFilter_data();
    void levelFilter();
    void levelBoxAndSignal();
    void attachedOnGuiThread();
    void otherThreadThroughEventLoop();
    void clearAndCopy();
    void historyLimit();
    void threadsWhileWidgetsComeAndGo();

private:
    VTestSettings m_settings;
};

void tst_VLoggerWidget::construction()
{
    VLoggerWidget w(nullptr, false);
    QCOMPARE(w.objectName(), QStringLiteral("LoggerWidget"));
    QVERIFY(!w.isAttached());

    auto* toolBar = w.findChild<QToolBar*>();
    QVERIFY(toolBar);
    QCOMPARE(toolBar->maximumHeight(), 20);
    auto* box = w.findChild<QComboBox*>();
    QVERIFY(box);
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    QCOMPARE(items, QStringList({ "Trace", "Debug", "Info", "Warning" }));
    QCOMPARE(box->currentIndex(), 0);

    const QList<QAction*> actions = toolBar->actions();
    QCOMPARE(actions.size(), 3);
    QCOMPARE(toolBar->widgetForAction(actions.at(0)), box);
    QCOMPARE(actions.at(1)->text(), QStringLiteral("Clear"));
    QCOMPARE(actions.at(2)->text(), QStringLiteral("Copy to Clipboard"));
    QCOMPARE(iconImage(actions.at(1)->icon()), iconImage(QIcon(":/images/clear")));
    QCOMPARE(iconImage(actions.at(2)->icon()), iconImage(QIcon(":/images/copyclipboard")));
    QVERIFY(!iconImage(actions.at(1)->icon()).isNull());

    QTextEdit* text = textArea(w);
    QCOMPARE(text->font().family(), QStringLiteral("Monospace"));
    QCOMPARE(text->font().styleHint(), QFont::TypeWriter);
    QCOMPARE(text->font().styleStrategy(), QFont::PreferDefault);
    QVERIFY(text->isReadOnly());

    // Everything in the bar fits its 20 pixels.
    w.resize(400, 200);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(toolBar->height(), 20);
    for (QAction* a : actions) {
        const QRect r = toolBar->widgetForAction(a)->geometry();
        QVERIFY2(r.top() >= 0 && r.bottom() < 20, qPrintable(a->text()));
    }

    auto* layout = qobject_cast<QVBoxLayout*>(w.layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(layout->itemAt(0)->widget(), toolBar);
    QCOMPARE(layout->itemAt(1)->widget(), text);
}

void tst_VLoggerWidget::appenderFormat()
{
    LogWidgetAppender appender;
    QCOMPARE(appender.format(), QStringLiteral("%{Type:-5} %{time}{HH:mm:ss.zzz} %{message}"));
    QSignalSpy spy(&appender, &LogWidgetAppender::logMessage);
    appender.setDetailsLevel(Logger::Trace);
    const QDateTime time(QDate(2024, 3, 5), QTime(7, 8, 9, 45));
    appender.write(time, Logger::Info, "a.cpp", 3, "void f()", QString(), QStringLiteral("ready"));
    appender.write(time, Logger::Warning, "a.cpp", 4, "void f()", QString(), QStringLiteral("low"));
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("INFO  07:08:09.045 ready"));
    QCOMPARE(spy.at(0).at(1).toInt(), int(Logger::Info));
    QCOMPARE(spy.at(1).at(0).toString(), QStringLiteral("WARNING 07:08:09.045 low"));
    QCOMPARE(spy.at(1).at(1).toInt(), int(Logger::Warning));
}

void tst_VLoggerWidget::levelFilter_data()
{
    QTest::addColumn<int>("boxLevel");
    QTest::addColumn<int>("messageLevel");
    QTest::addColumn<bool>("shown");
    QTest::newRow("trace box, trace") << 0 << 0 << true;
    QTest::newRow("info box, debug dropped") << 2 << 1 << false;
    QTest::newRow("info box, info") << 2 << 2 << true;
    QTest::newRow("info box, warning") << 2 << 3 << true;
    QTest::newRow("warning box, info dropped") << 3 << 2 << false;
    QTest::newRow("warning box, error") << 3 << 4 << true;
    QTest::newRow("warning box, fatal") << 3 << 5 << true;
}

void tst_VLoggerWidget::levelFilter()
{
    QFETCH(int, boxLevel);
    QFETCH(int, messageLevel);
    QFETCH(bool, shown);
    VLoggerWidget w(nullptr, false);
    w.setLoggerLevel(boxLevel);
    w.loggerFunction(QStringLiteral("first"), messageLevel);
    w.loggerFunction(QStringLiteral("second"), messageLevel);
    QCOMPARE(lines(w), shown ? QStringList({ "first", "second" }) : QStringList());
}

void tst_VLoggerWidget::levelBoxAndSignal()
{
    VTestLogCapture log;
    VLoggerWidget w(nullptr, false);
    auto* box = w.findChild<QComboBox*>();
    QSignalSpy spy(&w, &VLoggerWidget::traceLevelChanged);

    w.setLoggerLevel(2);
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(w.loggerLevel(), 2);
    w.setLoggerLevel(2);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 2);

    // The user's choice in the box counts the same.
    box->setCurrentIndex(3);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toInt(), 3);
    QCOMPARE(w.property("loggerLevel").toInt(), 3);

    w.setLoggerLevel(4);
    w.setLoggerLevel(-1);
    QCOMPARE(w.loggerLevel(), 3);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(log.messages(Logger::Warning).size(), 2);

    QAction* levelAction = w.findChild<QToolBar*>()->actions().at(0);
    w.showLogLevelComboBox(false);
    QVERIFY(!levelAction->isVisible());
    w.showLogLevelComboBox(true);
    QVERIFY(levelAction->isVisible());
}

void tst_VLoggerWidget::attachedOnGuiThread()
{
    auto* w = new VLoggerWidget(nullptr, true);
    VLoggerWidget unattached(nullptr, false);
    QVERIFY(w->isAttached());
    w->setLoggerLevel(Logger::Info);
    LOG_DEBUG("hidden detail");
    LOG_INFO("opened <b>orders</b> & more");
    LOG_WARNING() << "low stock";
    LOG_ERROR("failed");
    // Logged on the GUI thread: shown at once, without an event loop turn.
    const QStringList shown = lines(*w);
    QCOMPARE(shown.size(), 3);
    QCOMPARE(lines(unattached), QStringList());
    QVERIFY2(QRegularExpression(LinePattern.arg("INFO ", "opened <b>orders</b> & more"))
                 .match(shown.at(0))
                 .hasMatch(),
        qPrintable(shown.at(0)));
    QVERIFY2(QRegularExpression(LinePattern.arg("WARNING", "low stock")).match(shown.at(1)).hasMatch(),
        qPrintable(shown.at(1)));
    QVERIFY2(QRegularExpression(LinePattern.arg("ERROR", "failed")).match(shown.at(2)).hasMatch(),
        qPrintable(shown.at(2)));

    // Detached when destroyed: logging afterwards reaches no dead widget, and a new one starts empty.
    delete w;
    LOG_INFO("after the widget");
    VLoggerWidget next(nullptr, true);
    QCOMPARE(lines(next), QStringList());
    LOG_TRACE("trace reaches it");
    QCOMPARE(lines(next).size(), 1);
}

void tst_VLoggerWidget::otherThreadThroughEventLoop()
{
    VLoggerWidget w(nullptr, true);
    QScopedPointer<QThread> thread(QThread::create([] { LOG_INFO("from a worker"); }));
    thread->start();
    QVERIFY(thread->wait(5000));
    // Queued to the GUI thread: nothing until its event loop runs.
    QCOMPARE(lines(w), QStringList());
    QTRY_COMPARE(lines(w).size(), 1);
    QVERIFY(QRegularExpression(LinePattern.arg("INFO ", "from a worker")).match(lines(w).at(0)).hasMatch());
}

void tst_VLoggerWidget::clearAndCopy()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    VLoggerWidget w(nullptr, false);
    clipboard->setText(QStringLiteral("stale"));
    action(w, "Copy to Clipboard")->trigger();
    QCOMPARE(clipboard->text(), QString());

    w.loggerFunction(QStringLiteral("one"), Logger::Info);
    w.loggerFunction(QStringLiteral("two"), Logger::Error);
    action(w, "Copy to Clipboard")->trigger();
    QCOMPARE(clipboard->text(), QStringLiteral("one\ntwo"));

    action(w, "Clear")->trigger();
    QCOMPARE(lines(w), QStringList());
    w.loggerFunction(QStringLiteral("three"), Logger::Info);
    QCOMPARE(lines(w), QStringList({ "three" }));
}

void tst_VLoggerWidget::historyLimit()
{
    VLoggerWidget w(nullptr, false);
    QCOMPARE(w.maximumLineCount(), 10000);
    QSignalSpy spy(&w, &VLoggerWidget::maximumLineCountChanged);
    w.setMaximumLineCount(20);
    w.setMaximumLineCount(20);
    QCOMPARE(spy.count(), 1);
    QStringList expected;
    for (int i = 1; i <= 25; ++i)
        w.loggerFunction(QString::number(i), Logger::Info);
    // 22 lines are allowed (a tenth more); the 23rd drops the log back to 20.
    for (int i = 4; i <= 25; ++i)
        expected << QString::number(i);
    QCOMPARE(lines(w), expected);

    w.setMaximumLineCount(3);
    QCOMPARE(lines(w), QStringList({ "23", "24", "25" }));
    w.loggerFunction(QStringLiteral("26"), Logger::Info);
    QCOMPARE(lines(w), QStringList({ "24", "25", "26" }));
    w.setMaximumLineCount(0);
    for (int i = 27; i <= 30; ++i)
        w.loggerFunction(QString::number(i), Logger::Info);
    QCOMPARE(lines(w).size(), 7);
    QCOMPARE(spy.count(), 3);
}

void tst_VLoggerWidget::threadsWhileWidgetsComeAndGo()
{
    std::atomic<bool> stop { false };
    std::atomic<int> logged { 0 };
    QVector<QThread*> workers;
    for (int t = 0; t < 4; ++t) {
        workers << QThread::create([&stop, &logged, t] {
            for (int n = 0; !stop; ++n) {
                LOG_INFO("worker %d line %d", t, n);
                ++logged;
                // Paced so the GUI thread, which lays out every line, keeps up with the queue.
                QThread::usleep(1000);
            }
        });
        workers.last()->start();
    }

    for (int i = 0; i < 150; ++i) {
        auto* w = new VLoggerWidget(nullptr, true);
        LOG_DEBUG("gui line %d", i);
        if (i % 3 == 0)
            QCoreApplication::processEvents();
        delete w;
    }
    QVERIFY(logged > 0);

    VLoggerWidget last(nullptr, true);
    QTRY_VERIFY(lines(last).filter(QStringLiteral("worker 3")).size() >= 3);
    stop = true;
    for (QThread* worker : workers) {
        QVERIFY(worker->wait(5000));
        delete worker;
    }
    QCoreApplication::processEvents();
    const QRegularExpression pattern(LinePattern.arg("INFO ", "worker [0-3] line \\d+"));
    for (const QString& line : lines(last))
        QVERIFY2(pattern.match(line).hasMatch(), qPrintable(line));
}

QTEST_MAIN(tst_VLoggerWidget)
#include "tst_vloggerwidget.moc"
