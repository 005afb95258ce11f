#ifndef VPERSISTENTCOMBOBOX_H
#define VPERSISTENTCOMBOBOX_H

#include "veitikgip_export.h"

#include <QComboBox>

/**
 * @brief Removes a combo box's current item when Shift+Del is pressed on it.
 *
 * Install it on a QComboBox; other objects and other keys pass through.
 */
class VEITIKGIP_EXPORT DeleteHighlightedItemWhenShiftDelPressedEventFilter : public QObject {
    Q_OBJECT
public:
    explicit DeleteHighlightedItemWhenShiftDelPressedEventFilter(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/**
 * @brief An editable combo box for regular-expression filters that keeps its
 * entries sorted and can store them in the settings.
 *
 * A text entered with Enter joins the list in alphabetical order; Shift+Del
 * removes the current entry. After setSectionName(), readSettings() and
 * saveSettings() load and store the entries under "section/objectName", as a
 * list of strings so that entries containing commas (common in patterns such
 * as "a{1,3}") survive intact.
 * @code
 * auto* patterns = new VPersistentComboBox(this);
 * patterns->setObjectName("logFilter");
 * patterns->setSectionName("filters");
 * patterns->readSettings();
 * @endcode
 */
class VEITIKGIP_EXPORT VPersistentComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit VPersistentComboBox(QWidget* parent = nullptr);

    /// The item texts in order, each text once (the first occurrence counts; case-sensitive).
    QStringList items() const;
    void setSectionName(QString section);
    QString sectionName() const { return m_section; }

    /// Replaces the items with the stored ones; does nothing without a section name.
    void readSettings();
    /// Stores items(); does nothing without a section name.
    void saveSettings();

private:
    QString settingsKey() const;

    QString m_section;
};

#endif // VPERSISTENTCOMBOBOX_H
