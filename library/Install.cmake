# What `cmake --install` puts where: the libraries, their headers in the folders of the tree, a CMake
# package and a pkg-config file. The program installs itself (host/).

include(CMakePackageConfigHelpers)

set(header_root ${CMAKE_INSTALL_INCLUDEDIR}/yqrtClui)
set(package_root ${CMAKE_INSTALL_LIBDIR}/cmake/yqrtClui)

foreach(floor foundation platform/general platform/engine lex syntax parser)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${floor}/ DESTINATION ${header_root}/${floor}
          FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/script/ycscm.h DESTINATION ${header_root}/script)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/yqrtClui.h DESTINATION ${header_root})

install(TARGETS yqrtClui EXPORT yqrtCluiTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${header_root})
if(TARGET yqrtyse)
  install(TARGETS yqrtyse EXPORT yqrtCluiTargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          INCLUDES DESTINATION ${header_root})
endif()
install(EXPORT yqrtCluiTargets NAMESPACE yqrtClui:: FILE yqrtCluiConfig.cmake
        DESTINATION ${package_root})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake DESTINATION ${package_root})

# The file finds its prefix from its own place: an installation may be moved.
set(pkgconfig_root ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_root} /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/yqrtClui.pc.in ${PROJECT_BINARY_DIR}/yqrtClui.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/yqrtClui.pc DESTINATION ${pkgconfig_root})
