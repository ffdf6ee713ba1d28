# mingw-w64 with the posix-threads runtime (std::mutex and friends), win32.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)  # GoogleTest's project names C
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Every processor that runs the Windows versions we support has SSE2; GCC realigns the stack for it.
# A cold part that turns out empty leaves an entry of no length in the unwind table, at the address of
# the next function's cold part. The search for a frame may stop there, and then an exception ends the
# program instead of reaching its handler: no function is split.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -fno-reorder-blocks-and-partition")
