#include "bench/window/measures.h"
namespace declarium::bench {
void MeasureGrowth(const std::filesystem::path&, BarsTable&) {}
}  // namespace declarium::bench
