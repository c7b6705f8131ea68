// This is the only header that tests which compiler and which system are in use.
#pragma once

// This line comes before the hundreds that an older standard would show.
#if defined(_MSVC_LANG)
#if _MSVC_LANG < 201703L
#error "TOVKernel needs C++17 or newer: compile with /std:c++17"
#endif
#elif __cplusplus < 201703L
#error "TOVKernel needs C++17 or newer: compile with -std=c++17"
#endif

#include <cstring>

#if defined(_MSC_VER)
#include <atomic>
#endif
#if defined(__cpp_rtti)
#include <typeinfo>
#endif

#if defined(_WIN32)
#define TOV_SYSTEM_WINDOWS 1
#define TOV_CALLBACK __stdcall
#define TOV_TEMPLATE
#define TOV_TEMPLATE_INLINE
#define TOV_PROGRAM_EXPORT __declspec(dllexport)
#if defined(TOVKERNEL_STATIC)
#define TOV_EXPORT
#define TOV_EXPORT_INLINE inline
#define TOV_TEMPLATE_DECLARE
#define TOV_TEMPLATE_DEFINE
#elif defined(TOVKERNEL_BUILD)
#define TOV_EXPORT __declspec(dllexport)
#define TOV_EXPORT_HOOK __declspec(dllexport)
#if defined(__GNUC__)
#define TOV_EXPORT_INLINE __declspec(dllexport) inline
#if defined(__clang__)
// Clang exports a member as its first declaration says, and no member that is inline there by itself.
#define TOV_EXPORT_CONSTEXPR __declspec(dllexport) constexpr
#endif
// GCC takes the attribute from the first declaration of an instantiation; other compilers take it from its definition.
#define TOV_TEMPLATE_DECLARE __declspec(dllexport)
#define TOV_TEMPLATE_DEFINE
#else
#define TOV_EXPORT_INLINE inline
#define TOV_TEMPLATE_DECLARE
#define TOV_TEMPLATE_DEFINE __declspec(dllexport)
#endif
#else
#define TOV_EXPORT_INLINE inline
#define TOV_EXPORT __declspec(dllimport)
#define TOV_EXPORT_HOOK
#define TOV_TEMPLATE_DECLARE __declspec(dllimport)
#define TOV_TEMPLATE_DEFINE
#endif
// Failed checks report a platform source under this name.
#define TOV_PLATFORM_SOURCE(szName) "Windows/" szName
#else
#define TOV_SYSTEM_WINDOWS 0
#define TOV_CALLBACK
#define TOV_TEMPLATE_INLINE inline
#define TOV_TEMPLATE_DEFINE
#define TOV_PROGRAM_EXPORT __attribute__((visibility("default")))
#if defined(TOVKERNEL_STATIC)
#define TOV_TEMPLATE
#define TOV_EXPORT
#define TOV_TEMPLATE_DECLARE
#else
#define TOV_TEMPLATE __attribute__((visibility("default")))
#define TOV_EXPORT __attribute__((visibility("default")))
#define TOV_EXPORT_HOOK __attribute__((visibility("default")))
#define TOV_TEMPLATE_DECLARE __attribute__((visibility("default")))
#endif
#if defined(TOVKERNEL_BUILD) && !defined(TOVKERNEL_STATIC)
#define TOV_EXPORT_INLINE __attribute__((used)) inline
#else
#define TOV_EXPORT_INLINE inline
#endif
#define TOV_PLATFORM_SOURCE(szName) "Posix/" szName
#endif

#if !defined(TOV_EXPORT_CONSTEXPR)
#define TOV_EXPORT_CONSTEXPR constexpr
#endif

// A static library becomes a part of each program, with the start-up that a shared library has when it is loaded.
#if !defined(TOVKERNEL_STATIC)
#define TOV_IS_STATIC false
#define TOV_CONSTRUCTED_FIRST
#define TOV_STARTUP_MARK
#else
#define TOV_IS_STATIC true
extern "C" const char TOVKernelStartup;
#if defined(TOVKERNEL_BUILD)
#define TOV_CONSTRUCTED_FIRST __attribute__((init_priority(101)))
#define TOV_STARTUP_MARK const char TOVKernelStartup = 0;
#define TOV_EXPORT_HOOK __attribute__((weak))
#else
#define TOV_EXPORT_HOOK
// Whatever a program uses of the library, the linker takes the start-up as well: each source refers to it.
__attribute__((used)) static const char* const s_pTOVKernelStartup = &TOVKernelStartup;
#endif
#endif

