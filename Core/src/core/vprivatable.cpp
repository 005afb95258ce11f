#include "vprivatable.h"

VPrivate::~VPrivate() = default;

VPrivatable::VPrivatable(VPrivate* d)
    : m_d(d)
{
}

VPrivatable::~VPrivatable()
{
    delete m_d;
}
