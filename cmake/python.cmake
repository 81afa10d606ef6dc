# SPDX-License-Identifier: MIT
# The Python package: a module on the library, and what is written in Python. Lies ready for use in BUILD/python.
#
# Where the shared library is built, the module uses it; otherwise it contains the static one.

# The first interpreter that has numpy: the one of the path may be another than the system's.
if(NOT Python_EXECUTABLE)
  find_program(python_of_path python3)
  foreach(candidate IN ITEMS ${python_of_path} /usr/bin/python3)
    execute_process(COMMAND ${candidate} -c "import numpy; import sys; print(sys.executable)"
      OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
    if(NOT failed)
      set(Python_EXECUTABLE ${found} CACHE FILEPATH "The interpreter that the package is for")
      break()
    endif()
  endforeach()
endif()
set(missing "")
if(NOT Python_EXECUTABLE)
  set(missing "Python with numpy")
else()
  find_package(Python 3.9 QUIET COMPONENTS Interpreter Development.Module)
  find_package(pybind11 2.10 CONFIG QUIET)
  if(NOT Python_FOUND)
    set(missing "the headers of Python 3.9 or later")
  elseif(NOT pybind11_FOUND)
    set(missing "pybind11 2.10 or later")
  endif()
endif()
if(missing AND ZIRK_PYTHON STREQUAL "AUTO")
  message(STATUS "The Python package is left out: it needs ${missing}; scripts/setup python installs it")
  set(ZIRK_PYTHON OFF)
  return()
elseif(missing)
  message(FATAL_ERROR "ZIRK_PYTHON needs ${missing}; scripts/setup python installs it.")
endif()

# Relative to the prefix: where Debian's Python looks. A wheel has its own place for it.
set(ZIRK_PYTHON_DIR lib/python3/dist-packages CACHE STRING "Where the Python package goes, relative to the prefix")

set(python_tree ${PROJECT_BINARY_DIR}/python)
file(GLOB python_sources CONFIGURE_DEPENDS python/*.cpp)
pybind11_add_module(zirk_python MODULE ${python_sources})
target_link_libraries(zirk_python PRIVATE zirk_options zirk_warnings)
target_compile_definitions(zirk_python PRIVATE ZIRK_VERSION="${PROJECT_VERSION}")
set_target_properties(zirk_python PROPERTIES OUTPUT_NAME _core LIBRARY_OUTPUT_DIRECTORY ${python_tree}/zirk)
if(ZIRK_SHARED)
  target_link_libraries(zirk_python PRIVATE zirk_shared)
else()
  set_target_properties(zirk_parser zirk_static PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_link_libraries(zirk_python PRIVATE zirk_static)
  target_link_options(zirk_python PRIVATE -Wl,--exclude-libs,ALL)
endif()

# Beside the module, so that the tree can be imported as it is.
file(GLOB python_files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/python python/zirk/*.py python/zirk/*.pyi python/zirk/py.typed)
foreach(file IN LISTS python_files)
  configure_file(python/${file} ${python_tree}/${file} COPYONLY)
endforeach()

install(TARGETS zirk_python LIBRARY DESTINATION ${ZIRK_PYTHON_DIR}/zirk COMPONENT python)
list(TRANSFORM python_files PREPEND python/)
install(FILES ${python_files} DESTINATION ${ZIRK_PYTHON_DIR}/zirk COMPONENT python)
