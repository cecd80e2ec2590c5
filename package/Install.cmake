# The files that `cmake --install` copies: the libraries, their headers in the folders of the tree, a
# CMake package and pkg-config files. The program has install rules of its own (program/).

include(CMakePackageConfigHelpers)

set(header_root ${CMAKE_INSTALL_INCLUDEDIR}/yqrtClui)
set(package_root ${CMAKE_INSTALL_LIBDIR}/cmake/yqrtClui)

# The headers that a host may include, and those that they include.
set(public_headers
  foundation/YArray.h foundation/YAttribValue.h foundation/YEncoding.h foundation/YErr.h
  foundation/YErrCodes.h foundation/YKanji.h foundation/YLiveList.h foundation/YMemory.h
  foundation/YPooled.h foundation/YStack.h
  foundation/YStatus.h foundation/YString.h foundation/YString_Array.h foundation/YTypes.h
  foundation/YcluiLimits.h
  platform/containers/YDictionary.h platform/containers/YLinkList.h platform/containers/YSet.h
  platform/engine/ScmVM.h platform/engine/ScmVMExternal.h
  platform/ui/YuiBase.h platform/ui/YuiModificationCallBack.h platform/ui/YuiTextField.h
  lex/YcluiKeyword.h lex/YcluiLex.h lex/YcluiLexBuffer.h lex/YcluiToken.h lex/YcluiVariable.h
  syntax/YcluiChangeCount.h syntax/YcluiNfa.h syntax/YcluiSyntaxGraph.h syntax/YcluiSyntaxNode.h
  syntax/YcluiSyntaxNodeStk.h
  parser/YcluiHelp.h parser/YcluiLineParser.h parser/YcluiLogFile.h parser/YcluiLogNestStyle.h
  parser/YcluiParser.h parser/YcluiPlayedToken.h parser/YcluiPreview.h
  script/ycscm.h)
if(TARGET yqrtcluiterm)
  list(APPEND public_headers
    foundation/YTextConverter.h
    terminal/YcluiCapabilities.h terminal/YcluiCells.h terminal/YcluiColours.h
    terminal/YcluiEditBuffer.h terminal/YcluiHistory.h terminal/YcluiHistoryFile.h
    terminal/YcluiKeyTable.h terminal/YcluiKeys.h terminal/YcluiKillRing.h terminal/YcluiLayout.h
    terminal/YcluiLineEditor.h terminal/YcluiOfferList.h terminal/YcluiOffers.h terminal/YcluiPen.h
    terminal/YcluiPicture.h terminal/YcluiPrompt.h terminal/YcluiScreen.h terminal/YcluiStyle.h
    terminal/YcluiStyledText.h terminal/YcluiTerminal.h)
endif()
foreach(header ${public_headers})
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${header_root}/${folder})
endforeach()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/yqrtClui.h DESTINATION ${header_root})

foreach(library yqrtClui yqrtyui yqrtyse yqrtcluiterm)
  if(TARGET ${library})
    install(TARGETS ${library} EXPORT yqrtCluiTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            INCLUDES DESTINATION ${header_root})
  endif()
endforeach()
install(EXPORT yqrtCluiTargets NAMESPACE yqrtClui:: FILE yqrtCluiConfig.cmake
        DESTINATION ${package_root})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/yqrtCluiConfigVersion.cmake DESTINATION ${package_root})

# The prefix is relative to the file's location, so that an installation can be moved.
set(pkgconfig_root ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pkgconfig_to_prefix /${pkgconfig_root} /)
foreach(library yqrtClui yqrtcluiterm)
  if(TARGET ${library})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${pkgconfig_root})
  endif()
endforeach()
