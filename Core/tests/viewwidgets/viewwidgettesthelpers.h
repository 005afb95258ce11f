#ifndef VIEWWIDGETTESTHELPERS_H
#define VIEWWIDGETTESTHELPERS_H

#include <vabstractviewwidget.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QStandardItemModel>
#include <QTimer>

#include <functional>

// Test helpers shared by the view widget tests.

/// Rows of key, name and city; answers the status roles for the invalid index and counts submits and reverts.
class RecordModel : public QStandardItemModel {
public:
    explicit RecordModel(int rows = 5, QObject* parent = nullptr)
        : QStandardItemModel(0, 3, parent)
    {
        setHorizontalHeaderLabels({ QStringLiteral("Key"), QStringLiteral("Name"), QStringLiteral("City") });
        for (int row = 0; row < rows; ++row) {
            auto* key = new QStandardItem;
            key->setData(100 + row, Qt::DisplayRole);
            appendRow({ key, new QStandardItem(QStringLiteral("Name %1").arg(row)),
                new QStandardItem(QStringLiteral("City %1").arg(row % 2)) });
        }
    }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override
    {
        if (!index.isValid())
            return status.value(role);
        return QStandardItemModel::data(index, role);
    }

    bool submit() override
    {
        ++submits;
        return submitResult;
    }
    void revert() override { ++reverts; }
    /// Resets the model without changing its rows.
    void reset()
    {
        beginResetModel();
        endResetModel();
    }

    /// The model's status values by role (Qt::UserRole + 2 ... + 5).
    QHash<int, QVariant> status;
    bool submitResult = true;
    int submits = 0;
    int reverts = 0;
};

/// The abstract view widget with its protected parts in reach.
class TestViewWidget : public VAbstractViewWidget {
public:
    explicit TestViewWidget(Options options = Options(), const QString& name = QStringLiteral("Orders"),
        QWidget* parent = nullptr)
        : VAbstractViewWidget(options, name, parent)
    {
    }

    using VAbstractViewWidget::_copyTriggered;
    using VAbstractViewWidget::_deleteTriggered;
    using VAbstractViewWidget::_doubleClicked;
    using VAbstractViewWidget::_editTriggered;
    using VAbstractViewWidget::_emailTriggered;
    using VAbstractViewWidget::_newTriggered;
    using VAbstractViewWidget::_revertTriggered;
    using VAbstractViewWidget::_submitTriggered;
    using VAbstractViewWidget::colourStatusLabel;
    using VAbstractViewWidget::columnsAction;
    using VAbstractViewWidget::filterLabel;
    using VAbstractViewWidget::filterWidget;
    using VAbstractViewWidget::headerCrudLayout;
    using VAbstractViewWidget::headerExtraLayout;
    using VAbstractViewWidget::headerLabel;
    using VAbstractViewWidget::headerLayout;
    using VAbstractViewWidget::headerTitleLayout;
    using VAbstractViewWidget::linkedAction;
    using VAbstractViewWidget::linkedWidget;
    using VAbstractViewWidget::mainLayout;
    using VAbstractViewWidget::options;
    using VAbstractViewWidget::optionsWidget;
    using VAbstractViewWidget::printersLayout;
    using VAbstractViewWidget::readOnly;
    using VAbstractViewWidget::showFilterAction;
    using VAbstractViewWidget::showFilterActivated;
    using VAbstractViewWidget::showOptionsAction;
    using VAbstractViewWidget::showOptionsActivated;
    using VAbstractViewWidget::statusLabel;
    using VAbstractViewWidget::statusLayout;
    using VAbstractViewWidget::titleLabel;
    using VAbstractViewWidget::visibilityAction;
};

/// Answers the next modal message box with @p answer and remembers what it showed.
class MessageBoxAnswer {
public:
    explicit MessageBoxAnswer(QMessageBox::StandardButton answer)
        : m_answer(answer)
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { answerBox(); });
        m_timer.start();
    }

    int shown = 0;
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QIcon windowIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;

private:
    void answerBox()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        ++shown;
        title = box->windowTitle();
        text = box->text();
        informativeText = box->informativeText();
        icon = box->icon();
        windowIcon = box->windowIcon();
        buttons = box->standardButtons();
        defaultButton = box->standardButton(reinterpret_cast<QAbstractButton*>(box->defaultButton()));
        if (QAbstractButton* button = box->button(m_answer))
            button->click();
        else
            box->reject();
    }

    QMessageBox::StandardButton m_answer;
    QTimer m_timer;
};

/// Hands every modal dialog that opens to @p handle (which must close it), or rejects it; records their
/// classes.
class ModalWatcher {
public:
    explicit ModalWatcher(std::function<void(QWidget*)> handle = {})
        : m_handle(std::move(handle))
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start();
    }

    QStringList seen;

private:
    void look()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || modal == m_last)
            return;
        m_last = modal;
        seen << QString::fromLatin1(modal->metaObject()->className());
        if (m_handle)
            m_handle(modal);
        else if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
    }

    std::function<void(QWidget*)> m_handle;
    QPointer<QWidget> m_last;
    QTimer m_timer;
};

#endif // VIEWWIDGETTESTHELPERS_H
