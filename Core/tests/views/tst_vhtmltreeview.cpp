#include "viewtesthelpers.h"
#include "vtestlogcapture.h"
#include "vtestsettings.h"

#include <vhtmlitemdelegate.h>
#include <vhtmltreeview.h>

#include <QHeaderView>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

namespace {
const QString s_mail = QStringLiteral("mailto:anna@example.org");
const QString s_order = QStringLiteral("https://example.org/orders/17");
const QString s_customer = QStringLiteral("https://example.org/c/17");
const QString s_long = QStringLiteral("https://example.org/long");
const QString s_broken = QStringLiteral("http://exa mple.org:99999999");

QString link(const QString& href, const QString& text)
{
    return QStringLiteral("<a href=\"%1\">%2</a>").arg(href, text);
}

// Row 0: a link inside text | a right-aligned link | plain text
//   child: an indented link | a link that is no URL | a long link cut by the cell edge
// Row 1: a cell whose link is in the link role, not in its HTML
QStandardItemModel* makeModel(QObject* parent)
{
    auto model = new QStandardItemModel(0, 3, parent);
    model->setHorizontalHeaderLabels({ "Customer", "Order", "Note" });
    auto order = new QStandardItem(link(s_order, "Order 17"));
    order->setData(int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    QList<QStandardItem*> row0 { new QStandardItem("Mail " + link(s_mail, "Anna") + " today"), order,
        new QStandardItem("plain text") };
    row0.first()->appendRow({ new QStandardItem("See " + link(s_customer, "customer")),
        new QStandardItem(link(s_broken, "broken")),
        new QStandardItem(link(s_long, "a very long link text that cannot fit in its cell")) });
    model->appendRow(row0);
    auto roleLink = new QStandardItem("Invoice 9");
    roleLink->setData("https://example.org/invoices/9", ViewTest::linkRole);
    model->appendRow({ new QStandardItem("Bernd"), roleLink, new QStandardItem });
    return model;
}

// Links are drawn in the palette's link colour (blue); blended edges included.
bool isLinkPixel(QRgb p)
{
    return qBlue(p) - qMax(qRed(p), qGreen(p)) > 80;
}

void click(QWidget* widget, const QPoint& press, const QPoint& release)
{
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, press);
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, release);
}
} // namespace

using ViewTest::moveMouse;

class TestVHtmlTreeView : public QObject {
    Q_OBJECT
    VTestSettings m_settings;

    struct Fixture {
        VHtmlTreeView view;
        QStandardItemModel* model;
        QImage image;
        Fixture()
        {
            model = makeModel(&view);
            view.setModel(model);
            view.setSelectionMode(QAbstractItemView::NoSelection);
            view.setFocusPolicy(Qt::NoFocus);
            view.header()->setStretchLastSection(false);
            view.setColumnWidth(0, 230);
            view.setColumnWidth(1, 200);
            view.setColumnWidth(2, 120);
            view.resize(600, 240);
            view.expandAll();
        }
        bool show()
        {
            view.show();
            if (!QTest::qWaitForWindowExposed(&view))
                return false;
            image = view.viewport()->grab().toImage();
            return true;
        }
        // A cell of row 0 or of its child.
        QModelIndex cell(int column, bool child = false) const
        {
            return child ? model->index(0, column, model->index(0, 0)) : model->index(0, column);
        }
        // Where the cell's link is painted, found in the pixels.
        QRect linkBox(const QModelIndex& index) const
        {
            const QRect rect = view.visualRect(index);
            QRect box;
            for (int y = rect.top(); y <= rect.bottom(); ++y)
                for (int x = rect.left(); x <= rect.right(); ++x)
                    if (isLinkPixel(image.pixel(x, y)))
                        box |= QRect(x, y, 1, 1);
            return box;
        }
    };

private Q_SLOTS:
    void usesTheHtmlDelegate()
    {
        VHtmlTreeView view;
        QVERIFY(qobject_cast<VHtmlItemDelegate*>(view.itemDelegate()));
        QCOMPARE(view.itemDelegate()->parent(), &view);
        QVERIFY(view.hasMouseTracking());
        QCOMPARE(view.anchorAt(QPoint(5, 5)), QString());
    }

    void anchorAtAgreesWithPainting_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("child");
        QTest::addColumn<QString>("href");

