# What is installed, and how it is packaged. Everything is relocatable: nothing that is installed names the prefix.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/QuenzoConf)

foreach(library quenzo-foundation quenzo-conf)
  install(
    TARGETS ${library}
    EXPORT QuenzoConfTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quenzo COMPONENT dev
    FILE_SET rows DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quenzo COMPONENT dev)
endforeach()

# Loaded by the library when it needs it: nobody links it.
if(BUILD_SHARED_LIBS)
  install(TARGETS quenzo-conf-log LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_SKIP)
endif()

install(EXPORT QuenzoConfTargets NAMESPACE Quenzo:: DESTINATION ${package_folder} COMPONENT dev)
configure_package_config_file(cmake/QuenzoConfConfig.cmake.in ${PROJECT_BINARY_DIR}/QuenzoConfConfig.cmake
                              INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO
                              NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuenzoConfConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuenzoConfConfig.cmake ${PROJECT_BINARY_DIR}/QuenzoConfConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT dev)

# From the folder of the .pc file to the prefix.
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig ${prefix_from_pkgconfig})
foreach(library quenzo-foundation quenzo-conf)
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endforeach()

install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libquenzo-conf-dev/docs COMPONENT dev
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.json")
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libquenzo-conf-dev/examples COMPONENT dev
        FILES_MATCHING PATTERN "*.cpp")

if(QUENZO_BUILD_TOOLS)
  set_target_properties(quenzo-conf-program PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS quenzo-conf-program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  find_program(QUENZO_GZIP gzip REQUIRED DOC "Compresses the manual page")
  set(manual ${PROJECT_BINARY_DIR}/quenzo-conf.1.gz)
  execute_process(COMMAND ${QUENZO_GZIP} -9nc ${PROJECT_SOURCE_DIR}/tools/manual/quenzo-conf.1 OUTPUT_FILE ${manual})
  install(FILES ${manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES tools/completion/quenzo-conf DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          COMPONENT tools)
  install(FILES tools/completion/_quenzo-conf DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
          COMPONENT tools)
  install(DIRECTORY examples/presets DESTINATION ${CMAKE_INSTALL_DATADIR}/quenzo-conf COMPONENT tools)
endif()

if(PROJECT_IS_TOP_LEVEL)
  include(QuenzoPackages)
endif()
