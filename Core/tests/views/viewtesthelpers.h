#ifndef VIEWTESTHELPERS_H
#define VIEWTESTHELPERS_H

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QStandardItemModel>
#include <QtTest>

// Helpers shared by the tests of the library's item views.
namespace ViewTest {
const int cursorRole = Qt::UserRole + 6;
const int linkRole = Qt::UserRole + 7;
const int linkFlagsRole = Qt::UserRole + 8;

// QTest::mouseMove only moves the cursor in Qt 5; views need the event itself.
inline void moveMouse(QWidget* widget, const QPoint& pos)
{
    QMouseEvent event(
        QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

// The menu's entries, separators as "--".
inline QStringList menuTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* a : menu->actions())
        texts << (a->isSeparator() ? QStringLiteral("--") : a->text());
    return texts;
}

inline QAction* menuEntry(const QMenu* menu, const QString& text)
{
    for (QAction* a : menu->actions()) {
        if (a->text() == text)
            return a;
    }
    return nullptr;
}

// Columns link, flags, emitted: which stored links a double click reports.
inline void addLinkRows()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<int>("flags");
    QTest::addColumn<QString>("emitted");

    QTest::newRow("plain link") << "https://example.org/orders?id=10" << 0
                                << "https://example.org/orders?id=10";
    QTest::newRow("other flag bits") << "mailto:anna@example.org" << 4 << "mailto:anna@example.org";
    QTest::newRow("flag bit 0") << "https://example.org" << 1 << QString();
    QTest::newRow("flag bit 1") << "https://example.org" << 2 << QString();
    QTest::newRow("no link") << QString() << 0 << QString();
    QTest::newRow("invalid") << "http://exa mple.org:99999999" << 0 << QString();
}

class SubmitCountingModel : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;
    int submits = 0;
    bool submit() override
    {
        ++submits;
        return true;
    }
};
} // namespace ViewTest

#endif // VIEWTESTHELPERS_H
