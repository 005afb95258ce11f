#include "vtreeroweditmodel.h"

#include "logger.h"

#include <QHash>
#include <QVector>

namespace {
struct Node {
    Node* parent = nullptr;
    int row = 0; // position among the parent's children, kept current on insert and remove
    QVector<Node*> children;
    QVector<QVariant> values;
    QHash<int, QVariant> pending; // column -> edited value not yet committed
    QHash<quint64, QVariant> extra; // (column << 32 | role) -> value of another role
    qint64 sequence = 0;
    bool inserted = false;

    ~Node() { qDeleteAll(children); }

    void resizeValues(int columns)
    {
        values.resize(columns);
        for (Node* child : qAsConst(children))
            child->resizeValues(columns);
    }

    void renumberFrom(int first)
    {
        for (int i = first; i < children.size(); ++i)
            children.at(i)->row = i;
    }
};

quint64 extraKey(int column, int role)
{
    return (quint64(quint32(column)) << 32) | quint32(role);
}
} // namespace

class VTreeRowEditModelPrivate
{
public:
    Node root;
    QStringList headers;
    QHash<int, QHash<int, QVariant>> headerRoles; // section -> role -> value, beyond the labels
    QString modelName;
    QVector<bool> readOnlyColumns;
    qint64 nextSequence = 0;

    Node* node(const QModelIndex& index) const
    {
        if (!index.isValid())
            return const_cast<Node*>(&root);
        Node* parent = static_cast<Node*>(index.internalPointer());
        return parent->children.at(index.row());
    }

    Node* rowNode(const VTreeRowEditModel* model, int row, const QModelIndex& parent) const
    {
        if (parent.isValid() && parent.model() != model)
            return nullptr;
        Node* p = node(parent);
        if (row < 0 || row >= p->children.size())
            return nullptr;
        return p->children.at(row);
    }

    QVariant value(const Node* n, int column) const
    {
        const auto it = n->pending.constFind(column);
        if (it != n->pending.constEnd())
            return it.value();
        return n->values.value(column);
    }
};

VTreeRowEditModel::VTreeRowEditModel(QObject* parent)
    : QAbstractItemModel(parent)
    , d(new VTreeRowEditModelPrivate)
{
}

VTreeRowEditModel::VTreeRowEditModel(const QStringList& headerLabels, QObject* parent)
    : VTreeRowEditModel(parent)
{
    d->headers = headerLabels;
}

VTreeRowEditModel::~VTreeRowEditModel()
{
    delete d;
}

void VTreeRowEditModel::setHeaderLabels(const QStringList& labels)
{
    beginResetModel();
    d->headers = labels;
    d->headerRoles.clear();
    for (Node* child : qAsConst(d->root.children))
        child->resizeValues(labels.size());
    endResetModel();
}

QStringList VTreeRowEditModel::headerLabels() const
{
    return d->headers;
}

void VTreeRowEditModel::setModelName(const QString& name)
{
    d->modelName = name;
}

QString VTreeRowEditModel::modelName() const
{
    return d->modelName;
}

void VTreeRowEditModel::setColumnEditable(int column, bool editable)
{
    if (column < 0)
        return;
    if (d->readOnlyColumns.size() <= column)
        d->readOnlyColumns.resize(column + 1);
    d->readOnlyColumns[column] = !editable;
}

bool VTreeRowEditModel::isColumnEditable(int column) const
{
    return column >= 0 && column < columnCount() && !d->readOnlyColumns.value(column, false);
}

QModelIndex VTreeRowEditModel::appendRow(const QVariantList& values, const QModelIndex& parent)
{
    const int row = rowCount(parent);
    if (!insertRows(row, 1, parent))
        return QModelIndex();
    Node* n = d->rowNode(this, row, parent);
    for (int c = 0; c < n->values.size() && c < values.size(); ++c)
        n->values[c] = values.at(c);
    n->inserted = false;
    const QModelIndex first = index(row, 0, parent);
    Q_EMIT dataChanged(first, index(row, columnCount() - 1, parent));
    return first;
}

