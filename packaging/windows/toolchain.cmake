# Builds for Windows x64 on Debian: g++-mingw-w64-x86-64-posix, and the Qt that packaging/windows/qt
# puts into the user's cache. GAUGE_WINDOWS_QT, in the environment or the cache, names another place.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT GAUGE_WINDOWS_QT)
  if(DEFINED ENV{GAUGE_WINDOWS_QT})
    set(GAUGE_WINDOWS_QT "$ENV{GAUGE_WINDOWS_QT}")
  elseif(DEFINED ENV{XDG_CACHE_HOME})
    set(GAUGE_WINDOWS_QT "$ENV{XDG_CACHE_HOME}/gauge64/qt-5.15.8-windows")
  else()
    set(GAUGE_WINDOWS_QT "$ENV{HOME}/.cache/gauge64/qt-5.15.8-windows")
  endif()
endif()
set(GAUGE_WINDOWS_QT "${GAUGE_WINDOWS_QT}" CACHE PATH "Qt for Windows, built on Linux")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES GAUGE_WINDOWS_QT)
if(NOT EXISTS "${GAUGE_WINDOWS_QT}/lib/cmake/Qt5")
  message(FATAL_ERROR "There is no Qt for Windows in '${GAUGE_WINDOWS_QT}'. "
    "Run packaging/windows/qt, or let ./test --windows do everything.")
endif()

set(CMAKE_FIND_ROOT_PATH "/usr/x86_64-w64-mingw32" "${GAUGE_WINDOWS_QT}")
set(CMAKE_PREFIX_PATH "${GAUGE_WINDOWS_QT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR
  "${CMAKE_CURRENT_LIST_DIR}/wine;${GAUGE_WINDOWS_QT}")
