#ifndef SAMPLEDATABASE_H
#define SAMPLEDATABASE_H

#include <QCoreApplication>
#include <QString>

/**
 * @brief The demo's SQLite database of customers, products, orders and order lines.
 *
 * open() makes the file the default Qt SQL connection. A missing or empty
 * file, or one of this demo's that is half-written (without the "complete"
 * mark that creation writes last) or from an older version, is replaced by a
 * fresh sample, generated from a fixed seed so that every run shows the same
 * records. Any other file is refused and left as it is:
 * @code
 * SampleDatabase db(QStringLiteral("/tmp/demo.sqlite"));
 * if (!db.open())
 *     qWarning() << db.errorString();
 * @endcode
 */
class SampleDatabase {
    Q_DECLARE_TR_FUNCTIONS(SampleDatabase)
public:
    /// Rows written by a fresh sample.
    struct Counts {
        int customers = 0;
        int products = 0;
        int orders = 0;
        int orderLines = 0;
    };

    explicit SampleDatabase(const QString& fileName);

    /// Opens the file, creating the sample first when needed; false with errorString() on failure.
    bool open();

    QString fileName() const { return m_fileName; }
    QString errorString() const { return m_error; }
    /// Whether open() had to create the sample (rather than reuse a complete file).
    bool wasCreated() const { return m_created; }
    /// Milliseconds that creating the sample took; 0 when the file was reused.
    qint64 creationTime() const { return m_creationTime; }
    /// The rows written when the sample was created.
    Counts counts() const { return m_counts; }

private:
    enum FileState { Complete, Rebuild, Foreign };

    bool openConnection();
    FileState inspect() const;
    bool removeFile();
    bool create();
    bool fail(const QString& what, const QString& detail);

    QString m_fileName;
    QString m_error;
    bool m_created = false;
    qint64 m_creationTime = 0;
    Counts m_counts;
};

#endif // SAMPLEDATABASE_H
