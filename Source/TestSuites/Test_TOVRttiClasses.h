// Internal. Declares the classes that the suite of the runtime classes examines.
#pragma once

#include <TOVRtti/TOVClass.h>

namespace TOVRttiTest
{
// This is the hierarchy of the three classes:
//
//    CBase    IInterface
//        \    /
//        CClass
//
// The descriptor of the interface is constructed by the first call of GetClass.
class IInterface
{
public:
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    virtual void* QueryInterface(const CTOVClass& oClass);

    static const CTOVClass& GetClass();
};

// The descriptors of this class and of CClass are constructed when the library is loaded.
class CBase
{
public:
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;

    static const CTOVClass& GetClass() { return _s_oClass; }

private:
    friend class CClass;

    static const CTOVClass _s_oClass;
};

class CClass : public CBase, public IInterface
{
public:
    const CTOVClass& GetRuntimeClass() const override;
    bool IsInstanceOf(const CTOVClass& oClass) const override;
    bool IsKindOf(const CTOVClass& oClass) const override;
    void* QueryInterface(const CTOVClass& oClass) override;

    static const CTOVClass& GetClass() { return _s_oClass; }

private:
    static const CTOVClass _s_oClass;
};
} // namespace TOVRttiTest
