# cmake --install: headers, library, program, a CMake package (find_package(vela) gives vela::vela), a pkg-config file.
include(CMakePackageConfigHelpers)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/vela")

install(TARGETS vela EXPORT velaTargets ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
foreach(room IN ITEMS runtime engine)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${room}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vela"
        FILES_MATCHING PATTERN "*.h")
endforeach()
if(TARGET veladb_plugin)
    install(TARGETS veladb_plugin LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
    install(FILES "${PROJECT_SOURCE_DIR}/plugin/MOXAPlugin.h" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vela/plugin")
endif()
if(TARGET veladb)
    install(TARGETS veladb RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

install(EXPORT velaTargets NAMESPACE vela:: DESTINATION "${packageFolder}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/velaConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/velaConfig.cmake" INSTALL_DESTINATION "${packageFolder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/velaConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/velaConfig.cmake" "${PROJECT_BINARY_DIR}/velaConfigVersion.cmake"
    DESTINATION "${packageFolder}")

# The pkg-config file finds its neighbours from its own place, so that an installed tree can be moved.
file(RELATIVE_PATH pcToInclude "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
list(TRANSFORM VELA_PLATFORM_DEFINITIONS PREPEND "-D" OUTPUT_VARIABLE pcDefinitions)
list(JOIN pcDefinitions " " pcDefinitions)
configure_file("${PROJECT_SOURCE_DIR}/cmake/vela.pc.in" "${PROJECT_BINARY_DIR}/vela.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vela.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
