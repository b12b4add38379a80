# windres compiles resource scripts on every platform.
find_program(ZQ_WINDRES NAMES i686-w64-mingw32-windres x86_64-w64-mingw32-windres windres REQUIRED)

# zq_resource_file(SCRIPT OUTPUT DEPENDS ...): a script compiled to a .res file, or to an object
# file for the linker where OUTPUT ends in .o.
function(zq_resource_file script output)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  cmake_path(GET output EXTENSION LAST_ONLY extension)
  cmake_path(GET script PARENT_PATH folder)
  # The build's own preprocessor: the one that windres looks for comes with a compiler for Windows.
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${ZQ_WINDRES} --preprocessor=${CMAKE_C_COMPILER} --preprocessor-arg=-E
            --preprocessor-arg=-xc --preprocessor-arg=-DRC_INVOKED
            -O $<IF:$<STREQUAL:${extension},.o>,coff,res> -I ${folder} -i ${script} -o ${output}
    DEPENDS ${script} ${ARG_DEPENDS}
    VERBATIM)
endfunction()

# zq_resource_library(NAME SCRIPT SOURCES ... DEPENDS ...): for Windows, a library whose users get
# the resources of a script.
function(zq_resource_library name script)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.o)
  zq_resource_file(${script} ${object} DEPENDS ${ARG_DEPENDS})
  add_custom_target(${name}_object DEPENDS ${object})
  add_library(${name} STATIC ${ARG_SOURCES})
  add_dependencies(${name} ${name}_object)
  target_link_libraries(${name} PUBLIC zq_build_flags INTERFACE ${object})
endfunction()

# zq_version_block(TARGET DESCRIPTION): what a DLL for Windows says of itself.
function(zq_version_block target description)
  get_target_property(ZQ_FILE ${target} OUTPUT_NAME)
  set(ZQ_DESCRIPTION ${description})
  string(REPLACE . , ZQ_NUMBERS ${PROJECT_VERSION})
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${PROJECT_SOURCE_DIR}/resources/version.rc.in ${script} @ONLY)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.o)
  zq_resource_file(${script} ${object})
  target_sources(${target} PRIVATE ${object})
endfunction()
