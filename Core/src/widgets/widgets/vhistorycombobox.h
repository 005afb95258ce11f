#ifndef VHISTORYCOMBOBOX_H
#define VHISTORYCOMBOBOX_H

#include "veitikgip_export.h"

#include <QComboBox>

class VHistoryComboBoxModel;

/**
 * @brief An editable combo box that remembers the entered texts, most recently used first.
 *
 * The history holds at most maxCount distinct entries and is kept in the
 * settings under "section/objectName" as one string with the entries joined
 * by ",". It is read on construction; saveSettings() writes it. Choosing an
 * entry moves it to the top and emits itemSelected(); Shift+Del removes the
 * most recent entry and saves at once.
 * @code
 * auto* history = new VHistoryComboBox("customerSearch", "history", 10, this);
 * connect(history, &VHistoryComboBox::itemSelected, this, &Screen::search);
 * @endcode
 */
class VEITIKGIP_EXPORT VHistoryComboBox : public QComboBox {
    Q_OBJECT
public:
    /**
     * @param name the object name, which also names the settings key
     * @param section the settings section; an empty one keeps the history out of the settings
     * @param maxCount the most entries the history holds
     */
    VHistoryComboBox(QString name, QString section, int maxCount, QWidget* parent = nullptr);

    /// The history, most recent first.
    QStringList items() const;
    /// Puts @p text at the top of the history.
    void addItem(QString text);
    void setSectionName(QString section);
    QString sectionName() const { return m_section; }

    /// Replaces the history with the stored one (one empty entry when nothing is stored).
    void readSettings();
    void saveSettings();

signals:
    void itemSelected(QString text);

protected:
    bool event(QEvent* event) override;

private:
    QString settingsKey() const;

    VHistoryComboBoxModel* m_model;
    QString m_section;
};

#endif // VHISTORYCOMBOBOX_H
