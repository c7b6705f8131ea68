#include <TOVString/TOVFourCC.h>

#include <TOVPlatform/TOVString.h>

namespace
{
// A character as the signed number that it is, in 32-bit arithmetic.
tDword Number(char cCharacter)
{
    return static_cast<tDword>(static_cast<signed char>(cCharacter));
}
} // namespace

CTOVFourCC::~CTOVFourCC()
{
}

CTOVFourCC::CTOVFourCC() : m_dwFourCC(0), m_cTerminator('\0')
{
}

CTOVFourCC::CTOVFourCC(const CTOVFourCC& oOther) : m_dwFourCC(oOther.m_dwFourCC), m_cTerminator('\0')
{
}

CTOVFourCC::CTOVFourCC(unsigned long dwFourCC) : CTOVFourCC()
{
    FromDword(dwFourCC);
}

CTOVFourCC::CTOVFourCC(const char* szFourCC) : CTOVFourCC()
{
    FromString(szFourCC);
}

const CTOVFourCC& CTOVFourCC::operator=(const CTOVFourCC& oOther)
{
    Set(oOther.m_dwFourCC);
    return *this;
}

void CTOVFourCC::FromDword(unsigned long dwFourCC)
{
    Set(TOV_BYTESWAP32(dwFourCC));
}

void CTOVFourCC::FromFourCC(unsigned long dwFourCC)
{
    Set(static_cast<tDword>(dwFourCC));
}

void CTOVFourCC::FromString(const char* szFourCC)
{
    TOV_ASSERT(TOVPlatform::TOVString::Length(szFourCC) >= 4);
    Set((Number(szFourCC[3]) << 24) + (Number(szFourCC[2]) << 16) + (Number(szFourCC[1]) << 8) + Number(szFourCC[0]));
}

unsigned long CTOVFourCC::ToDword() const
{
    return m_dwFourCC;
}

CTOVFourCC::operator unsigned long() const
{
    return ToDword();
}

const char* CTOVFourCC::ToString() const
{
    static_assert(sizeof(m_dwFourCC) == 4 && alignof(char) == 1, "the terminator follows without a gap");
    return reinterpret_cast<const char*>(&m_dwFourCC);
}

CTOVFourCC::operator const char*() const
{
    return ToString();
}

bool CTOVFourCC::Compare(const CTOVFourCC& oOther) const
{
    return m_dwFourCC == oOther.m_dwFourCC;
}

bool CTOVFourCC::IsEmpty() const
{
    return m_dwFourCC == 0;
}

void CTOVFourCC::Reverse()
{
    m_dwFourCC = TOV_BYTESWAP32(m_dwFourCC);
}

void CTOVFourCC::Set(tDword dwFourCC)
{
    m_dwFourCC = dwFourCC;
    m_cTerminator = '\0';
}
