#include "vhistorycomboboxmodel.h"

#include <logger.h>

VHistoryComboBoxModel::VHistoryComboBoxModel(int maxCount, QObject* parent)
    : QStringListModel(parent)
    , m_maxCount(maxCount)
{
    if (m_maxCount < 0) {
        LOG_WARNING("Negative maximum count %d, the history keeps no entries", maxCount);
        m_maxCount = 0;
    }
}

void VHistoryComboBoxModel::pushTopActivated(int row)
{
    emit layoutAboutToBeChanged();
    QStringList list = stringList();
    if (row >= 0 && row < list.size())
        list.move(row, 0);
    setStringList(list);
    emit layoutChanged();
}

bool VHistoryComboBoxModel::removeTopItem()
{
    QStringList list = stringList();
    if (list.isEmpty())
        return false;
    emit layoutAboutToBeChanged();
    list.removeFirst();
    setStringList(list);
    emit layoutChanged();
    return true;
}

void VHistoryComboBoxModel::addToTop(const QString& text)
{
    addToTop(stringList(), text);
}

void VHistoryComboBoxModel::addToTop(QStringList list, const QString& text)
{
    const int existing = list.indexOf(text);
    if (existing >= 0)
        list.removeAt(existing);
    list.prepend(text);
    setStringList(list);
    if (list.size() > m_maxCount) {
        list.erase(list.begin() + m_maxCount, list.end());
        setStringList(list);
    }
}

bool VHistoryComboBoxModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return QStringListModel::setData(index, value, role);
    if (!index.isValid() || index.model() != this || index.row() >= rowCount())
        return false;
    QStringList list = stringList();
    if (list.first().isEmpty())
        list.removeFirst();
    addToTop(list, value.toString());
    return true;
}
