// The table of assigns: short names that stand for directories in front of a file name, as in "data:level/one.map".
//
// Names are rewritten and nothing else: no look at the disk, no search lists, one pass. A name in front of a colon that
// is no assign leaves the path as it is, so that drive letters and plain names pass through.
#pragma once

#include <Debug/TOVException.h>
#include <Path/TOVPath.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVRtti/TOVClass.h>
#include <TOVString/TOVStringA.h>

#include <map>

class TOV_EXPORT ITOVVirtualFileSystem
{
public:
    // Virtual operations; their order is part of the exported design. There is no virtual destructor.
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual void* QueryInterface(const CTOVClass& oClass); // this for GetClass(), otherwise null
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    virtual void SetAssign(const CTOVStringA& oName, const CTOVPath& oPath) = 0;
    virtual const CTOVStringA& GetAssign(const CTOVStringA& oName) const = 0;
    virtual CTOVPath ResolvePath(const CTOVPath& oPath) = 0;

    ITOVVirtualFileSystem();
    ITOVVirtualFileSystem(const ITOVVirtualFileSystem& oOther);
    ITOVVirtualFileSystem& operator=(const ITOVVirtualFileSystem& oOther);

    static const CTOVClass& GetClass();
};

// Owns its names and paths; they share their text with what was given. Copies have a table of their own. No lock: one
// thread at a time, also for look-ups beside a SetAssign.
class TOV_EXPORT CTOVVirtualFileSystem : public ITOVVirtualFileSystem
{
public:
    // For derived classes; nothing here throws it.
    class TOV_EXPORT Exception : public CTOVException
    {
    public:
        explicit Exception(unsigned short usErrorCode);
        Exception(const Exception& oOther);
        Exception& operator=(const Exception& oOther);
    };

    // Virtual operations; their order is part of the exported design.
    const CTOVClass& GetRuntimeClass() const override;
    void* QueryInterface(const CTOVClass& oClass) override;
    bool IsInstanceOf(const CTOVClass& oClass) const override;
    bool IsKindOf(const CTOVClass& oClass) const override;

    // Sets or replaces an assign. Names are told apart by case. A name of less than 2 characters and an empty path are
    // ignored, so that no drive letter is ever taken and no assign ever goes away.
    void SetAssign(const CTOVStringA& oName, const CTOVPath& oPath) override;

    // The path of an assign, CTOVStringA::Null() if there is none. Valid until that assign is replaced.
    const CTOVStringA& GetAssign(const CTOVStringA& oName) const override;

    // Puts the assigned path in the place of the name before the first colon and of the colon, by CTOVPath::Append. The
    // look-up goes through GetAssign. Throws "(0 <= lIndex) && (lIndex < GetLength())" where nothing stands behind the
    // colon and the assigned path does not end in a separator.
    CTOVPath ResolvePath(const CTOVPath& oPath) override;

    virtual ~CTOVVirtualFileSystem();

    // An empty table.
    CTOVVirtualFileSystem();
    CTOVVirtualFileSystem(const CTOVVirtualFileSystem& oOther);
    CTOVVirtualFileSystem& operator=(const CTOVVirtualFileSystem& oOther);

    // The table that CTOVFile asks, created if there is none.
    static CTOVVirtualFileSystem& Instance();

    static const CTOVClass& GetClass();

private:
    std::map<CTOVStringA, CTOVPath> m_oAssigns; // in the order of unsigned bytes

    static CTOVClass _s_oClass;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVVirtualFileSystem>;
