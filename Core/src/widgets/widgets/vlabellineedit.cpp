#include "vlabellineedit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

VLabelLineEdit::VLabelLineEdit(QWidget* parent)
    : VLabelLineEdit(QString(), parent)
{
}

VLabelLineEdit::VLabelLineEdit(const QString& label, QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(label, this))
    , m_lineEdit(new QLineEdit(this))
{
    m_label->setBuddy(m_lineEdit);
    m_label->setHidden(label.isEmpty());
    setFocusProxy(m_lineEdit);
    connect(m_lineEdit, &QLineEdit::textChanged, this, &VLabelLineEdit::textChanged);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(m_lineEdit, 1);
    setSizePolicy(m_lineEdit->sizePolicy());
}

QString VLabelLineEdit::text() const
{
    return m_lineEdit->text();
}

void VLabelLineEdit::setText(const QString& text)
{
    if (text == m_lineEdit->text())
        return;
    m_lineEdit->setText(text);
}

QString VLabelLineEdit::label() const
{
    return m_label->text();
}

void VLabelLineEdit::setLabel(const QString& label)
{
    if (label == m_label->text())
        return;
    m_label->setText(label);
    // No caption, no gap before the edit.
    m_label->setHidden(label.isEmpty());
    emit labelChanged(label);
}
