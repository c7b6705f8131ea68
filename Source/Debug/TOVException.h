// Declares the root of the exception tree, CTOVException, and two classes derived from it.
#pragma once

#include <Debug/TOVBase.h>

// An exception consists of two numbers, a class and a code. It is thrown by value.
class TOV_EXPORT CTOVException
{
public:
    // The family of an error. An application gives each family that it adds its own value.
    enum eErrorClass
    {
        eClassSystem = 1,
        eClassFile = 5,
        eClassStream = 10
    };

    // Virtual operations; their order is part of the exported design. There is no virtual destructor.
    // These return the two numbers.
    virtual eErrorClass GetClass(); // Settled: not const, unlike GetCode.
    virtual unsigned long GetCode() const;

    // Makes an exception of these two numbers.
    CTOVException(eErrorClass eClass, unsigned long ulErrorCode);
    CTOVException(const CTOVException& oOther);
    CTOVException& operator=(const CTOVException& oOther);

private:
    eErrorClass m_eErrorClass;
    unsigned long m_ulErrorCode;
};

// Reports exhausted memory, for applications. The library itself throws std::bad_alloc instead.
class TOV_EXPORT CTOVMemoryException : public CTOVException
{
public:
    explicit CTOVMemoryException(unsigned short usErrorCode = 0);
    CTOVMemoryException(const CTOVMemoryException& oOther);
    CTOVMemoryException& operator=(const CTOVMemoryException& oOther);
};

namespace TOVDebug
{
// TOV_ASSERT throws this exception; its class is eClassSystem and its code 0xffff.
class TOV_EXPORT CTOVAssertException : public CTOVException
{
public:
    CTOVAssertException();
    CTOVAssertException(const CTOVAssertException& oOther);
    CTOVAssertException& operator=(const CTOVAssertException& oOther);
};
} // namespace TOVDebug
