// What the fuzz targets share: how one is defined, the input that it reads, and what it expects.
#pragma once

#include <Debug/TOVException.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace Fuzz
{
// Takes an input apart into the values that a target wants. At the end of the input, everything is 0.
class CInput
{
public:
    CInput(const std::uint8_t* pBytes, std::size_t nSize) : m_pNext(pBytes), m_pEnd(pBytes + nSize) {}

    bool IsAtEnd() const { return m_pNext == m_pEnd; }
    std::size_t GetLeft() const { return static_cast<std::size_t>(m_pEnd - m_pNext); }

    int Byte() { return IsAtEnd() ? 0 : *m_pNext++; }

    // Returns a number from 0 to nEnd - 1, for an nEnd of at most 256.
    int Below(int nEnd) { return Byte() % nEnd; }

    // Returns a number that is mostly small, sometimes negative or next to a limit of 32 bits.
    int Number();

    template<class T> T Value()
    {
        T oValue{};
        const std::size_t nBytes = GetLeft() < sizeof(T) ? GetLeft() : sizeof(T);
        std::memcpy(&oValue, m_pNext, nBytes);
        m_pNext += nBytes;
        return oValue;
    }

    // Returns up to nMost bytes; the first byte of the input tells how many.
    std::string Bytes(int nMost);
    // Does the same without zeros among them.
    std::string Text(int nMost);
    // Returns all bytes that are left.
    std::string Rest();

private:
    const std::uint8_t* m_pNext;
    const std::uint8_t* m_pEnd;
};

typedef void (*tTarget)(CInput& oInput);

// Makes a function known by the name of its target, which is also that of its corpus.
class CTarget
{
public:
    CTarget(const char* szName, tTarget fnTarget);

    const char* GetName() const { return m_szName; }
    void Run(const std::uint8_t* pBytes, std::size_t nSize) const;

    static const std::vector<const CTarget*>& GetAll();
    // Returns null if there is no such target.
    static const CTarget* Find(const char* szName);

private:
    const char* m_szName;
    tTarget m_fnTarget;
};

// Tells that an expectation has failed, and does not return: under libFuzzer it ends the process, in a test it throws.
// Each program has its own.
[[noreturn]] void Fail(const char* szFile, int nLine, const std::string& sText);

// Returns whether the function fails a check of the library.
template<class TFunction> bool FailsCheck(TFunction fnFunction)
{
    try
    {
        fnFunction();
        return false;
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return true;
    }
}

std::string Show(const std::string& sText);
// A wide text of a model: the standard library's own strings take wide units to have 32 bits on Linux.
std::string Show(const std::vector<char>& aText);
std::string Show(const std::vector<wchar_t>& aText);
inline std::string Show(const char* szText)
{
    return szText != nullptr ? Show(std::string(szText)) : "NULL";
}
inline std::string Show(bool bValue)
{
    return bValue ? "true" : "false";
}
template<class T> std::string Show(T nValue)
{
    return std::to_string(nValue);
}

template<class TExpected, class TActual>
void ExpectEqual(const TExpected& oExpected, const TActual& oActual, const char* szFile, int nLine)
{
    if (!(oExpected == oActual))
        Fail(szFile, nLine, "expected " + Show(oExpected) + ", found " + Show(oActual));
}
} // namespace Fuzz

// Defines a target: FUZZ_TARGET(name) { ... oInput ... }
#define FUZZ_TARGET(name)                                                                                              \
    static void FuzzTarget_##name(Fuzz::CInput& oInput);                                                               \
    static const Fuzz::CTarget g_oFuzzTarget_##name(#name, &FuzzTarget_##name);                                        \
    static void FuzzTarget_##name(Fuzz::CInput& oInput)

#define FUZZ_EXPECT(condition)                                                                                         \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            Fuzz::Fail(__FILE__, __LINE__, #condition);                                                                \
    } while (false)

#define FUZZ_EXPECT_EQ(expected, actual) Fuzz::ExpectEqual(expected, actual, __FILE__, __LINE__)
