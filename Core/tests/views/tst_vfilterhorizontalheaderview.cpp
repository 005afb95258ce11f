#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

#include "vfilterhorizontalheaderview.h"
#include "vtestsettings.h"

class tst_VFilterHorizontalHeaderView : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void heightFollowsFilterRow();
    void widgetsFollowSections();
    void widgetFontAndStyle();
    void replaceAndRemove();
    void widgetsPlacedAfterShow();

private:
    VTestSettings m_settings;
};

namespace {
const int SectionSizes[] = { 80, 90, 100, 110, 120 };
const int ColumnCount = 5;

// A table over a five-column model with the filter header and fixed section sizes.
struct Fixture {
    QStandardItemModel model { 20, ColumnCount };
    QTableView view;
    VFilterHorizontalHeaderView* header = new VFilterHorizontalHeaderView(&view);

    Fixture()
    {
        view.setHorizontalHeader(header);
        view.setModel(&model);
        header->setStretchLastSection(false);
        for (int col = 0; col < ColumnCount; ++col)
            header->resizeSection(col, SectionSizes[col]);
        // As the table view does: the filter row follows horizontal scrolling.
        QObject::connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, header,
            &VFilterHorizontalHeaderView::onScroll);
    }

    bool show(int width = 400)
    {
        view.resize(width, 300);
        view.show();
        return QTest::qWaitForWindowExposed(&view);
    }

    // Height of the title row alone, as a plain header would have it.
    int titleHeight() const { return header->QHeaderView::sizeHint().height(); }

    QRect expectedGeometry(int column) const
    {
        return QRect(header->sectionPosition(column) - header->offset(), titleHeight(),
            header->sectionSize(column), header->filterRowHeight());
    }
};
} // namespace

void tst_VFilterHorizontalHeaderView::construction()
{
    VFilterHorizontalHeaderView header(nullptr);
    QCOMPARE(header.orientation(), Qt::Horizontal);
    QVERIFY(header.sectionsClickable());
    QVERIFY(header.sectionsMovable());
    QVERIFY(header.highlightSections());
    QVERIFY(header.isSortIndicatorShown());
    QCOMPARE(header.filterRowHeight(), 0);
    QCOMPARE(header.filterWidget(0), nullptr);
}

void tst_VFilterHorizontalHeaderView::heightFollowsFilterRow()
{
    Fixture f;
    QTableView plainView;
    plainView.setModel(&f.model);
    const int plainHeight = plainView.horizontalHeader()->sizeHint().height();
    QVERIFY(plainHeight > 0);

    // A stored height without any widget changes nothing.
    f.header->setFilterRowHeight(30);
    QCOMPARE(f.header->filterRowHeight(), 0);
    QCOMPARE(f.header->sizeHint().height(), plainHeight);
    QVERIFY(f.show());
    QCOMPARE(f.header->height(), plainHeight);
    QCOMPARE(f.header->viewport()->height(), plainHeight);

    // The first widget opens the row: the header grows, the titles keep their height.
    f.header->setFilterWidget(1, new QLineEdit);
    QCOMPARE(f.header->filterRowHeight(), 30);
    QCOMPARE(f.header->sizeHint().height(), plainHeight + 30);
    QTRY_COMPARE(f.header->height(), plainHeight + 30);
    QCOMPARE(f.header->viewport()->height(), plainHeight);
    QCOMPARE(f.view.viewport()->geometry().top(), f.header->geometry().bottom() + 1);

    f.header->setFilterRowHeight(24);
    QCOMPARE(f.header->sizeHint().height(), plainHeight + 24);
    QTRY_COMPARE(f.header->height(), plainHeight + 24);
    QCOMPARE(f.header->filterWidget(1)->height(), 24);

    // Removing the last widget closes the row again.
    f.header->removeFilterWidget(1);
    QCOMPARE(f.header->filterRowHeight(), 0);
    QCOMPARE(f.header->sizeHint().height(), plainHeight);
    QTRY_COMPARE(f.header->height(), plainHeight);
    QCOMPARE(f.header->viewport()->height(), plainHeight);

    // A widget deleted by its owner drops out of the row as well.
    auto* edit = new QLineEdit;
    f.header->setFilterWidget(3, edit);
    QTRY_COMPARE(f.header->height(), plainHeight + 24);
    delete edit;
    QCOMPARE(f.header->filterWidget(3), nullptr);
    QCOMPARE(f.header->filterRowHeight(), 0);
    QCOMPARE(f.header->sizeHint().height(), plainHeight);
}

