# Builds everything (plug-in, host, tests) with AddressSanitizer and
# UndefinedBehaviorSanitizer, with g++ or clang++. The plug-in is a module that
# the host loads: it shares the host's sanitizer runtime, so clang links the
# shared runtime everywhere (the module is linked with --no-undefined), as g++ does.
# ZELVANE_FUZZ adds libFuzzer's coverage to every object; the fuzz targets
# alone link libFuzzer itself (tests/fuzz).
option(ZELVANE_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(ZELVANE_FUZZ "Build the libFuzzer targets (clang only; implies the sanitizers)" OFF)

set(ZELVANE_SANITIZER_COMPILE_FLAGS "")
set(ZELVANE_SANITIZER_LINK_FLAGS "")
if(NOT (ZELVANE_SANITIZE OR ZELVANE_FUZZ))
  return()
endif()

set(sanitizers "-fsanitize=address,undefined")
if(ZELVANE_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "ZELVANE_FUZZ needs clang: configure with CXX=clang++")
  endif()
  set(sanitizers "-fsanitize=fuzzer-no-link,address,undefined")
endif()
# An undefined behaviour stops the program, as a memory error does.
set(ZELVANE_SANITIZER_COMPILE_FLAGS ${sanitizers} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
set(ZELVANE_SANITIZER_LINK_FLAGS ${sanitizers} -fno-sanitize-recover=undefined)
# libFuzzer brings the C++ library in ahead of a shared runtime, which the
# runtime refuses: fuzz builds link it statically into each fuzz target, and
# the plug-in module they build takes it from the fuzz target that loads it.
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND NOT ZELVANE_FUZZ)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libclang_rt.asan-x86_64.so
                  OUTPUT_VARIABLE asan_runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(asan_runtime_dir "${asan_runtime}" DIRECTORY)
  list(APPEND ZELVANE_SANITIZER_LINK_FLAGS -shared-libsan "-Wl,-rpath,${asan_runtime_dir}")
endif()
# Sanitizer builds are for finding faults, not for measuring: -O1 and line
# tables are what the sanitizers' reports need, and they build a third faster
# than -O2 with full debug information.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -DNDEBUG")
add_compile_options(${ZELVANE_SANITIZER_COMPILE_FLAGS})
add_link_options(${ZELVANE_SANITIZER_LINK_FLAGS})

# The runtime options every program of this build starts with.
add_library(zelvane_sanitizer_options OBJECT ${CMAKE_CURRENT_LIST_DIR}/sanitizer_options.cpp)
set_target_properties(zelvane_sanitizer_options PROPERTIES AUTOMOC OFF)
link_libraries("$<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:zelvane_sanitizer_options>")
