#include "vbasedialog.h"

#include <logger.h>
#include <vsettings.h>

#include <QDataStream>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QString settingsKey(const QString& objectName)
{
    return QStringLiteral("dialogs/") + objectName;
}

// restoreGeometry() takes a blob cut short after its header and then shrinks the
// dialog to its size hint, so only a blob that holds both rectangles is passed on.
bool isCompleteGeometry(const QByteArray& geometry)
{
    QDataStream stream(geometry);
    stream.setVersion(QDataStream::Qt_4_0);
    quint32 magic = 0;
    quint16 majorVersion = 0;
    quint16 minorVersion = 0;
    QRect frameGeometry;
    QRect normalGeometry;
    qint32 screen = 0;
    quint8 maximized = 0;
    quint8 fullScreen = 0;
    stream >> magic >> majorVersion >> minorVersion >> frameGeometry >> normalGeometry >> screen >> maximized
        >> fullScreen;
    return stream.status() == QDataStream::Ok && magic == 0x1D9D0CB && frameGeometry.isValid()
        && normalGeometry.isValid();
}
} // namespace

VBaseDialog::VBaseDialog()
    : QDialog(nullptr)
{
    mainLayout = new QVBoxLayout;
    mainLayout->setContentsMargins(2, 2, 2, 2);
    mainLayout->setSpacing(1);

    buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    if (QLayout* boxLayout = buttonBox->layout()) {
        boxLayout->setContentsMargins(0, 0, 0, 0);
        boxLayout->setSpacing(4);
    }

    setObjectName(QStringLiteral("VBaseDialog_ObjNameNotSet"));
    // A title bar with system menu and close button, but no context help and no minimise or maximise.
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::CustomizeWindowHint
        | Qt::WindowCloseButtonHint);

    auto* buttonBoxLayout = new QHBoxLayout;
    buttonBoxLayout->setObjectName(QStringLiteral("buttonBoxLayout"));
    buttonBoxLayout->setContentsMargins(0, 0, 0, 0);
    buttonBoxLayout->setSpacing(0);
    buttonBoxLayout->addWidget(buttonBox, 0, Qt::Alignment());
    mainLayout->addLayout(buttonBoxLayout);

    buttonBox->button(QDialogButtonBox::Ok)->setText(tr("&Close"));
    QPushButton* cancel = buttonBox->button(QDialogButtonBox::Cancel);
    cancel->setText(tr("&Cancel"));
    cancel->hide();

    // Name-based on purpose: the slots are looked up in the most derived class, so a
    // subclass's own accept()/reject() slots are the ones called.
    connect(buttonBox, SIGNAL(accepted()), this, SLOT(accept()));
    connect(buttonBox, SIGNAL(rejected()), this, SLOT(reject()));
    connect(
        this, &QObject::objectNameChanged, this, [this](const QString& name) { onObjectNameChanged(name); });

    setLayout(mainLayout);
}

void VBaseDialog::readSettings()
{
    VSettings settings(nullptr);
    const QString key = settingsKey(objectName());
    // An absent key gives an empty array: the first run keeps the layout's natural size.
    const QByteArray geometry = settings.value(key, QVariant()).toByteArray();
    if (geometry.isEmpty())
        return;
    if (!isCompleteGeometry(geometry) || !restoreGeometry(geometry))
        LOG_DEBUG("Ignoring unreadable geometry stored under %s", qPrintable(key));
}

void VBaseDialog::saveSettings()
{
    VSettings settings(nullptr);
    settings.setValue(settingsKey(objectName()), saveGeometry());
}

void VBaseDialog::onObjectNameChanged(const QString& objectName)
{
    Q_UNUSED(objectName)
}

void VBaseDialog::done(int r)
{
    saveSettings();
    QDialog::done(r);
}

void VBaseDialog::closeEvent(QCloseEvent* event)
{
    saveSettings();
    QDialog::closeEvent(event);
}

void VBaseDialog::showEvent(QShowEvent* event)
{
    readSettings();
    QDialog::showEvent(event);
}
