// The one header that asks which compiler and which system this is.
#pragma once

#if defined(_WIN32)
#define TOV_SYSTEM_WINDOWS 1
#define TOV_CALLBACK __stdcall
#define TOV_TEMPLATE
#define TOV_PROGRAM_EXPORT __declspec(dllexport)
#if defined(TOVKERNEL_BUILD)
#define TOV_EXPORT __declspec(dllexport)
#define TOV_EXPORT_HOOK __declspec(dllexport)
#if defined(__GNUC__)
// GCC takes the attribute from an instantiation's first declaration, others from its definition.
#define TOV_TEMPLATE_DECLARE __declspec(dllexport)
#define TOV_TEMPLATE_DEFINE
#else
#define TOV_TEMPLATE_DECLARE
#define TOV_TEMPLATE_DEFINE __declspec(dllexport)
#endif
#else
#define TOV_EXPORT __declspec(dllimport)
#define TOV_EXPORT_HOOK
#define TOV_TEMPLATE_DECLARE __declspec(dllimport)
#define TOV_TEMPLATE_DEFINE
#endif
// Name of a platform source as failed checks report it.
#define TOV_PLATFORM_SOURCE(szName) "Windows/" szName
#else
#define TOV_SYSTEM_WINDOWS 0
#define TOV_CALLBACK
#define TOV_TEMPLATE __attribute__((visibility("default")))
#define TOV_EXPORT __attribute__((visibility("default")))
#define TOV_EXPORT_HOOK __attribute__((visibility("default")))
#define TOV_PROGRAM_EXPORT __attribute__((visibility("default")))
#define TOV_TEMPLATE_DECLARE __attribute__((visibility("default")))
#define TOV_TEMPLATE_DEFINE
#define TOV_PLATFORM_SOURCE(szName) "Posix/" szName
#endif

// TOV_CALLBACK           calling convention of functions that the system calls.
// TOV_EXPORT             exported class or function.
// TOV_EXPORT_HOOK        exported function that a program may export in a version of its own as well.
// TOV_PROGRAM_EXPORT     function that a main program exports.
// TOV_TEMPLATE_DECLARE   in a header: extern template class TOV_TEMPLATE_DECLARE CThing<int>;
// TOV_TEMPLATE_DEFINE    in the one source that owns it: template class TOV_TEMPLATE_DEFINE CThing<int>;
//                        so that a template's statics exist once in the process, and not once in each module.
// TOV_TEMPLATE           class template without statics whose instances in the library are exported; each module may
//                        still make its own, and inline them. The owning source of an instance has
//                        template class TOV_EXPORT CThing<int>; before anything else there uses it.

// A function that is never merged into its callers.
#if defined(_MSC_VER)
#define TOV_NOINLINE __declspec(noinline)
#else
#define TOV_NOINLINE __attribute__((noinline))
#endif

static_assert(sizeof(wchar_t) == 2,
              "TOVKernel's wchar_t is one UTF-16 code unit: add -fshort-wchar to the compiler's options");
static_assert(sizeof(int) == 4 && sizeof(char) == 1, "TOVKernel needs 8-bit char and 32-bit int");
