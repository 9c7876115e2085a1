# Before a Debian package is packed: brings what was installed into the form that Debian's policy wants.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
set(documents ${share}/doc/zelto)

# compress(<file>...): each replaced by its compressed form, the same for the same bytes.
function(compress)
  execute_process(COMMAND gzip -9n ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Where the licence is a file of the distribution, this one says so; ours is a text of its own.
file(STRINGS ${documents}/LICENSE licence)
file(REMOVE ${documents}/LICENSE)
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: zelto

Files: *
Copyright: 2026 The Zelto authors
License: Expat

License: Expat
")
list(SUBLIST licence 4 -1 licence)
foreach(line IN LISTS licence)
  if(line STREQUAL "")
    set(line ".")
  endif()
  string(APPEND copyright " ${line}\n")
endforeach()
file(WRITE ${documents}/copyright "${copyright}")

file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
file(WRITE ${documents}/changelog.Debian "zelto (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Release ${CPACK_PACKAGE_VERSION}, see changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${CPACK_ZELTO_CHANGED}
")
compress(${documents}/changelog ${documents}/changelog.Debian)

file(GLOB pages ${share}/man/man*/*)
compress(${pages})
file(CREATE_LINK zelto.1.gz ${share}/man/man1/ZeltoCLI.1.gz SYMBOLIC)

# It is read by a shell, not run.
set(completion ${share}/bash-completion/completions/zelto)
execute_process(COMMAND sed -i "1{/^#!/d}" ${completion} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE files ${share}/*)
file(CHMOD ${files} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
