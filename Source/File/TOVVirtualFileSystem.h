// Declares ITOVVirtualFileSystem and CTOVVirtualFileSystem, the table of assigns.
#pragma once

#include <Debug/TOVException.h>
#include <Path/TOVPath.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVRtti/TOVClass.h>
#include <TOVString/TOVStringA.h>

#include <map>

// An assign is a short name that stands for a directory at the beginning of a path, as in "data:level/one.map". The
// virtual file system replaces that name by the directory, once, and does nothing else: it does not access the disk and
// has no search lists. If the name before the colon is not an assign, the path is unchanged, so that drive letters and
// plain names keep their meaning.
class TOV_EXPORT ITOVVirtualFileSystem
{
public:
    // Virtual operations; their order is part of the exported design. There is no virtual destructor.
    virtual const CTOVClass& GetRuntimeClass() const;
    virtual void* QueryInterface(const CTOVClass& oClass); // this for GetClass(), otherwise null
    virtual bool IsInstanceOf(const CTOVClass& oClass) const;
    virtual bool IsKindOf(const CTOVClass& oClass) const;
    // These set and return an assign, and replace the one at the beginning of a path.
    virtual void SetAssign(const CTOVStringA& oName, const CTOVPath& oPath) = 0;
    virtual const CTOVStringA& GetAssign(const CTOVStringA& oName) const = 0;
    virtual CTOVPath ResolvePath(const CTOVPath& oPath) = 0;

    ITOVVirtualFileSystem();
    ITOVVirtualFileSystem(const ITOVVirtualFileSystem& oOther);
    ITOVVirtualFileSystem& operator=(const ITOVVirtualFileSystem& oOther);

    // Returns the descriptor of this interface.
    static const CTOVClass& GetClass();
};

// Owns its names and paths, which share their text with the arguments of SetAssign. A copy has its own table. There is
// no lock: use a table from one thread at a time, and do not look up an assign while another thread sets one.
class TOV_EXPORT CTOVVirtualFileSystem : public ITOVVirtualFileSystem
{
public:
    // Derived classes may throw this exception; this class does not.
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

    // Sets or replaces an assign. Names are case-sensitive. A name of less than 2 characters and an empty path are
    // ignored, so that no assign hides a drive letter and no assign is ever removed.
    void SetAssign(const CTOVStringA& oName, const CTOVPath& oPath) override;

    // Returns the path of an assign, or CTOVStringA::Null() if there is none. It is valid until that assign is
    // replaced.
    const CTOVStringA& GetAssign(const CTOVStringA& oName) const override;

    // Replaces the name before the first colon, and the colon, by the path that GetAssign returns for it, and joins
    // that path and the rest by CTOVPath::Append. Throws "(0 <= lIndex) && (lIndex < GetLength())" if nothing follows
    // the colon and the assigned path does not end in a separator.
    CTOVPath ResolvePath(const CTOVPath& oPath) override;

    virtual ~CTOVVirtualFileSystem();

    // Makes an empty table.
    CTOVVirtualFileSystem();
    CTOVVirtualFileSystem(const CTOVVirtualFileSystem& oOther);
    CTOVVirtualFileSystem& operator=(const CTOVVirtualFileSystem& oOther);

    // Returns the table that CTOVFile uses. Creates it if it does not exist.
    static CTOVVirtualFileSystem& Instance();

    // Returns the descriptor of this class, whose super class is ITOVVirtualFileSystem.
    static const CTOVClass& GetClass();

private:
    std::map<CTOVStringA, CTOVPath> m_oAssigns; // sorted by unsigned bytes

    static CTOVClass _s_oClass;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVVirtualFileSystem>;
