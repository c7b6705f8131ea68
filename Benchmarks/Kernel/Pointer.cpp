// Rows of smart pointers and handles.

#include <Bench.h>

#include <TOVDesignPatterns/TOVHandle.h>
#include <TOVDesignPatterns/TOVRefCount.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>

#include <memory>

namespace
{
// Finds its one object under one id.
class CSingleDatabase : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override { return NewHandle(lHandle, m_pObject); }
    CTOVHandle GetHandle(ITOVRefCount* pObject) override { return NewHandle(1, pObject); }
    void RemoveHandle(long) override {}

    explicit CSingleDatabase(ITOVRefCount* pObject) : m_pObject(pObject) {}

private:
    ITOVRefCount* m_pObject;
};

struct sSetup
{
    CTOVRefCount* pObject = new CTOVRefCount();
    CSingleDatabase oDatabase = CSingleDatabase(pObject);
    CTOVHandle oHandle = CTOVHandle(oDatabase, pObject);
};
} // namespace

BENCH("ptr/copy+destroy", KERNEL)
{
    CTOVSmartPointer<int> pSource(new int(1));
    for (auto _ : oState)
    {
        Touch(pSource);
        CTOVSmartPointer<int> pCopy(pSource);
        Touch(pCopy);
    }
}

BENCH("ptr/copy+destroy (CTOVHandle)", KERNEL)
{
    sSetup oSetup;
    for (auto _ : oState)
    {
        Touch(oSetup.oHandle);
        CTOVHandle oCopy(oSetup.oHandle);
        Touch(oCopy);
    }
}

BENCH("ptr/create+destroy", KERNEL)
{
    for (auto _ : oState)
    {
        CTOVSmartPointer<int> pNumber(new int(1));
        Touch(pNumber);
    }
}

BENCH("registry/handle to object", KERNEL)
{
    sSetup oSetup;
    for (auto _ : oState)
    {
        Touch(oSetup.oHandle);
        Use(oSetup.oHandle.Get());
    }
}
