#include "sampledatabase.h"

#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace {

// Bump when the schema or the generator changes, so that old files are rebuilt.
const char schemaVersion[] = "1";
// Marks the file as this demo's: only such a file (or an empty one) is ever rebuilt.
const char metaTable[] = "veitikgip_meta";
// The generator's seed: the sample is the same on every machine and every run.
const quint32 sampleSeed = 20240229;

const int customerCount = 2000;
const int orderCount = 30000;
const int maxLinesPerOrder = 7;

const QDate firstCustomerDate(2015, 1, 1);
const QDate firstOrderDate(2020, 1, 1);
const QDate lastOrderDate(2024, 12, 31);

const char* const schema[] = {
    "CREATE TABLE veitikgip_meta (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE customers ("
    " id INTEGER PRIMARY KEY,"
    " name TEXT NOT NULL,"
    " email TEXT NOT NULL,"
    " phone TEXT,"
    " city TEXT NOT NULL,"
    " country TEXT NOT NULL,"
    " customer_since TEXT NOT NULL,"
    " active INTEGER NOT NULL DEFAULT 1 CHECK (active IN (0, 1)))",
    "CREATE TABLE products ("
    " id INTEGER PRIMARY KEY,"
    " sku TEXT NOT NULL UNIQUE,"
    " name TEXT NOT NULL,"
    " category TEXT NOT NULL,"
    " unit_price REAL NOT NULL CHECK (unit_price >= 0),"
    " stock INTEGER NOT NULL DEFAULT 0,"
    " discontinued INTEGER NOT NULL DEFAULT 0 CHECK (discontinued IN (0, 1)))",
    "CREATE TABLE orders ("
    " id INTEGER PRIMARY KEY,"
    " customer_id INTEGER NOT NULL REFERENCES customers(id),"
    " order_date TEXT NOT NULL,"
    " status TEXT NOT NULL,"
    " paid INTEGER NOT NULL DEFAULT 0 CHECK (paid IN (0, 1)),"
    " shipped_date TEXT)",
    "CREATE TABLE order_lines ("
    " id INTEGER PRIMARY KEY,"
    " order_id INTEGER NOT NULL REFERENCES orders(id) ON DELETE CASCADE,"
    " position INTEGER NOT NULL,"
    " product_id INTEGER NOT NULL REFERENCES products(id),"
    " quantity INTEGER NOT NULL CHECK (quantity > 0),"
    " unit_price REAL NOT NULL,"
    " discount REAL NOT NULL DEFAULT 0)",
};

// Created after the rows are in: building an index once is cheaper than updating it per row.
const char* const indexes[] = {
    "CREATE INDEX customers_name ON customers(name)",
    "CREATE INDEX orders_customer ON orders(customer_id)",
    "CREATE INDEX orders_date ON orders(order_date)",
    "CREATE INDEX order_lines_order ON order_lines(order_id)",
    "CREATE INDEX order_lines_product ON order_lines(product_id)",
};

const char* const firstNames[] = {
    "Anna",
    "Lukas",
    "Sofia",
    "Jonas",
    "Emma",
    "Noah",
    "Mia",
    "Elias",
    "Hannah",
    "Paul",
    "Lena",
    "Felix",
    "Clara",
    "Oliver",
    "Julia",
    "David",
    "Laura",
    "Simon",
    "Sarah",
    "Daniel",
    "Marie",
    "Thomas",
    "Olivia",
    "James",
    "Amelia",
    "Henry",
    "Chloe",
    "William",
    "Grace",
    "Lucas",
    "Camille",
    "Hugo",
    "Giulia",
    "Marco",
    "Lucia",
    "Pablo",
    "Ingrid",
    "Erik",
    "Astrid",
    "Mateo",
    "Zoe",
    "Adam",
    "Nora",
    "Leon",
    "Eva",
    "Jan",
    "Alice",
    "Victor",
    "Ines",
    "Samuel",
};

