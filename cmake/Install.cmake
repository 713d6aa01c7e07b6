# What `cmake --install` lays down besides the program: the editor page, the dictionaries, and the library for programs
# that embed a bucket (component "library").

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(resources_dir ${CMAKE_INSTALL_DATADIR}/wendlores)
set(bundle_dir ${resources_dir}/WendloreKit_WendloreKit.bundle)
set(decoder_dir ${CMAKE_INSTALL_LIBEXECDIR}/wendlores)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/WendloreKit)

foreach(component Unspecified library)
    install(DIRECTORY ${WENDLORE_DIST_DIR} DESTINATION ${bundle_dir} COMPONENT ${component})
    install(DIRECTORY ${WENDLORE_DICTIONARIES_DIR} DESTINATION ${resources_dir} COMPONENT ${component} OPTIONAL)
endforeach()
foreach(component Unspecified library)
    install(TARGETS wendlores-decoder RUNTIME DESTINATION ${decoder_dir} COMPONENT ${component})
endforeach()
install(TARGETS WendloreCore WendloreKit EXPORT WendloreKitTargets ARCHIVE COMPONENT library)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/WendloreKit/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/WendloreKit COMPONENT library
        FILES_MATCHING PATTERN "*.h" PATTERN Resources EXCLUDE)
install(EXPORT WendloreKitTargets NAMESPACE Wendlore:: DESTINATION ${package_dir} COMPONENT library)
configure_package_config_file(cmake/WendloreKitConfig.cmake.in ${CMAKE_BINARY_DIR}/WendloreKitConfig.cmake
                              INSTALL_DESTINATION ${package_dir} PATH_VARS resources_dir decoder_dir)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/WendloreKitConfigVersion.cmake
                                 VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)

# A host that links the library needs the packages that CMakeLists.txt finds, but for those of the tests.
file(READ ${CMAKE_SOURCE_DIR}/CMakeLists.txt build_script)
string(REGEX MATCHALL "(find_package|pkg_check_modules)\\([^)]*\\)" packages "${build_script}")
list(FILTER packages EXCLUDE REGEX "COMPONENTS Test")
list(JOIN packages "\n" packages)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/Dependencies.cmake CONTENT "${packages}\n" @ONLY)

install(FILES ${CMAKE_BINARY_DIR}/WendloreKitConfig.cmake ${CMAKE_BINARY_DIR}/WendloreKitConfigVersion.cmake
              ${CMAKE_BINARY_DIR}/Dependencies.cmake
        DESTINATION ${package_dir} COMPONENT library)
