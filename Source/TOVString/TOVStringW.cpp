#include <TOVString/TOVStringW.h>

#include <TOVString/TOVStringStore.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringW>;

typedef CTOVStringStore<CTOVStringW> tStore;

CTOVStringW::CTOVStringW()
{
    Init();
}

CTOVStringW::CTOVStringW(const wchar_t* szString)
{
    Init();
    *this = szString;
}

CTOVStringW::CTOVStringW(const CTOVStringW& oOther)
    : m_oData(tStore::ShareBlock(oOther)), m_nStringLength(oOther.m_nStringLength)
{
}

CTOVStringW::CTOVStringW(const CTOVStringA& oOther)
{
    Init();
    tStore::Convert(*this, oOther);
}

CTOVStringW::CTOVStringW(wchar_t cChar, int nCount)
{
    Init();
    tStore::Fill(*this, cChar, nCount);
}

CTOVStringW::~CTOVStringW() = default;

CTOVStringW& CTOVStringW::Null()
{
    return CTOVDynamicSingleton<CTOVStringW>::GetInstance();
}

const CTOVStringW& CTOVStringW::operator=(const CTOVStringW& oOther)
{
    tStore::Share(*this, oOther);
    return *this;
}

// Settled: no string ids here.
const CTOVStringW& CTOVStringW::operator=(const wchar_t* szString)
{
    tStore::AssignText(*this, szString);
    return *this;
}

const CTOVStringW& CTOVStringW::operator=(wchar_t cChar)
{
    tStore::AssignCharacter(*this, cChar);
    return *this;
}

// Settled: wide text never comes from the resource loader.
bool CTOVStringW::LoadStringResource(long)
{
    return false;
}

const CTOVStringW& CTOVStringW::operator+=(const CTOVStringW& oOther)
{
    ConcatInPlace(oOther.m_nStringLength, oOther.GetString());
    return *this;
}

const CTOVStringW& CTOVStringW::operator+=(wchar_t cChar)
{
    ConcatInPlace(1, &cChar);
    return *this;
}

void CTOVStringW::Copy(const wchar_t* szSrcString, int nStringLength)
{
    tStore::Copy(*this, szSrcString, nStringLength);
}

void CTOVStringW::Empty()
{
    tStore::Empty(*this);
}

void CTOVStringW::AllocBuffer(int nLength)
{
    tStore::AllocBuffer(*this, nLength);
}

void CTOVStringW::AssignCopy(int nLength, const wchar_t* szString)
{
    tStore::AssignCopy(*this, nLength, szString);
}

void CTOVStringW::ConcatCopy(int nLength1, const wchar_t* sz1, int nLength2, const wchar_t* sz2)
{
    tStore::ConcatCopy(*this, nLength1, sz1, nLength2, sz2);
}

void CTOVStringW::ConcatInPlace(int nLength, const wchar_t* szString)
{
    tStore::ConcatInPlace(*this, nLength, szString);
}

wchar_t* CTOVStringW::GetBuffer(int nLength)
{
    return tStore::GetBuffer(*this, nLength);
}

void CTOVStringW::ReleaseBuffer(int nNewLength)
{
    tStore::ReleaseBuffer(*this, nNewLength);
}

int CTOVStringW::GetSafeStringLength(const wchar_t* szString)
{
    return tStore::GetSafeStringLength(szString);
}
