#include "contract/process_usage.h"

#include <windows.h>

#include <vector>

namespace karvel {
namespace {

constexpr std::uintptr_t kHandleStep = 4;
constexpr std::uintptr_t kHighestHandle = 0x10000;

/// What is allocated on a heap.
std::size_t allocated(HANDLE heap) {
  std::size_t bytes = 0;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  while (HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return bytes;
}

}  // namespace

/// Counted here: not every system answers GetProcessHandleCount() and GetProcessMemoryInfo().
ProcessUsage ProcessUsage::now() {
  ProcessUsage usage;
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  for (HANDLE heap : heaps) usage.bytes += allocated(heap);
  for (auto value = kHandleStep; value < kHighestHandle; value += kHandleStep) {
    DWORD flags = 0;
    const auto handle = reinterpret_cast<HANDLE>(value);
    usage.handles += GetHandleInformation(handle, &flags) != FALSE ? 1 : 0;
  }
  return usage;
}

}  // namespace karvel
