#include "vtestsettings.h"

#include <vcsvmodelwriter.h>

#include <QDate>
#include <QFile>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <cmath>
#include <cstring>
#include <limits>

class tst_VCsvModelWriter : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void quotedField_data();
    void quotedField();
    void columnsTitlesAndRoles();
    void withoutModel();
    void withoutColumns();
    void replacesEarlierContent();
    void localeCodec();
    void largeModelMatchesPlainWriter();
    void numbersAndDatesAsQVariantGivesThem();
    void unwritablePath();
    void fullDevice_data();
    void fullDevice();

private:
    QByteArray readAll(const QString& fileName) const;
    QString path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }

    VTestSettings m_settings;
    QTemporaryDir m_dir;
    QTextCodec* m_localeCodec = nullptr;
};

void tst_VCsvModelWriter::init()
{
    // The expected bytes below are UTF-8; tests that need another codec set it themselves.
    m_localeCodec = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void tst_VCsvModelWriter::cleanup()
{
    QTextCodec::setCodecForLocale(m_localeCodec);
}

QByteArray tst_VCsvModelWriter::readAll(const QString& fileName) const
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<cannot read>");
    return file.readAll();
}

void tst_VCsvModelWriter::quotedField_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("field");

    QTest::newRow("plain") << QVariant(QStringLiteral("abc")) << QByteArray("\"abc\"");
    QTest::newRow("quote inside") << QVariant(QStringLiteral("a\"b")) << QByteArray("\"a\"\"b\"");
    QTest::newRow("quotes only") << QVariant(QStringLiteral("\"\"")) << QByteArray("\"\"\"\"\"\"");
    QTest::newRow("quotes at ends") << QVariant(QStringLiteral("\"x\"")) << QByteArray("\"\"\"x\"\"\"");
    QTest::newRow("empty string") << QVariant(QString()) << QByteArray("\"\"");
    QTest::newRow("invalid") << QVariant() << QByteArray("\"\"");
    QTest::newRow("comma") << QVariant(QStringLiteral("1,5")) << QByteArray("\"1,5\"");
    QTest::newRow("line break kept") << QVariant(QStringLiteral("a\nb")) << QByteArray("\"a\nb\"");
    QTest::newRow("crlf kept") << QVariant(QStringLiteral("a\r\n\"b\"")) << QByteArray("\"a\r\n\"\"b\"\"\"");
    QTest::newRow("non-ascii") << QVariant(QStringLiteral("Gr\u00fc\u00dfe \u20ac"))
                               << QByteArray("\"Gr\xc3\xbc\xc3\x9f"
                                             "e \xe2\x82\xac\"");
    QTest::newRow("int") << QVariant(42) << QByteArray("\"42\"");
    QTest::newRow("int zero") << QVariant(0) << QByteArray("\"0\"");
    QTest::newRow("int min") << QVariant(std::numeric_limits<int>::min()) << QByteArray("\"-2147483648\"");
    QTest::newRow("uint max") << QVariant(std::numeric_limits<uint>::max()) << QByteArray("\"4294967295\"");
    QTest::newRow("longlong min") << QVariant(std::numeric_limits<qlonglong>::min())
                                  << QByteArray("\"-9223372036854775808\"");
    QTest::newRow("ulonglong max") << QVariant(std::numeric_limits<qulonglong>::max())
                                   << QByteArray("\"18446744073709551615\"");
    QTest::newRow("double") << QVariant(1234.5) << QByteArray("\"1234.5\"");
    QTest::newRow("double third") << QVariant(1.0 / 3) << QByteArray("\"0.3333333333333333\"");
    QTest::newRow("double sum") << QVariant(0.1 + 0.2) << QByteArray("\"0.30000000000000004\"");
    QTest::newRow("double negative") << QVariant(-2.5) << QByteArray("\"-2.5\"");
    QTest::newRow("double small") << QVariant(0.0001) << QByteArray("\"0.0001\"");
    QTest::newRow("double smaller") << QVariant(0.00001) << QByteArray("\"1e-05\"");
    QTest::newRow("double integral") << QVariant(123456.0) << QByteArray("\"123456\"");
    QTest::newRow("double million") << QVariant(1e6) << QByteArray("\"1e+06\"");
    QTest::newRow("double long") << QVariant(123456789012345678.0) << QByteArray("\"123456789012345680\"");
    QTest::newRow("double zero") << QVariant(0.0) << QByteArray("\"0\"");
    QTest::newRow("double negative zero") << QVariant(-0.0) << QByteArray("\"0\"");
    QTest::newRow("double infinity") << QVariant(qInf()) << QByteArray("\"inf\"");
    QTest::newRow("date") << QVariant(QDate(2024, 2, 29)) << QByteArray("\"2024-02-29\"");
    QTest::newRow("date early") << QVariant(QDate(7, 3, 9)) << QByteArray("\"0007-03-09\"");
    QTest::newRow("null date") << QVariant(QDate()) << QByteArray("\"\"");
    QTest::newRow("bool") << QVariant(true) << QByteArray("\"true\"");
    QTest::newRow("byte array with quote") << QVariant(QByteArray("x\"y")) << QByteArray("\"x\"\"y\"");
}