// TOV_CALLBACK           calling convention of functions that the system calls.
// TOV_EXPORT             exported class or function.
// TOV_STARTUP_MARK       stands in the source of the start-up.
// TOV_IS_STATIC          whether this is a static library, or a program with one.
// TOV_EXPORT_INLINE      replaces inline for a member of an exported class: the library always exports the member, even
//                        where the compiler has inlined every call.
// TOV_EXPORT_CONSTEXPR   replaces constexpr in the declaration of such a member, which is inline by itself.
// TOV_OUTSIDE_BODY(...)  replaces the semicolon after the declaration of a member that the library exports: modules
//                        that use the library may inline this body, which is the one that the source has. The library's
//                        own calls, which are direct, would make it larger. On Windows, the members are only imported.
// TOV_OUTSIDE_INLINE     is inline there, for a member of a template, and nothing in the library.
// TOV_CALLED_OFTEN       exported function that takes so few nanoseconds that the jump through the caller's table of
//                        linked procedures would count. Its address is found when the program is loaded.
// TOV_EXPORT_HOOK        exported function of which a program may export its own version as well.
// TOV_PROGRAM_EXPORT     function that a main program exports.
// TOV_CONSTRUCTED_FIRST  before the definition of an object of the start-up: a static program constructs it before its
//                        own objects, and destroys it after them.
// TOV_TEMPLATE_DECLARE   in a header: extern template class TOV_TEMPLATE_DECLARE CThing<int>;
// TOV_TEMPLATE_DEFINE    in the one source that owns it: template class TOV_TEMPLATE_DEFINE CThing<int>;
//                        so that a template's statics exist once in the process, and not once in each module.
// TOV_TEMPLATE           class template without statics whose instances in the library are exported; each module may
//                        still instantiate it itself and inline it. The source that owns an instance has
//                        template class TOV_EXPORT CThing<int>; before its first use in that source.
// TOV_TEMPLATE_INLINE    replaces inline for a member of a class template whose instances the library exports: on
//                        Windows an inline member would not be exported.

// Declares a thread's own variable that is read without a call. Keep it small: a library that is loaded at run time
// shares little room for all of them.
#if !defined(_WIN32)
#define TOV_FAST_THREAD_LOCAL __thread __attribute__((tls_model("initial-exec")))
#endif

// TOV_ADDRESS_SANITIZER  1 in code that AddressSanitizer watches, else 0.
// TOV_THREAD_SANITIZER   1 in code that ThreadSanitizer watches, else 0.
#if defined(__has_feature)
#define TOV_ADDRESS_SANITIZER __has_feature(address_sanitizer)
#define TOV_THREAD_SANITIZER __has_feature(thread_sanitizer)
#else
#if defined(__SANITIZE_ADDRESS__)
#define TOV_ADDRESS_SANITIZER 1
#else
#define TOV_ADDRESS_SANITIZER 0
#endif
#if defined(__SANITIZE_THREAD__)
#define TOV_THREAD_SANITIZER 1
#else
#define TOV_THREAD_SANITIZER 0
#endif
#endif

// How the memory of small blocks is handed out (TOVPlatform/TOVMemoryList.h). Modules of one process may differ in it.
// TOV_USE_MEMORY_LISTS      whether threads keep lists of freed blocks: where a thread's own variable costs no call.
// TOV_ROUND_BLOCKS          whether blocks are rounded up. A tool that watches the heap must see the end of each block.
// TOV_THREAD_LISTS_STORAGE  makes a variable the thread's own. Nothing reads it without lists.
#if TOV_ADDRESS_SANITIZER || defined(TOV_PLAIN_MEMORY)
#define TOV_ROUND_BLOCKS false
#else
#define TOV_ROUND_BLOCKS true
#endif
#if defined(TOV_FAST_THREAD_LOCAL)
#define TOV_USE_MEMORY_LISTS TOV_ROUND_BLOCKS
#define TOV_THREAD_LISTS_STORAGE TOV_FAST_THREAD_LOCAL
#else
#define TOV_USE_MEMORY_LISTS false
#define TOV_THREAD_LISTS_STORAGE
#endif

// Marks a function that is never inlined.
#if defined(_MSC_VER)
#define TOV_NOINLINE __declspec(noinline)
#else
#define TOV_NOINLINE __attribute__((noinline))
#endif

// Marks a short function that is inlined even where the code is compiled for its size.
#if defined(_MSC_VER)
#define TOV_ALWAYS_INLINE __forceinline
#else
#define TOV_ALWAYS_INLINE __attribute__((always_inline)) inline
#endif

// Says that a condition is nearly always true, so that what serves the other case neither stands in the way nor is
// inlined.
#if defined(__GNUC__)
#define TOV_LIKELY(condition) __builtin_expect(static_cast<bool>(condition), true)
#else
#define TOV_LIKELY(condition) (condition)
#endif

