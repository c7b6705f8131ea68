#include "Moves.h"

#include "FileSearch.h"

#include <map>
#include <string>
#include <tuple>

namespace
{
// The size, both checksums, and the name, which is empty where it does not count.
typedef std::tuple<unsigned long long, tDword, tSha256, std::string> tKey;

tKey KeyOf(unsigned long long ullSize, tDword dwCrc, const tSha256* pSha256, const std::string& sPath, bool bName)
{
    return tKey(ullSize, dwCrc, pSha256 != nullptr ? *pSha256 : tSha256(),
                bName ? sPath.substr(sPath.rfind('/') + 1) : std::string());
}

class CMoves
{
public:
    CMoves(const std::vector<sFileRecord>& aMissing, const std::vector<sNewFile>& aNew, const std::atomic<bool>& bStop)
        : m_aMissing(aMissing), m_aNew(aNew), m_bStop(bStop), m_abFound(aMissing.size()), m_alOrigins(aNew.size(), -1)
    {
    }

    // Goes through the files for which there is no answer yet.
    void Find(bool bSameName)
    {
        std::map<tKey, std::vector<long>> aMissing; // the last of them is taken first
        for (std::size_t n = m_aMissing.size(); n-- > 0 && !m_bStop;)
        {
            const sFileRecord& oFile = m_aMissing[n];
            if (!m_abFound[n])
                aMissing[KeyOf(oFile.ullSize, oFile.dwCrc, oFile.GetSha256(), oFile.szPath, bSameName)].push_back(
                    static_cast<long>(n));
        }
        for (std::size_t n = 0; n < m_aNew.size() && !m_bStop; ++n)
        {
            const sChecksum& oRead = *m_aNew[n].pResult;
            if (m_alOrigins[n] >= 0 || !oRead.IsWhole(*m_aNew[n].pRecord) || (!bSameName && oRead.ullSize == 0))
                continue;
            const auto pSame = aMissing.find(
                KeyOf(oRead.ullSize, oRead.dwCrc, oRead.oSha256.Get(), m_aNew[n].pRecord->szPath, bSameName));
            if (pSame == aMissing.end() || pSame->second.empty())
                continue;
            m_alOrigins[n] = pSame->second.back();
            m_abFound[static_cast<std::size_t>(m_alOrigins[n])] = true;
            pSame->second.pop_back();
        }
    }

    const std::vector<long>& GetOrigins() const { return m_alOrigins; }

private:
    const std::vector<sFileRecord>& m_aMissing;
    const std::vector<sNewFile>& m_aNew;
    const std::atomic<bool>& m_bStop;
    std::vector<bool> m_abFound; // of the missing files
    std::vector<long> m_alOrigins;
};
} // namespace

std::vector<long> FindMoved(const std::vector<sFileRecord>& aMissing, const std::vector<sNewFile>& aNew,
                            const std::atomic<bool>& bStop)
{
    CMoves oMoves(aMissing, aNew, bStop);
    oMoves.Find(true);
    oMoves.Find(false);
    ThrowIfInterrupted(bStop);
    return oMoves.GetOrigins();
}
