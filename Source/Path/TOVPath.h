// File paths as text.
#pragma once

#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVString/TOVStringA.h>

#include <iosfwd>

// A path held exactly as given: nothing is normalised, made absolute or looked up, and "." and ".." are names like any
// other. The structure is read from the text at each call. Owns one text, shared between copies as CTOVStringA shares
// it: a change in place, such as MakeLower, reaches all sharers. No lock: one thread at a time.
//
// Both '\\' and '/' separate. A separator ends a component; one at index 0 starts none, and runs are not collapsed.
//
//    C:\dir\\file        components 0 "C:", 1 "dir", 2 "", 3 "file"
//    \\server\share      components 0 "", 1 "server", 2 "share"
//    /a/b/               components 0 "a", 1 "b"
//
// Where a function reads the first or last character, an empty path fails the check of CTOVStringA::GetAt,
// "(0 <= lIndex) && (lIndex < GetLength())"; below this is called "throws if empty". Test IsEmpty first.
class TOV_EXPORT CTOVPath
{
public:
    // The only virtual operation.
    virtual ~CTOVPath();

    CTOVPath();

    // As CTOVStringA::operator=(const char*): NULL gives an empty path, a value below 0x10000 is a string id.
    CTOVPath(const char* szPath);
    const CTOVPath& operator=(const char* szPath);

    // Share the text.
    CTOVPath(const CTOVStringA& oPath);
    CTOVPath(const CTOVPath& oOther);
    const CTOVPath& operator=(const CTOVStringA& oPath);
    const CTOVPath& operator=(const CTOVPath& oOther);

    // The shared empty path, created if it is not there. Operations return copies of it as their empty result.
    static CTOVPath& Null();

    const CTOVStringA& AsString() const;
    operator const CTOVStringA&() const;

    // The characters; NULL for a path that never had any.
    const char* operator~() const;

    // Writes the characters to a stream of the standard library, as for a string.
    template<class TTraits>
    friend std::basic_ostream<char, TTraits>& operator<<(std::basic_ostream<char, TTraits>& oStream,
                                                         const CTOVPath& oPath)
    {
        return oStream << oPath.m_oPath;
    }

    long GetLength() const;
    bool IsEmpty() const;
    void Empty();

    // Characters.
    static bool IsSlash(char cChar);
    static bool IsDriveLetter(char cChar);

    // Roots. The number is 0 to 25 for a letter of either case followed by ':', else -1; throws if shorter than 2.
    int GetDriveNumber() const;

    // "A:\" to "Z:\" for 0 to 25, else an empty path.
    static CTOVPath BuildRoot(int nDrive);

    // Whether the path begins with two backslashes; forward slashes do not count. Throws if empty and for a lone
    // backslash.
    bool IsUNC() const;

    // Tests of the first and the last character. They throw if empty.
    bool HasLeadingBackslash() const;
    bool HasLeadingForwardslash() const;
    bool HasLeadingSlash() const;
    bool HasTrailingBackslash() const;
    bool HasTrailingForwardslash() const;
    bool HasTrailingSlash() const;

    // Append or prepend the named separator unless that very one is there. They throw if empty.
    void AddTrailingBackslash();
    void AddTrailingForwardslash();
    void AddLeadingBackslash();
    void AddLeadingForwardslash();

    // Take away one such character, if it is there. They throw if empty.
    void RemoveTrailingBackslash();
    void RemoveTrailingForwardslash();
    void RemoveTrailingSlash();

    // As above at the front. The text gets one shorter, but GetLength() keeps its value: the terminator counts as the
    // last character from then on, so that no trailing test is true.
    void RemoveLeadingBackslash();
    void RemoveLeadingForwardslash();

    // Replace the one kind of separator by the other in place; return how many.
    int MakeForwardslashes();
    int MakeBackwardslashes();

    // Components. Each call scans the text; GetFirstComponent and GetNextComponent visit all in linear time.
    int GetNumComponents() const;

