// Prints and measures the plainest formats in one pass. Internal to the text functions.
#pragma once

#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <algorithm>
#include <charconv>
#include <cstdarg>
#include <iterator>

namespace TOVPlatform
{
// A format is plain if it consists of ASCII characters and of the conversions %s, %d, %i and %u as they stand, and if
// its text is short. Then the text is the one that every print makes, and the bound is the one of VSCPrintf: both
// follow the rules of TOVPlatform/TOVString.h.
template<class tUnit> class CTOVPlainFormat
{
public:
    // Returns false if the format is not plain. Reads the list itself, not a copy.
    bool Print(const tUnit* szFormat, va_list& pArguments)
    {
        const tUnit* const szEnd =
            szFormat != nullptr ? szFormat + Backend::LengthAtMost(szFormat, MAX_UNITS) : nullptr;
        bool bPlain = szEnd != szFormat && *szEnd == 0;
        while (bPlain && szFormat < szEnd)
        {
            bPlain = *szFormat == '%' ? PrintItem(szFormat[1], pArguments) : PrintLiteral(*szFormat, szEnd - szFormat);
            szFormat += *szFormat == '%' ? 2 : 1;
        }
        return bPlain;
    }

    const tUnit* GetText() const { return m_szText; }
    int GetLength() const { return m_nLength; }
    int GetBound() const { return m_nBound; }

private:
    static constexpr int MAX_UNITS = 256;
    static constexpr int INTEGER_BOUND = 32;

    // Each literal counts the rest of the format from itself on.
    bool PrintLiteral(tUnit cUnit, std::ptrdiff_t nRest)
    {
        m_nBound += static_cast<int>(nRest);
        return TOVAscii::IsAscii(cUnit) && Put(&cUnit, 1);
    }

    bool PrintItem(tUnit cType, va_list& pArguments)
    {
        if (cType == 's')
            return PrintText(va_arg(pArguments, const tUnit*));
        if (cType == 'd' || cType == 'i')
            return PrintInteger(va_arg(pArguments, int));
        return cType == 'u' && PrintInteger(va_arg(pArguments, unsigned int));
    }

    bool PrintText(const tUnit* szText)
    {
        if (szText == nullptr)
            return false;
        const int nLength = Backend::LengthAtMost(szText, MAX_UNITS + 1);
        m_nBound += std::max(nLength, 1);
        return Put(szText, nLength);
    }

    template<class T> bool PrintInteger(T nValue)
    {
        char szDigits[16];
        const char* const szEnd = std::to_chars(szDigits, std::end(szDigits), nValue).ptr;
        m_nBound += INTEGER_BOUND;
        return Put(szDigits, static_cast<int>(szEnd - szDigits));
    }

    template<class T> bool Put(const T* pUnits, int nCount)
    {
        if (nCount > MAX_UNITS - m_nLength)
            return false;
        std::copy_n(pUnits, nCount, m_szText + m_nLength);
        m_nLength += nCount;
        return true;
    }

    tUnit m_szText[MAX_UNITS];
    int m_nLength = 0;
    int m_nBound = 0;
};
} // namespace TOVPlatform
