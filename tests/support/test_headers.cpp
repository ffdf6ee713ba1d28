// The precompiled headers of the tests belong to this file's target (tests/support/CMakeLists.txt).
