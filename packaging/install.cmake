# The program finds the library and the dashboards beside itself, so they share a folder of their own;
# the command in bin/ is a link to it.
include(GNUInstallDirs)
set(home "${CMAKE_INSTALL_LIBDIR}/gauge64")

install(TARGETS gauge-host RUNTIME DESTINATION "${home}")
install(TARGETS GAUGE64 LIBRARY DESTINATION "${home}")
install(DIRECTORY "${CMAKE_SOURCE_DIR}/dashboards/" DESTINATION "${home}/Dashboards"
  PATTERN CMakeLists.txt EXCLUDE)
install(FILES README.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(UNIX)
  install(CODE "
    set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(MAKE_DIRECTORY \"\${bin}\")
    file(CREATE_LINK \"../${home}/gauge-host\" \"\${bin}/gauge-host\" SYMBOLIC)")
endif()
