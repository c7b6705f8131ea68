// The narrow and the wide text functions as types, so that one test covers both, and texts for them.
#pragma once

#include "Support/TOVSignOf.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVString.h>

#include <cstdarg>
#include <string>
#include <vector>

// The source that checks report.
constexpr char STRING_SOURCE[] = TOV_PLATFORM_SOURCE("TOVString");

// Text in units of either width, each from one byte.
template<class T> class CText
{
public:
    explicit CText(const std::string& sText)
    {
        for (const char cCharacter : sText)
            m_aUnits.push_back(static_cast<T>(static_cast<unsigned char>(cCharacter)));
        m_aUnits.push_back(0);
    }

    operator T*() { return m_aUnits.data(); }

    T* Get() { return m_aUnits.data(); }

private:
    std::vector<T> m_aUnits;
};

// Room for a result: '#' wherever nothing was written.
template<class T> class CRoom
{
public:
    explicit CRoom(std::size_t nUnits) : m_aUnits(nUnits, static_cast<T>('#')) {}

    operator T*() { return m_aUnits.data(); }

    T* Get() { return m_aUnits.data(); }

    // All of it as bytes, with '0' for a zero and '?' for what is wider than a byte.
    std::string Shown() const
    {
        std::string sShown;
        for (const T nUnit : m_aUnits)
            sShown += nUnit == 0 ? '0' : (nUnit & ~0xFF) != 0 && sizeof(T) > 1 ? '?' : static_cast<char>(nUnit);
        return sShown;
    }

    // What precedes the first zero, as bytes.
    std::string Text() const
    {
        std::string sText;
        for (const T nUnit : m_aUnits)
        {
            if (nUnit == 0)
                return sText;
            sText += static_cast<char>(nUnit);
        }
        return sText + "<no terminator>";
    }

private:
    std::vector<T> m_aUnits;
};

#define TOV_STRING_API(Name, tUnitOfApi, Functions, bIsNarrow)                                                         \
    struct Name                                                                                                        \
    {                                                                                                                  \
        typedef tUnitOfApi tUnit;                                                                                      \
        static constexpr bool IS_NARROW = bIsNarrow;                                                                   \
                                                                                                                       \
        static CText<tUnit> Text(const std::string& sText) { return CText<tUnit>(sText); }                             \
        static CRoom<tUnit> Room(std::size_t nUnits) { return CRoom<tUnit>(nUnits); }                                  \
                                                                                                                       \
        static inline const auto Compare = &Functions::Compare;                                                        \
        static inline const auto CompareNoCase = &Functions::CompareNoCase;                                            \
        static inline const auto Collate = &Functions::Collate;                                                        \
        static inline const auto CollateNoCase = &Functions::CollateNoCase;                                            \
        static inline const auto Length = &Functions::Length;                                                          \
        static inline const auto ToLower = &Functions::ToLower;                                                        \
        static inline const auto ToUpper = &Functions::ToUpper;                                                        \
        static inline const auto Reverse = &Functions::Reverse;                                                        \
        static inline const auto FindCharacter = &Functions::FindCharacter;                                            \
        static inline const auto FindLastCharacter = &Functions::FindLastCharacter;                                    \
        static inline const auto FindString = &Functions::FindString;                                                  \
        static inline const auto FindOneOf = &Functions::FindOneOf;                                                    \
        static inline const auto FindNotOneOf = &Functions::FindNotOneOf;                                              \
        static inline const auto ReverseFindOneOf = &Functions::ReverseFindOneOf;                                      \
        static inline const auto ReverseFindNotOneOf = &Functions::ReverseFindNotOneOf;                                \
        static inline int (*const SPrintf)(tUnit*, const tUnit*, ...) = &Functions::SPrintf;                           \
        static inline int (*const SNPrintf)(tUnit*, int, const tUnit*, ...) = &Functions::SNPrintf;                    \
        static inline const auto VSPrintf = &Functions::VSPrintf;                                                      \
        static inline const auto VSNPrintf = &Functions::VSNPrintf;                                                    \
        static inline const auto VSCPrintf = &Functions::VSCPrintf;                                                    \
        static inline const auto Copy = &Functions::Copy;                                                              \
        static inline const auto NCopy = &Functions::NCopy;                                                            \
        static inline const auto Concat = &Functions::Concat;                                                          \
        static inline const auto NConcat = &Functions::NConcat;                                                        \
        static inline const auto Inc = &Functions::Inc;                                                                \
        static inline const auto NInc = &Functions::NInc;                                                              \
        static inline const auto Dec = &Functions::Dec;                                                                \
        static inline const auto ToLong = &Functions::ToLong;                                                          \
        static inline const auto ToUlong = &Functions::ToUlong;                                                        \
        static inline const auto ToDouble = &Functions::ToDouble;                                                      \
    }

