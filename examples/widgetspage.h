#ifndef WIDGETSPAGE_H
#define WIDGETSPAGE_H

#include <QWidget>

/**
 * @brief The demo's "Widgets" page: every stand-alone widget of the library in use.
 *
 * The widgets sit labelled in group boxes on a grid (indicators, colours,
 * dates, text input, numbers and choices, tabs), and a few are wired to each
 * other so that they visibly do something: the first LED follows a check box,
 * a clickable label flashes an LED, the colour pickers colour and embolden a
 * sample text, the colour combo box colours an LED, and the number, date and
 * choice widgets echo their values. Changes are logged, so the log dock shows
 * them too.
 */
class WidgetsPage : public QWidget {
    Q_OBJECT
public:
    explicit WidgetsPage(QWidget* parent = nullptr);
};

#endif // WIDGETSPAGE_H
