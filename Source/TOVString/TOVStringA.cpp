#include <TOVString/TOVStringA.h>

#include <Debug/TOVDebug.h>
#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringStore.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringA>;

typedef CTOVStringStore<CTOVStringA> tStore;

namespace
{
// A pointer below this value is none: it carries the id of a text that the resource loader knows.
constexpr std::uintptr_t STRING_ID_END = 0x10000;
} // namespace

CTOVStringA::CTOVStringA()
{
    Init();
}

CTOVStringA::CTOVStringA(const char* szString)
{
    Init();
    *this = szString;
}

CTOVStringA::CTOVStringA(const CTOVStringA& oOther)
    : m_oData(tStore::ShareBlock(oOther)), m_nStringLength(oOther.m_nStringLength)
{
}

CTOVStringA::CTOVStringA(const CTOVStringW& oOther)
{
    Init();
    tStore::Convert(*this, oOther);
}

CTOVStringA::CTOVStringA(char cChar, int nCount)
{
    Init();
    tStore::Fill(*this, cChar, nCount);
}

CTOVStringA::~CTOVStringA() = default;

CTOVStringA& CTOVStringA::Null()
{
    return CTOVDynamicSingleton<CTOVStringA>::GetInstance();
}

const CTOVStringA& CTOVStringA::operator=(const CTOVStringA& oOther)
{
    tStore::Share(*this, oOther);
    return *this;
}

const CTOVStringA& CTOVStringA::operator=(const char* szString)
{
    const std::uintptr_t nStringId = reinterpret_cast<std::uintptr_t>(szString);
    if (szString == nullptr || nStringId >= STRING_ID_END)
    {
        tStore::AssignText(*this, szString);
        return *this;
    }

    Empty();
    if (LoadStringResource(static_cast<long>(nStringId)))
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "Implicit load of string with id '%d'.",
                       static_cast<int>(nStringId));
    }
    return *this;
}

const CTOVStringA& CTOVStringA::operator=(char cChar)
{
    tStore::AssignCharacter(*this, cChar);
    return *this;
}

bool CTOVStringA::LoadStringResource(long lStringId)
{
    return ITOVResourceLoader::Instance().LoadString(lStringId, *this);
}

const CTOVStringA& CTOVStringA::operator+=(const CTOVStringA& oOther)
{
    ConcatInPlace(oOther.m_nStringLength, oOther.GetString());
    return *this;
}

const CTOVStringA& CTOVStringA::operator+=(char cChar)
{
    ConcatInPlace(1, &cChar);
    return *this;
}

void CTOVStringA::Copy(const char* szSrcString, int nStringLength)
{
    tStore::Copy(*this, szSrcString, nStringLength);
}

void CTOVStringA::Empty()
{
    tStore::Empty(*this);
}

void CTOVStringA::AllocBuffer(int nLength)
{
    tStore::AllocBuffer(*this, nLength);
}

void CTOVStringA::AssignCopy(int nLength, const char* szString)
{
    tStore::AssignCopy(*this, nLength, szString);
}

void CTOVStringA::ConcatCopy(int nLength1, const char* sz1, int nLength2, const char* sz2)
{
    tStore::ConcatCopy(*this, nLength1, sz1, nLength2, sz2);
}

void CTOVStringA::ConcatInPlace(int nLength, const char* szString)
{
    tStore::ConcatInPlace(*this, nLength, szString);
}

char* CTOVStringA::GetBuffer(int nLength)
{
    return tStore::GetBuffer(*this, nLength);
}

void CTOVStringA::ReleaseBuffer(int nNewLength)
{
    tStore::ReleaseBuffer(*this, nNewLength);
}

int CTOVStringA::GetSafeStringLength(const char* szString)
{
    return tStore::GetSafeStringLength(szString);
}
