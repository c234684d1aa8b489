# Debian packages, split as Debian does: the libraries, what it takes to build with them, and the program.
#
#   cmake -S . -B build/package -DCMAKE_INSTALL_PREFIX=/usr ... && cmake --build build/package && (cd build/package && cpack)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quenzo-conf)
set(CPACK_PACKAGE_VENDOR "Quenzo")
set(CPACK_PACKAGE_CONTACT "Quenzo developers <developers@quenzo.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "media configuration library")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev tools)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/foundation ${PROJECT_BINARY_DIR}/Conf/Interfaces)

set(runtime_package libquenzo-conf${PROJECT_VERSION_MAJOR})
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(about
    "One vocabulary for containers, codecs, streams, pixel and sample formats,
channel layouts, colour and frame geometry; descriptions of media files and
streams; and the graph in which a conversion job is described.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${about}\n.\nThis package has the shared libraries.")
# What dpkg-shlibdeps and ldconfig need to know.
file(WRITE ${PROJECT_BINARY_DIR}/package/shlibs
     "libquenzo-conf ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n"
     "libquenzo-conf-log ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n"
     "libquenzo-foundation ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${PROJECT_BINARY_DIR}/package/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/package/shlibs
                                               ${PROJECT_BINARY_DIR}/package/triggers)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libquenzo-conf-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "${runtime_package} ${same_version}, libboost1.81-dev, rapidjson-dev, libgoogle-glog-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION "${about}\n.\nThis package has what it takes to build programs with the library.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME quenzo-conf-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION video)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_package} ${same_version}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS graphviz)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS ffmpeg)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "${about}\n.\nThis package has the command-line program and presets.")

# Every Debian package has its changelogs and its copyright under its own name.
find_program(QUENZO_GZIP gzip REQUIRED)
execute_process(COMMAND ${QUENZO_GZIP} -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/package/changelog.gz)
execute_process(COMMAND ${QUENZO_GZIP} -9nc ${PROJECT_SOURCE_DIR}/cmake/changelog.Debian
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/package/changelog.Debian.gz)
foreach(component runtime dev tools)
  string(TOUPPER ${component} upper)
  # Only packages have these: an installation by hand has no package whose name they could stand under.
  install(FILES cmake/copyright ${PROJECT_BINARY_DIR}/package/changelog.gz ${PROJECT_BINARY_DIR}/package/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME} COMPONENT ${component}
          EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
