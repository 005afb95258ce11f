#include "vpersistentcombobox.h"

#include <vsettings.h>

#include <QKeyEvent>
#include <QSet>

DeleteHighlightedItemWhenShiftDelPressedEventFilter::DeleteHighlightedItemWhenShiftDelPressedEventFilter(
    QObject* parent)
    : QObject(parent)
{
}

bool DeleteHighlightedItemWhenShiftDelPressedEventFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* comboBox = qobject_cast<QComboBox*>(watched);
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (comboBox && keyEvent->key() == Qt::Key_Delete && keyEvent->modifiers() == Qt::ShiftModifier) {
            comboBox->removeItem(comboBox->currentIndex());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

VPersistentComboBox::VPersistentComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::InsertAlphabetically);
    setStatusTip(tr("Enter regex filter, press Enter to save in the list. "
                    "Press Shift-Del to remove current item from the list."));
    installEventFilter(new DeleteHighlightedItemWhenShiftDelPressedEventFilter(this));
}

QStringList VPersistentComboBox::items() const
{
    const int rows = count();
    QStringList texts;
    texts.reserve(rows);
    QSet<QString> seen;
    seen.reserve(rows);
    for (int row = 0; row < rows; ++row) {
        const QString text = itemText(row);
        if (!seen.contains(text)) {
            seen.insert(text);
            texts.append(text);
        }
    }
    return texts;
}

void VPersistentComboBox::setSectionName(QString section)
{
    m_section = std::move(section);
}

QString VPersistentComboBox::settingsKey() const
{
    return QStringLiteral("%1/%2").arg(m_section, objectName());
}

void VPersistentComboBox::readSettings()
{
    if (m_section.isEmpty())
        return;
    VSettings settings(nullptr);
    const QVariant stored = settings.value(settingsKey());
    const int type = stored.userType();
    // A one-entry list comes back from the INI file as a plain string; anything else is read as text.
    const QStringList entries = type == QMetaType::QStringList || type == QMetaType::QVariantList
        ? stored.toStringList()
        : QStringList(stored.toString());

    QStringList texts;
    QSet<QString> seen;
    for (const QString& entry : entries) {
        if (entry.isEmpty() || seen.contains(entry))
            continue;
        seen.insert(entry);
        texts.append(entry);
    }
    clear();
    addItems(texts);
}

void VPersistentComboBox::saveSettings()
{
    if (m_section.isEmpty())
        return;
    VSettings settings(nullptr);
    settings.setValue(settingsKey(), items());
}
