#ifndef VLABELLINEEDIT_H
#define VLABELLINEEDIT_H

#include "veitikgip_export.h"

#include <QWidget>

class QLabel;
class QLineEdit;

/**
 * @brief A caption and a line edit as one form field.
 *
 * The caption is the line edit's buddy, so a "&Name" caption focuses the
 * edit with Alt+N, and the widget hands its focus to the edit. The user
 * property `text` binds the field to a model column through a
 * QDataWidgetMapper; placeholder, validator and the like are set on
 * lineEdit().
 * @code
 * auto* city = new VLabelLineEdit(tr("&City"), this);
 * mapper->addMapping(city, CityColumn);
 * @endcode
 */
class VEITIKGIP_EXPORT VLabelLineEdit : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged USER true)
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
public:
    explicit VLabelLineEdit(QWidget* parent = nullptr);
    explicit VLabelLineEdit(const QString& label, QWidget* parent = nullptr);

    QString text() const;
    /// The caption's text.
    QString label() const;
    void setLabel(const QString& label);

    QLineEdit* lineEdit() const { return m_lineEdit; }
    QLabel* labelWidget() const { return m_label; }

public slots:
    void setText(const QString& text);

signals:
    /// The edit's text changed, by typing or from code.
    void textChanged(const QString& text);
    void labelChanged(const QString& label);

private:
    QLabel* m_label;
    QLineEdit* m_lineEdit;
};

#endif // VLABELLINEEDIT_H
