#ifndef VOPTIONSWIDGET_H
#define VOPTIONSWIDGET_H

#include "veitikgip_export.h"

#include <QGroupBox>

class QFormLayout;
class QVBoxLayout;

/**
 * @brief A panel of controls that change how a view widget presents its data.
 *
 * The application subclasses it, adds its rows to formLayout (the left half
 * of the panel), emits optionsChanged() when the user changes an option and
 * overrides the hooks. A view widget shows and hides the panel through its
 * "Show Options" action (VAbstractViewWidget::setOptionsWidget()) and uses
 * description() as the action's tooltip.
 * @code
 * class OrderOptions : public VOptionsWidget {
 * public:
 *     OrderOptions(QWidget* parent) : VOptionsWidget(tr("Options"), parent)
 *     {
 *         formLayout->addRow(tr("Show cancelled"), cancelled = new QCheckBox);
 *         connect(cancelled, &QCheckBox::toggled, this, &VOptionsWidget::optionsChanged);
 *     }
 *     QString description() const override { return cancelled->isChecked() ? tr("With cancelled") :
 * QString(); } QCheckBox* cancelled;
 * };
 * @endcode
 */
class VEITIKGIP_EXPORT VOptionsWidget : public QGroupBox {
    Q_OBJECT
public:
    /// @param title the group box title.
    explicit VOptionsWidget(const QString& title, QWidget* parent = nullptr);

    /// A short text of the options in force; empty by default.
    virtual QString description() const;

public slots:
    /// Hook: bring the controls up to date; empty.
    virtual void refreshOptions();
    /// Hook: run before the panel's values are applied; empty.
    virtual void prepareApply();

signals:
    void optionsChanged();

public:
    /// Where subclasses add their rows.
    QFormLayout* formLayout;
    QVBoxLayout* mainLayout;
};

#endif // VOPTIONSWIDGET_H
