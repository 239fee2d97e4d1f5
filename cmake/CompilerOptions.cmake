# Options of every target: warnings, sanitizers, and Qt's own strictness.

if(MSVC)
  # Constructor arguments are named like the field they fill.
  add_compile_options(/W4 /wd4458 /permissive- /utf-8)
  if(GAUGE_WERROR)
    add_compile_options(/WX)
  endif()
else()
  # Arguments may be named like the field they fill; only GCC can tell these from locals.
  add_compile_options(-Wall -Wextra -Wpedantic $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
    -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Wundef -Wdouble-promotion)
  if(GAUGE_WERROR)
    add_compile_options(-Werror)
  endif()
endif()

if(GAUGE_SANITIZE)
  add_compile_options(-fsanitize=${GAUGE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${GAUGE_SANITIZE})
endif()

if(GAUGE_FUZZ)
  # The fuzzer watches which code its inputs reach.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_compile_definitions(
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_KEYWORDS
  QT_NO_FOREACH
  QT_STRICT_ITERATORS
  QT_DEPRECATED_WARNINGS
  QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(WIN32)
  add_compile_definitions(NOMINMAX WIN32_LEAN_AND_MEAN)
endif()

# The same sources give the same binary in any folder.
if(NOT MSVC)
  add_compile_options(-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)
endif()
