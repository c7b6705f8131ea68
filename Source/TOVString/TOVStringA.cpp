#include <TOVString/TOVStringA.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVText.h>
#include <TOVPlatform/Vector/TOVVectorText.h>
#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringW.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>

#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE "TOVString/TOVStringA"

typedef CTOVStringA tString;
typedef CTOVStringW tOtherString;
typedef char tUnit;

#include <TOVString/TOVStringBody.inl>
#include <TOVString/TOVStringEditing.inl>
#include <TOVString/TOVStringSearch.inl>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVStringA>;
template class TOV_TEMPLATE_DEFINE CTOVArray<CTOVStringA>;

namespace
{
// A pointer below this value does not point to text: it carries the id of a text that the resource loader knows.
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
    : m_oData(ShareBlock(oOther.m_oData)), m_nStringLength(oOther.m_nStringLength)
{
}

CTOVStringA::CTOVStringA(const CTOVStringW& oOther)
{
    Init();
    Convert(*this, oOther);
}

CTOVStringA::CTOVStringA(char cChar, int nCount)
{
    Init();
    Fill(*this, cChar, nCount);
}

CTOVStringA::~CTOVStringA() = default;

const CTOVStringA& CTOVStringA::operator=(const char* szString)
{
    const std::uintptr_t nStringId = reinterpret_cast<std::uintptr_t>(szString);
    if (szString == nullptr || nStringId >= STRING_ID_END)
    {
        AssignText(*this, szString);
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

bool CTOVStringA::LoadStringResource(long lStringId)
{
    return ITOVResourceLoader::Instance().LoadString(lStringId, *this);
}
