# The files that `cmake --install` copies: the libraries, their headers in the folders of the tree, a
# CMake package, pkg-config files, the program and the manuals. Each has the component of the package
# (package/Pack.cmake) that it belongs to.

include(CMakePackageConfigHelpers)

set(header_root ${CMAKE_INSTALL_INCLUDEDIR}/yqrtClui)
set(package_root ${CMAKE_INSTALL_LIBDIR}/cmake/yqrtClui)

# The headers that a host may include, and those that they include.
set(public_headers
  foundation/YArray.h foundation/YAttribValue.h foundation/YEncoding.h foundation/YErr.h
  foundation/YErrCodes.h foundation/YKanji.h foundation/YLiveList.h foundation/YMemory.h
  foundation/YPooled.h foundation/YStack.h
  foundation/YStatus.h foundation/YString.h foundation/YString_Array.h foundation/YTypes.h
  foundation/YcluiLimits.h foundation/YcluiVersion.h
  platform/containers/YDictionary.h platform/containers/YLinkList.h platform/containers/YSet.h
  platform/engine/ScmVM.h platform/engine/ScmVMExternal.h
  platform/ui/YuiBase.h platform/ui/YuiModificationCallBack.h platform/ui/YuiTextField.h
  lex/YcluiKeyword.h lex/YcluiLex.h lex/YcluiLexBuffer.h lex/YcluiToken.h lex/YcluiVariable.h
  syntax/YcluiChangeCount.h syntax/YcluiNfa.h syntax/YcluiSyntaxGraph.h syntax/YcluiSyntaxNode.h
  syntax/YcluiSyntaxNodeStk.h
  parser/YcluiHelp.h parser/YcluiLineParser.h parser/YcluiLogFile.h parser/YcluiLogNestStyle.h
  parser/YcluiParser.h parser/YcluiPlayedToken.h parser/YcluiPreview.h
  parser/YcluiPreviewState.h
  language/Argument.h language/Command.h language/Language.h language/Line.h language/Result.h
  language/Syntax.h
  script/YcluiLibrary.h script/ycscm.h)
if(TARGET yqrtcluiterm)
  list(APPEND public_headers
    foundation/YTextConverter.h
    terminal/YcluiCapabilities.h terminal/YcluiCells.h terminal/YcluiColours.h
    terminal/YcluiEditBuffer.h terminal/YcluiHalfTyped.h terminal/YcluiHistory.h
    terminal/YcluiHistoryFile.h
    terminal/YcluiKeyTable.h terminal/YcluiKeys.h terminal/YcluiKillRing.h terminal/YcluiLayout.h
    terminal/YcluiLineEditor.h terminal/YcluiOfferList.h terminal/YcluiOffers.h terminal/YcluiPen.h
    terminal/YcluiPicture.h terminal/YcluiPrompt.h terminal/YcluiScreen.h terminal/YcluiStyle.h
    terminal/YcluiStyledText.h terminal/YcluiTerminal.h)
endif()
# Those that are in the root of the installed folder.
set(root_headers package/yqrtClui.h language/yqrtClui/Language.h)
include(${CMAKE_CURRENT_LIST_DIR}/Headers.cmake)
if(NOT CLUI_INSTALL)
  return()
endif()

foreach(header ${public_headers})
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${header_root}/${folder}
          COMPONENT development)
endforeach()
foreach(header ${root_headers})
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${header_root} COMPONENT development)
endforeach()

# Each component of the CMake package has a file of targets, so that a host learns which were built.
#   clui_install(yqrtcluiterm Terminal library)
function(clui_install library part component)
  install(TARGETS ${library} EXPORT yqrtClui${part}Targets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component}
                  NAMELINK_COMPONENT development
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
          INCLUDES DESTINATION ${header_root} ${CMAKE_INSTALL_INCLUDEDIR})
endfunction()
function(clui_install_targets part)
  install(EXPORT yqrtClui${part}Targets NAMESPACE yqrtClui:: DESTINATION ${package_root}
          COMPONENT development)
endfunction()

# A pkg-config file. The prefix is relative to the file's location, so that an installation can be
# moved. The private entries are for static libraries (pkg-config --static).
#   clui_install_pc(yqrtcluiterm "The line editor" REQUIRES yqrtClui LIBS_PRIVATE -ltinfo)
function(clui_install_pc name description)
  cmake_parse_arguments(ARG "" "" "REQUIRES;REQUIRES_PRIVATE;LIBS;LIBS_PRIVATE;CFLAGS" ${ARGN})
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH to_prefix /${folder} /)
  list(TRANSFORM ARG_REQUIRES APPEND " = ${PROJECT_VERSION}")
  foreach(list REQUIRES REQUIRES_PRIVATE)
    list(JOIN ARG_${list} ", " ${list})
  endforeach()
  foreach(list LIBS LIBS_PRIVATE CFLAGS)
    list(JOIN ARG_${list} " " ${list})
  endforeach()
  configure_file(${PROJECT_SOURCE_DIR}/package/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder} COMPONENT development)
endfunction()

if(NOT BUILD_SHARED_LIBS)
  set(static_flag CFLAGS -DYQRTCLUI_STATIC)
  set(engine_options LIBS ${CLUI_STATIC_ENGINE_OPTIONS})
endif()

clui_install(yqrtClui "" library)
clui_install(yqrtyui "" library)
clui_install_targets("")
clui_install_pc(yqrtClui "${PROJECT_DESCRIPTION}" REQUIRES yqrtyui ${static_flag})
clui_install_pc(yqrtyui "The interface of a text field for yqrtClui")
if(TARGET yqrtcluiterm)
  clui_install(yqrtcluiterm Terminal library)
  clui_install_targets(Terminal)
  clui_install_pc(yqrtcluiterm "The line editor of yqrtClui" REQUIRES yqrtClui
                  REQUIRES_PRIVATE ${CLUI_TERMINFO_MODULE_NAME})
endif()
if(TARGET yqrtyse)
  # Guile is no requirement: of that, --static would ask for more than a shared Guile needs.
  # Folders that the linker searches anyway are left out.
  set(guile_options ${CLUI_GUILE_LDFLAGS})
  set(searched ${CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES})
  list(TRANSFORM searched PREPEND -L)
  list(REMOVE_ITEM guile_options ${searched})
  clui_install(yqrtyse Engine engine)
  clui_install_targets(Engine)
  clui_install_pc(yqrtyse "The script engine of yqrtClui" REQUIRES yqrtClui
                  LIBS_PRIVATE ${guile_options} -ldl -lpthread ${engine_options})
endif()

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/package/yqrtCluiConfig.cmake.in ${PROJECT_BINARY_DIR}/yqrtCluiConfig.cmake
  INSTALL_DESTINATION ${package_root} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/yqrtCluiConfig.cmake
              ${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake
        DESTINATION ${package_root} COMPONENT development)

if(TARGET clui)
  install(TARGETS clui RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  install(FILES ${PROJECT_SOURCE_DIR}/program/prelude.scm
          DESTINATION ${CMAKE_INSTALL_DATADIR}/yqrtClui COMPONENT program)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/clui.1
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
endif()

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT documentation FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT documentation)
install(DIRECTORY ${PROJECT_BINARY_DIR}/api/html/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/api
        COMPONENT documentation OPTIONAL)

if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -D MANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
            -P ${PROJECT_SOURCE_DIR}/package/Uninstall.cmake
    COMMENT "Removing the installed files" VERBATIM)
endif()
