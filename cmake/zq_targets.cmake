# What every target of the project has in common.

add_library(zq_build_flags INTERFACE)
target_include_directories(zq_build_flags INTERFACE ${PROJECT_SOURCE_DIR}
                                                    ${PROJECT_SOURCE_DIR}/include)
target_compile_options(
  zq_build_flags
  INTERFACE -Wall -Wextra -Werror -Wconversion)
# In C++ the other compiler leaves signs out of it.
target_compile_options(zq_build_flags INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)
# Floating-point results are part of the kernels' behaviour: no fused operations.
target_compile_options(zq_build_flags INTERFACE -ffp-contract=off)
# Compiler caches must see what a precompiled header stands for.
target_compile_options(zq_build_flags INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>)
if(ZQ_SANITIZE)
  target_compile_options(
    zq_build_flags INTERFACE -fsanitize=${ZQ_SANITIZE} -fno-sanitize-recover=all
                             -fno-omit-frame-pointer -g1) # lines for the reports
  target_link_options(zq_build_flags INTERFACE -fsanitize=${ZQ_SANITIZE})
endif()
if(ZQ_FUZZ)
  target_compile_options(zq_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zq_layer(NAME SOURCES ... DEPENDS ...): one layer of the system, a static library.
function(zq_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC zq_build_flags ${ARG_DEPENDS})
endfunction()

# zq_exports(TARGET MAP DEF): a shared library shows what a version script lists, on Windows a .def
# file, and nothing else. Windows' names go without the mark of the calling convention.
function(zq_exports target map def)
  if(WIN32)
    target_sources(${target} PRIVATE ${def})
    set_target_properties(${target} PROPERTIES PREFIX "")
    target_link_options(${target} PRIVATE -Wl,--kill-at)
    # The linker's own import library has the names without their marks, which no caller asks for.
    cmake_path(ABSOLUTE_PATH def)
    add_custom_command(
      TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_DLLTOOL} --kill-at -d ${def} -D $<TARGET_FILE_NAME:${target}> -l
              $<TARGET_LINKER_FILE:${target}>
      VERBATIM)
  else()
    cmake_path(ABSOLUTE_PATH map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map} -Wl,--no-undefined)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
  endif()
endfunction()

# zq_test(NAME SOURCES ... DEPENDS ...): one test program; its cases become tests of their own.
function(zq_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} zq_test_flags)
  target_precompile_headers(${name} REUSE_FROM zq_test_header)
  if(WIN32)
    # A program at a time: each start of the emulator takes a while.
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    return()
  endif()
  gtest_discover_tests(
    ${name}
    DISCOVERY_MODE PRE_TEST
    # A list of two values would come apart on its way to the tests.
    PROPERTIES
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
      ENVIRONMENT_MODIFICATION
      "LSAN_OPTIONS=set:suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp:print_suppressions=0")
endfunction()
