# Runs after the installation into the folders that cpack packs, and before the packing. Adds and
# changes what Debian requires of a package and other installations do not need.

file(GLOB components LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(folder IN LISTS components)
  if(NOT IS_DIRECTORY "${folder}${CPACK_PACKAGING_INSTALL_PREFIX}")
    continue()
  endif()
  cmake_path(GET folder FILENAME component)
  string(TOUPPER ${component} component)
  set(name ${CPACK_DEBIAN_${component}_PACKAGE_NAME})

  # The libraries are where the dynamic linker looks.
  file(GLOB_RECURSE binaries "${folder}/usr/lib/*.so.*" "${folder}/usr/bin/*")
  foreach(binary IN LISTS binaries)
    if(NOT IS_SYMLINK ${binary})
      file(RPATH_REMOVE FILE ${binary})
    endif()
  endforeach()

  # The manuals are in the folder of their package, with that of the changes compressed.
  set(documents "${folder}/usr/share/doc/${name}")
  if(EXISTS "${folder}/usr/share/doc/yqrtClui")
    file(RENAME "${folder}/usr/share/doc/yqrtClui" "${documents}")
    file(REMOVE "${documents}/CHANGELOG.md")
  endif()
  file(COPY "${CMAKE_CURRENT_LIST_DIR}/copyright" DESTINATION "${documents}"
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(WRITE "${documents}/changelog"
    "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * Release ${CPACK_PACKAGE_VERSION}.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
  file(GLOB texts "${folder}/usr/share/man/man1/*.1" "${documents}/changelog")
  execute_process(COMMAND gzip -9nf ${texts} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
