// Declares CTOVPath, a file path held as text.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

#include <iosfwd>

// Holds a path exactly as given: nothing is normalised, made absolute or looked up, and "." and ".." are names like any
// other. Each call reads the structure from the text. Copies share the text as those of CTOVStringA do: a change in
// place, such as MakeLower, changes all of them. There is no lock: use all copies from one thread at a time.
//
// Both '\\' and '/' are separators. A separator ends a component, except at index 0; successive separators enclose
// empty components.
//
//    C:\dir\\file        components 0 "C:", 1 "dir", 2 "", 3 "file"
//    \\server\share      components 0 "", 1 "server", 2 "share"
//    /a/b/               components 0 "a", 1 "b"
//
// A function that reads the first or last character of an empty path fails the check of CTOVStringA::GetAt,
// "(0 <= lIndex) && (lIndex < GetLength())"; below this is called "throws if empty". Test IsEmpty first.
//
//   operation                                          cost              throws if empty
//   copy, assignment, AsString, GetLength, IsEmpty     constant          no
//   tests of the first and last characters             constant          yes
//   adding and removing one separator                  linear            yes
//   components, extensions, GetPath, StripPath         linear            no
//   Append, Concat, +=, Parent, GetFileName            linear            yes
//   Strip, Compare, IsBelow, IsAbove                   linear            no
//   DoesExist, IsDirectory, IsFile                     a system call     no
class TOV_EXPORT CTOVPath
{
public:
    // Virtual operation.
    virtual ~CTOVPath();

    CTOVPath();

    // These read szPath as CTOVStringA::operator=(const char*) does: null gives an empty path, and a value below
    // 0x10000 is a string id.
    CTOVPath(const char* szPath);
    const CTOVPath& operator=(const char* szPath);

    // These share the text.
    CTOVPath(const CTOVStringA& oPath);
    CTOVPath(const CTOVPath& oOther);
    const CTOVPath& operator=(const CTOVStringA& oPath);
    const CTOVPath& operator=(const CTOVPath& oOther);

    // Returns the shared empty path. Creates it if it does not exist. Operations return copies of it as their empty
    // result.
    static CTOVPath& Null();

    // These return the path as a string, which shares the text with whoever copies it.
    const CTOVStringA& AsString() const;
    operator const CTOVStringA&() const;

    // Returns the characters, or null for a path that has never had any.
    const char* operator~() const;

    // Writes the characters to a stream of the standard library, as the operator of CTOVStringA does.
    template<class TTraits>
    friend std::basic_ostream<char, TTraits>& operator<<(std::basic_ostream<char, TTraits>& oStream,
                                                         const CTOVPath& oPath)
    {
        return oStream << oPath.m_oPath;
    }

    // These return the number of characters and whether it is 0. Empty does the same as CTOVStringA::Empty.
    long GetLength() const;
    bool IsEmpty() const;
    void Empty();

    // These test a character: IsSlash accepts both separators, and IsDriveLetter the letters A to Z in either case.
    static bool IsSlash(char cChar);
    static bool IsDriveLetter(char cChar);

    // Returns 0 to 25 if the path begins with a letter of either case and ':', else -1. Throws if the path is shorter
    // than 2.
    int GetDriveNumber() const;

    // Returns "A:\" to "Z:\" for 0 to 25, else an empty path.
    static CTOVPath BuildRoot(int nDrive);

    // Returns whether the path begins with two backslashes; it does not accept forward slashes. Throws if empty, and
    // for a single backslash.
    bool IsUNC() const;

    // These test the first or the last character. They throw if empty.
    bool HasLeadingBackslash() const;
    bool HasLeadingForwardslash() const;
    bool HasLeadingSlash() const;
    bool HasTrailingBackslash() const;
    bool HasTrailingForwardslash() const;
    bool HasTrailingSlash() const;

    // These append or prepend the named separator unless that same character is already there. They throw if empty.
    void AddTrailingBackslash();
    void AddTrailingForwardslash();
    void AddLeadingBackslash();
    void AddLeadingForwardslash();

    // These remove one such character from the end, if it is there. They throw if empty.
    void RemoveTrailingBackslash();
    void RemoveTrailingForwardslash();
    void RemoveTrailingSlash();

    // These remove one such character from the front, if it is there. They throw if empty. The text becomes one
    // character shorter, but GetLength() is unchanged: the terminator then counts as the last character, so that no
    // test of the last character returns true.
    void RemoveLeadingBackslash();
    void RemoveLeadingForwardslash();

    // These replace one kind of separator by the other, in place, and return the number of replacements.
    int MakeForwardslashes();
    int MakeBackwardslashes();

    // Returns the number of components. This and the next two scan the text at each call; GetFirstComponent and
    // GetNextComponent visit all components in linear time.
    int GetNumComponents() const;

    // Returns the text of nCount components, from the start of component nFirst and without the separator after the
    // last. A count of 0 gives an empty text. A range that extends past the end includes a trailing separator. An
    // nFirst beyond the end gives the whole path.
    CTOVStringA GetComponent(int nFirst, int nCount) const;

