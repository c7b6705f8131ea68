#include "TextStore.h"

#include <algorithm>

namespace
{
// The rest of a block is lost if the next text does not fit, so that a block is much larger than most texts.
constexpr std::size_t BLOCK_SIZE = std::size_t(64) * 1024;
} // namespace

const char* CTextStore::Add(std::string_view sText)
{
    const std::size_t nSize = sText.size() + 1;
    if (m_nFree < nSize)
    {
        const std::size_t nBlock = std::max(nSize, BLOCK_SIZE);
        m_aBlocks.push_back(std::unique_ptr<char[]>(new char[nBlock]));
        m_pFree = m_aBlocks.back().get();
        m_nFree = nBlock;
    }
    char* const szText = m_pFree;
    sText.copy(szText, sText.size());
    szText[sText.size()] = '\0';
    m_pFree += nSize;
    m_nFree -= nSize;
    return szText;
}
