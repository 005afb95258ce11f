#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vhighlightitemdelegate.h>
#include <vsortfilterproxymodel.h>
#include <vsortfiltertreeproxymodel.h>

#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QtTest>

namespace {
const int s_columnWidth = 160;

// A table view whose painting depends only on the delegate: no selection, no focus frame.
class View : public QTableView {
public:
    explicit View(QAbstractItemModel* model)
    {
        setModel(model);
        setSelectionMode(QAbstractItemView::NoSelection);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        for (int column = 0; column < model->columnCount(); ++column)
            setColumnWidth(column, s_columnWidth);
        resize(model->columnCount() * s_columnWidth + 60, 200);
    }

    QImage image() { return viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
};

bool isBand(QRgb pixel)
{
    // Translucent yellow over the white base.
    return qRed(pixel) >= 250 && qGreen(pixel) >= 250 && qBlue(pixel) >= 140 && qBlue(pixel) <= 170;
}

// The banded pixel columns of one cell, read along a pixel row above the glyphs, as "from-to" runs.
QString bandRuns(const QImage& image, const QRect& cell)
{
    QStringList runs;
    const int y = cell.top() + 1;
    int start = -1;
    for (int x = cell.left(); x <= cell.right() + 1; ++x) {
        const bool band = x <= cell.right() && isBand(image.pixel(x, y));
        if (band && start < 0)
            start = x;
        if (!band && start >= 0) {
            runs << QStringLiteral("%1-%2").arg(start).arg(x - 1);
            start = -1;
        }
    }
    return runs.join(QLatin1Char(','));
}

int width(const QFontMetrics& metrics, const QString& text)
{
    return metrics.boundingRect(text).width();
}

// Every cell of @p model shows @p text with its row number.
void fill(QStandardItemModel& model, const QString& text)
{
    for (int row = 0; row < model.rowCount(); ++row)
        for (int column = 0; column < model.columnCount(); ++column)
            model.setItem(row, column, new QStandardItem(text.arg(row)));
}

// Qt warnings, such as the one QRegularExpression gives for matching with an invalid pattern.
QStringList s_qtWarnings;
void recordWarnings(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        s_qtWarnings << message;
}

class PaintCounter : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};
} // namespace

class tst_VHighLightItemDelegate : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

