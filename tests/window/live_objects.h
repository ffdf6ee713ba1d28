// Counts what `new` gives: a program with live_objects.cpp has the operators of that file.
#pragma once

namespace declarium::window_driver {

// How many blocks taken with `new` were not given back, of the whole process.
[[nodiscard]] long long LiveObjects();

}  // namespace declarium::window_driver