        QTest::newRow("inside text") << 0 << false << s_mail;
        QTest::newRow("right-aligned") << 1 << false << s_order;
        QTest::newRow("indented child") << 0 << true << s_customer;
        QTest::newRow("not a URL") << 1 << true << s_broken;
        QTest::newRow("cut at the edge") << 2 << true << s_long;
    }

    void anchorAtAgreesWithPainting()
    {
        QFETCH(int, column);
        QFETCH(bool, child);
        QFETCH(QString, href);

        Fixture f;
        QVERIFY(f.show());
        const QModelIndex index = f.cell(column, child);
        const QRect cell = f.view.visualRect(index);
        const QRect box = f.linkBox(index);
        QVERIFY2(box.width() > 8 && cell.contains(box),
            qPrintable(
                QStringLiteral("%1 %2 %3 %4").arg(box.x()).arg(box.y()).arg(box.width()).arg(box.height())));
        const int y = box.center().y();
        QCOMPARE(f.view.anchorAt(box.center()), href);
        QCOMPARE(f.view.anchorAt(QPoint(box.left() + 1, y)), href);
        QCOMPARE(f.view.anchorAt(QPoint(box.right() - 1, y)), href);
        QCOMPARE(f.view.anchorAt(QPoint(box.center().x(), cell.top())), QString());
        if (box.left() - 4 > cell.left())
            QCOMPARE(f.view.anchorAt(QPoint(box.left() - 4, y)), QString());
        if (box.right() + 4 < cell.right())
            QCOMPARE(f.view.anchorAt(QPoint(box.right() + 4, y)), QString());
        // Drawn at the right, where a left-aligned layout would have found nothing.
        if (QTest::currentDataTag() == QByteArray("right-aligned"))
            QVERIFY(box.left() > cell.center().x());
        if (QTest::currentDataTag() == QByteArray("cut at the edge")) {
            // The "..." drawn after the cut link is no part of it.
            int dark = -1;
            for (int x = box.right() + 1; x <= cell.right() && dark < 0; ++x)
                for (int yy = cell.top(); yy <= cell.bottom(); ++yy)
                    if (qGray(f.image.pixel(x, yy)) < 100 && !isLinkPixel(f.image.pixel(x, yy))) {
                        dark = x;
                        break;
                    }
            QVERIFY2(dark > box.right(), "no ellipsis drawn");
            QCOMPARE(f.view.anchorAt(QPoint(dark + 1, y)), QString());
            QVERIFY(box.right() < cell.right());
        }
    }

    void hoverSignals()
    {
        Fixture f;
        QVERIFY(f.show());
        QStringList events;
        connect(&f.view, &VHtmlTreeView::linkHovered, [&](const QString& l) { events << "hovered " + l; });
        connect(&f.view, &VHtmlTreeView::linkUnhovered, [&] { events << "unhovered"; });
        QWidget* viewport = f.view.viewport();
        const QPoint mail = f.linkBox(f.cell(0)).center();
        const QPoint orderLink = f.linkBox(f.cell(1)).center();
        const QPoint nowhere(10, viewport->height() - 5);
        // Moving along a link is one entry; from one link straight onto another leaves the first.
        const struct {
            QPoint pos;
            Qt::CursorShape shape;
        } moves[] = { { f.view.visualRect(f.cell(2)).center(), Qt::ArrowCursor },
            { mail, Qt::PointingHandCursor }, { mail + QPoint(1, 0), Qt::PointingHandCursor },
            { mail - QPoint(1, 0), Qt::PointingHandCursor }, { orderLink, Qt::PointingHandCursor },
            { nowhere, Qt::ArrowCursor } };
        for (const auto& m : moves) {
            moveMouse(viewport, m.pos);
            QCOMPARE(f.view.cursor().shape(), m.shape);
        }
        QCOMPARE(
            events, (QStringList { "hovered " + s_mail, "unhovered", "hovered " + s_order, "unhovered" }));

        // The model reset while a link is hovered: the next move leaves it.
        events.clear();
        moveMouse(viewport, mail);
        f.model->clear();
        QCOMPARE(f.view.anchorAt(mail), QString());
        moveMouse(viewport, mail);
        QCOMPARE(events, (QStringList { "hovered " + s_mail, "unhovered" }));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
    }

    void clicks()
    {
        Fixture f;
        QVERIFY(f.show());
        QStringList followed;
        connect(&f.view, &VTreeView::linkClicked, [&](const QUrl& url) { followed << url.toString(); });
        QWidget* viewport = f.view.viewport();
        const QRect mailBox = f.linkBox(f.cell(0));
        const QPoint mail = mailBox.center();
        const QPoint orderLink = f.linkBox(f.cell(1)).center();
        const QPoint customer = f.linkBox(f.cell(0, true)).center();
        const QPoint plain = f.view.visualRect(f.cell(2)).center();

        click(viewport, mail, mail + QPoint(1, 0));
        click(viewport, customer, customer);
        // Press and release must both be on the same link.
        click(viewport, mail, plain);
        click(viewport, plain, mail);
        click(viewport, mail, orderLink);
        click(viewport, mail, QPoint(mailBox.right() + 4, mail.y()));
        QCOMPARE(followed, (QStringList { s_mail, s_customer }));

        // A link that is no URL is logged and not followed.
        VTestLogCapture log;
        const QPoint broken = f.linkBox(f.cell(1, true)).center();
        click(viewport, broken, broken);
        QCOMPARE(log.messages(Logger::Warning), QStringList { "Invalid URL: " + s_broken });

        // A double click on a link follows it once, with the first click.
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, orderLink);
        QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, orderLink);
        QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, orderLink);
        QCOMPARE(followed, (QStringList { s_mail, s_customer, s_order }));

        // Not an HTML link: the cell's link role, followed on a double click as in any tree view; a double
        // click on plain text emits nothing.
        const QPoint invoice = f.view.visualRect(f.model->index(1, 1)).center();
        QCOMPARE(f.view.anchorAt(invoice), QString());
        for (const QPoint& pos : { invoice, plain }) {
            QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, pos);
            QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, pos);
        }
        QCOMPARE(followed, (QStringList { s_mail, s_customer, s_order, "https://example.org/invoices/9" }));
    }
};

QTEST_MAIN(TestVHtmlTreeView)
#include "tst_vhtmltreeview.moc"
