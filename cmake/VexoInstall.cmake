# cmake --install gives headers, libraries, the console and a package for find_package(VEXOTools10).
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VEXOTools10ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/VEXOTools10Config.cmake.in
  ${PROJECT_BINARY_DIR}/VEXOTools10Config.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VEXOTools10)
install(FILES ${PROJECT_BINARY_DIR}/VEXOTools10Config.cmake ${PROJECT_BINARY_DIR}/VEXOTools10ConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/moduleexports.map
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VEXOTools10)
install(EXPORT VEXOTools10Targets NAMESPACE VEXOTools10:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VEXOTools10)
