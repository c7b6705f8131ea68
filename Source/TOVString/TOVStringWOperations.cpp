#include <TOVString/TOVStringW.h>

#include <TOVString/TOVStringText.h>

template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringW>;

typedef CTOVStringText<CTOVStringW> tText;

int CTOVStringW::Find(wchar_t cCharToSearch, int nStartPos) const
{
    return tText::Find(*this, cCharToSearch, nStartPos);
}

int CTOVStringW::Find(const wchar_t* szSubStringToSearch, int nStartPos) const
{
    return tText::Find(*this, szSubStringToSearch, nStartPos);
}

int CTOVStringW::ReverseFind(wchar_t cCharToSearch) const
{
    return tText::ReverseFind(*this, cCharToSearch);
}

int CTOVStringW::FindOneOf(const wchar_t* szCharSet, int nStartPos) const
{
    return tText::FindOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringW::FindNotOneOf(const wchar_t* szCharSet, int nStartPos) const
{
    return tText::FindNotOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringW::ReverseFindOneOf(const wchar_t* szCharSet, int nStartPos) const
{
    return tText::ReverseFindOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringW::ReverseFindNotOneOf(const wchar_t* szCharSet, int nStartPos) const
{
    return tText::ReverseFindNotOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringW::Replace(wchar_t cOldChar, wchar_t cNewChar)
{
    return tText::Replace(*this, cOldChar, cNewChar);
}

int CTOVStringW::Replace(const wchar_t* szOld, const wchar_t* szNew)
{
    return tText::Replace(*this, szOld, szNew);
}

CTOVStringW CTOVStringW::Left(int nCount) const
{
    return tText::Left(*this, nCount);
}

CTOVStringW CTOVStringW::Right(int nCount) const
{
    return tText::Right(*this, nCount);
}

CTOVStringW CTOVStringW::Mid(int nFirst, int nCount) const
{
    return tText::Mid(*this, nFirst, nCount);
}

CTOVStringW CTOVStringW::Mid(int nFirst) const
{
    return tText::Mid(*this, nFirst);
}

bool CTOVStringW::BeginsWith(const CTOVStringW& oOther) const
{
    return tText::BeginsWith(*this, oOther);
}

bool CTOVStringW::BeginsWithNoCase(const CTOVStringW& oOther) const
{
    return tText::BeginsWithNoCase(*this, oOther);
}

bool CTOVStringW::EndsWith(const CTOVStringW& oOther) const
{
    return tText::EndsWith(*this, oOther);
}

bool CTOVStringW::EndsWithNoCase(const CTOVStringW& oOther) const
{
    return tText::EndsWithNoCase(*this, oOther);
}

int CTOVStringW::Compare(const wchar_t* szString) const
{
    return tText::Compare(*this, szString);
}

int CTOVStringW::CompareNoCase(const wchar_t* szString) const
{
    return tText::CompareNoCase(*this, szString);
}

int CTOVStringW::Collate(const wchar_t* szString) const
{
    return tText::Collate(*this, szString);
}

int CTOVStringW::CollateNoCase(const wchar_t* szString) const
{
    return tText::CollateNoCase(*this, szString);
}

void CTOVStringW::MakeLower()
{
    tText::MakeLower(*this);
}

void CTOVStringW::MakeUpper()
{
    tText::MakeUpper(*this);
}

void CTOVStringW::Reverse()
{
    tText::Reverse(*this);
}

int CTOVStringW::Split(CTOVArray<CTOVStringW>& oResult, char cSeparator) const
{
    return tText::Split(*this, oResult, cSeparator);
}

int CTOVStringW::AsInt(int nBase) const
{
    return static_cast<int>(tText::AsLong(*this, nBase));
}

long CTOVStringW::AsLong(int nBase) const
{
    return tText::AsLong(*this, nBase);
}

// Settled: parsed with a sign, so that "-1" has all bits set and larger values saturate at the signed range.
unsigned int CTOVStringW::AsUint(int nBase) const
{
    return static_cast<unsigned int>(tText::AsLong(*this, nBase));
}

unsigned long CTOVStringW::AsUlong(int nBase) const
{
    return tText::AsUlong(*this, nBase);
}

float CTOVStringW::AsFloat() const
{
    return static_cast<float>(tText::AsDouble(*this));
}

double CTOVStringW::AsDouble() const
{
    return tText::AsDouble(*this);
}

bool CTOVStringW::AsBool() const
{
    return tText::AsBool(*this);
}

int CTOVStringW::Format(const wchar_t* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nNumCharacters = FormatV(szFormat, pArguments);
    va_end(pArguments);
    return nNumCharacters;
}

int CTOVStringW::FormatV(const wchar_t* szFormat, va_list pArguments)
{
    return tText::FormatV(*this, szFormat, pArguments);
}