const char* const lastNames[] = {
    "Schmidt",
    "Müller",
    "Weber",
    "Fischer",
    "Wagner",
    "Becker",
    "Hoffmann",
    "Schäfer",
    "Koch",
    "Richter",
    "Smith",
    "Johnson",
    "Brown",
    "Taylor",
    "Wilson",
    "Evans",
    "Walker",
    "Wright",
    "Martin",
    "Bernard",
    "Dubois",
    "Laurent",
    "Lefèvre",
    "Rossi",
    "Russo",
    "Ferrari",
    "Bianchi",
    "García",
    "López",
    "Martínez",
    "Sánchez",
    "Novák",
    "Svoboda",
    "Kowalski",
    "Nowak",
    "Jansen",
    "de Vries",
    "Bakker",
    "Larsen",
    "Nielsen",
    "Andersson",
    "Lindqvist",
    "Berg",
    "Horvath",
    "Kovač",
    "O'Brien",
    "Murphy",
    "Kelly",
    "Costa",
    "Silva",
};

struct City {
    const char* name;
    const char* country;
    const char* dialCode;
};

const City cities[] = {
    { "Berlin", "Germany", "+49" },
    { "Hamburg", "Germany", "+49" },
    { "Munich", "Germany", "+49" },
    { "Cologne", "Germany", "+49" },
    { "Leipzig", "Germany", "+49" },
    { "Vienna", "Austria", "+43" },
    { "Graz", "Austria", "+43" },
    { "Zurich", "Switzerland", "+41" },
    { "Basel", "Switzerland", "+41" },
    { "Paris", "France", "+33" },
    { "Lyon", "France", "+33" },
    { "Marseille", "France", "+33" },
    { "London", "United Kingdom", "+44" },
    { "Manchester", "United Kingdom", "+44" },
    { "Edinburgh", "United Kingdom", "+44" },
    { "Dublin", "Ireland", "+353" },
    { "Amsterdam", "Netherlands", "+31" },
    { "Rotterdam", "Netherlands", "+31" },
    { "Brussels", "Belgium", "+32" },
    { "Antwerp", "Belgium", "+32" },
    { "Copenhagen", "Denmark", "+45" },
    { "Stockholm", "Sweden", "+46" },
    { "Gothenburg", "Sweden", "+46" },
    { "Oslo", "Norway", "+47" },
    { "Helsinki", "Finland", "+358" },
    { "Warsaw", "Poland", "+48" },
    { "Kraków", "Poland", "+48" },
    { "Prague", "Czech Republic", "+420" },
    { "Brno", "Czech Republic", "+420" },
    { "Budapest", "Hungary", "+36" },
    { "Ljubljana", "Slovenia", "+386" },
    { "Zagreb", "Croatia", "+385" },
    { "Milan", "Italy", "+39" },
    { "Rome", "Italy", "+39" },
    { "Turin", "Italy", "+39" },
    { "Madrid", "Spain", "+34" },
    { "Barcelona", "Spain", "+34" },
    { "Valencia", "Spain", "+34" },
    { "Lisbon", "Portugal", "+351" },
    { "Porto", "Portugal", "+351" },
};

struct Category {
    const char* name;
    const char* skuPrefix;
    const char* items[10];
    double basePrices[10];
};

