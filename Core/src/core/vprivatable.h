#ifndef VPRIVATABLE_H
#define VPRIVATABLE_H

#include "vocore_export.h"

/**
 * @brief Base of every private implementation object.
 *
 * Subclasses hold a class's state out of its header; the owning
 * VPrivatable deletes them through this virtual destructor.
 */
class VOCORE_EXPORT VPrivate
{
public:
    VPrivate() = default;
    virtual ~VPrivate();

private:
    VPrivate(const VPrivate&) = delete;
    VPrivate& operator=(const VPrivate&) = delete;
};

/**
 * @brief Owner side of the private-implementation pair.
 *
 * A class derives from its Qt base and from VPrivatable, passes
 * `new MyClassPrivate(...)` to the constructor and reaches it with
 * privateData<T>() (not d_func(), which QObject already has).
 * @code
 * class VLed : public QWidget, public VPrivatable { ... };
 * VLed::VLed(QWidget* parent) : QWidget(parent), VPrivatable(new VLedPrivate) {}
 * QColor VLed::color() const { return privateData<VLedPrivate>()->color; }
 * @endcode
 */
class VOCORE_EXPORT VPrivatable
{
public:
    explicit VPrivatable(VPrivate* d);
    virtual ~VPrivatable();

protected:
    VPrivate* privateObject() const { return m_d; }

    template <typename T>
    T* privateData() const
    {
        return static_cast<T*>(m_d);
    }

private:
    VPrivatable(const VPrivatable&) = delete;
    VPrivatable& operator=(const VPrivatable&) = delete;

    VPrivate* const m_d;
};

#endif // VPRIVATABLE_H