// Asks for the line of the cache at an address, which need not be one of the program. A hint that changes nothing else.
#if defined(__GNUC__)
#define TOV_PREFETCH(pAddress) __builtin_prefetch(pAddress)
#else
#define TOV_PREFETCH(pAddress) static_cast<void>(pAddress)
#endif

#if defined(TOVKERNEL_BUILD) || defined(_WIN32)
#define TOV_OUTSIDE_BODY(...) ;
#define TOV_OUTSIDE_INLINE
#define TOV_CALLED_OFTEN
#else
#define TOV_OUTSIDE_BODY(...) __VA_ARGS__
#define TOV_OUTSIDE_INLINE inline
#if __has_attribute(noplt)
#define TOV_CALLED_OFTEN __attribute__((noplt))
#else
#define TOV_CALLED_OFTEN
#endif
#endif

// Whether the compiler knows the vector instructions of x86 processors, and can compile single functions for them.
// Only Source/TOVPlatform/Vector uses it.
#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
#define TOV_HAS_X86_VECTORS 1
#else
#define TOV_HAS_X86_VECTORS 0
#endif

// These enclose functions that are exported under plain names, which are undecorated, and yet return references to
// classes. Clang warns that a C program could not call them, but no C program does; and that a program exports
// functions which it knows from the library, but that is their purpose.
#if defined(__clang__)
#define TOV_PLAIN_NAMES_BEGIN                                                                                          \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wreturn-type-c-linkage\"")                   \
        _Pragma("clang diagnostic ignored \"-Wdll-attribute-on-redeclaration\"") extern "C"                            \
    {
#define TOV_PLAIN_NAMES_END                                                                                            \
    }                                                                                                                  \
    _Pragma("clang diagnostic pop")
#else
#define TOV_PLAIN_NAMES_BEGIN                                                                                          \
    extern "C"                                                                                                         \
    {
#define TOV_PLAIN_NAMES_END }
#endif

// Returns whether an object's class is T itself, so that T's own operations can be called directly. If it is a derived
// class, or the program is compiled without the language's type information, the result is false.
template<class T> bool TOVIsExactly(const T& oObject)
{
#if defined(__cpp_rtti)
    return typeid(oObject) == typeid(T);
#else
    static_cast<void>(oObject);
    return false;
#endif
}

// Does the same by a comparison that a loop can afford, of the tables of virtual operations with whose addresses
// objects begin. It may also return false for T itself, if another module has a table of its own for it. The compiler
// sees which address T's default constructor writes, so that it makes no object. That constructor must not own
// anything, as there is no destruction.
template<class T> bool TOVHasOwnTable(const T& oObject)
{
#if defined(TOVKERNEL_BUILD)
    // The library would export each table that it mentions, with all the operations in it.
    static_cast<void>(oObject);
    return false;
#else
    union uMade
    {
        T oMade;
        uMade() : oMade() {}
        ~uMade() {}
    } const oExact;
    const void* pExactTable;
    const void* pTable;
    std::memcpy(&pExactTable, static_cast<const void*>(&oExact), sizeof(pExactTable));
    std::memcpy(&pTable, static_cast<const void*>(&oObject), sizeof(pTable));
    return pTable == pExactTable;
#endif
}

// Atomic reads and writes of a plain variable of 1, 4 or 8 bytes that several threads use. Their memory order is
// relaxed: they do not order any other access.
namespace TOVAtomic
{
#if defined(_MSC_VER)
// With this compiler, an atomic object of such a size holds the value and nothing else.
template<class T> T Load(const T& oVariable)
{
    static_assert(sizeof(std::atomic<T>) == sizeof(T) && std::atomic<T>::is_always_lock_free);
    return reinterpret_cast<const std::atomic<T>&>(oVariable).load(std::memory_order_relaxed);
}

template<class T> void Store(T& oVariable, const T& oValue)
{
    static_assert(sizeof(std::atomic<T>) == sizeof(T) && std::atomic<T>::is_always_lock_free);
    reinterpret_cast<std::atomic<T>&>(oVariable).store(oValue, std::memory_order_relaxed);
}
#else
template<class T> TOV_ALWAYS_INLINE T Load(const T& oVariable)
{
    T oValue;
    __atomic_load(&oVariable, &oValue, __ATOMIC_RELAXED);
    return oValue;
}

template<class T> TOV_ALWAYS_INLINE void Store(T& oVariable, const T& oValue)
{
    T oNew = oValue;
    __atomic_store(&oVariable, &oNew, __ATOMIC_RELAXED);
}
#endif
} // namespace TOVAtomic

static_assert(sizeof(wchar_t) == 2,
              "TOVKernel's wchar_t is one UTF-16 code unit: add -fshort-wchar to the compiler's options");
static_assert(sizeof(int) == 4 && sizeof(char) == 1, "TOVKernel needs 8-bit char and 32-bit int");
