// A loader of texts by number that remembers what it was asked. Installed while it lives.
#pragma once

#include <TOVString/TOVResourceLoader.h>
#include <TOVString/TOVStringA.h>

#include <string>
#include <vector>

class CTestLoader : public ITOVResourceLoader
{
public:
    struct sRequest
    {
        long lId;
        const CTOVStringA* pTarget;
        std::string sTextBefore;
        long lLengthBefore;
        long lCapacityBefore;
    };

    // Fills the asking string with the text; with nullptr it reports that it knows no text, and leaves the string
    // alone.
    explicit CTestLoader(const char* szText) : m_szText(szText) { SetInstance(this); }

    virtual ~CTestLoader() { SetInstance(nullptr); }

    CTestLoader(const CTestLoader&) = delete;
    CTestLoader& operator=(const CTestLoader&) = delete;

    bool LoadString(long lStringId, CTOVStringA& oString) override
    {
        const CTOVStringA& oBefore = oString;
        const char* const szBefore = oBefore.GetString() == nullptr ? "" : oBefore.GetString();
        m_aRequests.push_back({lStringId, &oString, szBefore, oBefore.GetLength(), oBefore.GetData()->GetSize()});
        if (m_szText == nullptr)
            return false;
        oString = m_szText;
        return true;
    }

    const std::vector<sRequest>& Requests() const { return m_aRequests; }

private:
    const char* m_szText;
    std::vector<sRequest> m_aRequests;
};
