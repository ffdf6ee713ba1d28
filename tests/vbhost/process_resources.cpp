#include "vbhost/process_resources.h"

#include <algorithm>
#include <vector>
#include <windows.h>
#include <psapi.h>

#include "win32/unique_handle.h"

namespace declarium::vbhost {
namespace {

// Wine answers GetProcessHandleCount with 0; the list of all handles it does know.
struct HandleEntry {
  void* object;
  ULONG_PTR process;
  ULONG_PTR handle;
  ULONG access;
  USHORT trace;
  USHORT type;
  ULONG attributes;
  ULONG reserved;
};
struct HandleList {
  ULONG_PTR count;
  ULONG_PTR reserved;
  HandleEntry entries[1];
};
constexpr int kExtendedHandleInformation = 64;
constexpr LONG kLengthMismatch = static_cast<LONG>(0xC0000004);

using QuerySystemInformation = LONG(WINAPI*)(int, void*, ULONG, ULONG*);

QuerySystemInformation Query() {
  const auto function = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation");
  return reinterpret_cast<QuerySystemInformation>(reinterpret_cast<void (*)()>(function));
}

}  // namespace

long long HandleCountOf(DWORD process) {
  const auto query = Query();
  std::vector<ULONG_PTR> buffer(1 << 16);
  LONG status = kLengthMismatch;
  while (query && status == kLengthMismatch && buffer.size() < (1u << 24)) {
    ULONG needed = 0;
    status = query(kExtendedHandleInformation, buffer.data(),
                   static_cast<ULONG>(buffer.size() * sizeof buffer[0]), &needed);
    if (status == kLengthMismatch) buffer.resize(buffer.size() * 2);
  }
  if (status != 0) return -1;
  const auto* list = reinterpret_cast<const HandleList*>(buffer.data());
  return std::count_if(list->entries, list->entries + list->count,
                       [process](const HandleEntry& entry) { return entry.process == process; });
}

long long MemoryOf(DWORD process) {
  const win32::UniqueKernelObject opened(
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(opened.Get(), &counters, sizeof counters);
  return static_cast<long long>(counters.PagefileUsage);
}

}  // namespace declarium::vbhost