void tst_VCsvModelWriter::quotedField()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, field);

    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), value, Qt::UserRole + 1);
    VCsvModelWriter writer(path("field.csv"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("V"), 0, Qt::UserRole + 1);
    QVERIFY(writer.write());
    QCOMPARE(readAll(path("field.csv")), "\"V\"\n" + field + "\n");
}

void tst_VCsvModelWriter::columnsTitlesAndRoles()
{
    QStandardItemModel model(2, 3);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            model.setData(model.index(row, column), QStringLiteral("r%1c%2").arg(row).arg(column));
            model.setData(model.index(row, column), row * 10 + column, Qt::UserRole);
        }
    }

    VCsvModelWriter writer(path("columns.csv"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("Third\ncolumn"), 2, Qt::DisplayRole);
    writer.addColumn(QStringLiteral("Key \"id\""), 0, Qt::UserRole);
    writer.addColumn(QStringLiteral("\nA\n\nB\n"), 0, Qt::DisplayRole);
    writer.addColumn(QStringLiteral("Missing"), 7, Qt::DisplayRole);
    writer.addColumn(QString(), 1, Qt::ToolTipRole);
    QVERIFY(writer.write());

    QCOMPARE(readAll(path("columns.csv")),
        QByteArray("\"Third column\",\"Key \"\"id\"\"\",\" A  B \",\"Missing\",\"\"\n"
                   "\"r0c2\",\"0\",\"r0c0\",\"\",\"\"\n"
                   "\"r1c2\",\"10\",\"r1c0\",\"\",\"\"\n"));
}

void tst_VCsvModelWriter::withoutModel()
{
    VCsvModelWriter writer(path("nomodel.csv"));
    writer.addColumn(QStringLiteral("A"), 0, Qt::DisplayRole);
    writer.addColumn(QStringLiteral("B"), 1, Qt::DisplayRole);
    QVERIFY(writer.write());
    QCOMPARE(readAll(path("nomodel.csv")), QByteArray("\"A\",\"B\"\n"));

    // A model destroyed after it was set counts as no model.
    auto* model = new QStandardItemModel(3, 2);
    writer.setModel(model);
    delete model;
    QVERIFY(writer.write());
    QCOMPARE(readAll(path("nomodel.csv")), QByteArray("\"A\",\"B\"\n"));
}

void tst_VCsvModelWriter::withoutColumns()
{
    QStandardItemModel model(2, 2);
    VCsvModelWriter writer(path("nocolumns.csv"));
    writer.setModel(&model);
    QVERIFY(writer.write());
    QCOMPARE(readAll(path("nocolumns.csv")), QByteArray("\n\n\n"));
}

void tst_VCsvModelWriter::replacesEarlierContent()
{
    QFile old(path("old.csv"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(1000, 'x'));
    old.close();

    VCsvModelWriter writer(path("old.csv"));
    writer.addColumn(QStringLiteral("A"), 0, Qt::DisplayRole);
    QVERIFY(writer.write());
    QCOMPARE(readAll(path("old.csv")), QByteArray("\"A\"\n"));
}

void tst_VCsvModelWriter::localeCodec()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QStringLiteral("\u00e4 \u20ac"));
    VCsvModelWriter writer(path("latin1.csv"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("\u00dc"), 0, Qt::DisplayRole);
    QVERIFY(writer.write());
    // Latin-1 has no euro sign; the codec's replacement stands in for it, and there is no byte-order mark.
    QCOMPARE(readAll(path("latin1.csv")), QByteArray("\"\xdc\"\n\"\xe4 ?\"\n"));
}

