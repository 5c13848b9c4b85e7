#include "benchmarks/HeapBytes.h"

#include <windows.h>

#include <vector>

long long heapBytes() {
    std::vector<HANDLE> heaps(64);
    heaps.resize(::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    long long bytes = 0;
    for (HANDLE heap : heaps) {
        PROCESS_HEAP_ENTRY entry{};
        ::HeapLock(heap);
        while (::HeapWalk(heap, &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
        ::HeapUnlock(heap);
    }
    return bytes;
}