    // Returns the index of the component's first character, or 0 if there is no such component.
    int GetComponentPosition(int nIndex) const;

    // These assign one component after the other, empty ones included, to oComponent. They return false, with
    // oComponent unchanged, when there are no more. lPosition is then the index after the component, where its
    // separator is.
    bool GetFirstComponent(CTOVStringA& oComponent, long& lPosition) const;
    bool GetNextComponent(CTOVStringA& oComponent, long& lPosition) const;

    // These join two paths, with a backslash between them if neither has a separator there; if both have one, both
    // stay. They throw if this path is empty, and if oOther is empty and this path does not end in a separator.
    void Append(const CTOVPath& oOther);
    CTOVPath Concat(const CTOVPath& oOther) const;
    const CTOVPath& operator+=(const CTOVPath& oOther);
    const CTOVStringA& operator+=(const CTOVStringA& oOther);
    const CTOVStringA& operator+=(const char* szOther);

    // Returns the path without its last component and the separator before it: "a/b/" gives "a", and "a" gives an empty
    // path. Throws if empty.
    CTOVPath Parent() const;

    // Returns the text before the last separator: "a/b/" gives "a/b", and "a" gives "a".
    CTOVPath GetPath() const;

    // Returns the last component, without a trailing separator. Without its extension, ".txt" gives an empty name.
    // Throws for "", "/" and "//", whose last component is empty.
    CTOVStringA GetFileName(bool bWithExtension) const;

    // Reduces the path to the text after its last separator.
    void StripPath();

    // Returns the path without the leading components that oBase also has. The comparison ignores case.
    CTOVPath Strip(const CTOVPath& oBase) const;

    // An extension begins at the last dot, if that is in the last component and not at its start. FindExtension returns
    // the index of the dot, or -1 without an extension. The text of an extension includes the dot and a trailing
    // separator: "a.b/" has the extension ".b/".
    int FindExtension() const;
    bool HasExtension() const;
    CTOVStringA GetExtension() const;

    // Appends the extension to a path without one. An extension that does not begin with a dot is ignored; an empty one
    // throws.
    void AddExtension(const CTOVStringA& oExtension);
    void RemoveExtension();

    // Compares the components in order, ignoring case. It ignores the kinds of separators, and leading and trailing
    // separators.
    int Compare(const CTOVPath& oOther) const;

    // Returns whether both paths have the same components and the same separators between them, ignoring case. nUnused
    // is not read. Throws if either path is empty, unless both flags are set or the numbers of components differ.
    bool IsSame(const CTOVPath& oOther, int nUnused, bool bIgnoreLeadingSlash, bool bIgnoreTrailingSlash) const;

    // IsBelow returns whether oOther is below this path, and IsAbove whether oOther is above it.
    bool IsBelow(const CTOVPath& oOther) const;
    bool IsAbove(const CTOVPath& oOther) const;
    bool IsBelowOrSame(const CTOVPath& oOther) const;

    // Settled: returns true for any two paths.
    bool IsAboveOrSame(const CTOVPath& oOther) const;

    // These change the text in place, also for all objects that share it. MakePretty does the same as MakeLower.
    void MakeLower();
    void MakeUpper();
    void MakePretty();

    // Settled: does nothing.
    void CompactPath(const CTOVPath& oPath, unsigned int nMaxLength);

    // These ask the file system. The attributes of a missing file have every bit set, so that it counts as a directory
    // and not as a file.
    bool DoesExist() const;
    bool IsDirectory() const;
    bool IsFile() const;

    // Returns the process's working directory, or an empty path if it is longer than 259 characters. Uses one static
    // buffer.
    static CTOVPath GetWorkingDirectory();

private:
    // Takes the first nCount characters of a text. The copy is made in this object: there is no string between them.
    CTOVPath(const CTOVStringA& oText, int nCount);

    CTOVStringA m_oPath;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVPath>;

TOV_EXPORT_INLINE CTOVPath::CTOVPath(const CTOVStringA& oPath) : m_oPath(oPath)
{
}

TOV_EXPORT_INLINE CTOVPath::~CTOVPath()
{
}

TOV_EXPORT_INLINE const CTOVStringA& CTOVPath::AsString() const
{
    return m_oPath;
}

TOV_EXPORT_INLINE CTOVPath::operator const CTOVStringA&() const
{
    return m_oPath;
}

TOV_EXPORT_INLINE const char* CTOVPath::operator~() const
{
    return m_oPath.GetString();
}

TOV_EXPORT_INLINE bool CTOVPath::IsSlash(char cChar)
{
    return cChar == '\\' || cChar == '/';
}

TOV_EXPORT_INLINE long CTOVPath::GetLength() const
{
    return m_oPath.GetLength();
}

TOV_EXPORT_INLINE bool CTOVPath::IsEmpty() const
{
    return m_oPath.IsEmpty();
}
