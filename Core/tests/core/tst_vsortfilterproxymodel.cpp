#include "vtestsettings.h"

#include <vsortfilterproxymodel.h>

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

namespace {
// Rows: key, name, city, amount (an int, so numeric cells are matched as text too).
QStandardItemModel* makeModel(QObject* parent)
{
    const struct {
        const char* name;
        const char* city;
        int amount;
    } rows[] = {
        {"Anna Becker", "Berlin", 120},  {"Bernd Alt", "Bremen", 3120},   {"Clara Dorn", "Köln", 45},
        {"Ömer Yilmaz", "Berlin", 990},  {"Eva Fischer", "München", 120}, {"Σοφία Παππά", "ΑΘΉΝΑ", 7},
    };
    auto model = new QStandardItemModel(0, 4, parent);
    int key = 0;
    for (const auto& r : rows) {
        QList<QStandardItem*> items;
        auto keyItem = new QStandardItem;
        keyItem->setData(++key, Qt::DisplayRole);
        auto amount = new QStandardItem;
        amount->setData(r.amount, Qt::DisplayRole);
        items << keyItem << new QStandardItem(QString::fromUtf8(r.name)) << new QStandardItem(QString::fromUtf8(r.city))
              << amount;
        model->appendRow(items);
    }
    return model;
}

QList<int> visibleKeys(const QAbstractItemModel* proxy)
{
    QList<int> keys;
    for (int row = 0; row < proxy->rowCount(); ++row)
        keys << proxy->index(row, 0).data().toInt();
    return keys;
}
} // namespace

class TestVSortFilterProxyModel : public QObject
{
    Q_OBJECT
    VTestSettings m_settings;

private Q_SLOTS:
    void columnFilters_data()
    {
        QTest::addColumn<QStringList>("patterns"); // one per column 1..3, "" for none
        QTest::addColumn<QList<int>>("keys");

        QTest::newRow("no pattern") << QStringList{"", "", ""} << QList<int>{1, 2, 3, 4, 5, 6};
        QTest::newRow("substring anywhere") << QStringList{"er", "", ""} << QList<int>{1, 2, 4, 5};
        QTest::newRow("case-insensitive") << QStringList{"", "BERLIN", ""} << QList<int>{1, 4};
        QTest::newRow("umlaut folding") << QStringList{"ömer", "", ""} << QList<int>{4};
        QTest::newRow("umlaut in city") << QStringList{"", "KÖLN", ""} << QList<int>{3};
        QTest::newRow("greek folding") << QStringList{"σοφία", "αθήνα", ""} << QList<int>{6};
        QTest::newRow("two columns AND") << QStringList{"a", "berlin", ""} << QList<int>{1, 4};
        QTest::newRow("AND with no overlap") << QStringList{"clara", "berlin", ""} << QList<int>{};
        QTest::newRow("integer cells") << QStringList{"", "", "12"} << QList<int>{1, 2, 5};
        QTest::newRow("integer exact digits") << QStringList{"", "", "312"} << QList<int>{2};
        QTest::newRow("no match") << QStringList{"zzz", "", ""} << QList<int>{};
        QTest::newRow("across a space") << QStringList{"A b", "", ""} << QList<int>{1};
    }

