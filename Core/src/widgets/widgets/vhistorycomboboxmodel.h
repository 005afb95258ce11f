#ifndef VHISTORYCOMBOBOXMODEL_H
#define VHISTORYCOMBOBOXMODEL_H

#include "veitikgip_export.h"

#include <QStringListModel>

/**
 * @brief The model of VHistoryComboBox: a string list of at most maxCount
 * distinct entries, the most recently used first.
 *
 * Every text that arrives, through addToTop() or through an edit, moves to
 * the top; an equal entry further down is dropped, and entries beyond
 * maxCount fall off the end.
 */
class VEITIKGIP_EXPORT VHistoryComboBoxModel : public QStringListModel {
    Q_OBJECT
public:
    VHistoryComboBoxModel(int maxCount, QObject* parent);

    int maxCount() const { return m_maxCount; }

    /// Moves the entry at @p row to the top, inside a layout change; a row outside the list moves nothing.
    void pushTopActivated(int row);
    /// Removes the most recent entry; false when the list is empty.
    bool removeTopItem();
    /// Puts @p text at the top, dropping an equal (case-sensitive) entry and any entries beyond maxCount.
    void addToTop(const QString& text);

    /**
     * Routes edits in the display or edit role through addToTop(). The empty
     * entry that a combo box inserts at the top before setting its text is
     * dropped first, so the new text takes its place rather than joining it.
     */
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    void addToTop(QStringList list, const QString& text);

    int m_maxCount;
};

#endif // VHISTORYCOMBOBOXMODEL_H
