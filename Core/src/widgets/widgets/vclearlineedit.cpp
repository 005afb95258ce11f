#include "vclearlineedit.h"

#include <logger.h>

#include <QAction>
#include <QTimer>

VClearLineEdit::VClearLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    // The line edit creates its clear action under this fixed object name.
    auto* clearAction = findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction"));
    if (!clearAction) {
        LOG_WARNING("The line edit created no clear action; clearing is not reported");
        return;
    }
    // Queued, so that the line edit's own handling of the click has finished first.
    connect(clearAction, &QAction::triggered, this, &VClearLineEdit::_clear, Qt::QueuedConnection);
}

void VClearLineEdit::_clear()
{
    clear();
    emit clearTriggered();
}

void VClearLineEdit::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (isReadOnly() || !isEnabled())
        return;
    // Deferred: a mouse press that gave the focus would otherwise place the cursor over the selection.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
}
