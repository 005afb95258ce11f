// Painting a 50-row by 8-column viewport while a search is active: VHighLightItemDelegate against
// QStyledItemDelegate on the same view, proxy and cells.
#include <vhighlightitemdelegate.h>
#include <vsortfilterproxymodel.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QTableView>

#include <cstdio>

namespace {
const int s_rows = 2000;
const int s_columns = 8;
const int s_visibleRows = 50;
const int s_columnWidth = 110;

// Cities, streets and names in which "berg" turns up in most cells, once or twice, in any case.
class AddressModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : s_rows;
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : s_columns;
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return QVariant();
        static const QStringList words = { QStringLiteral("Bamberg"), QStringLiteral("Heidelberg"),
            QStringLiteral("Bergstraße 4"), QStringLiteral("Nürnberg"), QStringLiteral("Kiel"),
            QStringLiteral("Bergmann, Berg"), QStringLiteral("Königsberger"), QStringLiteral("Würzburg") };
        return words.at((index.row() * 3 + index.column()) % words.size());
    }
};

double msPerPaint(QTableView& view, QPixmap& target, int paints)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < paints; ++i)
        view.viewport()->render(&target);
    return timer.nsecsElapsed() / 1e6 / paints;
}
} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    AddressModel model;
    VSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setSearchString(QStringLiteral("berg"));

    QTableView view;
    view.setModel(&proxy);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.horizontalHeader()->setDefaultSectionSize(s_columnWidth);
    view.show();
    app.processEvents();
    // Sized so that exactly the first 50 rows and 8 columns fill the viewport.
    const QSize viewport(s_columns * s_columnWidth, s_visibleRows * view.rowHeight(0));
    view.resize(view.size() + viewport - view.viewport()->size());
    app.processEvents();
    if (view.viewport()->size() != viewport || view.rowAt(viewport.height() - 1) != s_visibleRows - 1
        || view.columnAt(viewport.width() - 1) != s_columns - 1) {
        std::printf("highlight: cannot lay out a %dx%d viewport\n", s_visibleRows, s_columns);
        return 1;
    }

    QStyledItemDelegate plain;
    VHighLightItemDelegate highlight(&view);
    QPixmap target(viewport);
    const int paints = 10;
    double plainMs = 1e300, highlightMs = 1e300;
    // Alternating rounds, so that both delegates see the same state of the machine.
    for (int round = 0; round < 15; ++round) {
        view.setItemDelegate(&plain);
        plainMs = qMin(plainMs, msPerPaint(view, target, paints));
        view.setItemDelegate(&highlight);
        highlightMs = qMin(highlightMs, msPerPaint(view, target, paints));
    }

    const double ratio = highlightMs / plainMs;
    std::printf("highlight: QStyledItemDelegate %dx%d viewport: %.2f ms/paint; VHighLightItemDelegate: %.2f "
                "ms/paint; ratio %.2f (target <= 1.25) %s\n",
        s_visibleRows, s_columns, plainMs, highlightMs, ratio, ratio <= 1.25 ? "PASS" : "FAIL");
    return 0;
}
