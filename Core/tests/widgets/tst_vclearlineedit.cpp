#include <QAction>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

#include "vclearlineedit.h"
#include "vtestsettings.h"

class tst_VClearLineEdit : public QObject {
    Q_OBJECT

private slots:
    void clearButtonReportsClearing();
    void clearSlotIsOverridable();
    void focusSelectsText_data();
    void focusSelectsText();

private:
    VTestSettings m_settings;
};

namespace {
class CountingEdit : public VClearLineEdit {
public:
    int clears = 0;

protected:
    void _clear() override { ++clears; }
};

QAction* clearAction(QLineEdit& edit)
{
    return edit.findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction"));
}

void sendFocusIn(QWidget& widget)
{
    // A click, not Tab: the line edit selects on Tab by itself.
    QFocusEvent focusIn(QEvent::FocusIn, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(&widget, &focusIn);
}
} // namespace

void tst_VClearLineEdit::clearButtonReportsClearing()
{
    VClearLineEdit edit;
    QVERIFY(edit.isClearButtonEnabled());
    QAction* action = clearAction(edit);
    QVERIFY(action);

    edit.resize(200, 30);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    edit.setText(QStringLiteral("Smith"));
    QSignalSpy cleared(&edit, &VClearLineEdit::clearTriggered);

    // A real click on the button the line edit draws for the action.
    QToolButton* button = nullptr;
    for (QToolButton* candidate : edit.findChildren<QToolButton*>())
        if (candidate->defaultAction() == action)
            button = candidate;
    QVERIFY(button);
    QTRY_VERIFY(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(edit.text(), QString());
    // Reported through a queued connection, once the click has been handled.
    QCOMPARE(cleared.count(), 0);
    QTRY_COMPARE(cleared.count(), 1);
    QCOMPARE(edit.text(), QString());

    edit.setText(QStringLiteral("x"));
    action->trigger();
    QTRY_COMPARE(cleared.count(), 2);
    QCoreApplication::processEvents();
    QCOMPARE(cleared.count(), 2);
}

void tst_VClearLineEdit::clearSlotIsOverridable()
{
    CountingEdit edit;
    QSignalSpy cleared(&edit, &VClearLineEdit::clearTriggered);
    edit.setText(QStringLiteral("kept by the override"));
    clearAction(edit)->trigger();
    QTRY_COMPARE(edit.clears, 1);
    QCOMPARE(cleared.count(), 0);
}

void tst_VClearLineEdit::focusSelectsText_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("selected");
    QTest::newRow("editable") << false << true << QStringLiteral("Jones & Co");
    QTest::newRow("read-only") << true << true << QString();
    QTest::newRow("disabled") << false << false << QString();
}

void tst_VClearLineEdit::focusSelectsText()
{
    QFETCH(bool, readOnly);
    QFETCH(bool, enabled);
    QFETCH(QString, selected);

    VClearLineEdit edit;
    edit.setText(QStringLiteral("Jones & Co"));
    edit.setCursorPosition(2);
    edit.setReadOnly(readOnly);
    edit.setEnabled(enabled);
    sendFocusIn(edit);
    // Deferred until the event loop runs.
    QCOMPARE(edit.selectedText(), QString());
    QCoreApplication::processEvents();
    QCOMPARE(edit.selectedText(), selected);
}

QTEST_MAIN(tst_VClearLineEdit)
#include "tst_vclearlineedit.moc"
