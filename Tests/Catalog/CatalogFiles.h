// Files that the tests need and the standard library cannot make.
#pragma once

#include <string>

// No machine reads so many bytes while a test waits for their end, even where the file is sparse.
constexpr unsigned long long ENDLESS_SIZE = 1000000000000;

// Makes a file of so many zero bytes with a tail after them. The zero bytes take no room on the disk if the file system
// knows sparse files.
void WriteSparseFile(const std::string& sPath, unsigned long long ullZeros, const std::string& sTail);

// Cuts the file to this size, also while another program reads it.
void CutFile(const std::string& sPath, long lSize);

// Makes one directory if it does not exist. Its name may hold any byte that the system allows.
void MakeDirectoryOfBytes(const std::string& sPath);
