#include "vtestsettings.h"

#include <vsortfiltertreeproxymodel.h>

#include <QAbstractItemModelTester>
#include <QStandardItemModel>
#include <QtTest>

namespace {
// customers with their orders:
//   ACME Berlin       -> Order 100 paid, Order 101 open
//   Bolt Bremen       -> Order 200 open
//   Crane Köln        (no orders)
QStandardItemModel* makeTree(QObject* parent)
{
    auto model = new QStandardItemModel(0, 2, parent);
    auto add = [](QStandardItem* parentItem, const QString& a, const QString& b) {
        QList<QStandardItem*> row{new QStandardItem(a), new QStandardItem(b)};
        parentItem->appendRow(row);
        return row.first();
    };
    QStandardItem* root = model->invisibleRootItem();
    QStandardItem* acme = add(root, "ACME", "Berlin");
    add(acme, "Order 100", "paid");
    add(acme, "Order 101", "open");
    QStandardItem* bolt = add(root, "Bolt", "Bremen");
    add(bolt, "Order 200", "open");
    add(root, "Crane", QString::fromUtf8("Köln"));
    return model;
}

// The visible tree as "name" lines, children indented by two spaces.
QStringList dump(const QAbstractItemModel* model, const QModelIndex& parent = QModelIndex(), int depth = 0)
{
    QStringList lines;
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        lines << QString(depth * 2, QLatin1Char(' ')) + index.data().toString();
        lines += dump(model, index, depth + 1);
    }
    return lines;
}
} // namespace

class TestVSortFilterTreeProxyModel : public QObject
{
    Q_OBJECT
    VTestSettings m_settings;

private Q_SLOTS:
    void search_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("exclude");
        QTest::addColumn<QStringList>("tree");

        QTest::newRow("none") << QString() << false
                              << QStringList{"ACME", "  Order 100", "  Order 101", "Bolt", "  Order 200", "Crane"};
        QTest::newRow("child keeps its path") << "PAID" << false << QStringList{"ACME", "  Order 100"};
        QTest::newRow("several branches") << "open" << false
                                          << QStringList{"ACME", "  Order 101", "Bolt", "  Order 200"};
        QTest::newRow("parent match") << "köln" << false << QStringList{"Crane"};
        QTest::newRow("exclude leaves") << "open" << true << QStringList{"ACME", "  Order 100", "Bolt", "Crane"};
        QTest::newRow("exclude hides subtree") << "berlin" << true << QStringList{"Bolt", "  Order 200", "Crane"};
        QTest::newRow("nothing") << "zzz" << false << QStringList{};
    }

    void search()
    {
        QFETCH(QString, text);
        QFETCH(bool, exclude);
        QFETCH(QStringList, tree);

        VSortFilterTreeProxyModel proxy;
        proxy.setSourceModel(makeTree(&proxy));
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        proxy.setSearchString(text, exclude);
        QCOMPARE(dump(&proxy), tree);
        QCOMPARE(proxy.searchString(), exclude ? QString() : text);
    }

    void columnFilterOnTree()
    {
        VSortFilterTreeProxyModel proxy;
        proxy.setSourceModel(makeTree(&proxy));
        proxy.addFilterKeyColumn(1);
        proxy.addFilterFixedString(1, "open");
        proxy.invalidateFilter();
        QCOMPARE(dump(&proxy), (QStringList{"ACME", "  Order 101", "Bolt", "  Order 200"}));
    }

    void isAProxyOfTheFlatKind()
    {
        VSortFilterTreeProxyModel proxy;
        QObject* object = &proxy;
        QVERIFY(qobject_cast<QSortFilterProxyModel*>(object));
        QVERIFY(qobject_cast<VSortFilterTreeProxyModel*>(object));
        QCOMPARE(QByteArray(proxy.metaObject()->className()), QByteArray("VSortFilterTreeProxyModel"));
    }
};

QTEST_MAIN(TestVSortFilterTreeProxyModel)
#include "tst_vsortfiltertreeproxymodel.moc"
