#ifndef VCLEARLINEEDIT_H
#define VCLEARLINEEDIT_H

#include "veitikgip_export.h"

#include <QLineEdit>

/**
 * @brief A line edit with the toolkit's clear button that reports clearing.
 *
 * A click on the clear button empties the field and then emits
 * clearTriggered(), so that a filter bound to the field can be reset at once.
 * Focusing an editable field selects its whole text, ready to be typed over.
 * Subclasses may override _clear() to react to the button themselves.
 */
class VEITIKGIP_EXPORT VClearLineEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit VClearLineEdit(QWidget* parent = nullptr);

signals:
    void clearTriggered();

protected slots:
    /// Empties the field and emits clearTriggered(); run (queued) by the clear button.
    virtual void _clear();

protected:
    void focusInEvent(QFocusEvent* event) override;
};

#endif // VCLEARLINEEDIT_H
