// Benchmarks of whole processes: the command-line tool and the tools it is measured against.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/benchmark_files.h"

namespace declarium::bench {

// From this many items on a process takes long enough for starting it not to be most of it.
inline constexpr std::size_t kProcessItems = 100'000;

// Those of a project of `lines` lines and the libraries of the folder `data`: the processor time of
// the processes, which other programs disturb less than the time that passes.
void RegisterProjectBenchmarks(const BenchmarkFiles& files, const std::filesystem::path& tool,
                               const std::filesystem::path& data, std::size_t lines);

// Registers them for files of `size` items; `tool` is the command-line tool's program file.
void RegisterProcessBenchmarks(const BenchmarkFiles& files, const std::filesystem::path& tool,
                               std::size_t size);

}  // namespace declarium::bench
