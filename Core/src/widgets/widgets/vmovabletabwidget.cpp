#include "vmovabletabwidget.h"

#include <logger.h>
#include <vcore.h>
#include <vsettings.h>

#include <QTabBar>

VMovableTabWidget::VMovableTabWidget(QWidget* parent)
    : QTabWidget(parent)
{
    setMovable(true);
    // Connected after QTabWidget's own handler, so the pages are already in their new order.
    connect(tabBar(), &QTabBar::tabMoved, this, [this] {
        if (!m_restoring)
            saveSettings();
    });
    connect(this, &QTabWidget::currentChanged, this, &VMovableTabWidget::onCurrentChanged);
}

QList<int> VMovableTabWidget::tabOrder() const
{
    QList<int> order;
    order.reserve(count());
    for (int i = 0; i < count(); ++i)
        order.append(m_pages.indexOf(widget(i)));
    return order;
}

bool VMovableTabWidget::applyTabOrder(const QList<int>& order)
{
    const int n = m_pages.size();
    if (order.size() != n)
        return false;
    QVector<bool> seen(n, false);
    for (int original : order) {
        if (original < 0 || original >= n || seen[original])
            return false;
        seen[original] = true;
    }
    m_restoring = true;
    for (int position = 0; position < n; ++position) {
        const int from = indexOf(m_pages.at(order.at(position)));
        if (from != position)
            tabBar()->moveTab(from, position);
    }
    m_restoring = false;
    return true;
}

int VMovableTabWidget::currentOriginalIndex() const
{
    return m_pages.indexOf(currentWidget());
}

void VMovableTabWidget::setCurrentOriginalIndex(int index)
{
    if (index == currentOriginalIndex())
        return;
    if (index < 0 || index >= m_pages.size()) {
        LOG_WARNING("No tab has the original index %d.", index);
        return;
    }
    setCurrentWidget(m_pages.at(index));
}

void VMovableTabWidget::readSettings()
{
    const QString key = settingsKey();
    if (key.isEmpty())
        return;
    VSettings settings(nullptr);
    const QVariant stored = settings.value(key);
    if (!stored.isValid())
        return;
    // An INI file may give back "2,0,1" as a list of three strings.
    const QString text
        = stored.userType() == QMetaType::QStringList ? stored.toStringList().join(',') : stored.toString();
    const QList<int> order = VCore::stringsToInts(text.split(','));
    QStringList canonical;
    for (int original : order)
        canonical.append(QString::number(original));
    // stringsToInts reads anything that is not a number as 0; such an order is garbage, not tab 0.
    if (canonical.join(',') != QString(text).remove(' ') || !applyTabOrder(order))
        LOG_WARNING("Ignoring the stored tab order \"%s\" of %s, which does not fit its %d tabs.",
            qPrintable(text), qPrintable(objectName()), count());
}

void VMovableTabWidget::saveSettings()
{
    const QString key = settingsKey();
    if (key.isEmpty())
        return;
    QStringList order;
    for (int original : tabOrder())
        order.append(QString::number(original));
    VSettings settings(nullptr);
    settings.setValue(key, order.join(','));
}

void VMovableTabWidget::showEvent(QShowEvent* event)
{
    if (!m_settingsRead) {
        m_settingsRead = true;
        readSettings();
    }
    QTabWidget::showEvent(event);
}

void VMovableTabWidget::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    // While the other tabs keep their original order the new tab takes its place among them;
    // after the user has reordered them, it comes last in the original order.
    bool originalOrder = true;
    for (int i = 0, j = 0; i < count() && originalOrder; ++i) {
        if (i != index)
            originalOrder = j < m_pages.size() && m_pages.at(j++) == widget(i);
    }
    QWidget* page = widget(index);
    if (originalOrder)
        m_pages.insert(index, page);
    else
        m_pages.append(page);
    onCurrentChanged();
}

void VMovableTabWidget::tabRemoved(int index)
{
    QTabWidget::tabRemoved(index);
    for (int i = 0; i < m_pages.size(); ++i) {
        if (indexOf(m_pages.at(i)) < 0) {
            m_pages.removeAt(i);
            break;
        }
    }
    onCurrentChanged();
}

QString VMovableTabWidget::settingsKey() const
{
    if (objectName().isEmpty()) {
        LOG_WARNING("A VMovableTabWidget without an object name cannot keep its tab order.");
        return QString();
    }
    return QStringLiteral("%1/tabOrder").arg(objectName());
}

void VMovableTabWidget::onCurrentChanged()
{
    const int current = currentOriginalIndex();
    if (current == m_current)
        return;
    m_current = current;
    emit currentOriginalIndexChanged(current);
}