QVariantList VTreeRowEditModel::rowValues(int row, const QModelIndex& parent) const
{
    QVariantList result;
    if (const Node* n = d->rowNode(this, row, parent)) {
        for (int c = 0; c < n->values.size(); ++c)
            result.append(d->value(n, c));
    }
    return result;
}

QVariantList VTreeRowEditModel::committedRowValues(int row, const QModelIndex& parent) const
{
    const Node* n = d->rowNode(this, row, parent);
    return n ? n->values.toList() : QVariantList();
}

bool VTreeRowEditModel::isRowModified(int row, const QModelIndex& parent) const
{
    const Node* n = d->rowNode(this, row, parent);
    return n && (!n->pending.isEmpty() || n->inserted);
}

bool VTreeRowEditModel::isRowInserted(int row, const QModelIndex& parent) const
{
    const Node* n = d->rowNode(this, row, parent);
    return n && n->inserted;
}

void VTreeRowEditModel::clear()
{
    beginResetModel();
    qDeleteAll(d->root.children);
    d->root.children.clear();
    endResetModel();
}

bool VTreeRowEditModel::submitRow(int row, const QModelIndex& parent)
{
    Node* n = d->rowNode(this, row, parent);
    if (!n) {
        LOG_WARNING("Row %d does not exist.", row);
        return false;
    }
    if (!isRowValid(row, parent)) {
        LOG_WARNING("Row %d is not valid and was not committed.", row);
        return false;
    }
    for (auto it = n->pending.constBegin(); it != n->pending.constEnd(); ++it) {
        if (it.key() < n->values.size())
            n->values[it.key()] = it.value();
    }
    n->pending.clear();
    n->inserted = false;
    Q_EMIT dataChanged(index(row, 0, parent), index(row, columnCount() - 1, parent));
    Q_EMIT rowSubmitted(row, parent);
    return true;
}

void VTreeRowEditModel::revertRow(int row, const QModelIndex& parent)
{
    Node* n = d->rowNode(this, row, parent);
    if (!n) {
        LOG_WARNING("Row %d does not exist.", row);
        return;
    }
    const bool changed = !n->pending.isEmpty();
    n->pending.clear();
    if (changed)
        Q_EMIT dataChanged(index(row, 0, parent), index(row, columnCount() - 1, parent));
    Q_EMIT rowReverted(row, parent);
}

QModelIndex VTreeRowEditModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column < 0 || column >= columnCount() || (parent.isValid() && parent.model() != this))
        return QModelIndex();
    Node* p = d->node(parent);
    if (row < 0 || row >= p->children.size())
        return QModelIndex();
    return createIndex(row, column, p);
}

QModelIndex VTreeRowEditModel::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return QModelIndex();
    Node* p = static_cast<Node*>(child.internalPointer());
    if (p == &d->root)
        return QModelIndex();
    return createIndex(p->row, 0, p->parent);
}

int VTreeRowEditModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() && (parent.column() != 0 || parent.model() != this))
        return 0;
    return d->node(parent)->children.size();
}

int VTreeRowEditModel::columnCount(const QModelIndex&) const
{
    return d->headers.size();
}

QVariant VTreeRowEditModel::data(const QModelIndex& index, int role) const
{
    if (role == ModelNameRole)
        return d->modelName;
    if (!index.isValid() || index.model() != this)
        return QVariant();
    const Node* n = d->node(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return d->value(n, index.column());
    case CellEditModeRole:
        return isColumnEditable(index.column()) ? 1 : 0;
    case CellValidRole:
        return isCellValid(index);
    case RowValidRole:
        return isRowValid(index.row(), index.parent());
    case Qt::InitialSortOrderRole:
        return n->sequence;
    default:
        return n->extra.value(extraKey(index.column(), role));
    }
}

