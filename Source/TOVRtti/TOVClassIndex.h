// Declares CTOVClassIndex, which finds the classes of the process's server by name in constant time.
#pragma once

#include <cstddef>
#include <cstdint>

class CTOVClass;

// A hash table with open addressing and linear probing, at most half full. It stands beside the server's ordered map
// and may lack entries of it, since there may be no memory for them: who finds nothing here searches the map. It has no
// entry that the map lacks. It does not own the names, which are the keys of the map: remove an entry before its key
// goes. It needs no construction, and has no memory when it is empty. It has no lock; look-ups change nothing.
//
//   operation      cost                          when an allocation throws
//   Find           constant                      -
//   Set            constant on average           the entry is missing
//   Remove         constant; linear if the text  -
//                  of the name has changed
class CTOVClassIndex
{
public:
    // Returns the class of this name, or null. A name ends at its first 0.
    CTOVClass* Find(const char* szName) const;

    // Adds a name, or changes its class. The text must live as long as the entry.
    void Set(const char* szName, CTOVClass* pClass);

    // Removes the entry that was added with this very text, if there is one.
    void Remove(const char* szName);
    void RemoveAll();

private:
    struct sSlot
    {
        const char* szName; // null: the slot is free
        CTOVClass* pClass;
        std::uint32_t nHash;
        std::uint32_t nLength;
    };

    // Returns free slots, or null if there is no memory for them.
    static sSlot* NewSlots(std::size_t nNumSlots);
    void FreeSlots();

    // Returns the slot of a name, or the free slot where it belongs. There must be slots.
    std::size_t FindSlot(const char* szName, std::size_t nLength, std::uint32_t nHash) const;
    std::size_t GetNextSlot(std::size_t nSlot) const { return (nSlot + 1) & (m_nNumSlots - 1); }
    bool Grow();
    void RemoveSlot(std::size_t nSlot);

    sSlot* m_pSlots;
    std::size_t m_nNumSlots; // 0, or a power of 2
    std::size_t m_nNumEntries;
};
