#ifndef VTREEROWEDITMODEL_H
#define VTREEROWEDITMODEL_H

#include "vocore_export.h"

#include <QAbstractItemModel>
#include <QStringList>

class VTreeRowEditModelPrivate;

/**
 * @brief An editable tree model that holds edits per row until the row is
 * committed or reverted.
 *
 * Values written through setData() in the display or edit role are kept as
 * pending edits of their row: the model shows them at once, but the row's
 * stored values change only when submitRow() commits the row, and revertRow()
 * brings the stored values back. The tree form dialog commits or reverts
 * exactly the row it edited; submit() and revert() do so for every row.
 *
 * Besides the values the model answers the record roles of the library:
 * the model name (Qt::UserRole + 9), the cell edit mode (+ 10, 1 for an
 * editable column), cell and row validity (+ 11, + 12, see isCellValid() and
 * isRowValid()) and the natural-order key (Qt::InitialSortOrderRole, the
 * order in which rows were added). Any other role is stored per cell as it
 * is given, without buffering (cursor shape, link, colours).
 * @code
 * auto model = new VTreeRowEditModel({"Name", "City"}, this);
 * model->setModelName("customers");
 * QModelIndex acme = model->appendRow({"ACME", "Berlin"});
 * model->appendRow({"Order 1", "2026-11-02"}, acme);
 * @endcode
 */
class VOCORE_EXPORT VTreeRowEditModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    /// The record roles this model answers.
    enum Roles {
        ModelNameRole = Qt::UserRole + 9,
        CellEditModeRole = Qt::UserRole + 10,
        CellValidRole = Qt::UserRole + 11,
        RowValidRole = Qt::UserRole + 12
    };
    Q_ENUM(Roles)

    explicit VTreeRowEditModel(QObject* parent = nullptr);
    explicit VTreeRowEditModel(const QStringList& headerLabels, QObject* parent = nullptr);
    ~VTreeRowEditModel() override;

    /// The column titles; their number is the column count.
    void setHeaderLabels(const QStringList& labels);
    QStringList headerLabels() const;

    /// The name under which forms for this model are registered (role Qt::UserRole + 9).
    void setModelName(const QString& name);
    QString modelName() const;

    /// All columns are editable by default.
    void setColumnEditable(int column, bool editable);
    bool isColumnEditable(int column) const;

    /// Appends a committed row under @p parent and returns the index of its first cell.
    QModelIndex appendRow(const QVariantList& values, const QModelIndex& parent = QModelIndex());
    /// The values of a row as shown, pending edits included.
    QVariantList rowValues(int row, const QModelIndex& parent = QModelIndex()) const;
    /// The stored values of a row, without its pending edits.
    QVariantList committedRowValues(int row, const QModelIndex& parent = QModelIndex()) const;
    /// Whether the row has edits that are neither committed nor reverted.
    bool isRowModified(int row, const QModelIndex& parent = QModelIndex()) const;
    /// Whether the row was inserted and has never been committed.
    bool isRowInserted(int row, const QModelIndex& parent = QModelIndex()) const;
    /// Removes every row.
    void clear();

    /**
     * Commits the pending edits of one row. Fails (false, logged) for a row
     * that does not exist or is not valid (isRowValid()).
     */
    virtual bool submitRow(int row, const QModelIndex& parent);
    /// Discards the pending edits of one row; its stored values are shown again.
    virtual void revertRow(int row, const QModelIndex& parent);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                       int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

public Q_SLOTS:
    /// Commits every row with pending edits; false when a row could not be committed.
    bool submit() override;
    /// Discards every pending edit.
    void revert() override;

Q_SIGNALS:
    void rowSubmitted(int row, const QModelIndex& parent);
    void rowReverted(int row, const QModelIndex& parent);

protected:
    /// Whether a cell's value is acceptable (role Qt::UserRole + 11); true by default.
    virtual bool isCellValid(const QModelIndex& index) const;
    /// Whether a row may be committed (role Qt::UserRole + 12); true when every cell is valid.
    virtual bool isRowValid(int row, const QModelIndex& parent) const;

private:
    VTreeRowEditModelPrivate* d;
};

#endif // VTREEROWEDITMODEL_H