const Category categories[] = {
    { "Kitchen", "KIT",
        { "Kettle", "Toaster", "Frying Pan", "Chef's Knife", "Cutting Board", "Coffee Grinder", "Blender",
            "Salad Bowl", "Teapot", "Spice Rack" },
        { 39, 49, 35, 59, 19, 45, 79, 24, 29, 22 } },
    { "Office", "OFF",
        { "Desk Lamp", "Stapler", "Notebook", "Fountain Pen", "Monitor Stand", "Desk Organizer", "Paper Tray",
            "Whiteboard", "Office Chair", "Label Printer" },
        { 34, 12, 6, 28, 42, 18, 9, 55, 189, 89 } },
    { "Garden", "GAR",
        { "Watering Can", "Pruning Shears", "Hose Reel", "Garden Gloves", "Planter", "Bird Feeder", "Rake",
            "Wheelbarrow", "Lawn Sprinkler", "Seed Tray" },
        { 16, 24, 64, 9, 21, 27, 23, 119, 31, 7 } },
    { "Tools", "TLS",
        { "Hammer", "Cordless Drill", "Screwdriver Set", "Tape Measure", "Spirit Level", "Socket Set",
            "Utility Knife", "Workbench", "Stud Finder", "Clamp Set" },
        { 17, 129, 25, 11, 19, 69, 8, 159, 33, 29 } },
    { "Electronics", "ELE",
        { "Headphones", "Bluetooth Speaker", "USB Charger", "Power Bank", "Webcam", "Keyboard", "Mouse",
            "Smart Plug", "HDMI Cable", "Wi-Fi Router" },
        { 79, 59, 19, 35, 49, 45, 25, 17, 9, 99 } },
    { "Outdoor", "OUT",
        { "Water Bottle", "Backpack", "Tent", "Sleeping Bag", "Yoga Mat", "Camping Stove", "Headlamp",
            "Trekking Poles", "Cooler Box", "Hammock" },
        { 15, 69, 189, 89, 25, 45, 29, 59, 49, 39 } },
};

struct Line {
    const char* name;
    double priceFactor;
};

// Every item comes in each product line: 6 categories x 10 items x 5 lines = 300 products.
const Line productLines[] = {
    { "Classic", 1.0 },
    { "Compact", 0.85 },
    { "Eco", 1.1 },
    { "Deluxe", 1.35 },
    { "Pro", 1.6 },
};

template <typename T, size_t N>
const T& pick(QRandomGenerator& rng, const T (&items)[N])
{
    return items[rng.bounded(int(N))];
}

// Letters only, for the local part of an e-mail address ("Lefèvre" -> "lefevre").
QString mailName(const QString& name)
{
    const QString decomposed = name.normalized(QString::NormalizationForm_KD).toLower();
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            out += c;
    }
    return out;
}

QString isoDate(const QDate& date)
{
    return date.toString(Qt::ISODate);
}

// Rows of one table, bound column by column and sent with execBatch() every few thousand rows,
// so that the value lists stay small and their memory is reused rather than piling up.
class BatchInsert {
public:
    /// Rows that refer to @p parent's rows send the parent's pending rows first, for the foreign keys.
    BatchInsert(const QSqlDatabase& db, const char* table, std::initializer_list<const char*> columns,
        BatchInsert* parent = nullptr)
        : m_query(db)
        , m_parent(parent)
        , m_columns(int(columns.size()))
    {
        QStringList names;
        for (const char* column : columns)
            names << QLatin1String(column);
        const QString placeholders = QStringLiteral("?, ").repeated(names.size() - 1) + QLatin1Char('?');
        const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                .arg(QLatin1String(table), names.join(QLatin1String(", ")), placeholders);
        if (!m_query.prepare(sql))
            m_error = m_query.lastError().text();
        for (QVariantList& column : m_columns)
            column.reserve(batchRows);
    }

    template <typename... Values>
    void add(const Values&... values)
    {
        int i = 0;
        (m_columns[i++].append(QVariant(values)), ...);
        if (++m_rows == batchRows)
            flush();
    }

    /// Sends the pending rows; false (with error()) once anything failed.
    bool flush()
    {
        if (m_parent && !m_parent->flush())
            m_error = m_parent->error();
        if (m_rows > 0 && m_error.isEmpty()) {
            for (int i = 0; i < m_columns.size(); ++i)
                m_query.bindValue(i, m_columns.at(i));
            if (!m_query.execBatch())
                m_error = m_query.lastError().text();
        }
        for (QVariantList& column : m_columns)
            column.clear();
        m_rows = 0;
        return m_error.isEmpty();
    }