    void columnFilters()
    {
        QFETCH(QStringList, patterns);
        QFETCH(QList<int>, keys);

        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        for (int column = 1; column <= 3; ++column) {
            proxy.addFilterKeyColumn(column);
            proxy.addFilterFixedString(column, patterns.at(column - 1));
        }
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), keys);
        QCOMPARE(proxy.filterKeyColumns(), (QList<int>{1, 2, 3}));
        QCOMPARE(proxy.filterFixedString(2), patterns.at(1));
    }

    void filterAppliesOnInvalidateOnly()
    {
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        proxy.addFilterKeyColumn(2);
        proxy.addFilterFixedString(2, "berlin");
        QCOMPARE(proxy.rowCount(), 6);
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1, 4}));

        // An unregistered column is registered by its first pattern.
        proxy.addFilterFixedString(1, "anna");
        QCOMPARE(proxy.filterKeyColumns(), (QList<int>{2, 1}));
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1}));

        proxy.clearFilterFixedStrings();
        proxy.invalidateFilter();
        QCOMPARE(proxy.rowCount(), 6);
    }

    void changedFilterKeepsSortAndSelection()
    {
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        QTableView view;
        view.setModel(&proxy);
        view.setSortingEnabled(true);
        view.sortByColumn(1, Qt::DescendingOrder);
        QCOMPARE(visibleKeys(&proxy), (QList<int>{6, 4, 5, 3, 2, 1}));

        // Select "Eva Fischer" (key 5), which survives the filter.
        view.selectionModel()->setCurrentIndex(proxy.index(2, 0),
                                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        proxy.addFilterFixedString(1, "e");
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{4, 5, 2, 1}));
        QCOMPARE(view.currentIndex().sibling(view.currentIndex().row(), 0).data().toInt(), 5);
        QCOMPARE(view.selectionModel()->selectedRows(0).size(), 1);
        QCOMPARE(view.selectionModel()->selectedRows(0).first().data().toInt(), 5);

        // A filter that hides the selected row drops the selection instead of moving it.
        proxy.addFilterFixedString(1, "bernd");
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{2}));
        QVERIFY(view.selectionModel()->selectedRows(0).isEmpty());
    }

    void searchString()
    {
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        QSignalSpy spy(&proxy, &VSortFilterProxyModel::searchStringChanged);

        proxy.setSearchString("BER");
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1, 2, 4}));
        QCOMPARE(proxy.searchString(), QString("BER"));
        QVERIFY(!proxy.isSearchExcluded());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), QString("BER"));
        QCOMPARE(spy.at(0).at(1).toBool(), false);

        proxy.setSearchString("BER");
        QCOMPARE(spy.count(), 1);

        // Exclude mode hides the matches and leaves nothing to highlight.
        proxy.setSearchString("BER", true);
        QCOMPARE(visibleKeys(&proxy), (QList<int>{3, 5, 6}));
        QCOMPARE(proxy.searchString(), QString());
        QVERIFY(proxy.isSearchExcluded());
        QCOMPARE(spy.count(), 2);

        // Search and column filters combine.
        proxy.addFilterFixedString(3, "7");
        proxy.invalidateFilter();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{6}));

        proxy.setSearchString(QString());
        QCOMPARE(visibleKeys(&proxy), (QList<int>{6}));
        proxy.addFilterFixedString(3, QString());
        proxy.invalidateFilter();
        QCOMPARE(proxy.rowCount(), 6);
    }

    void hugeAndOddPatterns()
    {
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        proxy.setSearchString(QString(1 << 20, QLatin1Char('x')));
        QCOMPARE(proxy.rowCount(), 0);
        // Patterns are plain text: regular-expression syntax has no meaning.
        proxy.setSearchString("(");
        QCOMPARE(proxy.rowCount(), 0);
        proxy.setSearchString(".*");
        QCOMPARE(proxy.rowCount(), 0);
        proxy.setSearchString(QString());
        QCOMPARE(proxy.rowCount(), 6);
        // A filter on a column the model does not have restricts nothing.
        proxy.addFilterFixedString(42, "x");
        proxy.addFilterFixedString(-1, "x");
        proxy.invalidateFilter();
        QCOMPARE(proxy.rowCount(), 6);
        QCOMPARE(proxy.filterKeyColumns(), (QList<int>{42}));
    }

    void baseFilterStillApplies()
    {
        VSortFilterProxyModel proxy;
        proxy.setSourceModel(makeModel(&proxy));
        proxy.setFilterKeyColumn(2);
        proxy.setFilterFixedString("Berlin");
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1, 4}));
        proxy.setSearchString("anna");
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1}));
    }

    void naturalOrder()
    {
        VSortFilterProxyModel proxy;
        QStandardItemModel* source = makeModel(&proxy);
        proxy.setSourceModel(source);
        proxy.sort(1, Qt::AscendingOrder);
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1, 2, 3, 5, 4, 6}));
        QCOMPARE(proxy.index(0, 1).data(Qt::InitialSortOrderRole).toInt(), 0);
        QCOMPARE(proxy.index(3, 2).data(Qt::InitialSortOrderRole).toInt(), 4);

        proxy.setSortRole(Qt::InitialSortOrderRole);
        proxy.invalidate();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{1, 2, 3, 4, 5, 6}));

        // A source key in that role wins over the row number.
        for (int row = 0; row < source->rowCount(); ++row)
            source->item(row, 1)->setData(100 - row, Qt::InitialSortOrderRole);
        proxy.invalidate();
        QCOMPARE(visibleKeys(&proxy), (QList<int>{6, 5, 4, 3, 2, 1}));
    }

    void modelResetAndRemoval()
    {
        VSortFilterProxyModel proxy;
        QStandardItemModel* source = makeModel(&proxy);
        proxy.setSourceModel(source);
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        proxy.setSearchString("berlin");
        QCOMPARE(proxy.rowCount(), 2);
        source->removeRow(0);
        QCOMPARE(visibleKeys(&proxy), (QList<int>{4}));
        source->clear();
        QCOMPARE(proxy.rowCount(), 0);
        proxy.setSourceModel(nullptr);
        proxy.setSearchString("x");
        QCOMPARE(proxy.rowCount(), 0);
    }
};

QTEST_MAIN(TestVSortFilterProxyModel)
#include "tst_vsortfilterproxymodel.moc"
