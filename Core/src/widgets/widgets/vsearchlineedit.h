#ifndef VSEARCHLINEEDIT_H
#define VSEARCHLINEEDIT_H

#include "veitikgip_export.h"

#include <QLineEdit>

class QToolButton;

/**
 * @brief A search field with a framed look and a button inside its right edge.
 *
 * While the field is empty the button shows a magnifier and the placeholder
 * "Search" is set in italics; as soon as there is text the button turns into a
 * clear cross that empties the field and emits textCleared(). The look comes
 * from the library's images ":/images/esf-border", ":/images/esf-search" and
 * ":/images/esf-clear*".
 * @code
 * auto* search = new VSearchLineEdit(toolBar);
 * connect(search, &VSearchLineEdit::textCleared, model, [=] { model->setSearchString(QString()); });
 * @endcode
 */
class VEITIKGIP_EXPORT VSearchLineEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit VSearchLineEdit(QWidget* parent = nullptr);

    /// The field's style sheet for the current text: italic while empty, room on the right for the button.
    QString styleSheetForCurrentState() const;
    /// The button's style sheet for the current text: a magnifier while empty, a clear cross otherwise.
    QString buttonStyleSheetForCurrentState() const;

public slots:
    /// Empties the field and emits textCleared().
    void clearSearch();

signals:
    void textCleared();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateStyleSheets();
    int frameWidth() const;

    QToolButton* m_button;
};

#endif // VSEARCHLINEEDIT_H
