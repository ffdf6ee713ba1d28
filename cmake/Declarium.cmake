# Compile options and the functions that declare the project's libraries, programs and tests.

add_library(declarium_options INTERFACE)
target_compile_options(declarium_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-qual -Werror
  # GCC 12 reports overlapping copies inside std::string that cannot happen.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # GCC 12's own std::stable_sort calls a function that it declares deprecated.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-deprecated-declarations>)
target_include_directories(declarium_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(DECLARIUM_SANITIZERS)
  target_compile_options(declarium_options INTERFACE
    -fsanitize=${DECLARIUM_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=undefined
    # With the sanitizers' checks between, GCC loses track of what the library initializes.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(declarium_options INTERFACE -fsanitize=${DECLARIUM_SANITIZERS})
endif()
if(WIN32)
  target_compile_definitions(declarium_options INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    # Windows 7 is the oldest that the programs run on.
    _WIN32_WINNT=0x0601)
  # One file, nothing to install beside it.
  target_link_options(declarium_options INTERFACE -static)
endif()
# The programs are the same bytes in every folder. All builds say so, since then the compiler cache gives
# a package the objects that were tested.
target_compile_options(declarium_options INTERFACE -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
if(DECLARIUM_SHIPPED)
  target_link_options(declarium_options INTERFACE
    -s $<$<PLATFORM_ID:Windows>:-Wl,--no-insert-timestamp>)
endif()

# declarium_library(NAME SOURCES ... [LINKS ...]): one layer's static library.
function(declarium_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC declarium_options ${ARG_LINKS})
endfunction()

# declarium_version_resource(TARGET DESCRIPTION): what Windows shows of the program's file.
function(declarium_version_resource target DECLARIUM_FILE_DESCRIPTION)
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL "EXECUTABLE")
    set(DECLARIUM_FILE_NAME ${target})
    set(DECLARIUM_FILE_ENDING ".exe")
    set(DECLARIUM_FILE_TYPE VFT_APP)
  else()
    get_target_property(DECLARIUM_FILE_NAME ${target} OUTPUT_NAME)
    set(DECLARIUM_FILE_ENDING ".dll")
    set(DECLARIUM_FILE_TYPE VFT_DLL)
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

# declarium_test(NAME SOURCES ... LINKS ... [TIMEOUT seconds]): one GoogleTest program, one CTest
# entry. Under a cross build it runs through CMAKE_CROSSCOMPILING_EMULATOR.
function(declarium_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE declarium_options ${ARG_LINKS} GTest::gmock_main)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_precompile_headers(${name} REUSE_FROM declarium_test_headers)
  add_test(NAME ${name} COMMAND ${name})
  # Those that may take long begin first, so that none is left to run alone at the end. The user's
  # own history is no place for what tests replace.
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT} COST ${ARG_TIMEOUT}
                       ENVIRONMENT "DECLARIUM_HISTORY=none")
  foreach(source ${ARG_SOURCES})
    get_filename_component(path ${source} ABSOLUTE)
    set_property(GLOBAL APPEND PROPERTY DECLARIUM_TEST_SOURCES ${path})
    # Only where it is used, so that the other objects are the same in every checkout and come from
    # the compiler cache.
    file(STRINGS ${path} uses REGEX "DECLARIUM_SOURCE_DIR" LIMIT_COUNT 1)
    if(uses)
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS
        DECLARIUM_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    endif()
  endforeach()
endfunction()

# Stops the configuration when a *_test.cpp below tests/ belongs to no declared test. Files that
# another platform's build compiles are named with declarium_test_elsewhere.
function(declarium_test_elsewhere)
  foreach(source ${ARGN})
    get_filename_component(path ${source} ABSOLUTE)
    set_property(GLOBAL APPEND PROPERTY DECLARIUM_TEST_SOURCES ${path})
  endforeach()
endfunction()

function(declarium_require_all_tests_declared)
  get_property(declared GLOBAL PROPERTY DECLARIUM_TEST_SOURCES)
  file(GLOB_RECURSE on_disk CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/*_test.cpp)
  foreach(path ${on_disk})
    if(NOT path IN_LIST declared)
      message(FATAL_ERROR "${path} is in no test target")
    endif()
  endforeach()
endfunction()
