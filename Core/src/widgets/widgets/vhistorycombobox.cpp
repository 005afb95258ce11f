#include "vhistorycombobox.h"
#include "vhistorycomboboxmodel.h"

#include <vsettings.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

namespace {
/// Reads a stored value as the one string it should be; a list (say, an INI value edited by hand) is
/// rejoined.
QString storedString(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::QStringList || type == QMetaType::QVariantList)
        return value.toStringList().join(QLatin1Char(','));
    return value.toString();
}
} // namespace

VHistoryComboBox::VHistoryComboBox(QString name, QString section, int maxCount, QWidget* parent)
    : QComboBox(parent)
    , m_model(new VHistoryComboBoxModel(maxCount, this))
    , m_section(std::move(section))
{
    setObjectName(name);
    setEditable(true);
    setInsertPolicy(QComboBox::InsertAtTop);
    // The model drops duplicates itself and moves the entered text to the top.
    setDuplicatesEnabled(true);
    setModel(m_model);
    readSettings();

    connect(this, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        m_model->pushTopActivated(row);
        setCurrentIndex(0);
        emit itemSelected(currentText());
    });
}

QStringList VHistoryComboBox::items() const
{
    return m_model->stringList();
}

void VHistoryComboBox::addItem(QString text)
{
    m_model->addToTop(text);
}

void VHistoryComboBox::setSectionName(QString section)
{
    m_section = std::move(section);
}

QString VHistoryComboBox::settingsKey() const
{
    return QStringLiteral("%1/%2").arg(m_section, objectName());
}

void VHistoryComboBox::readSettings()
{
    if (m_section.isEmpty())
        return;
    VSettings settings(nullptr);
    const QString stored = storedString(settings.value(settingsKey(), QString()));
    m_model->setStringList(stored.split(QLatin1Char(','), Qt::KeepEmptyParts));
}

void VHistoryComboBox::saveSettings()
{
    if (m_section.isEmpty())
        return;
    VSettings settings(nullptr);
    settings.setValue(settingsKey(), m_model->stringList().join(QLatin1Char(',')));
}

bool VHistoryComboBox::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (keyEvent->key() == Qt::Key_Delete && keyEvent->modifiers() == Qt::ShiftModifier
            && m_model->removeTopItem()) {
            saveSettings();
            return true;
        }
        break;
    }
    case QEvent::FocusIn:
        if (QLineEdit* edit = lineEdit())
            QTimer::singleShot(0, edit, &QLineEdit::selectAll);
        break;
    case QEvent::FocusOut:
        if (QLineEdit* edit = lineEdit())
            QTimer::singleShot(0, edit, &QLineEdit::deselect);
        break;
    default:
        break;
    }
    return QComboBox::event(event);
}
