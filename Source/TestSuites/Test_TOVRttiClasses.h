// The classes that the suite of the runtime classes looks at:
//
//    CBase    IInterface
//        \    /
//        CClass
//
// Internal.
#pragma once

#include <TOVRtti/TOVClass.h>

namespace TOVRttiTest
{
// An interface: its descriptor comes to life at the first call.
class IInterface
{
public:
    static const CTOVClass& GetClass();
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    virtual void* QueryInterface(const CTOVClass& oClass);
};

// The descriptors of these two come to life when the library is loaded.
class CBase
{
public:
    static const CTOVClass& GetClass() { return _s_oClass; }
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;

private:
    friend class CClass;

    static const CTOVClass _s_oClass;
};

class CClass : public CBase, public IInterface
{
public:
    static const CTOVClass& GetClass() { return _s_oClass; }
    const CTOVClass& GetRuntimeClass() const override;
    bool IsInstanceOf(const CTOVClass& oClass) const override;
    bool IsKindOf(const CTOVClass& oClass) const override;
    void* QueryInterface(const CTOVClass& oClass) override;

private:
    static const CTOVClass _s_oClass;
};
} // namespace TOVRttiTest