    // The text from the start of component nFirst over nCount components, without the separator behind them. A count of
    // 0 gives an empty text, a range that runs past the end brings a trailing separator along, and a first component
    // beyond the end gives the whole path.
    CTOVStringA GetComponent(int nFirst, int nCount) const;

    // Index of the component's first character; 0 for a component that is not there.
    int GetComponentPosition(int nIndex) const;

    // Deliver one component after the other, empty ones included; false, with oComponent unchanged, when there is none
    // left. lPosition stands on the separator behind the component just delivered.
    bool GetFirstComponent(CTOVStringA& oComponent, long& lPosition) const;
    bool GetNextComponent(CTOVStringA& oComponent, long& lPosition) const;

    // Join, with a backslash between the two if neither has a separator there; two separators at the seam both stay.
    // They throw if this path is empty, and if oOther is empty and this path ends in no separator.
    void Append(const CTOVPath& oOther);
    CTOVPath Concat(const CTOVPath& oOther) const;
    const CTOVPath& operator+=(const CTOVPath& oOther);
    const CTOVStringA& operator+=(const CTOVStringA& oOther);
    const CTOVStringA& operator+=(const char* szOther);

    // The path without its last component and the separator before it: "a/b/" gives "a", "a" an empty path. Throws if
    // empty.
    CTOVPath Parent() const;

    // The text before the last separator: "a/b/" gives "a/b", "a" is its own path.
    CTOVPath GetPath() const;

    // The last component, without a trailing separator. Without its extension ".txt" has no name. Throws for "", "/"
    // and "//", which have no last character to look at.
    CTOVStringA GetFileName(bool bWithExtension) const;

    // Cuts the path to what stands behind its last separator.
    void StripPath();

    // The path without the leading components, compared without case, that it shares with oBase.
    CTOVPath Strip(const CTOVPath& oBase) const;

    // Extensions begin at the last dot, if that stands in the last component and not at its start. The index is -1
    // without one. The text of the extension includes the dot, and a trailing separator: "a.b/" has ".b/".
    int FindExtension() const;
    bool HasExtension() const;
    CTOVStringA GetExtension() const;

    // Appends the extension to a path without one. An extension that does not begin with a dot is ignored; an empty one
    // throws.
    void AddExtension(const CTOVStringA& oExtension);
    void RemoveExtension();

    // Order by components without case; kinds of separators, leading and trailing ones do not matter.
    int Compare(const CTOVPath& oOther) const;

    // Whether both have the same components and the same separators between them, without case. nUnused is not read.
    // Throws if either is empty, unless both flags are set or the numbers of components differ.
    bool IsSame(const CTOVPath& oOther, int nUnused, bool bIgnoreLeadingSlash, bool bIgnoreTrailingSlash) const;

    // Seen from the argument: whether oOther lies below, or above, this path.
    bool IsBelow(const CTOVPath& oOther) const;
    bool IsAbove(const CTOVPath& oOther) const;
    bool IsBelowOrSame(const CTOVPath& oOther) const;

    // Settled: true for any two paths.
    bool IsAboveOrSame(const CTOVPath& oOther) const;

    // In place, also for all that share the text. MakePretty is MakeLower.
    void MakeLower();
    void MakeUpper();
    void MakePretty();

    // Settled: does nothing.
    void CompactPath(const CTOVPath& oPath, unsigned int nMaxLength);

    // Questions to the file system. A missing file's attributes have every bit set, so it is a directory and no file.
    bool DoesExist() const;
    bool IsDirectory() const;
    bool IsFile() const;

    // The process's working directory, or an empty path if it is longer than 259 characters. Uses one static buffer.
    static CTOVPath GetWorkingDirectory();

private:
    CTOVStringA m_oPath;
};

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<CTOVPath>;

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

TOV_EXPORT_INLINE long CTOVPath::GetLength() const
{
    return m_oPath.GetLength();
}

TOV_EXPORT_INLINE bool CTOVPath::IsEmpty() const
{
    return m_oPath.IsEmpty();
}