    QString error() const { return m_error; }

private:
    static const int batchRows = 4096;

    QSqlQuery m_query;
    BatchInsert* m_parent;
    QVector<QVariantList> m_columns;
    int m_rows = 0;
    QString m_error;
};

class Generator {
public:
    explicit Generator(const QSqlDatabase& db)
        : m_db(db)
        , m_rng(sampleSeed)
    {
    }

    bool exec(const QString& sql)
    {
        QSqlQuery query(m_db);
        if (query.exec(sql))
            return true;
        m_error = query.lastError().text() + QLatin1String(" (") + sql.left(60) + QLatin1Char(')');
        return false;
    }

    bool customers(SampleDatabase::Counts& counts)
    {
        BatchInsert insert(m_db, "customers",
            { "id", "name", "email", "phone", "city", "country", "customer_since", "active" });
        const char* const domains[] = { "example.com", "example.net", "example.org" };
        const int sinceDays = firstCustomerDate.daysTo(QDate(2023, 12, 31)) + 1;
        for (int id = 1; id <= customerCount; ++id) {
            const QString first = QString::fromUtf8(pick(m_rng, firstNames));
            const QString last = QString::fromUtf8(pick(m_rng, lastNames));
            const City& city = pick(m_rng, cities);
            // The id keeps addresses unique even for two people of the same name.
            const QString email = mailName(first) + QLatin1Char('.') + mailName(last) + QString::number(id)
                + QLatin1Char('@') + QLatin1String(pick(m_rng, domains));
            const QString phone = QLatin1String(city.dialCode) + QLatin1Char(' ')
                + QString::number(10 + m_rng.bounded(90)) + QLatin1Char(' ')
                + QString::number(m_rng.bounded(10000000)).rightJustified(7, QLatin1Char('0'));
            insert.add(id, QString(first + QLatin1Char(' ') + last), email, phone,
                QString::fromUtf8(city.name), QString::fromUtf8(city.country),
                isoDate(firstCustomerDate.addDays(m_rng.bounded(sinceDays))), int(m_rng.bounded(100) < 88));
        }
        counts.customers = customerCount;
        return finish(insert);
    }

    bool products(SampleDatabase::Counts& counts)
    {
        BatchInsert insert(
            m_db, "products", { "id", "sku", "name", "category", "unit_price", "stock", "discontinued" });
        int id = 0;
        m_prices.clear();
        m_prices.append(0.0); // ids start at 1
        for (const Category& category : categories) {
            int number = 1000;
            for (int item = 0; item < 10; ++item) {
                for (const Line& line : productLines) {
                    ++id;
                    ++number;
                    const double spread = 0.9 + m_rng.bounded(21) / 100.0;
                    // Shop prices end in .99.
                    const double price
                        = std::max(1.0, std::floor(category.basePrices[item] * line.priceFactor * spread))
                        + 0.99;
                    m_prices.append(price);
                    insert.add(id,
                        QString(
                            QLatin1String(category.skuPrefix) + QLatin1Char('-') + QString::number(number)),
                        QString(QLatin1String(line.name) + QLatin1Char(' ')
                            + QString::fromUtf8(category.items[item])),
                        QString::fromUtf8(category.name), price, m_rng.bounded(500),
                        int(m_rng.bounded(100) < 6));
                }
            }
        }
        counts.products = id;
        return finish(insert);
    }

