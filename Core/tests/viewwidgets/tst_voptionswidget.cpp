#include "viewwidgettesthelpers.h"
#include "vtestsettings.h"

#include <vcrudtoolbar.h>
#include <vfilterwidget.h>
#include <voptionswidget.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// A filter panel that reports the order in which its hooks run.
class RecordingFilter : public VFilterWidget {
public:
    explicit RecordingFilter(QWidget* parent = nullptr)
        : VFilterWidget(QStringLiteral("Filter"), parent)
        , edit(new QLineEdit)
    {
        formLayout->addRow(QStringLiteral("City"), edit);
        connect(
            this, &VFilterWidget::applyClicked, this, [this] { calls << QStringLiteral("applyClicked"); });
    }
    QString description() const override { return text; }
    void prepareApply() override { calls << QStringLiteral("prepareApply"); }
    void refreshFilter() override { calls << QStringLiteral("refreshFilter"); }
    void refreshOptions() override { calls << QStringLiteral("refreshOptions"); }

    QLineEdit* edit;
    QString text;
    QStringList calls;
};

class DescribedOptions : public VOptionsWidget {
public:
    DescribedOptions()
        : VOptionsWidget(QStringLiteral("Options"))
    {
    }
    QString description() const override { return text; }
    QString text;
};

} // namespace

class tst_VOptionsWidget : public QObject {
    Q_OBJECT

private slots:
    void optionsPanelLayout();
    void filterPanel();
    void returnKey_data();
    void returnKey();
    void panelsInViewWidget();
    void optionsChangedReachesViewWidget();
    void panelSettings();
    void replacedOrDeletedPanels();

private:
    VTestSettings m_settings;
};

void tst_VOptionsWidget::optionsPanelLayout()
{
    VOptionsWidget panel(QStringLiteral("Display"));
    QCOMPARE(panel.title(), QStringLiteral("Display"));
    QVERIFY(panel.description().isEmpty());
    QCOMPARE(panel.layout(), panel.mainLayout);
    QCOMPARE(panel.mainLayout->contentsMargins(), QMargins(10, 10, 10, 4));
    QCOMPARE(panel.mainLayout->spacing(), 10);
    QCOMPARE(panel.formLayout->contentsMargins(), QMargins(30, 0, 0, 0));
    QCOMPARE(QList<int>({ panel.formLayout->horizontalSpacing(), panel.formLayout->verticalSpacing() }),
        QList<int>({ 4, 4 }));
    // One row: the form, then an empty half.
    QCOMPARE(panel.mainLayout->count(), 1);
    auto* row = qobject_cast<QHBoxLayout*>(panel.mainLayout->itemAt(0)->layout());
    QVERIFY(row && row->contentsMargins().isNull() && row->spacing() == 0);
    QCOMPARE(row->count(), 2);
    QCOMPARE(row->itemAt(0)->layout(), panel.formLayout);
    QCOMPARE(QList<int>({ row->stretch(0), row->stretch(1) }), QList<int>({ 50, 50 }));

    // The form takes the left half.
    auto* edit = new QLineEdit;
    panel.formLayout->addRow(QStringLiteral("Name"), edit);
    panel.resize(600, 120);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    const QRect rowRect = row->geometry();
    QVERIFY2(qAbs(edit->geometry().right() + 1 - (rowRect.left() + rowRect.width() / 2)) <= 1,
        qPrintable(QStringLiteral("%1 in %2..%3")
                       .arg(edit->geometry().right())
                       .arg(rowRect.left())
                       .arg(rowRect.right())));
    QCOMPARE(row->itemAt(1)->geometry().width(), rowRect.width() - rowRect.width() / 2);
}

void tst_VOptionsWidget::filterPanel()
{
    RecordingFilter filter;
    QCOMPARE(filter.title(), QStringLiteral("Filter"));
    QCOMPARE(filter.applyButton->text(), QStringLiteral("Apply Filter"));
    QVERIFY(filter.filterText().isEmpty());
    // Under the options row: the button, then a stretch.
    QCOMPARE(filter.mainLayout->count(), 2);
    auto* buttonRow = qobject_cast<QHBoxLayout*>(filter.mainLayout->itemAt(1)->layout());
    QVERIFY(buttonRow && buttonRow->contentsMargins().isNull() && buttonRow->spacing() == 0);
    QCOMPARE(buttonRow->count(), 2);
    QCOMPARE(buttonRow->itemAt(0)->widget(), filter.applyButton);
    QCOMPARE(buttonRow->stretch(1), 1);

    // The click prepares first; refresh() does not apply.
    QSignalSpy spy(&filter, &VFilterWidget::applyClicked);
    filter.applyButton->click();
    filter.refresh();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(filter.calls,
        QStringList({ "prepareApply", "applyClicked", "prepareApply", "refreshFilter", "refreshOptions" }));
}

