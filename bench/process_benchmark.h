// Benchmarks of whole processes: the command-line tool and the tools it is measured against.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/benchmark_files.h"

namespace declarium::bench {

// Registers them; `tool` is the command-line tool's program file.
void RegisterProcessBenchmarks(const BenchmarkFiles& files, const std::filesystem::path& tool);

}  // namespace declarium::bench