    bool orders(SampleDatabase::Counts& counts)
    {
        // Business grows: later days get more orders. Sorted, so order ids follow the dates.
        const int span = firstOrderDate.daysTo(lastOrderDate) + 1;
        QVector<int> days(orderCount);
        for (int& day : days)
            day = int(span * std::sqrt(m_rng.generateDouble()));
        std::sort(days.begin(), days.end());

        enum Status { New, Processing, Shipped, Delivered, Cancelled, Returned };
        const QString statusTexts[]
            = { QStringLiteral("New"), QStringLiteral("Processing"), QStringLiteral("Shipped"),
                  QStringLiteral("Delivered"), QStringLiteral("Cancelled"), QStringLiteral("Returned") };

        BatchInsert orders(
            m_db, "orders", { "id", "customer_id", "order_date", "status", "paid", "shipped_date" });
        BatchInsert lines(m_db, "order_lines",
            { "id", "order_id", "position", "product_id", "quantity", "unit_price", "discount" }, &orders);
        const QVariant noDate(QVariant::String);
        const int productCount = m_prices.size() - 1;
        int lineId = 0;
        for (int id = 1; id <= orderCount; ++id) {
            const QDate date = firstOrderDate.addDays(days[id - 1]);
            const int age = date.daysTo(lastOrderDate);
            const int r = m_rng.bounded(100);
            Status status;
            if (age > 21)
                status = r < 4 ? Cancelled : r < 7 ? Returned : Delivered;
            else if (age > 7)
                status = r < 5 ? Cancelled : r < 45 ? Shipped : Delivered;
            else
                status = r < 30 ? New : r < 60 ? Processing : r < 92 ? Shipped : Cancelled;
            const bool shipped = status == Shipped || status == Delivered || status == Returned;
            bool paid = shipped;
            if (status == Delivered)
                paid = m_rng.bounded(100) < 97; // a few invoices are still open
            else if (status == Processing)
                paid = m_rng.bounded(100) < 70;
            const QVariant shippedDate = shipped
                ? QVariant(isoDate(std::min(lastOrderDate, date.addDays(1 + m_rng.bounded(4)))))
                : noDate;
            orders.add(id, 1 + m_rng.bounded(customerCount), isoDate(date), statusTexts[status], int(paid),
                shippedDate);

            const int lineCount = 1 + m_rng.bounded(maxLinesPerOrder);
            int used[maxLinesPerOrder];
            for (int position = 1; position <= lineCount; ++position) {
                int product;
                do { // one line per product within an order
                    product = 1 + m_rng.bounded(productCount);
                } while (std::find(used, used + position - 1, product) != used + position - 1);
                used[position - 1] = product;

                const int q = m_rng.bounded(100);
                const int quantity = q < 60 ? 1
                    : q < 80                ? 2
                    : q < 90                ? 3
                    : q < 97                ? 4 + m_rng.bounded(3)
                                            : 10 + m_rng.bounded(11);
                const int d = m_rng.bounded(100);
                const double discount = d < 75 ? 0.0 : d < 88 ? 0.05 : d < 96 ? 0.10 : 0.15;
                lines.add(++lineId, id, position, product, quantity, m_prices.at(product), discount);
            }
        }
        counts.orders = orderCount;
        counts.orderLines = lineId;
        return finish(orders) && finish(lines);
    }

    QString error() const { return m_error; }

private:
    bool finish(BatchInsert& insert)
    {
        if (insert.flush())
            return true;
        m_error = insert.error();
        return false;
    }

    QSqlDatabase m_db;
    QRandomGenerator m_rng;
    QVector<double> m_prices;
    QString m_error;
};

} // namespace

SampleDatabase::SampleDatabase(const QString& fileName)
    : m_fileName(fileName)
{
}

bool SampleDatabase::open()
{
    m_created = false;
    m_creationTime = 0;
    m_counts = Counts();
    m_error.clear();
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        return fail(tr("The Qt SQLite driver (QSQLITE) is not installed"), QString());
    const QFileInfo info(m_fileName);
    if (!QDir().mkpath(info.absolutePath()))
        return fail(tr("Cannot create the folder"), info.absolutePath());
    if (!openConnection())
        return false;
    switch (inspect()) {
    case Complete:
        return true;
    case Foreign:
        // Someone else's file: never overwrite it.
        QSqlDatabase::database().close();
        return fail(tr("The file is not a database of this demo and is left alone"), QString());
    case Rebuild:
        break;
    }

    // New, from an older version or cut short while it was written: start afresh.
    if (!removeFile() || !openConnection())
        return false;
    QElapsedTimer timer;
    timer.start();
    if (!create()) {
        removeFile();
        return false;
    }
    m_creationTime = timer.elapsed();
    m_created = true;
    return true;
}

