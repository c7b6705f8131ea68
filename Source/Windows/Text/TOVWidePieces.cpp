#include <Windows/Text/TOVWidePieces.h>

#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/TOVFormatItem.h>

#include <algorithm>
#include <climits>
#include <cwchar>

namespace TOVPlatform
{
namespace TOVWidePieces
{
namespace
{
using namespace TOVFormat;

// The runtime prints integers of no more digits and no larger field without a block.
constexpr int MAX_SAFE_UNITS = 22;

// The conversion of an item, which takes width and precision from the list.
template<class tUnit> class CItemText
{
public:
    CItemText(const sFormatItem& oItem, const char* szModifier, wchar_t cType)
    {
        Add('%');
        AddIf(oItem.bLeft, '-');
        AddIf(oItem.bPlus, '+');
        AddIf(oItem.bSpace, ' ');
        AddIf(oItem.nAlternates > 0, '#');
        AddIf(oItem.bZero, '0');
        for (const char* szNext = "*.*"; *szNext != 0; ++szNext)
            Add(*szNext);
        for (; *szModifier != 0; ++szModifier)
            Add(*szModifier);
        Add(static_cast<char>(cType));
    }

    const tUnit* Get() const { return m_szText; }

private:
    void Add(char cUnit) { m_szText[m_nLength++] = static_cast<tUnit>(cUnit); }

    void AddIf(bool bCondition, char cUnit)
    {
        if (bCondition)
            Add(cUnit);
    }

    tUnit m_szText[32] = {};
    int m_nLength = 0;
};

const char* GetTextModifier(const sFormatItem& oItem)
{
    if (oItem.eModifier == eFormatModifier::Narrow)
        return "h";
    return oItem.eModifier == eFormatModifier::Wide ? "l" : "";
}

class CWidePrint
{
public:
    CWidePrint(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
        : m_szBuffer(szBuffer), m_nCapacity(nCapacity), m_szFormat(szFormat), m_oArguments(pArguments)
    {
    }

    int Run();

private:
    bool Put(const wchar_t* pUnits, int nCount);
    bool PutInteger(const char* szFormat, ...);
    bool PutText(const wchar_t* szFormat, ...);
    bool Advance(int nLength);
    bool PutItem();
    bool StoreLength(const sFormatItem& oItem);

    int GetRoom() const { return m_nCapacity - m_nLength; }

    wchar_t* m_szBuffer;
    int m_nCapacity;
    const wchar_t* m_szFormat;
    CTOVArgumentList m_oArguments;
    int m_nLength = 0;
};

int CWidePrint::Run()
{
    for (;;)
    {
        const wchar_t* const szLiteral = m_szFormat;
        while (*m_szFormat != 0 && *m_szFormat != '%')
            ++m_szFormat;
        if (!Put(szLiteral, static_cast<int>(m_szFormat - szLiteral)))
            return -1;
        if (*m_szFormat == 0)
            break;
        ++m_szFormat;
        if (!PutItem())
            return -1;
    }
    if (m_szBuffer != nullptr && GetRoom() > 0)
        m_szBuffer[m_nLength] = 0;
    return m_nLength;
}

// Each of the next functions returns false if the text does not fit. The room is full then.

bool CWidePrint::Put(const wchar_t* pUnits, int nCount)
{
    if (m_szBuffer != nullptr)
        std::copy(pUnits, pUnits + std::min(nCount, GetRoom()), m_szBuffer + m_nLength);
    return Advance(m_szBuffer != nullptr && GetRoom() < nCount ? -1 : nCount);
}

// Prints the narrow text into the room, and makes wide units of it from its end on.
bool CWidePrint::PutInteger(const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    int nLength = 0;
    if (m_szBuffer == nullptr)
    {
        nLength = Backend::PrintedLength(szFormat, pArguments);
    }
    else
    {
        wchar_t* const pUnits = m_szBuffer + m_nLength;
        const char* const pBytes = reinterpret_cast<const char*>(pUnits);
        nLength = Backend::Print(reinterpret_cast<char*>(pUnits), GetRoom(), szFormat, pArguments);
        for (int nUnit = nLength >= 0 ? nLength : GetRoom(); nUnit-- > 0;)
            pUnits[nUnit] = static_cast<unsigned char>(pBytes[nUnit]);
    }
    va_end(pArguments);
    return Advance(nLength);
}

bool CWidePrint::PutText(const wchar_t* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = m_szBuffer != nullptr ? Backend::Print(m_szBuffer + m_nLength, GetRoom(), szFormat, pArguments)
                                              : Backend::PrintedLength(szFormat, pArguments);
    va_end(pArguments);
    return Advance(nLength);
}

bool CWidePrint::Advance(int nLength)
{
    if (nLength < 0 || INT_MAX - m_nLength < nLength)
        return false;
    m_nLength += nLength;
    return true;
}

bool CWidePrint::PutItem()
{
    const sFormatItem oItem = ReadPrintedItem(m_szFormat, m_oArguments);
    const int nWidth = oItem.nWidth;
    const int nPrecision = oItem.bHasPrecision ? oItem.nPrecision : -1;
    const wchar_t cType = *m_szFormat;
    if (cType == 0)
        return true;

    ++m_szFormat;
    const CItemText<char> oInteger(oItem, cType == 'p' ? "" : "I64", cType);
    const CItemText<wchar_t> oText(oItem, GetTextModifier(oItem), cType);
    switch (cType)
    {
    case 'd':
    case 'i':
        return PutInteger(oInteger.Get(), nWidth, nPrecision, NextInteger(m_oArguments, oItem.eModifier));
    case 'u':
    case 'o':
    case 'x':
    case 'X':
    {
        const std::int64_t llValue = NextInteger(m_oArguments, oItem.eModifier);
        if (oItem.eModifier == eFormatModifier::Int64)
            return PutInteger(oInteger.Get(), nWidth, nPrecision, llValue);
        const bool bShort = oItem.eModifier == eFormatModifier::Narrow;
        return PutInteger(oInteger.Get(), nWidth, nPrecision, llValue & (bShort ? 0xFFFF : 0xFFFFFFFF));
    }
    case 'p':
        return PutInteger(oInteger.Get(), nWidth, nPrecision, m_oArguments.NextPointer());
    case 'e':
    case 'E':
    case 'f':
    case 'g':
    case 'G':
        return PutText(oText.Get(), nWidth, nPrecision, m_oArguments.NextDouble());
    case 'c':
    case 'C':
        return PutText(oText.Get(), nWidth, nPrecision, m_oArguments.NextInt());
    case 's':
    case 'S':
        return PutText(oText.Get(), nWidth, nPrecision, m_oArguments.NextPointer());
    case 'n':
        return StoreLength(oItem);
    default:
        return Put(&cType, 1);
    }
}

// Stores the count of the units printed so far.
bool CWidePrint::StoreLength(const sFormatItem& oItem)
{
    void* const pResult = m_oArguments.NextPointer();
    if (pResult == nullptr)
        return true;
    if (oItem.eModifier == eFormatModifier::Narrow)
        *static_cast<short*>(pResult) = static_cast<short>(m_nLength);
    else if (oItem.eModifier == eFormatModifier::Int64)
        *static_cast<long long*>(pResult) = m_nLength;
    else
        *static_cast<int*>(pResult) = m_nLength;
    return true;
}
} // namespace

bool AreNeeded(const wchar_t* szFormat, va_list pArguments)
{
    CTOVArgumentList oArguments(pArguments);
    while ((szFormat = std::wcschr(szFormat, L'%')) != nullptr)
    {
        ++szFormat;
        const sFormatItem oItem = ReadPrintedItem(szFormat, oArguments);
        switch (*szFormat)
        {
        case 0:
            return false;
        case 'd':
        case 'i':
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            if (std::max(oItem.nWidth, oItem.nPrecision) > MAX_SAFE_UNITS)
                return true;
            NextInteger(oArguments, oItem.eModifier);
            break;
        case 'e':
        case 'E':
        case 'f':
        case 'g':
        case 'G':
            oArguments.NextDouble();
            break;
        case 'c':
        case 'C':
            oArguments.NextInt();
            break;
        case 'p':
        case 's':
        case 'S':
        case 'n':
            oArguments.NextPointer();
            break;
        default:
            break;
        }
        ++szFormat;
    }
    return false;
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    return CWidePrint(szBuffer, nCapacity, szFormat, pArguments).Run();
}
} // namespace TOVWidePieces
} // namespace TOVPlatform
