#include "window/process_holdings.h"

#include <algorithm>
#include <stdexcept>
#include <vector>
// after windows.h
#include <winternl.h>
#include <psapi.h>

#include "win32/unique_handle.h"

namespace declarium::window_driver {
namespace {

// The table of GDI objects, to which the process's environment block points.
struct GdiEntry {
  unsigned long long object;
  unsigned long owner;
  unsigned short unique;
  unsigned short type;  // 0: free
  unsigned long long user_pointer;
};
constexpr std::size_t kGdiEntries = 0x4000;
constexpr std::size_t kGdiTableInBlock = sizeof(void*) == 8 ? 0xF8 : 0x94;

using QueryProcess = LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*);

const char* EnvironmentBlock(HANDLE process) {
  const auto function = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess");
  const auto query = reinterpret_cast<QueryProcess>(reinterpret_cast<void (*)()>(function));
  PROCESS_BASIC_INFORMATION information{};
  query(process, 0, &information, sizeof information, nullptr);
  return reinterpret_cast<const char*>(information.PebBaseAddress);
}

long long GdiObjectsNow(HANDLE process) {
  const void* table = nullptr;
  std::vector<GdiEntry> entries(kGdiEntries);
  if (!ReadProcessMemory(process, EnvironmentBlock(process) + kGdiTableInBlock, &table,
                         sizeof table, nullptr) ||
      !ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof entries[0],
                         nullptr)) {
    throw std::runtime_error("the GDI objects cannot be counted");
  }
  return std::ranges::count_if(entries, [](const GdiEntry& entry) { return entry.type != 0; });
}

// Painting takes objects for a moment, so the fewest of several looks is what the process keeps.
long long GdiObjects(HANDLE process) {
  long long fewest = GdiObjectsNow(process);
  for (int look = 0; look < 20; ++look) {
    Sleep(10);
    fewest = std::min(fewest, GdiObjectsNow(process));
  }
  return fewest;
}

// All processes share one table of limited size: what it lacks for further menus is in use.
long long UserHandles() {
  constexpr long long kSize = 0x8000;
  std::vector<HMENU> menus;
  while (const HMENU menu = CreateMenu()) menus.push_back(menu);
  for (const HMENU menu : menus) DestroyMenu(menu);
  return kSize - std::ssize(menus);
}

long long Memory(HANDLE process) {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(process, &counters, sizeof counters);
  return static_cast<long long>(counters.PagefileUsage / 1024);
}

}  // namespace

Holdings HoldingsOf(DWORD id) {
  const win32::UniqueKernelObject process(
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id));
  if (!process) throw std::runtime_error("the process cannot be looked into");
  return {GdiObjects(process.Get()), UserHandles(), Memory(process.Get())};
}

}  // namespace declarium::window_driver