bool SampleDatabase::openConnection()
{
    QSqlDatabase db = QSqlDatabase::contains()
        ? QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false)
        : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    db.close();
    db.setDatabaseName(m_fileName);
    if (!db.open())
        return fail(tr("Cannot open the database"), db.lastError().text());
    QSqlQuery(db).exec(QStringLiteral("PRAGMA foreign_keys = ON"));
    return true;
}

SampleDatabase::FileState SampleDatabase::inspect() const
{
    QSqlQuery query(QSqlDatabase::database());
    // Fails on a file that is not a database at all.
    if (!query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'")))
        return Foreign;
    QStringList tables;
    while (query.next())
        tables << query.value(0).toString();
    // No tables: new, or the creating transaction never committed and SQLite rolled it back.
    if (tables.isEmpty())
        return Rebuild;
    if (!tables.contains(QLatin1String(metaTable)))
        return Foreign;

    if (!query.exec(QStringLiteral("SELECT key, value FROM %1").arg(QLatin1String(metaTable))))
        return Rebuild;
    bool complete = false;
    bool current = false;
    while (query.next()) {
        const QString key = query.value(0).toString();
        if (key == QLatin1String("complete"))
            complete = query.value(1).toString() == QLatin1String("1");
        else if (key == QLatin1String("schema"))
            current = query.value(1).toString() == QLatin1String(schemaVersion);
    }
    return complete && current ? Complete : Rebuild;
}

bool SampleDatabase::removeFile()
{
    QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).close();
    for (const char* suffix : { "", "-journal", "-wal", "-shm" }) {
        const QString path = m_fileName + QLatin1String(suffix);
        if (QFile::exists(path) && !QFile::remove(path))
            return fail(tr("Cannot remove the incomplete database"), path);
    }
    return true;
}

bool SampleDatabase::create()
{
    QSqlDatabase db = QSqlDatabase::database();
    Generator gen(db);
    // The whole sample fits in the page cache, so nothing spills to the file before the commit.
    gen.exec(QStringLiteral("PRAGMA cache_size = -65536"));
    gen.exec(QStringLiteral("PRAGMA temp_store = MEMORY"));
    if (!db.transaction())
        return fail(tr("Cannot start a transaction"), db.lastError().text());
    bool ok = true;
    for (const char* sql : schema)
        ok = ok && gen.exec(QLatin1String(sql));
    ok = ok && gen.customers(m_counts) && gen.products(m_counts) && gen.orders(m_counts);
    for (const char* sql : indexes)
        ok = ok && gen.exec(QLatin1String(sql));
    ok = ok
        && gen.exec(QStringLiteral("INSERT INTO %1 (key, value) VALUES ('schema', '%2'), ('seed', '%3')")
                        .arg(QLatin1String(metaTable), QLatin1String(schemaVersion))
                        .arg(sampleSeed));
    // Written last: a file without this row was cut short and gets rebuilt.
    ok = ok
        && gen.exec(QStringLiteral("INSERT INTO %1 (key, value) VALUES ('complete', '1')")
                        .arg(QLatin1String(metaTable)));
    if (!ok) {
        db.rollback();
        return fail(tr("Cannot create the sample data"), gen.error());
    }
    if (!db.commit())
        return fail(tr("Cannot save the sample data"), db.lastError().text());
    return true;
}

bool SampleDatabase::fail(const QString& what, const QString& detail)
{
    m_error = detail.isEmpty() ? what : what + QLatin1String(": ") + detail;
    return false;
}
