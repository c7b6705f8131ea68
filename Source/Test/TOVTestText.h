// Declares CTOVTestText, by which a test shows a value.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVTest
{
// Holds the text of one value. It allocates nothing.
//
//   type                               text
//   bool                               true or false
//   int, long, unsigned integers       decimal
//   character types                    'x', with escapes for unprintable characters: '\n', '\x80'
//   double                             -12.3456 with four decimals, not rounded; from 25 digits on -1.2345E30
//   any other, pointers and texts too  (unprintable value)
//
// Settled: only the ten decimal digits are shown; larger ones appear as question marks, so that the character of value
// 31 is '\x1?'. The digits of a double are counted by divisions until the value is at most 1, so that 5e24 has 26 of
// them and appears as 5.0000E25. A value that is infinite or not a number appears as inf, -inf or nan.
class TOV_EXPORT CTOVTestText
{
public:
    // These make the text of a value, as the table shows.
    explicit CTOVTestText(bool bValue);
    explicit CTOVTestText(char cValue);
    explicit CTOVTestText(signed char cValue);
    explicit CTOVTestText(unsigned char cValue);
    explicit CTOVTestText(wchar_t cValue);
    explicit CTOVTestText(char16_t cValue);
    explicit CTOVTestText(char32_t cValue);
    explicit CTOVTestText(int nValue);
    explicit CTOVTestText(long lValue);
    explicit CTOVTestText(unsigned short nValue);
    explicit CTOVTestText(unsigned int nValue);
    explicit CTOVTestText(unsigned long ulValue);
    explicit CTOVTestText(unsigned long long nValue);
    explicit CTOVTestText(double dValue);
    template<class T> explicit CTOVTestText(const T& oValue);
    CTOVTestText(const CTOVTestText& oOther);
    CTOVTestText& operator=(const CTOVTestText& oOther);

    // Returns the text, which lives as long as this object.
    operator const char*() const;

private:
    void Append(char cCharacter);
    void Append(const char* szText);
    void AppendDigits(unsigned long long nValue, unsigned int nBase);
    void AppendInteger(long long nValue);
    void AppendCharacter(unsigned long nCode);
    void AppendDouble(double dValue);
    void SetUnprintable();

    int m_nLength;
    char m_szText[48];
};

template<class T> CTOVTestText::CTOVTestText(const T& /*oValue*/) : m_nLength(0), m_szText()
{
    SetUnprintable();
}

TOV_EXPORT_INLINE CTOVTestText::operator const char*() const
{
    return m_szText;
}
} // namespace TOVTest