void tst_VCsvModelWriter::largeModelMatchesPlainWriter()
{
    // Enough text for several encoding chunks, with multi-byte characters and a field larger than a chunk.
    const int rows = 40000;
    QStandardItemModel model(rows, 3);
    for (int row = 0; row < rows; ++row) {
        model.setData(model.index(row, 0), row);
        model.setData(
            model.index(row, 1), QStringLiteral("Stra\u00dfe \"%1\",\nNr. \u20ac%2").arg(row).arg(row % 97));
        model.setData(model.index(row, 2), QDate(2000, 1, 1).addDays(row));
    }
    model.setData(model.index(rows / 2, 1), QString(700 * 1024, QLatin1Char('"')));
    QString pairs = QStringLiteral("x");
    for (int i = 0; i < 600 * 1024; ++i)
        pairs += QStringLiteral("\U0001F600");
    model.setData(model.index(rows / 3, 1), pairs);

    VCsvModelWriter writer(path("large.csv"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("Id"), 0, Qt::DisplayRole);
    writer.addColumn(QStringLiteral("Text"), 1, Qt::DisplayRole);
    writer.addColumn(QStringLiteral("Date"), 2, Qt::DisplayRole);
    QVERIFY(writer.write());

    QString expected = QStringLiteral("\"Id\",\"Text\",\"Date\"\n");
    auto quoted = [](QString text) {
        return QLatin1Char('"') + text.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (column > 0)
                expected += QLatin1Char(',');
            expected += quoted(model.index(row, column).data().toString());
        }
        expected += QLatin1Char('\n');
    }
    const QByteArray actual = readAll(path("large.csv"));
    QCOMPARE(actual.size(), expected.toUtf8().size());
    QVERIFY(actual == expected.toUtf8());
}

void tst_VCsvModelWriter::numbersAndDatesAsQVariantGivesThem()
{
    // Numbers and dates are formatted without QVariant::toString(); the text must still be exactly its.
    QRandomGenerator random(20240229);
    QVector<QVariant> values;
    for (int i = 0; i < 30000; ++i) {
        const quint64 bits = random.generate64();
        double any;
        std::memcpy(&any, &bits, sizeof(any));
        values << any;
        const double scale = std::pow(10.0, random.bounded(-12, 22));
        values << double(qint64(random.generate64() >> random.bounded(1, 64))) / scale;
        values << -double(random.bounded(1000000)) / 100.0;
        values << random.bounded(1e9) * std::pow(10.0, random.bounded(-10, 12));
        values << QDate::fromJulianDay(random.bounded(-100000, 6000000));
        values << qint64(random.generate64()) << int(random.generate()) << random.generate();
    }

    QStandardItemModel model(values.size(), 1);
    for (int row = 0; row < values.size(); ++row)
        model.setData(model.index(row, 0), values.at(row), Qt::UserRole);
    VCsvModelWriter writer(path("numbers.csv"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("N"), 0, Qt::UserRole);
    QVERIFY(writer.write());

    const QList<QByteArray> lines = readAll(path("numbers.csv")).split('\n');
    QCOMPARE(lines.size(), values.size() + 2);
    for (int row = 0; row < values.size(); ++row) {
        const QByteArray expected = '"' + values.at(row).toString().toUtf8() + '"';
        if (lines.at(row + 1) != expected)
            QFAIL(qPrintable(
                QStringLiteral("%1 (%2) written as %3")
                    .arg(QString::fromLatin1(expected), QString::fromLatin1(values.at(row).typeName()),
                        QString::fromLatin1(lines.at(row + 1)))));
    }
}

void tst_VCsvModelWriter::unwritablePath()
{
    const QString fileName = path("no-such-folder/out.csv");
    VCsvModelWriter writer(fileName);
    writer.addColumn(QStringLiteral("A"), 0, Qt::DisplayRole);
    QVERIFY(!writer.write());
    QVERIFY(!QFile::exists(fileName));
    QVERIFY(!QFile::exists(path("no-such-folder")));

    VCsvModelWriter toFolder(m_dir.path());
    QVERIFY(!toFolder.write());
}

void tst_VCsvModelWriter::fullDevice_data()
{
    QTest::addColumn<int>("rows");
    QTest::newRow("header only") << 0;
    QTest::newRow("small") << 3;
    QTest::newRow("several chunks") << 30000;
}

void tst_VCsvModelWriter::fullDevice()
{
    QFETCH(int, rows);
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("This system has no /dev/full");

    QStandardItemModel model(rows, 1);
    for (int row = 0; row < rows; ++row)
        model.setData(
            model.index(row, 0), QStringLiteral("a value long enough to fill a chunk soon %1").arg(row));
    VCsvModelWriter writer(QStringLiteral("/dev/full"));
    writer.setModel(&model);
    writer.addColumn(QStringLiteral("A"), 0, Qt::DisplayRole);
    QVERIFY(!writer.write());
}

QTEST_GUILESS_MAIN(tst_VCsvModelWriter)
#include "tst_vcsvmodelwriter.moc"