TOV_STRING_API(sNarrowApi, char, TOVPlatform::TOVStringA, true);
TOV_STRING_API(sWideApi, wchar_t, TOVPlatform::TOVStringW, false);

typedef testing::Types<sNarrowApi, sWideApi> tStringApis;

// Distance of a found position from the start, or -1 for null.
template<class T> long OffsetOf(const T* pFound, const T* pStart)
{
    return pFound == nullptr ? -1 : static_cast<long>(pFound - pStart);
}

// How a comparison orders two texts, and the other way round.
struct sOrder
{
    const char* szFirst;
    const char* szSecond;
    int nOrder;
};

template<class TApi, class TFunction, std::size_t nOrders>
void ExpectOrders(TFunction fnCompare, const sOrder (&aOrders)[nOrders])
{
    for (const sOrder& oOrder : aOrders)
    {
        auto oFirst = TApi::Text(oOrder.szFirst);
        auto oSecond = TApi::Text(oOrder.szSecond);
        EXPECT_EQ(oOrder.nOrder, fnCompare(oFirst.Get(), oSecond.Get())) << oOrder.szFirst << ", " << oOrder.szSecond;
        EXPECT_EQ(-oOrder.nOrder, fnCompare(oSecond.Get(), oFirst.Get())) << oOrder.szFirst << ", " << oOrder.szSecond;
    }
}

// The comparisons without case, of whose results only the sign is promised.
template<class TApi> int SignOfCompareNoCase(const typename TApi::tUnit* szFirst, const typename TApi::tUnit* szSecond)
{
    return SignOf(TApi::CompareNoCase(szFirst, szSecond));
}

template<class TApi> int SignOfCollateNoCase(const typename TApi::tUnit* szFirst, const typename TApi::tUnit* szSecond)
{
    return SignOf(TApi::CollateNoCase(szFirst, szSecond));
}

// Prints into a room of 4096 units and gives the text; the returned count must agree with it.
template<class TApi, class... TArguments> std::string Print(const char* szFormat, TArguments... oArguments)
{
    auto oRoom = TApi::Room(4096);
    auto oFormat = TApi::Text(szFormat);
    const int nCount = TApi::SPrintf(oRoom.Get(), oFormat.Get(), oArguments...);
    const std::string sText = oRoom.Text();
    EXPECT_EQ(static_cast<int>(sText.size()), nCount) << szFormat;
    return sText;
}

// Ends an argument list also when a check throws.
struct sListEnd
{
    va_list& pList;

    ~sListEnd() { va_end(pList); }
};

// Call the functions that take an argument list.
template<class TApi> int VSPrintf(typename TApi::tUnit* szBuffer, const typename TApi::tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const sListEnd oEnd = {pArguments};
    return TApi::VSPrintf(szBuffer, szFormat, pArguments);
}

template<class TApi>
int VSNPrintf(typename TApi::tUnit* szBuffer, int nCount, const typename TApi::tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const sListEnd oEnd = {pArguments};
    return TApi::VSNPrintf(szBuffer, nCount, szFormat, pArguments);
}

template<class TApi> int VSCPrintf(const typename TApi::tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const sListEnd oEnd = {pArguments};
    return TApi::VSCPrintf(szFormat, pArguments);
}

// The bound that VSCPrintf gives for a format written in bytes.
template<class TApi, class... TArguments> int BoundOf(const std::string& sFormat, TArguments... oArguments)
{
    auto oFormat = TApi::Text(sFormat);
    return VSCPrintf<TApi>(oFormat.Get(), oArguments...);
}
