# Runs after the packing. cpack gives packages with libraries scripts that call ldconfig, which the
# trigger of these packages does already; without scripts a package can be installed into any root.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder "${package}.d")
  execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${folder}"
                  COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS "${folder}/DEBIAN/postinst")
    file(REMOVE "${folder}/DEBIAN/postinst" "${folder}/DEBIAN/postrm")
    execute_process(COMMAND dpkg-deb --root-owner-group --build "${folder}" "${package}"
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE "${folder}")
endforeach()
