# What `cmake --install` lays out, and the packages that cpack makes of it.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zqUi)
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/zqui)
set(libraries zqUi zqengine rkdll)
set(programs zqfx)
if(NOT WIN32)
  list(APPEND libraries zqbase zqwin)
  list(APPEND programs zqhost)
else()
  list(APPEND programs minimal)
endif()

# Everything but the tests.
add_custom_target(zq_products DEPENDS ${libraries} ${programs} zq_record_tables)
if(NOT WIN32)
  add_dependencies(zq_products minimal)
endif()
# What has been built is installed and packed; it is not built for that.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# The names that a host links: zqUi::zqUi, zqUi::engine, zqUi::memory. The others stand behind them.
set_target_properties(zqengine PROPERTIES EXPORT_NAME engine)
set_target_properties(rkdll PROPERTIES EXPORT_NAME imaging)
if(NOT WIN32)
  set_target_properties(zqbase PROPERTIES EXPORT_NAME memory)
  set_target_properties(zqwin PROPERTIES EXPORT_NAME windows)

  # Programs and libraries find each other wherever the whole is moved.
  file(RELATIVE_PATH bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(${libraries} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0
                                                INSTALL_RPATH "$ORIGIN")
  set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  file(RELATIVE_PATH bin_to_data ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATAROOTDIR})
  target_compile_definitions(zqhost PRIVATE ZQ_INSTALLED_SAMPLES="${bin_to_data}/zqui/samples")
endif()

install(
  TARGETS ${libraries}
  EXPORT zqUiTargets
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS ${programs})
install(DIRECTORY include/zq TYPE INCLUDE)
install(EXPORT zqUiTargets NAMESPACE zqUi:: DESTINATION ${package_dir})
configure_package_config_file(cmake/zqUiConfig.cmake.in zqUiConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(zqUiConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zqUiConfig.cmake ${PROJECT_BINARY_DIR}/zqUiConfigVersion.cmake
        DESTINATION ${package_dir})

if(WIN32)
  install(FILES library/zqUi.def library/zqengine.def TYPE LIB)
  install(FILES LICENSE docs/host-guide.md host/minimal.c DESTINATION .)
else()
  file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  foreach(module zqui zqui-engine)
    configure_file(cmake/${module}.pc.in ${module}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  endforeach()
  install(FILES docs/zqfx.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(
    FILES tools/zqfx.bash
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions
    RENAME zqfx)
  install(DIRECTORY host/samples DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/zqui)
  install(FILES LICENSE DESTINATION ${doc_dir} RENAME copyright)
  install(FILES docs/host-guide.md DESTINATION ${doc_dir})
  install(FILES host/minimal.c DESTINATION ${doc_dir}/examples)
endif()

set(CPACK_PACKAGE_NAME zqui)
set(CPACK_PACKAGE_VENDOR "The zqUi developers")
set(CPACK_PACKAGE_CONTACT "The zqUi developers <zqui@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Image-effect dialogs for image editors")
set(CPACK_PACKAGE_DESCRIPTION
    "A library that gives an image editor its image-effect dialogs with live previews, the engine of
45 effects behind them, zqfx, the engine on the command line, and zqhost, a small image editor.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_SYSTEM_NAME win32)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  # The dialogs are laid out in its letters.
  set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-liberation)
endif()
include(CPack)
