// Declares CTextStore, which holds very many texts in little memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

// The texts stand one after the other in large blocks, each with a zero after it. A text takes no other memory, and
// stays where it is as long as the store exists, so that whoever needs it can keep its address.
class CTextStore
{
public:
    CTextStore() = default;
    CTextStore(const CTextStore&) = delete;
    CTextStore& operator=(const CTextStore&) = delete;

    // Returns the copy in the store.
    const char* Add(std::string_view sText);

private:
    std::vector<std::unique_ptr<char[]>> m_aBlocks;
    char* m_pFree = nullptr; // in the last block
    std::size_t m_nFree = 0;
};
