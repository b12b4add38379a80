# What only the DLLs and programs for Windows need.

# The floating-point registers of the processors that follow the standard. Callers may come with a
# stack that is aligned to 4 bytes only.
target_compile_options(zq_build_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
# Nothing but the system's own DLLs is needed where a program or a DLL goes.
target_link_options(zq_build_flags INTERFACE -static)
target_compile_definitions(zq_build_flags INTERFACE _WIN32_WINNT=0x0601)

# Highway has headers only here. They are shown to the cross compiler in a folder of their own, for
# the system's other headers are not for it.
find_path(ZQ_HIGHWAY_HEADERS hwy/highway.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/highway)
file(CREATE_LINK ${ZQ_HIGHWAY_HEADERS}/hwy ${PROJECT_BINARY_DIR}/highway/hwy SYMBOLIC)
target_include_directories(zq_vector SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/highway)

# The test library comes as sources, for this compiler, too.
function(zq_build_googletest)
  set(sources /usr/src/googletest/googletest)
  add_library(gtest STATIC ${sources}/src/gtest-all.cc)
  add_library(gtest_main STATIC ${sources}/src/gtest_main.cc)
  add_library(GTest::gtest ALIAS gtest)
  add_library(GTest::gtest_main ALIAS gtest_main)
  target_include_directories(gtest SYSTEM PUBLIC ${sources}/include PRIVATE ${sources})
  target_compile_options(gtest PUBLIC -msse2 -mfpmath=sse -mstackrealign PRIVATE -O1)
  target_link_libraries(gtest_main PUBLIC gtest)
endfunction()
