# Run by cpack on the tree of files to be packed, one folder a component: takes the search paths
# out of programs, which find their library where the system keeps it, adds copyright and
# changelog, compresses what Debian wants compressed, and puts the completions of zsh where
# Debian's zsh looks for those of packages.
find_program(GZIP gzip REQUIRED)

function(compress folder)
  file(GLOB_RECURSE files "${folder}/*")
  foreach(file IN LISTS files)
    if(NOT IS_SYMLINK "${file}" AND NOT file MATCHES "\\.gz$")
      execute_process(COMMAND "${GZIP}" -9nf "${file}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endforeach()
endfunction()

foreach(pair IN LISTS CPACK_LEMARA_PACKAGES)
  string(REGEX MATCH "^([^=]*)=(.*)$" pair "${pair}")
  set(tree "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${CMAKE_MATCH_1}")
  set(documents "${tree}/usr/share/doc/${CMAKE_MATCH_2}")
  if(NOT IS_DIRECTORY "${tree}/usr")
    message(FATAL_ERROR "nothing is installed for the package ${CMAKE_MATCH_2}")
  endif()

  file(GLOB programs "${tree}/usr/bin/*" "${tree}/usr/lib/python3/dist-packages/*/*.so")
  foreach(program IN LISTS programs)
    file(RPATH_REMOVE FILE "${program}")
  endforeach()

  file(COPY "${CPACK_LEMARA_PACKAGING}/copyright" DESTINATION "${documents}"
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  configure_file("${CPACK_LEMARA_PACKAGING}/changelog.in" "${documents}/changelog.Debian" @ONLY)
  execute_process(COMMAND "${GZIP}" -9nf "${documents}/changelog.Debian"
                  COMMAND_ERROR_IS_FATAL ANY)
  if(IS_DIRECTORY "${tree}/usr/share/man")
    compress("${tree}/usr/share/man")
  endif()
  if(IS_DIRECTORY "${tree}/usr/share/zsh/site-functions")
    file(RENAME "${tree}/usr/share/zsh/site-functions" "${tree}/usr/share/zsh/vendor-completions")
  endif()
endforeach()
