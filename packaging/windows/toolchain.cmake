# Builds for Windows x64 on Debian: g++-mingw-w64-x86-64-posix, and what packaging/windows/qt and
# packaging/windows/libraries put into the user's cache.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Folders of the cache, unless the environment or CMake's cache name others.
if(DEFINED ENV{XDG_CACHE_HOME})
  set(gauge_cache "$ENV{XDG_CACHE_HOME}/gauge64")
else()
  set(gauge_cache "$ENV{HOME}/.cache/gauge64")
endif()
foreach(folder IN ITEMS GAUGE_WINDOWS_QT:qt-5.15.8-windows GAUGE_WINDOWS_LIBRARIES:libraries-windows)
  string(REPLACE ":" ";" folder "${folder}")
  list(POP_FRONT folder variable name)
  if(NOT ${variable})
    if(DEFINED ENV{${variable}})
      set(${variable} "$ENV{${variable}}")
    else()
      set(${variable} "${gauge_cache}/${name}")
    endif()
  endif()
  set(${variable} "${${variable}}" CACHE PATH "Built for Windows on Linux")
  list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ${variable})
endforeach()
if(NOT EXISTS "${GAUGE_WINDOWS_QT}/lib/cmake/Qt5" OR NOT EXISTS "${GAUGE_WINDOWS_LIBRARIES}/lib")
  message(FATAL_ERROR "There is no Qt for Windows in '${GAUGE_WINDOWS_QT}', or no libraries in "
    "'${GAUGE_WINDOWS_LIBRARIES}'. Run packaging/windows/qt and packaging/windows/libraries, or let "
    "./test --windows do everything.")
endif()

set(CMAKE_FIND_ROOT_PATH "/usr/x86_64-w64-mingw32" "${GAUGE_WINDOWS_QT}" "${GAUGE_WINDOWS_LIBRARIES}")
set(CMAKE_PREFIX_PATH "${GAUGE_WINDOWS_QT}" "${GAUGE_WINDOWS_LIBRARIES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR
  "${CMAKE_CURRENT_LIST_DIR}/wine;${GAUGE_WINDOWS_QT}")
