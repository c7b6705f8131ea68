// What tests do to files without the library, and the standard library cannot do.
#pragma once

#include <cstdio>
#include <string>

// Takes the descriptor of an open stream away and gives it back at the end. In between, the stream can neither be
// flushed nor closed, and the program must not open any file.
class CUnusableStream
{
public:
    explicit CUnusableStream(FILE* pFile);
    ~CUnusableStream();
    CUnusableStream(const CUnusableStream&) = delete;
    CUnusableStream& operator=(const CUnusableStream&) = delete;

private:
    const int m_nDescriptor;
    const int m_nKept;
};

// While it lives, programs that are started may have few files open, unless they ask for more. On Windows this does
// nothing: there the runtime of each program limits its own streams, and each program begins with few.
class CFewOpenFiles
{
public:
    CFewOpenFiles();
    ~CFewOpenFiles();
    CFewOpenFiles(const CFewOpenFiles&) = delete;
    CFewOpenFiles& operator=(const CFewOpenFiles&) = delete;

private:
    const unsigned long long m_ullBefore;
};

// The system's number of an open stream.
int DescriptorOf(FILE* pFile);

// Times of the last access and of the last change, in seconds since the start of 1970.
void SetFileTimes(const std::string& sPath, long long llAccess, long long llChange);

// Whether the system calls the file read-only.
bool IsReadOnly(const std::string& sPath);
