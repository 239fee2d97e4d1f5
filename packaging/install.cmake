# The program finds the library and the dashboards beside itself, so they share a folder of their own;
# the command in bin/ is a link to it.
include(GNUInstallDirs)
set(home "${CMAKE_INSTALL_LIBDIR}/gauge64")

install(TARGETS gauge-host RUNTIME DESTINATION "${home}")
install(TARGETS GAUGE64 LIBRARY DESTINATION "${home}")
file(GLOB documents CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/dashboards"
  "${CMAKE_SOURCE_DIR}/dashboards/*/Dash.qml")
foreach(document IN LISTS documents)
  get_filename_component(dashboard "${document}" DIRECTORY)
  # The dashboard's own files come last, so that they win over shared parts of the same name.
  install(DIRECTORY "${CMAKE_SOURCE_DIR}/dashboards/parts/"
    DESTINATION "${home}/Dashboards/${dashboard}/Gauges")
  install(DIRECTORY "${CMAKE_SOURCE_DIR}/dashboards/${dashboard}" DESTINATION "${home}/Dashboards")
endforeach()
install(DIRECTORY "${CMAKE_SOURCE_DIR}/host/feeds" DESTINATION "${home}")
install(FILES README.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(UNIX)
  install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK \"../${home}/gauge-host\" \"\${bin}/gauge-host\" SYMBOLIC)")
endif()
