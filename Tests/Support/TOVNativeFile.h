// What tests do to files behind the library's back, where the standard library has no means.
#pragma once

#include <cstdio>
#include <string>

// Takes the descriptor of an open stream away and gives it back at the end: meanwhile the stream can neither be flushed
// nor closed. The program must open nothing else in between.
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

// While it lives, programs that are started may have few files open, unless they ask for more. Windows counts the
// runtime's streams in each program, and few is where each one begins.
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
