// Calls of every function with a format, for check-format-arguments: as they stand, they compile.
#include <Debug/TOVDebug.h>
#include <Debug/TOVDebugServer.h>
#include <Path/TOVPath.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <cstddef>
#include <memory>
#include <string>

struct sIncomplete;

namespace
{
enum ePlain
{
    ePlainValue
};
enum class eScoped : long long
{
    Value
};
struct sBits
{
    unsigned int nThree : 3;
    long long llFive : 5;
    bool bOne : 1;
    static constexpr int NEVER_DEFINED = 7;
};
extern const char s_szOfUnknownLength[];
const char s_szOfUnknownLength[] = "text";

void Function()
{
}
template<class T> T FunctionOf(T tValue)
{
    return tValue;
}

// Hands on what it is given, as an application's own wrapper does.
template<class... T> void Wrap(const char* szFormat, T... aArguments)
{
    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, szFormat, aArguments...);
}
} // namespace

void TakeEveryScalar(sIncomplete* pIncomplete, volatile int nVolatile)
{
    CTOVStringA oText("text");
    const CTOVStringW oWide(L"wide");
    volatile sBits oBits = {1, 2, true};
    const long double ldLong = 1;
    char szArray[] = "array";
    int aNumbers[2] = {1, 2};

    oText.Format("%%");
    oText.Format(~oText);
    oText.Format(oText, 1);
    oText.Format("%s %s %s %s %S", "literal", szArray, s_szOfUnknownLength, ~oText, ~oWide);
    oText.Format("%s %p %p %p", nullptr, nullptr, static_cast<void*>(pIncomplete), pIncomplete);
    oText.Format("%d %d %d %d", ePlainValue, true, 'c', static_cast<short>(1));
    oText.Format("%I64d %I64u %I64d", 1LL, 1ULL, eScoped::Value);
    oText.Format("%f %f %f", 1.0F, 1.0, static_cast<double>(ldLong));
    oText.Format("%d %d %d %d", sBits{1, 2, true}.nThree, oBits.llFive, oBits.bOne, sBits::NEVER_DEFINED);
    oText.Format("%p %p %p", &Function, Function, &FunctionOf<int>);
    oText.Format(
        "%p %p %p", aNumbers, &aNumbers, +[](int) {});
    oText.Format("%d %p", nVolatile, &nVolatile);
    Wrap("%s %d", "wrapped", 1);
}

// The functions' addresses, by their types.
typedef bool (*tLog)(const char*, unsigned long, unsigned long, eTOVDebugSeverity, const char*, ...);
typedef int (CTOVStringA::*tFormat)(const char*, ...);
extern const tLog s_pLog;
extern const tFormat s_pFormat;
const tLog s_pLog = &TOVDebug::_Log;
const tFormat s_pFormat = &CTOVStringA::Format;

// The script puts an object here, which each of the calls below refuses.
#ifndef ARGUMENT
#define ARGUMENT ~oText
#define WIDE_ARGUMENT ~oWide
#endif

void CallEach(TOVDebug::CTOVDebugServer& oServer, bool bPanic)
{
    CTOVStringA oText("text");
    CTOVStringW oWide(L"wide");
    char szBuffer[100];
    wchar_t szWide[100];
    oText.Format("%d %s", 1, ARGUMENT);
    oWide.Format(L"%s", WIDE_ARGUMENT);
    TOVPlatform::TOVStringA::SPrintf(szBuffer, "%s", ARGUMENT);
    TOVPlatform::TOVStringA::SNPrintf(szBuffer, 100, "%s", ARGUMENT);
    TOVPlatform::TOVStringW::SPrintf(szWide, L"%s", WIDE_ARGUMENT);
    TOVPlatform::TOVStringW::SNPrintf(szWide, 100, L"%s", WIDE_ARGUMENT);
    TOVPlatform::TOVFile::Printf(0, "%s", ARGUMENT);
    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s", ARGUMENT);
    oServer.OnLog("File", 1, eSeverityInfo, "%s", ARGUMENT);
    oServer.OnPanic("File", 1, eSeverityFatal, "%s", ARGUMENT);
    if (bPanic)
        TOVPanic("File", 1, "%s", ARGUMENT);
}
