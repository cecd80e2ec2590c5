# A folder of links to the headers for hosts that looks like the installed one. So they are included
# alike from an installation and from a project that has this one as a subproject:
#   #include <yqrtClui.h>  or  #include <yqrtClui/yqrtClui.h>

set(root ${CLUI_INCLUDE}/yqrtClui)
set(linked_headers)
file(REMOVE_RECURSE ${root})
foreach(header ${root_headers} ${public_headers})
  set(link ${header})
  if(header IN_LIST root_headers)
    cmake_path(GET header FILENAME link)
  endif()
  cmake_path(GET link PARENT_PATH folder)
  file(MAKE_DIRECTORY ${root}/${folder})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${header} ${root}/${link} SYMBOLIC COPY_ON_ERROR)
  list(APPEND linked_headers ${root}/${link})
endforeach()
