# utf8proc, which comes without a package file everywhere: its archive, so that a program needs nothing beside it, or the
# shared library if ZELTO_SHARED_LIBRARIES is set.
if(NOT TARGET zelto_utf8proc)
  if(ZELTO_SHARED_LIBRARIES)
    find_library(UTF8PROC_LIBRARY NAMES utf8proc)
  else()
    find_library(UTF8PROC_LIBRARY NAMES libutf8proc.a)
  endif()
  if(NOT UTF8PROC_LIBRARY)
    message(FATAL_ERROR "libutf8proc.a is not installed. To link shared libraries instead, set ZELTO_SHARED_LIBRARIES.")
  endif()
  find_path(UTF8PROC_INCLUDE utf8proc.h REQUIRED)
  add_library(zelto_utf8proc UNKNOWN IMPORTED GLOBAL)
  set_target_properties(zelto_utf8proc PROPERTIES IMPORTED_LOCATION ${UTF8PROC_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${UTF8PROC_INCLUDE})
endif()
