// Files as tests need them and the standard library does not make them.
#pragma once

#include <string>

// Makes a file of so many zero bytes and a tail behind them, which takes no room on the disk where the system has means
// for that.
void WriteSparseFile(const std::string& sPath, unsigned long long ullZeros, const std::string& sTail);

// Leaves the file no more than its first bytes, also while another program reads it.
void CutFile(const std::string& sPath, long lSize);

// One directory, if it is not there; its name may hold any byte that the system allows.
void MakeDirectoryOfBytes(const std::string& sPath);
