# Removes what `cmake --install` has installed, and the folders that are empty afterwards.
#   cmake -D MANIFEST=build/install_manifest.txt -P packaging/uninstall.cmake
# DESTDIR is prepended to every path, as at the installation.
cmake_minimum_required(VERSION 3.25)

if(NOT EXISTS "${MANIFEST}")
  message(FATAL_ERROR "No installation is known: there is no ${MANIFEST}")
endif()
file(STRINGS "${MANIFEST}" files)

set(prefix)
foreach(file IN LISTS files)
  if(file MATCHES "^(.*)/lib/kelvane/kelvane$")
    set(prefix "$ENV{DESTDIR}${CMAKE_MATCH_1}")
    # The joiner's list, written beside the program.
    list(APPEND files "${CMAKE_MATCH_1}/lib/kelvane/files.txt")
  endif()
endforeach()
if(NOT prefix)
  message(FATAL_ERROR "${MANIFEST} names no program")
endif()

set(folders)
foreach(file IN LISTS files)
  set(path "$ENV{DESTDIR}${file}")
  if(EXISTS "${path}" OR IS_SYMLINK "${path}")
    message(STATUS "Removing: ${path}")
    file(REMOVE "${path}")
    if(EXISTS "${path}" OR IS_SYMLINK "${path}")
      message(SEND_ERROR "${path} can't be removed")
    endif()
  endif()
  cmake_path(GET path PARENT_PATH folder)
  while(NOT folder STREQUAL prefix)
    list(APPEND folders "${folder}")
    cmake_path(GET folder PARENT_PATH folder)
  endwhile()
endforeach()

# The innermost folders come first. rmdir keeps a folder that isn't empty.
list(REMOVE_DUPLICATES folders)
list(SORT folders ORDER DESCENDING)
foreach(folder IN LISTS folders)
  execute_process(COMMAND rmdir "${folder}" ERROR_QUIET)
endforeach()
