#include <QHeaderView>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include <logger.h>
#include <loggerabstractappender.h>

#include "headersortingadapter.h"
#include "vtestsettings.h"

class tst_HeaderSortingAdapter : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void clickCycle();
    void clickOutsideSections();
    void dragIsNotAClick_data();
    void dragIsNotAClick();
    void sortingDisabledPassesClicks();

private:
    VTestSettings m_settings;
};

namespace {
// Records what reaches the logger while it lives.
class RecordingAppender : public LoggerAbstractAppender {
public:
    struct Record {
        Logger::LogLevel level;
        QString file;
        QString message;
    };
    QVector<Record> records;

    RecordingAppender()
    {
        setDetailsLevel(Logger::Trace);
        cuteLoggerInstance()->registerAppender(this);
    }
    ~RecordingAppender() override { cuteLoggerInstance()->removeAppender(this); }

protected:
    void append(const QDateTime&, Logger::LogLevel level, const char* file, int, const char*, const QString&,
        const QString& message) override
    {
        records.append({ level, QString::fromUtf8(file), message });
    }
};

const int SectionWidth = 100;

// Three columns of 100 pixels in a wider view, over a proxy that starts in source order.
struct Fixture {
    QStandardItemModel model { 0, 3 };
    QSortFilterProxyModel proxy;
    QTableView view;
    HeaderSortingAdapter* adapter = nullptr;

    Fixture()
    {
        const char* names[] = { "b", "c", "a", "d" };
        const int numbers[] = { 3, 4, 2, 1 };
        const int others[] = { 2, 1, 4, 3 };
        for (int row = 0; row < 4; ++row) {
            model.appendRow({ new QStandardItem(QString::fromLatin1(names[row])),
                new QStandardItem(QString::number(numbers[row])),
                new QStandardItem(QString::number(others[row])) });
        }
        proxy.setSourceModel(&model);
        view.setModel(&proxy);
        view.setSortingEnabled(true);
        adapter = new HeaderSortingAdapter(&view);
        header()->setSectionsMovable(true);
        header()->setStretchLastSection(false);
        for (int col = 0; col < 3; ++col)
            header()->resizeSection(col, SectionWidth);
    }

    bool show()
    {
        view.resize(500, 300);
        view.show();
        return QTest::qWaitForWindowExposed(&view);
    }

    QHeaderView* header() const { return view.horizontalHeader(); }
    QWidget* viewport() const { return header()->viewport(); }
    QPoint centre(int logical) const
    {
        return QPoint(header()->sectionViewportPosition(logical) + SectionWidth / 2, header()->height() / 2);
    }

    QString rowOrder() const
    {
        QString order;
        for (int row = 0; row < proxy.rowCount(); ++row)
            order += proxy.index(row, 0).data().toString();
        return order;
    }

    void drag(const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, from);
        // QTest::mouseMove carries no buttons in Qt 5.
        const int steps = 4;
        for (int step = 1; step <= steps; ++step) {
            const QPoint pos = from + (to - from) * step / steps;
            QMouseEvent move(QEvent::MouseMove, pos, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(viewport(), &move);
        }
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, to);
    }
};
} // namespace

void tst_HeaderSortingAdapter::construction()
{
    QStandardItemModel model(2, 2);
    QTableView view;
    view.setModel(&model);
    view.setSortingEnabled(true);
    view.horizontalHeader()->setSortIndicator(1, Qt::DescendingOrder);
    QVERIFY(view.horizontalHeader()->isSortIndicatorShown());

    auto* adapter = new HeaderSortingAdapter(&view);
    QCOMPARE(adapter->parent(), &view);
    QCOMPARE(view.horizontalHeader()->sortIndicatorSection(), -1);
    QCOMPARE(view.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
    QVERIFY(!view.horizontalHeader()->isSortIndicatorShown());
}

void tst_HeaderSortingAdapter::clickCycle()
{
    Fixture f;
    QVERIFY(f.show());
    QCOMPARE(f.rowOrder(), QStringLiteral("bcad"));
    QSignalSpy clicked(f.header(), &QHeaderView::sectionClicked);
    RecordingAppender log;

    struct Step {
        int section;
        int indicator;
        Qt::SortOrder order;
        bool shown;
        const char* rows;
    };
    // Column 1 holds 3, 4, 2, 1 for the rows b, c, a, d; column 2 holds 2, 1, 4, 3.
    const Step steps[] = {
        { 0, 0, Qt::AscendingOrder, true, "abcd" },
        { 0, 0, Qt::DescendingOrder, true, "dcba" },
        { 0, -1, Qt::AscendingOrder, false, "bcad" },
        { 1, 1, Qt::AscendingOrder, true, "dabc" },
        { 0, 0, Qt::AscendingOrder, true, "abcd" },
        { 0, 0, Qt::DescendingOrder, true, "dcba" },
        { 1, 1, Qt::AscendingOrder, true, "dabc" },
        { 1, 1, Qt::DescendingOrder, true, "cbad" },
        { 1, -1, Qt::AscendingOrder, false, "bcad" },
    };
    int count = 0;
    for (const Step& step : steps) {
        QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, f.centre(step.section));
        ++count;
        QCOMPARE(f.header()->sortIndicatorSection(), step.indicator);
        QCOMPARE(f.header()->sortIndicatorOrder(), step.order);
        QCOMPARE(f.header()->isSortIndicatorShown(), step.shown);
        QCOMPARE(f.rowOrder(), QString::fromLatin1(step.rows));
        QCOMPARE(f.proxy.sortColumn(), step.indicator);
        // One signal per click: the header's own click handling never runs.
        QCOMPARE(clicked.count(), count);
        QCOMPARE(clicked.last().at(0).toInt(), step.section);
    }

    // Each click is logged at Debug with the order before the click, by name.
    QCOMPARE(log.records.size(), count);
    for (const RecordingAppender::Record& record : log.records) {
        QCOMPARE(record.level, Logger::Debug);
        QCOMPARE(record.file, QStringLiteral("Core/src/widgets/views/headersortingadapter.cpp"));
    }
    QVERIFY2(log.records.at(1).message.contains(QLatin1String("AscendingOrder")),
        qPrintable(log.records.at(1).message));
    QVERIFY2(log.records.at(2).message.contains(QLatin1String("DescendingOrder")),
        qPrintable(log.records.at(2).message));
}

