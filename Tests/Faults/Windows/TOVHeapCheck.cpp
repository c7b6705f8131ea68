#include "Faults/Windows/TOVHeapCheck.h"

#include <algorithm>
#include <vector>
#include <windows.h>

bool AreHeapsWhole()
{
    std::vector<HANDLE> ahHeaps(GetProcessHeaps(0, nullptr));
    const DWORD dwHeaps = GetProcessHeaps(static_cast<DWORD>(ahHeaps.size()), ahHeaps.data());
    ahHeaps.resize(std::min<std::size_t>(ahHeaps.size(), dwHeaps));
    const auto fnIsWhole = [](HANDLE hHeap) { return HeapValidate(hHeap, 0, nullptr) != FALSE; };
    return !ahHeaps.empty() && fnIsWhole(GetProcessHeap()) && std::all_of(ahHeaps.begin(), ahHeaps.end(), fnIsWhole);
}
