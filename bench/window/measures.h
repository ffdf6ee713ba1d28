// The measurements, each of which adds its rows to the table. `folder` is where its files go.
#pragma once

#include <filesystem>

#include "bench/window/bars_table.h"

namespace declarium::bench {

// From the start of the process to its window.
void MeasureStart(const std::filesystem::path& folder, int rounds, BarsTable& table);
// Lists of 30 000 names: the first switch to their kind, a keystroke of type-ahead, the find box.
void MeasureLists(const std::filesystem::path& folder, int rounds, BarsTable& table);
// The search dialog over 100 000 items beside the engine in this process.
void MeasureSearch(const std::filesystem::path& folder, int rounds, BarsTable& table);
// What a long day of use leaves behind.
void MeasureGrowth(const std::filesystem::path& folder, BarsTable& table);

}  // namespace declarium::bench
