#include "vtestsettings.h"

#include <vtreeroweditmodel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

namespace {
class RequiredNameModel : public VTreeRowEditModel
{
public:
    using VTreeRowEditModel::VTreeRowEditModel;

protected:
    bool isCellValid(const QModelIndex& index) const override
    {
        return index.column() != 0 || !index.data().toString().isEmpty();
    }
};
} // namespace

class TestVTreeRowEditModel : public QObject
{
    Q_OBJECT
    VTestSettings m_settings;

private Q_SLOTS:
    void structure()
    {
        VTreeRowEditModel model({"Name", "City"});
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QModelIndex acme = model.appendRow({"ACME", "Berlin"});
        model.appendRow({"Bolt", "Bremen"});
        const QModelIndex order = model.appendRow({"Order 1", "2026-11-02"}, acme);
        model.appendRow({"Line 1", "3 x bolts"}, order);

        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.columnCount(), 2);
        QCOMPARE(model.rowCount(acme), 1);
        QCOMPARE(model.rowCount(acme.sibling(0, 1)), 0);
        QCOMPARE(order.parent(), acme);
        QCOMPARE(model.index(0, 1, order).data().toString(), QString("3 x bolts"));
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QString("City"));
        QCOMPARE(model.rowValues(1), (QVariantList{"Bolt", "Bremen"}));
        QVERIFY(!model.isRowModified(0, QModelIndex()));

        // Inserting ahead of a parent keeps its children reachable through it.
        QVERIFY(model.insertRows(0, 1));
        QCOMPARE(model.index(1, 0).data().toString(), QString("ACME"));
        QCOMPARE(model.index(0, 0, model.index(1, 0)).data().toString(), QString("Order 1"));
        QVERIFY(model.isRowInserted(0, QModelIndex()));
        QVERIFY(model.removeRows(0, 2));
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.index(0, 0).data().toString(), QString("Bolt"));
        QVERIFY(!model.removeRows(0, 2));
        QVERIFY(!model.insertRows(5, 1));
    }

    void editsAreBufferedPerRow()
    {
        VTreeRowEditModel model({"Name", "City"});
        const QModelIndex acme = model.appendRow({"ACME", "Berlin"});
        const QModelIndex order = model.appendRow({"Order 1", "open"}, acme);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy submitted(&model, &VTreeRowEditModel::rowSubmitted);

        QVERIFY(model.setData(acme.sibling(0, 1), "Hamburg"));
        QVERIFY(model.setData(order.sibling(0, 1), "paid"));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(acme.sibling(0, 1).data().toString(), QString("Hamburg"));
        QCOMPARE(model.committedRowValues(0), (QVariantList{"ACME", "Berlin"}));
        QVERIFY(model.isRowModified(0, QModelIndex()));
        QVERIFY(model.isRowModified(0, acme));

        // Committing the parent row leaves the child's edit pending.
        QVERIFY(model.submitRow(0, QModelIndex()));
        QCOMPARE(model.committedRowValues(0), (QVariantList{"ACME", "Hamburg"}));
        QCOMPARE(submitted.count(), 1);
        QCOMPARE(submitted.at(0).at(0).toInt(), 0);
        QVERIFY(!submitted.at(0).at(1).value<QModelIndex>().isValid());
        QVERIFY(model.isRowModified(0, acme));

        model.revertRow(0, acme);
        QCOMPARE(order.sibling(0, 1).data().toString(), QString("open"));
        QVERIFY(!model.isRowModified(0, acme));

        // Writing back the stored value leaves nothing pending.
        QVERIFY(model.setData(order, "Order 2"));
        QVERIFY(model.setData(order, "Order 1"));
        QVERIFY(!model.isRowModified(0, acme));

        QVERIFY(!model.submitRow(3, QModelIndex()));
        model.revertRow(-1, QModelIndex());
    }

    void submitAndRevertAll()
    {
        VTreeRowEditModel model({"Name"});
        const QModelIndex a = model.appendRow({"a"});
        const QModelIndex b = model.appendRow({"b"}, a);
        model.setData(a, "A");
        model.setData(b, "B");
        model.revert();
        QCOMPARE(a.data().toString(), QString("a"));
        QCOMPARE(b.data().toString(), QString("b"));
        model.setData(a, "A");
        model.setData(b, "B");
        QVERIFY(model.submit());
        QCOMPARE(model.committedRowValues(0, a), (QVariantList{"B"}));
        QCOMPARE(model.committedRowValues(0), (QVariantList{"A"}));
    }

    void invalidRowIsNotCommitted()
    {
        RequiredNameModel model({"Name", "City"});
        const QModelIndex row = model.appendRow({"ACME", "Berlin"});
        model.setData(row, QString());
        QCOMPARE(row.data(VTreeRowEditModel::CellValidRole).toBool(), false);
        QCOMPARE(row.sibling(0, 1).data(VTreeRowEditModel::CellValidRole).toBool(), true);
        QCOMPARE(row.data(VTreeRowEditModel::RowValidRole).toBool(), false);
        QVERIFY(!model.submitRow(0, QModelIndex()));
        QVERIFY(!model.submit());
        QCOMPARE(model.committedRowValues(0), (QVariantList{"ACME", "Berlin"}));
        model.setData(row, "Acme");
        QVERIFY(model.submitRow(0, QModelIndex()));
    }

    void recordRoles()
    {
        VTreeRowEditModel model({"Key", "Name"});
        model.setModelName("customers");
        model.setColumnEditable(0, false);
        const QModelIndex first = model.appendRow({1, "x"});
        model.appendRow({2, "y"});

        QCOMPARE(first.data(Qt::UserRole + 9).toString(), QString("customers"));
        QCOMPARE(model.data(QModelIndex(), Qt::UserRole + 9).toString(), QString("customers"));
        QCOMPARE(first.data(Qt::UserRole + 10).toInt(), 0);
        QCOMPARE(first.sibling(0, 1).data(Qt::UserRole + 10).toInt(), 1);
        QVERIFY(!(model.flags(first) & Qt::ItemIsEditable));
        QVERIFY(model.flags(first.sibling(0, 1)) & Qt::ItemIsEditable);
        QVERIFY(!model.setData(first, 5));
        QCOMPARE(first.data(Qt::EditRole).toInt(), 1);

        // Natural order follows insertion, also for rows inserted ahead of others.
        model.insertRows(0, 1);
        QVERIFY(model.index(0, 0).data(Qt::InitialSortOrderRole).toLongLong()
                > model.index(2, 0).data(Qt::InitialSortOrderRole).toLongLong());
        QVERIFY(model.index(1, 0).data(Qt::InitialSortOrderRole).toLongLong()
                < model.index(2, 0).data(Qt::InitialSortOrderRole).toLongLong());

        // Other roles are stored per cell as given, without buffering.
        QVERIFY(model.setData(model.index(1, 0), int(Qt::PointingHandCursor), Qt::UserRole + 6));
        QCOMPARE(model.index(1, 0).data(Qt::UserRole + 6).toInt(), int(Qt::PointingHandCursor));
        QVERIFY(!model.index(1, 1).data(Qt::UserRole + 6).isValid());
        QVERIFY(!model.isRowModified(1, QModelIndex()));
    }

    void foreignIndexesAreRefused()
    {
        VTreeRowEditModel model({"Name"});
        VTreeRowEditModel other({"Name"});
        const QModelIndex foreign = other.appendRow({"x"});
        QCOMPARE(model.rowCount(foreign), 0);
        QVERIFY(!model.insertRows(0, 1, foreign));
        QVERIFY(!model.setData(foreign, "y"));
        QVERIFY(!model.index(0, 0, foreign).isValid());
        QCOMPARE(foreign.data().toString(), QString("x"));
    }
};

QTEST_MAIN(TestVTreeRowEditModel)
#include "tst_vtreeroweditmodel.moc"