void tst_VOptionsWidget::returnKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("inEditor");
    QTest::addColumn<bool>("autoRepeat");
    QTest::addColumn<int>("applies");

    QTest::newRow("Return on the panel") << int(Qt::Key_Return) << false << false << 1;
    QTest::newRow("Return in an editor") << int(Qt::Key_Return) << true << false << 1;
    QTest::newRow("keypad Enter in an editor") << int(Qt::Key_Enter) << true << false << 0;
    QTest::newRow("Escape") << int(Qt::Key_Escape) << false << false << 0;
    QTest::newRow("held Return repeats") << int(Qt::Key_Return) << false << true << 0;
}

void tst_VOptionsWidget::returnKey()
{
    QFETCH(int, key);
    QFETCH(bool, inEditor);
    QFETCH(bool, autoRepeat);
    QFETCH(int, applies);

    RecordingFilter filter;
    filter.show();
    QVERIFY(QTest::qWaitForWindowActive(&filter));
    QSignalSpy spy(&filter, &VFilterWidget::applyClicked);
    QWidget* target = inEditor ? static_cast<QWidget*>(filter.edit) : &filter;
    for (QEvent::Type type : { QEvent::KeyPress, QEvent::KeyRelease }) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), autoRepeat);
        QApplication::sendEvent(target, &event);
    }
    QCOMPARE(spy.count(), applies);
}

void tst_VOptionsWidget::panelsInViewWidget()
{
    TestViewWidget w;
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));

    // Panels may come after the first show; the options panel first, the filter still lands left of it.
    auto* options = new DescribedOptions;
    w.setOptionsWidget(options);
    auto* filter = new RecordingFilter;
    filter->text = QStringLiteral("City: Bonn");
    w.setFilterWidget(filter);
    QCOMPARE(w.optionsWidget, options);
    QCOMPARE(w.filterWidget, filter);
    QCOMPARE(w.headerExtraLayout->indexOf(filter), 0);
    QCOMPARE(w.headerExtraLayout->indexOf(options), 1);
    for (QWidget* panel : { static_cast<QWidget*>(filter), static_cast<QWidget*>(options) }) {
        QVERIFY(panel->isHidden() && w.isAncestorOf(panel));
        QCOMPARE(panel->minimumSize(), QSize(1, 1));
    }
    QVERIFY(w.showFilterAction->isVisible() && w.showFilterAction->isEnabled()
        && w.showOptionsAction->isVisible());
    QCOMPARE(w.filterLabel->text(), QStringLiteral(" [<b>City: Bonn</b>]"));

    // Each action opens and closes its panel alone and says what the next click does.
    const auto shown = [&] {
        return QStringList({ w.showFilterAction->text(), w.showOptionsAction->text() })
            << QString::number(filter->isVisible()) + QString::number(options->isVisible())
            + QString::number(w.showFilterAction->isChecked());
    };
    w.showFilterAction->trigger();
    QCOMPARE(shown(), QStringList({ "Hide Filter", "Show Options", "101" }));
    w.showOptionsAction->trigger();
    QCOMPARE(shown(), QStringList({ "Hide Filter", "Hide Options", "111" }));
    w.showFilterAction->trigger();
    w.showOptionsAction->trigger();
    QCOMPARE(shown(), QStringList({ "Show Filter", "Show Options", "000" }));

    // Return in the panel applies once; the new description then shows.
    w.showFilterAction->trigger();
    filter->text = QStringLiteral("City: Köln");
    QSignalSpy spy(filter, &VFilterWidget::applyClicked);
    filter->edit->setFocus();
    QTest::keyClick(filter->edit, Qt::Key_Return);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(w.filterLabel->text(), QStringLiteral(" [<b>City: Köln</b>]"));
    filter->text.clear();
    w.refreshFilterLabel();
    QVERIFY(w.filterLabel->text().isEmpty());

    // Disabling closes an open panel; enabling does not reopen it.
    w.setFilterEnabled(false);
    QVERIFY(!w.filterEnabled() && !w.showFilterAction->isEnabled());
    QCOMPARE(shown(), QStringList({ "Show Filter", "Show Options", "000" }));
    w.setFilterEnabled(true);
    QVERIFY(w.filterEnabled() && !filter->isVisible());
    w.showFilterAction->trigger();
    QVERIFY(filter->isVisible());
}