void tst_VFilterHorizontalHeaderView::widgetsFollowSections()
{
    Fixture f;
    f.view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    f.header->setFilterRowHeight(22);
    QLineEdit* edits[ColumnCount] = {};
    for (int col : { 0, 2, 4 }) {
        edits[col] = new QLineEdit;
        f.header->setFilterWidget(col, edits[col]);
    }
    QVERIFY(f.show(300));
    const int top = f.titleHeight();
    QVERIFY(top > 0);

    // Sections 80, 90, 100, 110, 120 wide from x = 0.
    QCOMPARE(edits[0]->geometry(), QRect(0, top, 80, 22));
    QCOMPARE(edits[2]->geometry(), QRect(170, top, 100, 22));
    QCOMPARE(edits[4]->geometry(), QRect(380, top, 120, 22));
    for (QLineEdit* edit : { edits[0], edits[2], edits[4] })
        QVERIFY(edit->isVisible());

    f.header->resizeSection(0, 150);
    QCOMPARE(edits[0]->geometry(), QRect(0, top, 150, 22));
    QCOMPARE(edits[2]->geometry(), QRect(240, top, 100, 22));
    QCOMPARE(edits[4]->geometry(), QRect(450, top, 120, 22));

    // Visual order becomes 4, 0, 1, 2, 3.
    f.header->moveSection(4, 0);
    QCOMPARE(edits[4]->geometry(), QRect(0, top, 120, 22));
    QCOMPARE(edits[0]->geometry(), QRect(120, top, 150, 22));
    QCOMPARE(edits[2]->geometry(), QRect(360, top, 100, 22));

    // A move between two positions re-places the sections it passes over.
    f.header->moveSection(1, 3);
    QCOMPARE(f.header->visualIndex(0), 3);
    QCOMPARE(edits[0]->geometry(), QRect(310, top, 150, 22));
    QCOMPARE(edits[2]->geometry(), QRect(210, top, 100, 22));
    QCOMPARE(edits[4]->geometry(), QRect(0, top, 120, 22));

    f.view.horizontalScrollBar()->setValue(75);
    QCOMPARE(f.header->offset(), 75);
    QCOMPARE(edits[4]->geometry(), QRect(-75, top, 120, 22));
    QCOMPARE(edits[2]->geometry(), QRect(135, top, 100, 22));
    QCOMPARE(edits[0]->geometry(), QRect(235, top, 150, 22));

    // Resizing while scrolled keeps the offset in the sum.
    f.header->resizeSection(2, 60);
    for (int col : { 0, 2, 4 })
        QCOMPARE(edits[col]->geometry(), f.expectedGeometry(col));
    QCOMPARE(edits[0]->x(), 120 + 90 + 60 - 75);

    // A hidden section leaves its widget without width.
    f.header->hideSection(2);
    QCOMPARE(edits[2]->width(), 0);
    QCOMPARE(edits[0]->geometry(), f.expectedGeometry(0));
}

void tst_VFilterHorizontalHeaderView::widgetFontAndStyle()
{
    Fixture f;
    QFont headerFont(QStringLiteral("Courier"), 17);
    headerFont.setBold(true);
    f.model.setHeaderData(0, Qt::Horizontal, headerFont, Qt::FontRole);
    f.model.setHeaderData(2, Qt::Horizontal, QFont(QStringLiteral("Serif"), 5), Qt::FontRole);
    f.header->setFilterRowHeight(20);
    auto* first = new QLineEdit;
    auto* third = new QLineEdit;
    f.header->setFilterWidget(0, first);
    f.header->setFilterWidget(2, third);
    QVERIFY(f.show());

    // Every widget takes the first column's header font.
    for (QLineEdit* edit : { first, third }) {
        QCOMPARE(edit->font().pointSize(), 17);
        QVERIFY(edit->font().bold());
        QCOMPARE(edit->font().family(), headerFont.family());
        QCOMPARE(edit->styleSheet(), QStringLiteral("background-color:#FBF5EF; border:1px solid #D8D8D8"));
        QCOMPARE(edit->parentWidget(), f.header);
    }

    // Header data that is not a font gives the default font.
    f.model.setHeaderData(0, Qt::Horizontal, 42, Qt::FontRole);
    f.header->resizeSection(1, 95);
    QCOMPARE(first->font().pointSize(), QFont().pointSize());
    QCOMPARE(third->font().bold(), QFont().bold());
}

void tst_VFilterHorizontalHeaderView::replaceAndRemove()
{
    Fixture f;
    f.header->setFilterRowHeight(20);
    QPointer<QLineEdit> old = new QLineEdit;
    QPointer<QLineEdit> replacement = new QLineEdit;
    f.header->setFilterWidget(1, old);
    f.header->setFilterWidget(1, replacement);
    QCOMPARE(f.header->filterWidget(1), replacement.data());
    QVERIFY(old);
    QCOMPARE(old->parentWidget(), f.header);

    f.header->removeFilterWidget(1);
    QVERIFY(!replacement);
    QCOMPARE(f.header->filterWidget(1), nullptr);
    QVERIFY(old);
    QCOMPARE(f.header->filterRowHeight(), 0);

    // Nothing to remove, nothing deleted.
    f.header->removeFilterWidget(1);
    f.header->removeFilterWidget(7);
    QVERIFY(old);

    // The header owns its widgets.
    QPointer<QLineEdit> owned = new QLineEdit;
    f.header->setFilterWidget(3, owned);
    delete f.header;
    QVERIFY(!owned);
    QVERIFY(!old);
}

void tst_VFilterHorizontalHeaderView::widgetsPlacedAfterShow()
{
    Fixture f;
    f.header->setFilterRowHeight(26);
    auto* before = new QLineEdit;
    f.header->setFilterWidget(3, before);
    QVERIFY(!before->isVisible());
    QVERIFY(f.show(600));
    QVERIFY(before->isVisible());

    // One placed on a header already on screen is shown in place at once.
    auto* after = new QLineEdit;
    f.header->setFilterWidget(1, after);
    QVERIFY(after->isVisible());
    QCOMPARE(after->geometry(), QRect(80, f.titleHeight(), 90, 26));
    QCOMPARE(before->geometry(), QRect(270, f.titleHeight(), 110, 26));

    // On a hidden header the widget waits, like one placed before the first show.
    f.header->hide();
    auto* later = new QLineEdit;
    f.header->setFilterWidget(2, later);
    QVERIFY(!later->isVisible());
    f.header->show();
    QTRY_VERIFY(later->isVisible());
    QTRY_COMPARE(later->geometry(), QRect(170, f.titleHeight(), 100, 26));
}

QTEST_MAIN(tst_VFilterHorizontalHeaderView)
#include "tst_vfilterhorizontalheaderview.moc"