void tst_HeaderSortingAdapter::clickOutsideSections()
{
    Fixture f;
    QVERIFY(f.show());
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, f.centre(1));
    QSignalSpy clicked(f.header(), &QHeaderView::sectionClicked);

    // Right of the last section: nothing under the cursor, nothing changes, still reported.
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(3 * SectionWidth + 50, 5));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), -1);
    QCOMPARE(f.header()->sortIndicatorSection(), 1);
    QCOMPARE(f.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    QCOMPARE(f.rowOrder(), QStringLiteral("dabc"));

    // Other buttons are left to the header.
    QTest::mouseClick(f.viewport(), Qt::RightButton, Qt::NoModifier, f.centre(1));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(f.header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

void tst_HeaderSortingAdapter::dragIsNotAClick_data()
{
    QTest::addColumn<QPoint>("shift");
    QTest::addColumn<bool>("movable");
    QTest::addColumn<int>("clickedSection");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<int>("visualOfFirst");

    // Presses start in the middle of column 0 (x = 50); column 1 is sorted ascending.
    const int distance = QApplication::startDragDistance();
    const QPoint within(distance / 2, distance - distance / 2);
    const QPoint beyond(distance + 1, 0);
    const QPoint intoThird(2 * SectionWidth + 30, 0);
    QTest::newRow("within the start distance") << within << true << 0 << "abcd" << 0;
    QTest::newRow("beyond it, on the same section") << beyond << true << -1 << "dabc" << 0;
    QTest::newRow("beyond it, into the third section") << intoThird << true << -1 << "dabc" << 2;
    QTest::newRow("beyond it, fixed sections") << intoThird << false << 2 << "cbda" << 0;
}

void tst_HeaderSortingAdapter::dragIsNotAClick()
{
    QFETCH(QPoint, shift);
    QFETCH(bool, movable);
    QFETCH(int, clickedSection);
    QFETCH(QString, rows);
    QFETCH(int, visualOfFirst);

    Fixture f;
    f.header()->setSectionsMovable(movable);
    QVERIFY(f.show());
    // A click straight before the drag, with no hover in between.
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, f.centre(1));
    QCOMPARE(f.rowOrder(), QStringLiteral("dabc"));
    QSignalSpy clicked(f.header(), &QHeaderView::sectionClicked);
    QSignalSpy moved(f.header(), &QHeaderView::sectionMoved);

    f.drag(f.centre(0), f.centre(0) + shift);

    QCOMPARE(f.rowOrder(), rows);
    QCOMPARE(f.header()->visualIndex(0), visualOfFirst);
    QCOMPARE(moved.count(), visualOfFirst == 0 ? 0 : 1);
    if (clickedSection == -1) {
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(f.header()->sortIndicatorSection(), 1);
    } else {
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toInt(), clickedSection);
        QCOMPARE(f.header()->sortIndicatorSection(), clickedSection);
    }
    QCOMPARE(f.header()->sortIndicatorOrder(), Qt::AscendingOrder);

    // The next press is a click again, on the column it lands on.
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, f.centre(0));
    QCOMPARE(f.header()->sortIndicatorSection(), 0);
    QCOMPARE(f.header()->visualIndex(0), visualOfFirst);
    QCOMPARE(clicked.last().at(0).toInt(), 0);
}

void tst_HeaderSortingAdapter::sortingDisabledPassesClicks()
{
    Fixture f;
    f.view.setSortingEnabled(false);
    QVERIFY(f.show());
    QSignalSpy clicked(f.header(), &QHeaderView::sectionClicked);
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::NoModifier, f.centre(2));
    // The header reports its own click, once; the adapter does not sort.
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 2);
    QCOMPARE(f.rowOrder(), QStringLiteral("bcad"));
    QCOMPARE(f.proxy.sortColumn(), -1);
}

QTEST_MAIN(tst_HeaderSortingAdapter)
#include "tst_headersortingadapter.moc"
