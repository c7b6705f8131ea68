// Declares what a file of settings needs from the system and the library does not have. Each system has its own source,
// with the same functions in the same order.
#pragma once

#include <string>

namespace SettingsSystem
{
// Returns whether the system says that there is no file of this name. It may be unable to tell.
bool IsAbsent(const char* szFile);

// Returns the name of the file to which a link leads, and any other name as it is.
std::string TargetOf(const std::string& sFile);

enum eCreation
{
    eCreated,
    eTaken, // something has this name
    eRefused
};

// Creates an empty file, and follows no link. Where the system has file permissions, it gets those of the other file,
// if there is one.
eCreation Create(const char* szFile, const char* szOther);

// Gives a file the name of another one, which it replaces in one step. Returns false on failure; both are then
// unchanged.
bool Replace(const char* szFile, const char* szOther);
} // namespace SettingsSystem
