// Declares CTOVArgumentList, which reads a variable argument list. Internal to the text functions.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace TOVPlatform
{
// Reads from a copy, so that the caller's list stays where it is. Every value is read with the type that callers pass.
// Integers come out with the width that they have in formats, also where long has 64 bits.
class CTOVArgumentList
{
public:
    explicit CTOVArgumentList(va_list pArguments) { va_copy(m_pArguments, pArguments); }
    ~CTOVArgumentList() { va_end(m_pArguments); }

    CTOVArgumentList(const CTOVArgumentList&) = delete;
    CTOVArgumentList& operator=(const CTOVArgumentList&) = delete;

    std::int32_t NextInt() { return va_arg(m_pArguments, int); }
    std::int32_t NextLong() { return static_cast<std::int32_t>(va_arg(m_pArguments, long)); }
    std::int64_t NextInt64() { return va_arg(m_pArguments, long long); }
    double NextDouble() { return va_arg(m_pArguments, double); }
    void* NextPointer() { return va_arg(m_pArguments, void*); }

private:
    va_list m_pArguments;
};
} // namespace TOVPlatform
