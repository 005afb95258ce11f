#ifndef VDATEEDIT_H
#define VDATEEDIT_H

#include "veitikgip_export.h"

#include <QDateEdit>
#include <QWidget>

class QToolButton;

/**
 * @brief The date edit inside VDateEdit: a calendar popup and a signal for its enabled state.
 *
 * enabledChanged() follows every change of the edit's effective enabled
 * state, including one that comes from a parent being enabled or disabled.
 */
class VEITIKGIP_EXPORT CDateEdit : public QDateEdit {
    Q_OBJECT
public:
    explicit CDateEdit(QWidget* parent = nullptr);

signals:
    void enabledChanged(bool enabled);

protected:
    void changeEvent(QEvent* event) override;
};

/**
 * @brief A date field that can be empty, with a calendar popup, a "Today" and a "Clear" button.
 *
 * The empty field is held inside as the edit's minimum date and shown as
 * "<Not Specified>" when the field is nullable. date() maps it to
 * VCore::nullDate() and dateTime() to an invalid QDateTime; setDate() and
 * setDateTime() map the null date back. The "Clear" button exists only for a
 * nullable field. dateChanged() passes on the edit's raw date, so an emptied
 * field signals the minimum date: read date() for the mapped value.
 * dateTimeChanged() is declared for bindings but not emitted.
 * @code
 * auto* shipped = new VDateEdit(this, true);
 * mapper->addMapping(shipped, OrdersModel::ShippedDate); // binds the "date" property
 * @endcode
 */
class VEITIKGIP_EXPORT VDateEdit : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QDate date READ date WRITE setDate NOTIFY dateChanged USER true)
    Q_PROPERTY(QDateTime dateTime READ dateTime WRITE setDateTime NOTIFY dateTimeChanged)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(QDate minimumDate READ minimumDate WRITE setMinimumDate)
public:
    /**
     * @param nullable whether the field can be emptied; only then it has a "Clear" button.
     * The defaults let forms made in Qt Designer create the widget with a parent alone.
     */
    explicit VDateEdit(QWidget* parent = nullptr, bool nullable = true);

    /// The date, or VCore::nullDate() when the field is empty.
    QDate date() const;
    /// The date and time, or an invalid QDateTime when the field is empty.
    QDateTime dateTime() const;
    /// Sets the date; VCore::nullDate() (or an invalid date) empties the field.
    void setDate(const QDate& date);
    /// Sets the date and time; a date-time on VCore::nullDate() (or an invalid one) empties the field.
    void setDateTime(const QDateTime& dateTime);

    /// A read-only field also disables its buttons.
    void setReadOnly(bool readOnly);
    bool isReadOnly() const;
    /// The minimum date of the inner edit, which stands for the empty field.
    void setMinimumDate(const QDate& date);
    QDate minimumDate() const;

signals:
    void dateChanged(const QDate& date);
    void dateTimeChanged(const QDateTime& dateTime);

protected slots:
    void onTodayClicked();
    void onClearClicked();
    void dateEnableChanged(bool enabled);

private:
    CDateEdit* m_edit;
    QToolButton* m_todayButton;
    QToolButton* m_clearButton;
};

#endif // VDATEEDIT_H