void tst_VOptionsWidget::optionsChangedReachesViewWidget()
{
    TestViewWidget w;
    w.viewId = 5;
    auto* options = new DescribedOptions;
    w.setOptionsWidget(options);
    QSignalSpy spy(&w, &VAbstractViewWidget::optionsChanged);
    w.statusLabel->setText(QStringLiteral("stale"));
    options->text = QStringLiteral("Cancelled orders shown");
    emit options->optionsChanged();
    QCOMPARE(spy, QList<QList<QVariant>>({ { 5 } }));
    QCOMPARE(w.showOptionsAction->toolTip(), QStringLiteral("Cancelled orders shown"));
    QCOMPARE(w.statusLabel->text(), QStringLiteral("[0 Rows]"));

    // An empty description clears the tooltip (Qt then shows the text).
    options->text.clear();
    emit options->optionsChanged();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(w.showOptionsAction->toolTip(), w.showOptionsAction->text());
}

void tst_VOptionsWidget::panelSettings()
{
    m_settings.clear();
    VSettings settings(nullptr);
    settings.setValue(QStringLiteral("Orders/filterenabled"), true);
    settings.setValue(QStringLiteral("Orders/optionsenabled"), false);
    {
        TestViewWidget w;
        w.show();
        auto* filter = new RecordingFilter;
        auto* options = new DescribedOptions;
        w.setFilterWidget(filter);
        w.setOptionsWidget(options);
        w.showOptionsAction->trigger();
        w.readSettings();
        QVERIFY(filter->isVisible() && w.showFilterAction->isChecked() && !options->isVisible()
            && !w.showOptionsAction->isChecked());
        QCOMPARE(w.showFilterAction->text(), QStringLiteral("Hide Filter"));
        QCOMPARE(w.showOptionsAction->text(), QStringLiteral("Show Options"));
        w.showOptionsAction->trigger();
        w.showFilterAction->trigger();
        w.saveSettings();
    }
    QCOMPARE(settings.value(QStringLiteral("Orders/filterenabled"), true).toBool(), false);
    QCOMPARE(settings.value(QStringLiteral("Orders/optionsenabled"), false).toBool(), true);
}

void tst_VOptionsWidget::replacedOrDeletedPanels()
{
    TestViewWidget w;
    QPointer<RecordingFilter> first = new RecordingFilter;
    w.setFilterWidget(first);
    auto* second = new RecordingFilter;
    second->text = QStringLiteral("second");
    w.setFilterWidget(second);
    QVERIFY(first.isNull());
    QCOMPARE(w.headerExtraLayout->count(), 1);
    QCOMPARE(w.filterLabel->text(), QStringLiteral(" [<b>second</b>]"));

    // A panel deleted by the application takes its action and label with it.
    w.showFilterAction->trigger();
    delete second;
    QVERIFY(!w.filterWidget && !w.showFilterAction->isVisible() && !w.showFilterAction->isChecked());
    QVERIFY(w.filterLabel->text().isEmpty());
    auto* options = new DescribedOptions;
    w.setOptionsWidget(options);
    delete options;
    QVERIFY(!w.optionsWidget && !w.showOptionsAction->isVisible());
    w.readSettings();
    w.showFilterActivated();
    w.showOptionsAction->trigger();
    w.saveSettings();

    // While the action is not offered, setFilterEnabled() leaves it as it is.
    w.showFilterAction->setChecked(true);
    w.showFilterAction->setText(QStringLiteral("Hide Filter"));
    w.setFilterEnabled(false);
    QVERIFY(w.showFilterAction->isChecked());
    QCOMPARE(w.showFilterAction->text(), QStringLiteral("Hide Filter"));
    w.setFilterEnabled(true);
    QVERIFY(!w.showFilterAction->isVisible());
    w.refreshFilterLabel();
    QVERIFY(w.filterLabel->text().isEmpty());
}

QTEST_MAIN(tst_VOptionsWidget)
#include "tst_voptionswidget.moc"
