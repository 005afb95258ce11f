#ifndef VCSVMODELWRITER_H
#define VCSVMODELWRITER_H

#include "veitikgip_export.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class QAbstractItemModel;

/**
 * @brief Writes chosen columns of an item model, with a header line, to a CSV file.
 *
 * Every field, titles and empty values included, is enclosed in double quotes
 * with embedded double quotes doubled; fields are separated by "," and lines end
 * with a single "\n". The text is encoded with the locale's codec, without a
 * byte-order mark. Values are the model's data in each column's role, as
 * QVariant::toString() gives them.
 * @code
 * VCsvModelWriter writer(path);
 * writer.setModel(view->model());
 * writer.addColumn(tr("Customer"), 1, Qt::DisplayRole);
 * if (!writer.write())
 *     QMessageBox::warning(this, tr("Export"), tr("Cannot write %1").arg(path));
 * @endcode
 */
class VEITIKGIP_EXPORT VCsvModelWriter : public QObject {
    Q_OBJECT
public:
    explicit VCsvModelWriter(const QString& fileName, QObject* parent = nullptr);
    ~VCsvModelWriter() override;

    /// The model whose rows are written; not owned. Without a model only the header line is written.
    void setModel(const QAbstractItemModel* model);

    /**
     * Appends a column to the output: @p title in the header line (each "\n"
     * in it becomes a space), then the data of model column @p column in @p role.
     */
    void addColumn(const QString& title, int column, int role);

    /**
     * Writes the file, replacing any earlier content.
     * @return false when the file cannot be opened or the device fails while
     * writing (a full disk, for example); true otherwise.
     */
    bool write();

private:
    struct Column {
        QString title;
        int column;
        int role;
    };

    QString m_fileName;
    QPointer<const QAbstractItemModel> m_model;
    QVector<Column> m_columns;
};

#endif // VCSVMODELWRITER_H
