#ifndef ORDEROPTIONSWIDGET_H
#define ORDEROPTIONSWIDGET_H

#include <voptionswidget.h>

class QCheckBox;

/**
 * @brief The orders' options panel: whether cancelled orders are shown.
 *
 * Emits optionsChanged() when the box is toggled; description() names the
 * option in force for the "Show Options" tooltip.
 */
class OrderOptionsWidget : public VOptionsWidget {
    Q_OBJECT
public:
    explicit OrderOptionsWidget(QWidget* parent = nullptr);

    bool showCancelled() const;
    QString description() const override;

private:
    QCheckBox* m_cancelled;
};

#endif // ORDEROPTIONSWIDGET_H
