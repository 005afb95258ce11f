#include "vtestsettings.h"

#include <vhtmlitemdelegate.h>

#include <QAbstractTextDocumentLayout>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

namespace {
const QString s_ellipsis = QStringLiteral("...");

// The plain text of a cell document laid out @p width pixels wide.
QString cellText(const QString& html, const QFont& font, int width, qreal* documentWidth = nullptr)
{
    QTextDocument document;
    VHtmlItemDelegate::layoutCellDocument(&document, html, font, width);
    if (documentWidth)
        *documentWidth = document.size().width();
    return document.toPlainText();
}

// A table view drawn by the HTML delegate, without selection or focus frame.
class HtmlView : public QTableView {
public:
    HtmlView(QAbstractItemModel* model, const QSize& size)
    {
        setModel(model);
        setItemDelegate(new VHtmlItemDelegate(this));
        setSelectionMode(QAbstractItemView::NoSelection);
        setFocusPolicy(Qt::NoFocus);
        resize(size);
        show();
    }
};

// Whether everything outside @p cell is painted as in the reference image.
bool sameOutside(const QImage& image, const QImage& reference, const QRect& cell)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!cell.contains(x, y) && image.pixel(x, y) != reference.pixel(x, y))
                return false;
    return true;
}
} // namespace

class tst_VHtmlItemDelegate : public QObject {
    Q_OBJECT

private slots:
    void elidesToTheCell_data();
    void elidesToTheCell();
    void elidesHugeAndNarrowCells();
    void paintsInsideTheCell_data();
    void paintsInsideTheCell();
    void tallDocumentShowsItsFirstLine();
    void anchorAtAgreesWithPainting();
    void sizeHint();

private:
    VTestSettings m_settings;
};

void tst_VHtmlItemDelegate::elidesToTheCell_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("elided");

    QTest::newRow("fits") << "<b>Berlin</b>"
                          << "Berlin" << 200 << false;
    QTest::newRow("fits, several words") << "Anna <i>Becker</i>, Berlin"
                                         << "Anna Becker, Berlin" << 400 << false;
    QTest::newRow("formatted, too wide") << "<b>Anna</b> Becker, <a href=\"x\">Bahnhofstraße 12</a>, Berlin"
                                         << "Anna Becker, Bahnhofstraße 12, Berlin" << 120 << true;
    QTest::newRow("one long word") << QString(60, QLatin1Char('w')) << QString(60, QLatin1Char('w')) << 150
                                   << true;
    QTest::newRow("paragraphs") << "<p>first paragraph with words</p><p>second</p>"
                                << "first paragraph with words\nsecond" << 90 << true;
}

void tst_VHtmlItemDelegate::elidesToTheCell()
{
    QFETCH(QString, html);
    QFETCH(QString, plain);
    QFETCH(int, width);
    QFETCH(bool, elided);

    const QFont font = QApplication::font();
    qreal documentWidth = 0;
    const QString text = cellText(html, font, width, &documentWidth);
    QVERIFY2(documentWidth <= width, qPrintable(QString::number(documentWidth)));
    if (!elided) {
        QCOMPARE(text, plain);
        return;
    }
    QVERIFY2(text.endsWith(s_ellipsis), qPrintable(text));
    const QString kept = text.chopped(s_ellipsis.size());
    QVERIFY2(plain.startsWith(kept), qPrintable(kept));
    QVERIFY(kept.size() < plain.size());

    // The longest beginning that leaves room for the ellipsis: one more character would not.
    QTextDocument longer;
    longer.setHtml(html);
    longer.setDefaultFont(font);
    longer.setDocumentMargin(2);
    QTextCursor cursor(&longer);
    cursor.movePosition(QTextCursor::End);
    cursor.setPosition(kept.size() + 1, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    QCOMPARE(longer.toPlainText(), plain.left(kept.size() + 1));
    QVERIFY(longer.size().width() > width - QFontMetrics(font).horizontalAdvance(s_ellipsis));
}

void tst_VHtmlItemDelegate::elidesHugeAndNarrowCells()
{
    const QFont font = QApplication::font();
    // Cut in a number of layouts that grows with the logarithm of the length, not with the length.
    QString huge;
    for (int i = 0; huge.size() < 100000; ++i)
        huge += QStringLiteral("word%1 ").arg(i);
    qreal documentWidth = 0;
    const QString text
        = cellText(QStringLiteral("<b>") + huge + QStringLiteral("</b>"), font, 200, &documentWidth);
    QVERIFY(text.endsWith(s_ellipsis));
    QVERIFY(huge.startsWith(text.chopped(s_ellipsis.size())));
    QVERIFY(text.size() > 4);
    QVERIFY(documentWidth <= 200);

    // Narrower than the ellipsis: nothing of the text is left, and the loop ends.
    QCOMPARE(cellText(QStringLiteral("Bamberg"), font, 5), s_ellipsis);
    QCOMPARE(cellText(QStringLiteral("Bamberg"), font, 0), s_ellipsis);
    QCOMPARE(cellText(QStringLiteral("Bamberg"), font, -1), s_ellipsis);
    QCOMPARE(cellText(QString(), font, 0), QString());
}

void tst_VHtmlItemDelegate::paintsInsideTheCell_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<int>("alignment");

    const QString wide
        = QStringLiteral("<b>Anna Becker</b>, <a href=\"mailto:anna@example.org\">anna@example.org</a>,"
                         " Bahnhofstraße 12, 96047 Bamberg");
    QTest::newRow("wide") << wide << int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("wide, right aligned") << wide << int(Qt::AlignRight | Qt::AlignVCenter);
    QTest::newRow("tall") << "one<br>two<br>three<br>four<br>five" << int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("large font") << "<span style=\"font-size:40pt\">Bamberg and Berlin</span>"
                                << int(Qt::AlignLeft | Qt::AlignTop);
}

