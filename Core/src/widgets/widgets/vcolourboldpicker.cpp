#include "vcolourboldpicker.h"

#include "vcolourpicker.h"

#include <QCheckBox>
#include <QHBoxLayout>

VColourBoldPicker::VColourBoldPicker(QWidget* parent)
    : QWidget(parent)
    , m_picker(new VColourPicker(this))
    , m_boldBox(new QCheckBox(tr("Bold"), this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(m_picker);
    layout->addWidget(m_boldBox);
    setFocusProxy(m_picker);

    connect(m_picker, &VColourPicker::fgChanged, this, &VColourBoldPicker::fgChanged);
    connect(m_picker, &VColourPicker::bgChanged, this, &VColourBoldPicker::bgChanged);
    connect(m_boldBox, &QCheckBox::toggled, this, &VColourBoldPicker::boldChanged);
}

QColor VColourBoldPicker::fgColor() const
{
    return m_picker->fgColor();
}

QColor VColourBoldPicker::bgColor() const
{
    return m_picker->bgColor();
}

bool VColourBoldPicker::isBold() const
{
    return m_boldBox->isChecked();
}

void VColourBoldPicker::setFgColor(const QColor& color)
{
    m_picker->setFgColor(color);
}

void VColourBoldPicker::setBgColor(const QColor& color)
{
    m_picker->setBgColor(color);
}

void VColourBoldPicker::setBold(bool bold)
{
    if (bold == isBold())
        return;
    m_boldBox->setChecked(bold);
    // The box's toggle has already been passed on; this second emission is part of the contract.
    emit boldChanged(bold);
}
