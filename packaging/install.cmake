# The program finds the library and the dashboards beside itself, so they share a folder of their own.
# On Windows that is the zip's folder; elsewhere the command in bin/ is a link into it.
include(GNUInstallDirs)
if(WIN32)
  set(home .)
  set(CMAKE_INSTALL_DOCDIR Guides)
else()
  set(home "${CMAKE_INSTALL_LIBDIR}/gauge64")
endif()

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
install(DIRECTORY "${CMAKE_SOURCE_DIR}/host/descriptions" DESTINATION "${home}")
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(UNIX)
  install(FILES packaging/linux/gauge64.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  foreach(icon IN ITEMS scalable:svg 256x256:png)
    string(REPLACE ":" ";" icon "${icon}")
    list(POP_FRONT icon size suffix)
    install(FILES "packaging/icon/gauge64.${suffix}"
      DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}/apps")
  endforeach()
  install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK \"../${home}/gauge-host\" \"\${bin}/gauge-host\" SYMBOLIC)")
endif()
