#include <QSignalSpy>
#include <QStyle>
#include <QToolButton>
#include <QtTest>

#include "vsearchlineedit.h"
#include "vtestsettings.h"

class tst_VSearchLineEdit : public QObject {
    Q_OBJECT

private slots:
    void construction();
    void styleSheets();
    void styleSheetsFollowText();
    void buttonPlacement_data();
    void buttonPlacement();
    void buttonClick();
    void clearSearch();
    void rendersButtonImage();

private:
    static QToolButton* button(VSearchLineEdit& edit);
    static int frameWidth(VSearchLineEdit& edit)
    {
        return edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    }

    VTestSettings m_settings;
};

QToolButton* tst_VSearchLineEdit::button(VSearchLineEdit& edit)
{
    const QList<QToolButton*> buttons
        = edit.findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    return buttons.size() == 1 ? buttons.first() : nullptr;
}

void tst_VSearchLineEdit::construction()
{
    VSearchLineEdit edit;
    QToolButton* b = button(edit);
    QVERIFY(b);
    QCOMPARE(b->minimumSize(), QSize(18, 18));
    QCOMPARE(b->maximumSize(), QSize(18, 18));
    QCOMPARE(b->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(edit.placeholderText(), QStringLiteral("Search"));
    QCOMPARE(edit.sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(edit.sizePolicy().verticalPolicy(), QLineEdit().sizePolicy().verticalPolicy());

    const int f = frameWidth(edit);
    const QSize hint = b->sizeHint();
    QCOMPARE(edit.minimumSize(),
        QSize(qMax(edit.minimumSizeHint().width(), hint.width() + 2 * f + 2),
            qMax(edit.minimumSizeHint().height(), hint.height() + 2 * f + 2)));
}

void tst_VSearchLineEdit::styleSheets()
{
    VSearchLineEdit edit;
    const int padding = frameWidth(edit) + button(edit)->sizeHint().width() + 1;
    const QString tail = QStringLiteral("padding-left: 3px;padding-right: %1px;border-width: 3px;"
                                        "border-image: url(:/images/esf-border) 3 3 3 3 stretch;"
                                        "background-color: rgba(255, 255, 255, 204);}"
                                        "QLineEdit:hover, QLineEdit:focus {"
                                        "background-color: rgba(255, 255, 255, 255);}")
                             .arg(padding);

    QCOMPARE(edit.styleSheetForCurrentState(),
        QStringLiteral("QLineEdit {font-family: 'MS Sans Serif';font-style: italic;") + tail);
    QCOMPARE(edit.buttonStyleSheetForCurrentState(),
        QStringLiteral("QToolButton {border: none; margin: 0; padding: 0;"
                       "background-image: url(:images/esf-search);}"));

    edit.setText(QStringLiteral("a"));
    QCOMPARE(edit.styleSheetForCurrentState(), QStringLiteral("QLineEdit {") + tail);
    QCOMPARE(edit.buttonStyleSheetForCurrentState(),
        QStringLiteral("QToolButton {border: none; margin: 0; padding: 0;"
                       "background-image: url(:images/esf-clear);}"
                       "QToolButton:hover { background-image: url(:/images/esf-clear-hover); }"
                       "QToolButton:pressed { background-image: url(:/images/esf-clear-active); }"));
}

void tst_VSearchLineEdit::styleSheetsFollowText()
{
    VSearchLineEdit edit;
    QToolButton* b = button(edit);
    const QString emptySheet = edit.styleSheetForCurrentState();
    QCOMPARE(edit.styleSheet(), emptySheet);
    QVERIFY(b->styleSheet().contains(QLatin1String("esf-search")));

    QTest::keyClick(&edit, Qt::Key_X);
    QCOMPARE(edit.text(), QStringLiteral("x"));
    QCOMPARE(edit.styleSheet(), edit.styleSheetForCurrentState());
    QVERIFY(!edit.styleSheet().contains(QLatin1String("italic")));
    QCOMPARE(b->styleSheet(), edit.buttonStyleSheetForCurrentState());
    QVERIFY(b->styleSheet().contains(QLatin1String("esf-clear)")));

    QTest::keyClick(&edit, Qt::Key_Backspace);
    QCOMPARE(edit.styleSheet(), emptySheet);
    QVERIFY(b->styleSheet().contains(QLatin1String("esf-search")));
}

void tst_VSearchLineEdit::buttonPlacement_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("200x30") << QSize(200, 30);
    QTest::newRow("odd height") << QSize(151, 25);
    QTest::newRow("toolbar height") << QSize(120, 20);
}

void tst_VSearchLineEdit::buttonPlacement()
{
    QFETCH(QSize, size);
    VSearchLineEdit edit;
    edit.setMinimumSize(0, 0);
    edit.resize(size);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    QCOMPARE(edit.size(), size);

    QToolButton* b = button(edit);
    const QSize hint = b->sizeHint();
    QCOMPARE(b->pos(),
        QPoint(size.width() - frameWidth(edit) - hint.width() - 3, (size.height() + 1 - hint.height()) / 2));
    QCOMPARE(b->size(), QSize(18, 18));
}

void tst_VSearchLineEdit::buttonClick()
{
    VSearchLineEdit edit;
    edit.resize(200, 30);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    QSignalSpy cleared(&edit, &VSearchLineEdit::textCleared);

    // The magnifier on an empty field does nothing.
    QTest::mouseClick(button(edit), Qt::LeftButton);
    QCOMPARE(cleared.count(), 0);

    edit.setText(QStringLiteral("customer"));
    QTest::mouseClick(button(edit), Qt::LeftButton);
    QCOMPARE(edit.text(), QString());
    QCOMPARE(cleared.count(), 1);
    QCOMPARE(edit.styleSheet(), edit.styleSheetForCurrentState());
    QVERIFY(edit.styleSheet().contains(QLatin1String("italic")));
}

void tst_VSearchLineEdit::clearSearch()
{
    VSearchLineEdit edit;
    QSignalSpy cleared(&edit, &VSearchLineEdit::textCleared);
    QSignalSpy changed(&edit, &QLineEdit::textChanged);
    edit.setText(QStringLiteral("abc"));
    edit.clearSearch();
    QCOMPARE(edit.text(), QString());
    QCOMPARE(cleared.count(), 1);
    QCOMPARE(changed.count(), 2);
    // Clearing an empty field still reports it, so a search bound to it is reset.
    edit.clearSearch();
    QCOMPARE(cleared.count(), 2);
}

void tst_VSearchLineEdit::rendersButtonImage()
{
    VSearchLineEdit edit;
    edit.resize(200, 30);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));

    // The button has no icon: whatever it paints comes from its style sheet's image.
    QToolButton* b = button(edit);
    const QImage magnifier = b->grab().toImage();
    edit.setText(QStringLiteral("x"));
    const QImage cross = b->grab().toImage();
    QVERIFY(magnifier != cross);
    // The clear cross is a filled grey disc; its centre is that grey, not the field's white.
    const QColor centre = cross.pixelColor(cross.width() / 2 - 3, cross.height() / 2);
    QVERIFY2(centre.red() < 200 && qAbs(centre.red() - centre.blue()) < 40, qPrintable(centre.name()));
}

QTEST_MAIN(tst_VSearchLineEdit)
#include "tst_vsearchlineedit.moc"
