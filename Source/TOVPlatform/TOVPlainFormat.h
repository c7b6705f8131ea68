// Declares CTOVPlainFormat, which prints and measures the plainest formats in one pass. Internal to the text functions.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace TOVPlatform
{
// A format is plain if it consists of ASCII characters and of the conversions %s, %d, %i, %u, %f, and %.0f to %.9f, and
// if its text is short. Then the text is the one that every print makes, and the bound is the one of VSCPrintf: both
// follow the rules of TOVPlatform/TOVString.h. A few values are not plain either: large and tiny ones of %f, zero, and
// those for which the bound depends on how the value is rounded.
template<class tUnit> class CTOVPlainFormat
{
public:
    // Returns false if the format is not plain. Reads the list itself: a copy would wait for what has just been
    // written.
    bool Print(const tUnit* szFormat, va_list& pArguments);

    // The text has no terminator.
    const tUnit* GetText() const { return m_szText; }
    int GetLength() const { return static_cast<int>(m_pNext - m_szText); }
    int GetBound() const { return m_nBound; }

private:
    static constexpr int MAX_UNITS = 256;

    // Prints the characters before the next conversion, and returns their number; -1 if they are not plain.
    int PrintLiterals(const tUnit* szLiterals);

    // Prints the conversion of which the type, or the precision before it, is given. Returns the end of the conversion;
    // null if it is not plain.
    const tUnit* PrintItem(const tUnit* szType, va_list& pArguments);

    // These return false for a value that is not plain.
    bool PrintText(const tUnit* szText);
    bool PrintInteger(bool bNegative, std::uint32_t uMagnitude);
    bool PrintReal(double dValue, bool bHasPrecision, int nDigits);
    void PutDigits(const char* pDigits, const char* pEnd);

    bool HasRoom(std::ptrdiff_t nUnits) const { return nUnits <= m_szText + MAX_UNITS - m_pNext; }

    tUnit m_szText[MAX_UNITS];
    tUnit* m_pNext = m_szText;
    int m_nBound = 0;
};

extern template class CTOVPlainFormat<char>;
extern template class CTOVPlainFormat<wchar_t>;
} // namespace TOVPlatform
