# What lands on a machine: libraries, headers, find_package and pkg-config files. Programs, assets and manual pages
# install from their own folders.
include(CMakePackageConfigHelpers)

install(TARGETS OstrelGui Ostrel EXPORT OstrelTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT OstrelTargets NAMESPACE Ostrel:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Ostrel)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OstrelConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cmake/OstrelConfig.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Ostrel)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/OstrelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/cmake/OstrelConfig.cmake ${PROJECT_BINARY_DIR}/cmake/OstrelConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Ostrel)

# The file finds its prefix from its own place, so that a prefix can be moved: one step up for each folder it lies in.
string(REGEX REPLACE "[^/]+" ".." pc_up ${CMAKE_INSTALL_LIBDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/ostrel.pc.in ${PROJECT_BINARY_DIR}/cmake/ostrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/ostrel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

get_property(public_headers GLOBAL PROPERTY OSTREL_PUBLIC_HEADERS)
foreach(header ${public_headers})
  get_filename_component(folder ${header} DIRECTORY)
  string(REGEX REPLACE "^include$" "" folder ${folder})
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ostrel/${folder})
endforeach()
