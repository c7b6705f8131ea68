// Declares the base types and the macros that every header of the library shares.
#pragma once

#include <Debug/TOVCompiler.h>

#include <cstddef>
#include <cstdint>

typedef unsigned char tByte;  // element of raw buffers
typedef char tChar;           // element of a narrow string
typedef unsigned char tUchar; // a narrow character read as a number
typedef std::uint32_t tDword; // a 32-bit word

// Identifies a file, a search, a thread or a synchronisation object. It has 64 bits on every system.
typedef unsigned long long tHandle;

namespace TOVDebug
{
// Reports a failed check to all listeners (ITOVLogListener::OnAssert) and throws CTOVAssertException. On Linux, a check
// that ends the process because nobody catches the exception is first shown on standard error, unless the application
// has registered a listener. A function that must not throw, compiled by clang, catches the exception before it ends
// the process.
[[noreturn]] TOV_EXPORT void Assert(const char* szExpression, const char* szFile, int nLine);
} // namespace TOVDebug

// Names the source file of a failed check. A source that several classes or both platforms share redefines it after its
// last #include, so that each check names the file of the class or platform for which it is compiled.
#define TOV_CHECK_FILE __FILE__

// Checks a precondition, in every build: if the expression is false, all listeners are notified with its literal text,
// and TOVDebug::CTOVAssertException is thrown. Code after the check may therefore rely on it.
#define TOV_ASSERT(expression)                                                                                         \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(expression))                                                                                             \
            TOVDebug::Assert(#expression, TOV_CHECK_FILE, __LINE__);                                                   \
    } while (false)

// Reverses the four bytes of a 32-bit value. The argument is evaluated four times.
// clang-format off
// NOLINTBEGIN(bugprone-macro-parentheses)
#define TOV_BYTESWAP32(value) \
    (tDword)(((tDword)value>>24)+(((tDword)value&0xff0000)>>8)+(((tDword)value&0xff00)<<8)+(((tDword)value&0xff)<<24))
// NOLINTEND(bugprone-macro-parentheses)
// clang-format on

// Deletes a single object and sets the pointer to null. Leaves a null pointer alone.
#define TOV_SAFE_DELETE(pointer)                                                                                       \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((pointer) != nullptr)                                                                                      \
        {                                                                                                              \
            delete (pointer);                                                                                          \
            (pointer) = nullptr;                                                                                       \
        }                                                                                                              \
    } while (false)

// Does the same for an array.
#define TOV_SAFE_DELETE_ARRAY(pointer)                                                                                 \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((pointer) != nullptr)                                                                                      \
        {                                                                                                              \
            delete[](pointer);                                                                                         \
            (pointer) = nullptr;                                                                                       \
        }                                                                                                              \
    } while (false)
