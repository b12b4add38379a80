# zq_vector: Highway, which compiles the engine's vector code for several instruction sets and
# chooses one at run time.
add_library(zq_vector INTERFACE)
# Code for two steps above the baseline is enough: AVX2 and AVX-512 (where a file asks for it, with
# the byte permutations of newer processors). Their libraries need no code of their own.
target_compile_definitions(zq_vector INTERFACE "HWY_DISABLED_TARGETS=(HWY_SSSE3|HWY_SSE4)")
# Clang's plain baseline is the same as the other compiler's.
target_compile_definitions(zq_vector INTERFACE $<$<CXX_COMPILER_ID:Clang>:HWY_BROKEN_EMU128=1>)
if(WIN32)
  # One instruction set, chosen when compiling: nothing but headers.
  target_compile_definitions(zq_vector INTERFACE HWY_COMPILE_ONLY_STATIC)
else()
  find_package(hwy REQUIRED)
  target_link_libraries(zq_vector INTERFACE hwy::hwy)
endif()
