// The root of the exception tree. An exception is two numbers, thrown by value, and nothing else.
#pragma once

#include <Debug/TOVBase.h>

class TOV_EXPORT CTOVException
{
public:
    // Family of an error. A further family takes a value of its own.
    enum eErrorClass
    {
        eClassSystem = 1,
        eClassFile = 5,
        eClassStream = 10
    };

    // Virtual operations; their order is part of the exported design. There is no virtual destructor.
    virtual eErrorClass GetClass(); // Settled: not const, unlike its neighbour.
    virtual unsigned long GetCode() const;

    CTOVException(eErrorClass eClass, unsigned long ulErrorCode);
    CTOVException(const CTOVException& oOther);
    CTOVException& operator=(const CTOVException& oOther);

private:
    eErrorClass m_eErrorClass;
    unsigned long m_ulErrorCode;
};

// Exhausted memory, for applications. The library itself lets std::bad_alloc pass.
class TOV_EXPORT CTOVMemoryException : public CTOVException
{
public:
    explicit CTOVMemoryException(unsigned short usErrorCode = 0);
    CTOVMemoryException(const CTOVMemoryException& oOther);
    CTOVMemoryException& operator=(const CTOVMemoryException& oOther);
};

namespace TOVDebug
{
// A failed TOV_ASSERT: class eClassSystem, code 0xffff.
class TOV_EXPORT CTOVAssertException : public CTOVException
{
public:
    CTOVAssertException();
    CTOVAssertException(const CTOVAssertException& oOther);
    CTOVAssertException& operator=(const CTOVAssertException& oOther);
};
} // namespace TOVDebug
