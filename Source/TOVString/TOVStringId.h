// Tells texts from the ids of texts, which are passed in the place of a pointer. Internal to the library.
#pragma once

#include <cstdint>

// A pointer below this value does not point to text: it is null, or the id of a text that the resource loader knows.
constexpr std::uintptr_t STRING_ID_END = 0x10000;

inline bool IsText(const char* szString)
{
    return reinterpret_cast<std::uintptr_t>(szString) >= STRING_ID_END;
}
