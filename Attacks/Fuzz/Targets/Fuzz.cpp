#include "Fuzz.h"

#include <climits>
#include <cstdio>

namespace Fuzz
{
namespace
{
std::vector<const CTarget*>& GetTargets()
{
    static std::vector<const CTarget*> s_aTargets;
    return s_aTargets;
}

template<class TText> std::string ShowUnits(const TText& sText, unsigned int nMask)
{
    std::string sShown = "\"";
    for (const auto cUnit : sText)
    {
        const unsigned int nUnit = static_cast<unsigned int>(cUnit) & nMask;
        char szUnit[16];
        std::snprintf(szUnit, sizeof(szUnit), nUnit >= 0x20 && nUnit < 0x7F ? "%c" : "\\x{%x}", nUnit);
        sShown += szUnit;
    }
    return sShown + '"';
}
} // namespace

int CInput::Number()
{
    constexpr int NUM_LIMITS = 10;
    constexpr int LIMITS[NUM_LIMITS] = {-1, -2, INT_MAX, INT_MAX - 1, INT_MIN, INT_MIN + 1, 0x7FFF, 0x10000, 255, 1000};
    const int nByte = Byte();
    return nByte < 256 - NUM_LIMITS ? nByte % 64 : LIMITS[nByte - (256 - NUM_LIMITS)];
}

std::string CInput::Bytes(int nMost)
{
    const std::size_t nWanted = static_cast<std::size_t>(Below(nMost + 1));
    const std::size_t nBytes = GetLeft() < nWanted ? GetLeft() : nWanted;
    const std::string sBytes(reinterpret_cast<const char*>(m_pNext), nBytes);
    m_pNext += nBytes;
    return sBytes;
}

std::string CInput::Text(int nMost)
{
    const std::string sBytes = Bytes(nMost);
    return sBytes.substr(0, sBytes.find('\0'));
}

std::string CInput::Rest()
{
    const std::string sBytes(reinterpret_cast<const char*>(m_pNext), GetLeft());
    m_pNext = m_pEnd;
    return sBytes;
}

CTarget::CTarget(const char* szName, tTarget fnTarget) : m_szName(szName), m_fnTarget(fnTarget)
{
    GetTargets().push_back(this);
}

void CTarget::Run(const std::uint8_t* pBytes, std::size_t nSize) const
{
    CInput oInput(pBytes, nSize);
    m_fnTarget(oInput);
}

const std::vector<const CTarget*>& CTarget::GetAll()
{
    return GetTargets();
}

const CTarget* CTarget::Find(const char* szName)
{
    for (const CTarget* pTarget : GetTargets())
        if (std::strcmp(pTarget->GetName(), szName) == 0)
            return pTarget;
    return nullptr;
}

std::string Show(const std::string& sText)
{
    return ShowUnits(sText, 0xFF);
}

std::string Show(const std::vector<char>& aText)
{
    return ShowUnits(aText, 0xFF);
}

std::string Show(const std::vector<wchar_t>& aText)
{
    return ShowUnits(aText, 0xFFFF);
}
} // namespace Fuzz
