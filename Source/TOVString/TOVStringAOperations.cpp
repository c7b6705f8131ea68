#include <TOVString/TOVStringA.h>

#include <TOVString/TOVStringText.h>

template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringA>;

typedef CTOVStringText<CTOVStringA> tText;

int CTOVStringA::Find(char cCharToSearch, int nStartPos) const
{
    return tText::Find(*this, cCharToSearch, nStartPos);
}

int CTOVStringA::Find(const char* szSubStringToSearch, int nStartPos) const
{
    return tText::Find(*this, szSubStringToSearch, nStartPos);
}

int CTOVStringA::ReverseFind(char cCharToSearch) const
{
    return tText::ReverseFind(*this, cCharToSearch);
}

int CTOVStringA::FindOneOf(const char* szCharSet, int nStartPos) const
{
    return tText::FindOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringA::FindNotOneOf(const char* szCharSet, int nStartPos) const
{
    return tText::FindNotOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringA::ReverseFindOneOf(const char* szCharSet, int nStartPos) const
{
    return tText::ReverseFindOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringA::ReverseFindNotOneOf(const char* szCharSet, int nStartPos) const
{
    return tText::ReverseFindNotOneOf(*this, szCharSet, nStartPos);
}

int CTOVStringA::Replace(char cOldChar, char cNewChar)
{
    return tText::Replace(*this, cOldChar, cNewChar);
}

int CTOVStringA::Replace(const char* szOld, const char* szNew)
{
    return tText::Replace(*this, szOld, szNew);
}

CTOVStringA CTOVStringA::Left(int nCount) const
{
    return tText::Left(*this, nCount);
}

CTOVStringA CTOVStringA::Right(int nCount) const
{
    return tText::Right(*this, nCount);
}

CTOVStringA CTOVStringA::Mid(int nFirst, int nCount) const
{
    return tText::Mid(*this, nFirst, nCount);
}

CTOVStringA CTOVStringA::Mid(int nFirst) const
{
    return tText::Mid(*this, nFirst);
}

bool CTOVStringA::BeginsWith(const CTOVStringA& oOther) const
{
    return tText::BeginsWith(*this, oOther);
}

bool CTOVStringA::BeginsWithNoCase(const CTOVStringA& oOther) const
{
    return tText::BeginsWithNoCase(*this, oOther);
}

bool CTOVStringA::EndsWith(const CTOVStringA& oOther) const
{
    return tText::EndsWith(*this, oOther);
}

bool CTOVStringA::EndsWithNoCase(const CTOVStringA& oOther) const
{
    return tText::EndsWithNoCase(*this, oOther);
}

int CTOVStringA::Compare(const char* szString) const
{
    return tText::Compare(*this, szString);
}

int CTOVStringA::CompareNoCase(const char* szString) const
{
    return tText::CompareNoCase(*this, szString);
}

int CTOVStringA::Collate(const char* szString) const
{
    return tText::Collate(*this, szString);
}

int CTOVStringA::CollateNoCase(const char* szString) const
{
    return tText::CollateNoCase(*this, szString);
}

void CTOVStringA::MakeLower()
{
    tText::MakeLower(*this);
}

void CTOVStringA::MakeUpper()
{
    tText::MakeUpper(*this);
}

void CTOVStringA::Reverse()
{
    tText::Reverse(*this);
}

int CTOVStringA::Split(CTOVArray<CTOVStringA>& oResult, char cSeparator) const
{
    return tText::Split(*this, oResult, cSeparator);
}

int CTOVStringA::AsInt(int nBase) const
{
    return static_cast<int>(tText::AsLong(*this, nBase));
}

long CTOVStringA::AsLong(int nBase) const
{
    return tText::AsLong(*this, nBase);
}

// Settled: parsed with a sign, so that "-1" has all bits set and larger values saturate at the signed range.
unsigned int CTOVStringA::AsUint(int nBase) const
{
    return static_cast<unsigned int>(tText::AsLong(*this, nBase));
}

unsigned long CTOVStringA::AsUlong(int nBase) const
{
    return tText::AsUlong(*this, nBase);
}

float CTOVStringA::AsFloat() const
{
    return static_cast<float>(tText::AsDouble(*this));
}

double CTOVStringA::AsDouble() const
{
    return tText::AsDouble(*this);
}

bool CTOVStringA::AsBool() const
{
    return tText::AsBool(*this);
}

int CTOVStringA::Format(const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nNumCharacters = FormatV(szFormat, pArguments);
    va_end(pArguments);
    return nNumCharacters;
}

int CTOVStringA::FormatV(const char* szFormat, va_list pArguments)
{
    return tText::FormatV(*this, szFormat, pArguments);
}
