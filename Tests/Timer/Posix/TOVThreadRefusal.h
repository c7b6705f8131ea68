// A system that starts no more threads.
#pragma once

// While it lives, no thread can be created on the constructing one.
class CThreadRefusal
{
public:
    CThreadRefusal();
    ~CThreadRefusal();
    CThreadRefusal(const CThreadRefusal&) = delete;
    CThreadRefusal& operator=(const CThreadRefusal&) = delete;
};
