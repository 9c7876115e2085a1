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

# The licence, in the file and the form of Debian's policy: indented, and a dot for an empty line.
file(READ ${documents}/LICENSE licence)
file(REMOVE ${documents}/LICENSE)
if(NOT licence MATCHES "^MIT License\n\nCopyright \\(c\\) ([^\n]+)\n\n(.*)\n$")
  message(FATAL_ERROR "LICENSE is not the MIT license that the Debian package declares")
endif()
set(holder "${CMAKE_MATCH_1}")
string(REPLACE "\n\n" "\n.\n" licence "${CMAKE_MATCH_2}")
string(REPLACE "\n" "\n " licence "${licence}")
file(WRITE ${documents}/copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: zelto

Files: *
Copyright: ${holder}
License: Expat

License: Expat
 ${licence}
")

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

# A section that cmake's own stripping leaves in.
execute_process(COMMAND strip --remove-section=.comment ${CPACK_TEMPORARY_DIRECTORY}/usr/bin/ZeltoCLI
  COMMAND_ERROR_IS_FATAL ANY)

# There is no request in Debian to close, and the README explains the files that it stands beside.
file(WRITE ${share}/lintian/overrides/zelto "zelto: initial-upload-closes-no-bugs *
zelto: package-contains-documentation-outside-usr-share-doc [usr/share/zelto/completion/README.md]
")

# Whatever the umask of who builds.
file(GLOB_RECURSE files ${share}/*)
file(CHMOD ${files} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(GLOB_RECURSE directories LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
list(FILTER directories EXCLUDE REGEX "/bin/")
list(REMOVE_ITEM directories ${files})
file(CHMOD ${directories} PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