bool VTreeRowEditModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.model() != this)
        return false;
    Node* n = d->node(index);
    const int column = index.column();
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        if (!isColumnEditable(column))
            return false;
        if (d->value(n, column) == value && d->value(n, column).userType() == value.userType())
            return true;
        if (n->values.at(column) == value && n->values.at(column).userType() == value.userType())
            n->pending.remove(column);
        else
            n->pending.insert(column, value);
        Q_EMIT dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
        return true;
    }
    if (role == ModelNameRole || role == CellEditModeRole || role == CellValidRole || role == RowValidRole
        || role == Qt::InitialSortOrderRole)
        return false;
    n->extra.insert(extraKey(column, role), value);
    Q_EMIT dataChanged(index, index, {role});
    return true;
}

QVariant VTreeRowEditModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= d->headers.size())
        return QAbstractItemModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return d->headers.at(section);
    return d->headerRoles.value(section).value(role);
}

bool VTreeRowEditModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role)
{
    if (orientation != Qt::Horizontal || section < 0 || section >= d->headers.size())
        return false;
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        d->headers[section] = value.toString();
    else
        d->headerRoles[section].insert(role, value);
    Q_EMIT headerDataChanged(orientation, section, section);
    return true;
}

Qt::ItemFlags VTreeRowEditModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (isColumnEditable(index.column()))
        f |= Qt::ItemIsEditable;
    return f;
}

bool VTreeRowEditModel::insertRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() && (parent.model() != this || parent.column() != 0))
        return false;
    Node* p = d->node(parent);
    if (count < 1 || row < 0 || row > p->children.size())
        return false;
    beginInsertRows(parent, row, row + count - 1);
    p->children.insert(row, count, nullptr);
    for (int i = row; i < row + count; ++i) {
        Node* n = new Node;
        n->parent = p;
        n->values.resize(columnCount());
        n->sequence = d->nextSequence++;
        n->inserted = true;
        p->children[i] = n;
    }
    p->renumberFrom(row);
    endInsertRows();
    return true;
}

bool VTreeRowEditModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() && (parent.model() != this || parent.column() != 0))
        return false;
    Node* p = d->node(parent);
    if (count < 1 || row < 0 || row + count > p->children.size())
        return false;
    beginRemoveRows(parent, row, row + count - 1);
    for (int i = row; i < row + count; ++i)
        delete p->children.at(i);
    p->children.remove(row, count);
    p->renumberFrom(row);
    endRemoveRows();
    return true;
}

bool VTreeRowEditModel::submit()
{
    bool ok = true;
    // Depth-first over every row; committing a row never changes the tree's shape.
    QVector<QModelIndex> parents{QModelIndex()};
    while (!parents.isEmpty()) {
        const QModelIndex parent = parents.takeLast();
        const int rows = rowCount(parent);
        for (int row = 0; row < rows; ++row) {
            if (isRowModified(row, parent))
                ok = submitRow(row, parent) && ok;
            const QModelIndex child = index(row, 0, parent);
            if (rowCount(child) > 0)
                parents.append(child);
        }
    }
    return ok;
}

void VTreeRowEditModel::revert()
{
    QVector<QModelIndex> parents{QModelIndex()};
    while (!parents.isEmpty()) {
        const QModelIndex parent = parents.takeLast();
        const int rows = rowCount(parent);
        for (int row = 0; row < rows; ++row) {
            if (d->rowNode(this, row, parent)->pending.size() > 0)
                revertRow(row, parent);
            const QModelIndex child = index(row, 0, parent);
            if (rowCount(child) > 0)
                parents.append(child);
        }
    }
}

bool VTreeRowEditModel::isCellValid(const QModelIndex&) const
{
    return true;
}

bool VTreeRowEditModel::isRowValid(int row, const QModelIndex& parent) const
{
    for (int c = 0; c < columnCount(); ++c) {
        const QModelIndex cell = index(row, c, parent);
        if (cell.isValid() && !isCellValid(cell))
            return false;
    }
    return true;
}
