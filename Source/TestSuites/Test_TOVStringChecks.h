// Internal. Declares the checks that the cases of narrow and of wide strings share.
#pragma once

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

// Both string classes have the same operations with the same results here. TString is CTOVStringA with char as T, or
// CTOVStringW with wchar_t.
template<class TString, class T> class CTOVStringChecks
{
public:
    static void CheckAll();

private:
    static void CheckNewString();
    static void CheckAccess();
    static void CheckSharing();
    static void CheckRawBuffer();
    static void CheckSearch();
    static void CheckReverseSearch();
    static void CheckReplace();
    static void CheckCutting();
    static void CheckPrefixes();
    static void CheckSuffixes();
    static void CheckComparison();
    static void CheckCase();
    static void CheckSplit();
    static void CheckNumbers();
    static void CheckFormat();
};

extern template class CTOVStringChecks<CTOVStringA, char>;
extern template class CTOVStringChecks<CTOVStringW, wchar_t>;
