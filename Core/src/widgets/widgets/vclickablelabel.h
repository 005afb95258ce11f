#ifndef VCLICKABLELABEL_H
#define VCLICKABLELABEL_H

#include "veitikgip_export.h"

#include <QLabel>

/**
 * @brief A label that reports a click with the left mouse button.
 *
 * clicked() is emitted when the left button is released over the label, the
 * way a button completes a click; a release after dragging off the label and
 * other buttons are ignored. The label sets no cursor of its own. The table
 * and tree views turn a clickable label in their toolbar into a context-menu
 * entry whose activation emits clicked().
 * @code
 * auto* label = new VClickableLabel(tr("Show all"), this);
 * connect(label, &VClickableLabel::clicked, model, &OrdersModel::showAll);
 * @endcode
 */
class VEITIKGIP_EXPORT VClickableLabel : public QLabel {
    Q_OBJECT
public:
    explicit VClickableLabel(QWidget* parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    explicit VClickableLabel(
        const QString& text, QWidget* parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};

#endif // VCLICKABLELABEL_H
