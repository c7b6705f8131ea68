// A plain model of a path: every operation as it is described, step by step, on a text of the standard library. The
// tests compare the path with it on random texts.
#pragma once

#include <TOVPlatform/TOVString.h>

#include <cstring>
#include <string>
#include <vector>

class CPathModel
{
public:
    explicit CPathModel(const std::string& sText) : m_sText(sText) {}

    static bool IsSlash(char cChar) { return cChar == '/' || cChar == '\\'; }

    int GetNumComponents() const
    {
        int nComponents = 0;
        for (std::size_t i = 1; i < m_sText.size(); ++i)
            nComponents += IsSlash(m_sText[i]) ? 1 : 0;
        return m_sText.empty() || IsSlash(m_sText.back()) ? nComponents : nComponents + 1;
    }

    std::string GetComponent(int nFirst, int nCount) const
    {
        if (nCount == 0)
            return "";
        int nSeparators = 0;
        std::size_t nStart = 0;
        std::size_t nEnd = m_sText.size();
        for (std::size_t i = 0; i < m_sText.size(); ++i)
        {
            if (!IsSlash(m_sText[i]))
                continue;
            if (i > 0)
                ++nSeparators;
            if (nSeparators == nFirst)
                nStart = i + 1;
            if (i > 0 && nSeparators == nFirst + nCount)
            {
                nEnd = i;
                break;
            }
        }
        return m_sText.substr(nStart, nEnd - nStart);
    }

    int GetComponentPosition(int nIndex) const
    {
        int nSeparators = 0;
        for (std::size_t i = 0; i < m_sText.size(); ++i)
        {
            if (!IsSlash(m_sText[i]))
                continue;
            if (i > 0)
                ++nSeparators;
            if (nSeparators == nIndex)
                return static_cast<int>(i + 1);
        }
        return 0;
    }

    std::vector<std::string> GetComponents() const
    {
        std::vector<std::string> aComponents;
        for (int i = 0; i < GetNumComponents(); ++i)
            aComponents.push_back(GetComponent(i, 1));
        return aComponents;
    }

    // Not for an empty path.
    std::string Parent() const
    {
        const std::string sText = IsSlash(m_sText.back()) ? m_sText.substr(0, m_sText.size() - 1) : m_sText;
        return sText.substr(0, LastSlash(sText) == std::string::npos ? 0 : LastSlash(sText));
    }

    std::string GetPath() const { return m_sText.substr(0, LastSlash(m_sText)); }

    std::string StripPath() const
    {
        return LastSlash(m_sText) == std::string::npos ? m_sText : m_sText.substr(LastSlash(m_sText) + 1);
    }

    // The last dot is that of the text up to its first zero.
    int FindExtension() const
    {
        const char* const szDot = std::strrchr(m_sText.c_str(), '.');
        const int nDot = szDot != nullptr ? static_cast<int>(szDot - m_sText.c_str()) : -1;
        return nDot > GetComponentPosition(GetNumComponents() - 1) ? nDot : -1;
    }

    std::string GetExtension() const { return FindExtension() == -1 ? "" : m_sText.substr(FindExtension()); }

    int Compare(const CPathModel& oOther) const
    {
        const std::vector<std::string> aComponents = GetComponents();
        const std::vector<std::string> aOthers = oOther.GetComponents();
        for (std::size_t i = 0;; ++i)
        {
            if (i == aComponents.size())
                return i < aOthers.size() ? -1 : 0;
            if (i == aOthers.size())
                return 1;
            const int nResult = TOVPlatform::TOVStringA::CompareNoCase(aComponents[i].c_str(), aOthers[i].c_str());
            if (nResult != 0)
                return nResult;
        }
    }

    // Not for an empty path, unless both flags are set.
    bool IsSame(const CPathModel& oOther, bool bIgnoreLeadingSlash, bool bIgnoreTrailingSlash) const
    {
        if (GetNumComponents() != oOther.GetNumComponents())
            return false;
        if (!bIgnoreTrailingSlash && IsSlash(m_sText.back()) != IsSlash(oOther.m_sText.back()))
            return false;
        if (!bIgnoreLeadingSlash && IsSlash(m_sText.front()) != IsSlash(oOther.m_sText.front()))
            return false;
        return BeginsLike(oOther, GetNumComponents());
    }

    bool IsBelow(const CPathModel& oOther) const
    {
        return GetNumComponents() < oOther.GetNumComponents() && BeginsLike(oOther, GetNumComponents());
    }

    std::string Strip(const CPathModel& oBase) const
    {
        const std::vector<std::string> aComponents = GetComponents();
        const std::vector<std::string> aBases = oBase.GetComponents();
        std::string sComponent;
        std::string sBase;
        std::size_t nMatches = 0;
        for (; nMatches < aComponents.size() || nMatches < aBases.size(); ++nMatches)
        {
            // A side that has run out keeps its last component.
            if (nMatches < aComponents.size())
                sComponent = Lowered(aComponents[nMatches]);
            if (nMatches < aBases.size())
                sBase = Lowered(aBases[nMatches]);
            if (std::strcmp(sComponent.c_str(), sBase.c_str()) != 0)
                break;
        }
        return GetComponent(static_cast<int>(nMatches), GetNumComponents() - static_cast<int>(nMatches));
    }

private:
    static std::size_t LastSlash(const std::string& sText) { return sText.find_last_of("/\\"); }

    static std::string Lowered(std::string sText)
    {
        TOVPlatform::TOVStringA::ToLower(sText.data());
        return sText;
    }

    bool BeginsLike(const CPathModel& oOther, int nComponents) const
    {
        for (int nCount = 1; nCount <= nComponents; ++nCount)
        {
            const std::string sStart = Lowered(GetComponent(0, nCount));
            const std::string sOtherStart = Lowered(oOther.GetComponent(0, nCount));
            if (std::strcmp(sStart.c_str(), sOtherStart.c_str()) != 0)
                return false;
        }
        return true;
    }

    std::string m_sText;
};
