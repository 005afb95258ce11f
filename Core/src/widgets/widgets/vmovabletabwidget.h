#ifndef VMOVABLETABWIDGET_H
#define VMOVABLETABWIDGET_H

#include "veitikgip_export.h"

#include <QList>
#include <QTabWidget>

/**
 * @brief A tab widget whose tabs the user drags into an order that is kept
 * in the settings store.
 *
 * Each tab has an original index: its position in the order in which the
 * application added the tabs (a tab added after the user has moved tabs
 * comes last in that order). After every move the order is stored under
 * "<objectName>/tabOrder" as the original indexes in their current order,
 * joined by commas ("2,0,1"); it is restored when the widget is first shown.
 * A stored order that does not fit the tabs (another count, a repeated or
 * unknown index, text that is not a list of numbers) is ignored. Give the
 * widget a distinct object name.
 *
 * The user property `currentOriginalIndex` names the current tab by its
 * original index, which stays the same whatever the order, so a form can
 * bind it to a model column.
 * @code
 * auto* tabs = new VMovableTabWidget(this);
 * tabs->setObjectName("customerTabs");
 * tabs->addTab(addressPage, tr("Address"));
 * tabs->addTab(ordersPage, tr("Orders"));
 * @endcode
 */
class VEITIKGIP_EXPORT VMovableTabWidget : public QTabWidget {
    Q_OBJECT
    Q_PROPERTY(int currentOriginalIndex READ currentOriginalIndex WRITE setCurrentOriginalIndex NOTIFY
            currentOriginalIndexChanged USER true)
public:
    explicit VMovableTabWidget(QWidget* parent = nullptr);

    /// The original indexes of the tabs, from the first tab to the last.
    QList<int> tabOrder() const;
    /**
     * Puts the tabs in @p order (original indexes, first tab first); the
     * current tab stays current. Returns false and changes nothing when
     * @p order is not a permutation of the original indexes.
     */
    bool applyTabOrder(const QList<int>& order);

    /// The original index of the current tab; -1 without tabs.
    int currentOriginalIndex() const;
    void setCurrentOriginalIndex(int index);

public slots:
    /// Restores the stored tab order, if it fits the tabs.
    void readSettings();
    /// Stores the current tab order.
    void saveSettings();

signals:
    void currentOriginalIndexChanged(int index);

protected:
    void showEvent(QShowEvent* event) override;
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    QString settingsKey() const;
    void onCurrentChanged();

    QList<QWidget*> m_pages; // in original order
    int m_current = -1;
    bool m_restoring = false;
    bool m_settingsRead = false;
};

#endif // VMOVABLETABWIDGET_H