private slots:
    void bandsEveryMatch_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("alignRight");
        // Expected matches as (start, length) in the text.
        QTest::addColumn<QList<QPoint>>("matches");

        const auto add = [](const char* tag, const QString& text, const QString& pattern, bool right,
                             const QList<QPoint>& matches) {
            QTest::newRow(tag) << text << pattern << right << matches;
        };
        add("one", "Berlin", "rli", false, { { 2, 3 } });
        add("every occurrence, any case", "Hamburg hamburger HAM", "hAm", false,
            { { 0, 3 }, { 8, 3 }, { 18, 3 } });
        add("right aligned", "Hamburg, HAM", "ham", true, { { 0, 3 }, { 9, 3 } });
        add("pattern, not escaped", "Hamburg Bamberg", "b.rg", false, { { 3, 4 }, { 11, 4 } });
        add("no match", "Berlin", "köln", false, {});
        // A match of the whole text counts; the empty match after it ends the search.
        add("star after a match", "xxa", "x*", false, { { 0, 2 } });
        add("star at once empty", "axx", "x*", false, {});
        // Past the cell's width: the second-to-last match is cut at the edge, the last one not drawn.
        // Measured from the right, the first matches lie left of the cell and are cut at its left edge.
        QList<QPoint> abc;
        for (int i = 0; i < 14; ++i)
            abc << QPoint(4 * i, 3);
        const QString abcText = QStringLiteral("abc ").repeated(14).chopped(1);
        add("right aligned, wider than the cell", abcText, "ABC", true, abc);
        add("clipped and beyond", abcText, "ABC", false, abc);
    }

    void bandsEveryMatch()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(bool, alignRight);
        QFETCH(QList<QPoint>, matches);

        QStandardItemModel model(2, 3);
        model.setItem(0, 0, new QStandardItem(QStringLiteral("plain")));
        model.setItem(0, 1, new QStandardItem(text));
        model.setItem(0, 2, new QStandardItem(QStringLiteral("plain")));
        if (alignRight)
            model.item(0, 1)->setData(int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
        View view(&model);
        auto* delegate = new VHighLightItemDelegate(&view);
        view.setItemDelegate(delegate);
        delegate->setFilterString(pattern);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));

        const QRect cell = view.visualRect(model.index(0, 1));
        const QFontMetrics metrics(view.font());
        const int margin = view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 1;
        QStringList expected;
        bool clipped = false;
        bool dropped = false;
        bool cutLeft = false;
        for (const QPoint& match : matches) {
            const int band = width(metrics, text.mid(match.x(), match.y()));
            const int x = alignRight
                ? cell.right() - margin - band - width(metrics, text.mid(match.x() + match.y()))
                : cell.left() + margin + width(metrics, text.left(match.x()));
            if (x >= cell.right() || x + band <= cell.left()) {
                dropped = true;
                continue;
            }
            clipped = clipped || x + band > cell.right();
            cutLeft = cutLeft || x < cell.left();
            const int start = qMax(x, cell.left());
            const int end = qMin(x + band, cell.right()) - 1;
            // Bands of neighbouring matches may touch; the image shows them as one run.
            if (!expected.isEmpty() && expected.last().section(QLatin1Char('-'), 1).toInt() + 1 >= x)
                expected.last()
                    = expected.last().section(QLatin1Char('-'), 0, 0) + QStringLiteral("-%1").arg(end);
            else
                expected << QStringLiteral("%1-%2").arg(start).arg(end);
        }
        if (QByteArray(QTest::currentDataTag()) == "clipped and beyond")
            QVERIFY(clipped && dropped);
        if (QByteArray(QTest::currentDataTag()) == "right aligned, wider than the cell")
            QVERIFY(cutLeft && dropped);

        const QImage image = view.image();
        QCOMPARE(bandRuns(image, cell), expected.join(QLatin1Char(',')));
        // Nothing spills into the neighbouring cells.
        QCOMPARE(bandRuns(image, view.visualRect(model.index(0, 0))), QString());
        QCOMPARE(bandRuns(image, view.visualRect(model.index(0, 2))), QString());
    }

    void emptySearchPaintsLikeBaseDelegate()
    {
        QStandardItemModel source(3, 2);
        fill(source, QStringLiteral("Bamberg %1"));
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(&source);
        View view(&proxy);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QImage base = view.image();

        auto* delegate = new VHighLightItemDelegate(&view);
        // The proxy's empty search wins over a stored text.
        delegate->setFilterString(QStringLiteral("berg"));
        view.setItemDelegate(delegate);
        QCOMPARE(view.image(), base);

        proxy.setSearchString(QStringLiteral("BERG"));
        const QImage searched = view.image();
        QVERIFY(searched != base);
        QVERIFY(!bandRuns(searched, view.visualRect(proxy.index(2, 1))).isEmpty());

        proxy.setSearchString(QString());
        QCOMPARE(view.image(), base);
    }

    void badPatternsDrawNoBand_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::newRow("unclosed group") << "(";
        QTest::newRow("unclosed class") << "[";
        QTest::newRow("bad repeat") << "*berg";
        QTest::newRow("empty match everywhere") << "x*";
        QTest::newRow("anchor") << "^";
        QTest::newRow("empty alternative first") << "|berg";
    }

    void badPatternsDrawNoBand()
    {
        QFETCH(QString, pattern);
        QStandardItemModel model(4, 2);
        fill(model, QStringLiteral("Bamberg (%1) [a]"));
        View view(&model);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QImage base = view.image();

        auto* delegate = new VHighLightItemDelegate(&view);
        view.setItemDelegate(delegate);
        delegate->setFilterString(pattern);
        s_qtWarnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(recordWarnings);
        const QImage image = view.image();
        const QImage again = view.image(); // nothing kept from the first paint
        qInstallMessageHandler(previous);
        QCOMPARE(image, base);
        QCOMPARE(again, base);
        QCOMPARE(s_qtWarnings, QStringList());
        QCOMPARE(delegate->filterString(&model), pattern);
    }

    void filterStringPerModel()
    {
        VHighLightItemDelegate delegate;
        QCOMPARE(delegate.filterString(nullptr), QString());
        delegate.setFilterString(QStringLiteral("stored"));
        QStandardItemModel plain;
        VSortFilterProxyModel proxy;
        VSortFilterTreeProxyModel treeProxy;
        QSortFilterProxyModel qtProxy; // not a search proxy
        proxy.setSourceModel(&plain);
        treeProxy.setSourceModel(&plain);
        qtProxy.setSourceModel(&plain);
        const auto strings = [&] {
            return QStringList { delegate.filterString(nullptr), delegate.filterString(&plain),
                delegate.filterString(&proxy), delegate.filterString(&treeProxy),
                delegate.filterString(&qtProxy) };
        };
        QCOMPARE(strings(), (QStringList { "stored", "stored", "", "", "stored" }));
        proxy.setSearchString(QStringLiteral("Berlin"));
        treeProxy.setSearchString(QStringLiteral("Köln"));
        QCOMPARE(strings(), (QStringList { "stored", "stored", "Berlin", "Köln", "stored" }));
        // An excluding search highlights nothing: the rows shown do not contain the text.
        proxy.setSearchString(QStringLiteral("Berlin"), true);
        QCOMPARE(delegate.filterString(&proxy), QString());
    }

    void setFilterStringRepaintsOnChangeOnly()
    {
        QStandardItemModel model(2, 2);
        model.setItem(0, 0, new QStandardItem(QStringLiteral("Hamburg")));
        View view(&model);
        auto* delegate = new VHighLightItemDelegate(&view);
        view.setItemDelegate(delegate);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCoreApplication::processEvents();
        PaintCounter counter;
        view.viewport()->installEventFilter(&counter);
        VTestLogCapture log;

        delegate->setFilterString(QStringLiteral("burg"));
        QTRY_VERIFY(counter.paints > 0);
        QCOMPARE(log.entries().size(), 1);
        const VTestLogCapture::Entry entry = log.entries().first();
        QCOMPARE(entry.level, Logger::Debug);
        QVERIFY2(entry.message.startsWith(QStringLiteral("Updating view")), qPrintable(entry.message));
        QVERIFY2(entry.message.contains(QStringLiteral("burg")), qPrintable(entry.message));
        QCOMPARE(entry.file, QStringLiteral("Core/src/widgets/views/vhighlightitemdelegate.cpp"));
        QVERIFY2(entry.function.contains(QStringLiteral("VHighLightItemDelegate::setFilterString")),
            qPrintable(entry.function));
        // The repaint shows the band without any other prompt.
        QVERIFY(!bandRuns(view.image(), view.visualRect(model.index(0, 0))).isEmpty());

        QCoreApplication::processEvents();
        counter.paints = 0;
        log.clear();
        delegate->setFilterString(QStringLiteral("burg"));
        QCoreApplication::processEvents();
        QCOMPARE(counter.paints, 0);
        QCOMPARE(log.entries().size(), 0);

        // Without a view for a parent the text is only stored.
        QObject owner;
        VHighLightItemDelegate detached(&owner);
        detached.setFilterString(QStringLiteral("x"));
        QCOMPARE(detached.filterString(nullptr), QStringLiteral("x"));
        QCOMPARE(log.entries().size(), 0);
    }
};

QTEST_MAIN(tst_VHighLightItemDelegate)
#include "tst_vhighlightitemdelegate.moc"
