# A shared library shows the others only what its headers mark Q3_EXPORT, and
# the module's plug-in only what the host loads it by.
# Run with -DNM=... -DCORE=<Quillo3Core library> -DPLUGIN=<module plug-in>.
function(dynamic_symbols library out)
  execute_process(COMMAND ${NM} -D -C --defined-only ${library} OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${NM} could not read ${library}")
  endif()
  # The sanitizers' own markers of instrumented globals are not ours.
  string(REGEX REPLACE "[^\n]*__odr_asan[^\n]*\n" "" symbols "${symbols}")
  set(${out} "${symbols}" PARENT_SCOPE)
endfunction()

dynamic_symbols(${CORE} core)
if(NOT core MATCHES " QuotedStr\\(QString const&\\)")
  message(FATAL_ERROR "Quillo3Core does not export QuotedStr, marked Q3_EXPORT")
endif()
if(core MATCHES " Q3CompoundFile\\(")
  message(FATAL_ERROR "Quillo3Core exports Q3CompoundFile, which its header does not mark Q3_EXPORT")
endif()

dynamic_symbols(${PLUGIN} plugin)
if(NOT plugin MATCHES " qt_plugin_instance")
  message(FATAL_ERROR "the plug-in does not export qt_plugin_instance")
endif()
string(REGEX MATCHALL "[^\n]*KRV[^\n]*" module_symbols "${plugin}")
if(module_symbols)
  list(LENGTH module_symbols count)
  list(GET module_symbols 0 first)
  message(FATAL_ERROR "the plug-in exports ${count} symbols of the module, e.g. ${first}")
endif()
message(STATUS "exports limited to the marked interface")
