// CSV export of 1,000,000 rows x 8 columns: VCsvModelWriter against the sqlite3
// shell exporting the same rows with ".mode csv" and headers on.

#include <vcsvmodelwriter.h>

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <vector>

namespace {

constexpr int Rows = 1000000;
constexpr int Columns = 8;
constexpr int Runs = 3;

struct Order {
    int id;
    QString code;
    QString customer;
    QString note;
    int quantity;
    double price;
    QDate date;
    double amount;
};

// Integers, short texts, texts with commas, quotes and line breaks, decimals and dates.
class OrderModel : public QAbstractTableModel {
public:
    OrderModel()
    {
        const QStringList first = { "Anna", "Jonas", "Mia", "Lukas", "Lea", "Felix", "Sofia", "Paul", "Emma",
            "Noah", "Lina", "Elias" };
        const QStringList last = { "Meier", "Schmidt", "O'Neil", "M\u00fcller", "Weber", "Fischer", "Wagner",
            "Becker", "Hoffmann", "Sch\u00e4fer", "Koch", "Richter", "Klein" };
        QStringList customers;
        for (const QString& l : last)
            for (const QString& f : first)
                customers << l + QStringLiteral(", ") + f;

        const QDate start(2015, 1, 1);
        m_rows.reserve(Rows);
        for (int i = 0; i < Rows; ++i) {
            Order o;
            o.id = i + 1;
            o.code = QStringLiteral("ORD-%1").arg(i + 1, 7, 10, QLatin1Char('0'));
            o.customer = customers.at(i % customers.size());
            switch (i % 4) {
            case 0:
                o.note = QStringLiteral("Deliver to \"Gate %1\", ring twice").arg(i % 40);
                break;
            case 1:
                o.note = QStringLiteral("Call first,\nthen leave at door %1").arg(i % 300);
                break;
            case 2:
                o.note = QStringLiteral("Plain note %1").arg(i % 1000);
                break;
            default:
                break; // an empty note
            }
            o.quantity = 1 + i % 50;
            o.price = (qint64(i) * 7919 % 100000) / 100.0;
            o.date = start.addDays(i % 3650);
            o.amount = qRound64(o.quantity * o.price * 100) / 100.0;
            m_rows.push_back(std::move(o));
        }
    }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : Columns;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        const Order& o = m_rows[size_t(index.row())];
        switch (index.column()) {
        case 0:
            return o.id;
        case 1:
            return o.code;
        case 2:
            return o.customer;
        case 3:
            return o.note;
        case 4:
            return o.quantity;
        case 5:
            return o.price;
        case 6:
            return o.date;
        default:
            return o.amount;
        }
    }

    static QStringList titles()
    {
        return { "id", "code", "customer", "note", "quantity", "price", "date", "amount" };
    }

private:
    std::vector<Order> m_rows;
};

qint64 timed(const std::function<bool()>& run)
{
    QElapsedTimer timer;
    timer.start();
    return run() ? timer.elapsed() : -1;
}

// Runs the sqlite3 shell; the standard output goes to @p output when given.
bool runSqlite(const QString& program, const QStringList& arguments, QByteArray* output = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        std::fprintf(stderr, "csv: sqlite3 failed: %s\n", process.readAllStandardError().constData());
        return false;
    }
    if (output)
        *output = process.readAllStandardOutput().trimmed();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    if (!dir.isValid()) {
        std::fprintf(stderr, "csv: cannot create a temporary folder\n");
        return 1;
    }

    OrderModel model;
    const QString writerFile = dir.filePath(QStringLiteral("writer.csv"));
    VCsvModelWriter writer(writerFile);
    writer.setModel(&model);
    const QStringList titles = OrderModel::titles();
    for (int c = 0; c < Columns; ++c)
        writer.addColumn(titles.at(c), c, Qt::DisplayRole);

    // The first file also fills the sqlite3 table below.
    qint64 writerMs = timed([&] { return writer.write(); });
    if (writerMs < 0) {
        std::fprintf(stderr, "csv: VCsvModelWriter failed\n");
        return 1;
    }

    const QString sqlite = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    if (sqlite.isEmpty()) {
        for (int run = 1; run < Runs; ++run)
            writerMs = std::min(writerMs, timed([&] { return writer.write(); }));
        std::printf("csv: VCsvModelWriter %dx%d: %lld ms; sqlite3 shell not found, comparison skipped\n",
            Rows, Columns, writerMs);
        return 0;
    }

    // Reading the writer's output back also shows that sqlite3 accepts it as CSV.
    const QString db = dir.filePath(QStringLiteral("orders.db"));
    const QString schema = QStringLiteral(
        "CREATE TABLE t(id INTEGER, code TEXT, customer TEXT, note TEXT, quantity INTEGER, price REAL, "
        "date TEXT, amount REAL)");
    QByteArray count;
    if (!runSqlite(sqlite,
            { db, schema, QStringLiteral(".import --csv --skip 1 %1 t").arg(writerFile),
                QStringLiteral("SELECT count(*) FROM t") },
            &count)) {
        return 1;
    }
    if (count != QByteArray::number(Rows)) {
        std::fprintf(stderr, "csv: sqlite3 read %s rows back instead of %d\n", count.constData(), Rows);
        return 1;
    }

    const QString sqliteFile = dir.filePath(QStringLiteral("sqlite.csv"));
    const QStringList exportArgs = { db, QStringLiteral(".headers on"), QStringLiteral(".mode csv"),
        QStringLiteral(".once %1").arg(sqliteFile), QStringLiteral("SELECT * FROM t") };
    // Alternate the two so that both see the same load on a shared machine; the best run counts.
    qint64 sqliteMs = std::numeric_limits<qint64>::max();
    for (int run = 0; run < Runs; ++run) {
        const qint64 ms = timed([&] { return runSqlite(sqlite, exportArgs); });
        if (ms < 0)
            return 1;
        sqliteMs = std::min(sqliteMs, ms);
        if (run + 1 < Runs) {
            const qint64 writerRun = timed([&] { return writer.write(); });
            if (writerRun < 0)
                return 1;
            writerMs = std::min(writerMs, writerRun);
        }
    }

    const double ratio = sqliteMs > 0 ? double(writerMs) / double(sqliteMs) : 0.0;
    const bool pass = ratio <= 0.5;
    std::printf("csv: VCsvModelWriter %dx%d: %lld ms (%lld bytes); sqlite3 shell: %lld ms (%lld bytes); "
                "ratio %.2f (target <= 0.50) %s\n",
        Rows, Columns, writerMs, QFileInfo(writerFile).size(), sqliteMs, QFileInfo(sqliteFile).size(), ratio,
        pass ? "PASS" : "FAIL");
    return pass ? 0 : 1;
}