void tst_VHtmlItemDelegate::paintsInsideTheCell()
{
    QFETCH(QString, html);
    QFETCH(int, alignment);

    QStandardItemModel model(3, 3);
    HtmlView view(&model, QSize(400, 200));
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QImage empty = view.viewport()->grab().toImage();

    const QModelIndex middle = model.index(1, 1);
    model.setData(middle, html);
    model.setData(middle, alignment, Qt::TextAlignmentRole);
    const QImage painted = view.viewport()->grab().toImage();
    const QRect cell = view.visualRect(middle);
    QVERIFY(painted != empty);
    QVERIFY(sameOutside(painted, empty, cell));
}

void tst_VHtmlItemDelegate::tallDocumentShowsItsFirstLine()
{
    QStandardItemModel model(1, 1);
    HtmlView view(&model, QSize(300, 150));
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QModelIndex index = model.index(0, 0);
    model.setData(index, int(Qt::AlignLeft | Qt::AlignVCenter), Qt::TextAlignmentRole);
    const QRect cell = view.visualRect(index);

    model.setData(index, QStringLiteral("one"));
    const QImage oneLine = view.viewport()->grab().toImage().copy(cell);
    model.setData(index, QStringLiteral("one<br>two<br>three"));
    const QImage threeLines = view.viewport()->grab().toImage().copy(cell);
    model.setData(index, QStringLiteral("one<br>two<br>three<br>four"));
    const QImage fourLines = view.viewport()->grab().toImage().copy(cell);
    // Taller than the row: drawn from the top, whatever follows the first lines.
    QCOMPARE(threeLines, fourLines);
    QVERIFY(oneLine != threeLines);
}

void tst_VHtmlItemDelegate::anchorAtAgreesWithPainting()
{
    const QString html = QStringLiteral("Mail <a href=\"mailto:anna@example.org\">Anna</a> today");
    VHtmlItemDelegate delegate;

    // Where a cell paints the link: its document, laid out as for painting.
    QTextDocument document;
    VHtmlItemDelegate::layoutCellDocument(&document, html, document.defaultFont(), 1000);
    const QTextBlock block = document.firstBlock();
    const QTextLine line = block.layout()->lineAt(0);
    const QPointF origin = document.documentLayout()->blockBoundingRect(block).topLeft();
    const int linkStart = QStringLiteral("Mail ").size();
    const int linkEnd = linkStart + QStringLiteral("Anna").size();
    const int y = int(origin.y() + line.y() + line.height() / 2);
    auto x = [&](int position) { return origin.x() + line.cursorToX(position); };
    const QString href = QStringLiteral("mailto:anna@example.org");

    QCOMPARE(delegate.anchorAt(html, QPoint(int((x(linkStart) + x(linkEnd)) / 2), y)), href);
    // The link covers exactly its characters' boxes; a layout with another margin would be off by pixels.
    QCOMPARE(delegate.anchorAt(html, QPoint(qFloor(x(linkStart)) + 1, y)), href);
    QCOMPARE(delegate.anchorAt(html, QPoint(qCeil(x(linkEnd)) - 1, y)), href);
    QCOMPARE(delegate.anchorAt(html, QPoint(qFloor(x(linkStart)) - 1, y)), QString());
    QCOMPARE(delegate.anchorAt(html, QPoint(qCeil(x(linkEnd)) + 1, y)), QString());
    QCOMPARE(delegate.anchorAt(html, QPoint(int(x(1)), y)), QString());
    QCOMPARE(delegate.anchorAt(html, QPoint(int(x(linkEnd + 3)), y)), QString());
    QCOMPARE(delegate.anchorAt(html, QPoint(int(x(linkEnd)) + 500, y)), QString());
    QCOMPARE(delegate.anchorAt(html, QPoint((int(x(linkStart) + x(linkEnd)) / 2), y + 100)), QString());
    QCOMPARE(delegate.anchorAt(QStringLiteral("no link"), QPoint(5, y)), QString());
    QCOMPARE(delegate.anchorAt(QString(), QPoint(0, 0)), QString());
}

void tst_VHtmlItemDelegate::sizeHint()
{
    QStandardItemModel model(2, 1);
    model.setData(model.index(0, 0), QStringLiteral("one line"));
    model.setData(model.index(1, 0), QStringLiteral("one<br>two<br>three"));
    QTableView view;
    view.setModel(&model);
    VHtmlItemDelegate delegate;
    QStyledItemDelegate base;
    QStyleOptionViewItem option;
    option.initFrom(&view);
    option.rect = QRect(0, 0, 300, 30);

    const QFontMetrics metrics(option.font);
    const QSize oneLine = delegate.sizeHint(option, model.index(0, 0));
    const QSize threeLines = delegate.sizeHint(option, model.index(1, 0));
    QCOMPARE(oneLine.width(), base.sizeHint(option, model.index(0, 0)).width());
    QCOMPARE(threeLines.width(), base.sizeHint(option, model.index(1, 0)).width());
    // The laid-out document: its lines and a margin of 2 above and below.
    QVERIFY2(
        qAbs(oneLine.height() - (metrics.height() + 4)) <= 2, qPrintable(QString::number(oneLine.height())));
    QVERIFY2(qAbs(threeLines.height() - (3 * metrics.height() + 4)) <= 3,
        qPrintable(QString::number(threeLines.height())));

    // The text wraps at the width of the cell.
    option.rect.setWidth(40);
    QVERIFY(delegate.sizeHint(option, model.index(0, 0)).height() > oneLine.height());
}

QTEST_MAIN(tst_VHtmlItemDelegate)
#include "tst_vhtmlitemdelegate.moc"
