# Fails when any of the libraries loads Qt's widgets or print support, directly
# or through another library: the loader's list of everything each one needs.
# Run with -DLIBRARIES="file;file;...".
foreach(library ${LIBRARIES})
  execute_process(COMMAND ldd ${library} OUTPUT_VARIABLE needed RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "ldd failed on ${library}")
  endif()
  # Every core library stands on Qt's core: a list without it is no list.
  if(NOT needed MATCHES "libQt6Core")
    message(FATAL_ERROR "${library}: no Qt core among the libraries it needs:\n${needed}")
  endif()
  foreach(forbidden libQt6Widgets libQt6PrintSupport)
    if(needed MATCHES "${forbidden}")
      message(FATAL_ERROR "${library} needs ${forbidden}:\n${needed}")
    endif()
  endforeach()
  message(STATUS "${library}: no widgets")
endforeach()
