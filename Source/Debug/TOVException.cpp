#include <Debug/TOVException.h>

CTOVException::CTOVException(eErrorClass eClass, unsigned long ulErrorCode)
    : m_eErrorClass(eClass), m_ulErrorCode(ulErrorCode)
{
}

CTOVException::CTOVException(const CTOVException& oOther) = default;
CTOVException& CTOVException::operator=(const CTOVException& oOther) = default;

CTOVException::eErrorClass CTOVException::GetClass()
{
    return m_eErrorClass;
}

unsigned long CTOVException::GetCode() const
{
    return m_ulErrorCode;
}

CTOVMemoryException::CTOVMemoryException(unsigned short usErrorCode) : CTOVException(eClassSystem, usErrorCode)
{
}

CTOVMemoryException::CTOVMemoryException(const CTOVMemoryException& oOther) = default;
CTOVMemoryException& CTOVMemoryException::operator=(const CTOVMemoryException& oOther) = default;

namespace TOVDebug
{
CTOVAssertException::CTOVAssertException() : CTOVException(eClassSystem, 0xffff)
{
}

CTOVAssertException::CTOVAssertException(const CTOVAssertException& oOther) = default;
CTOVAssertException& CTOVAssertException::operator=(const CTOVAssertException& oOther) = default;
} // namespace TOVDebug
