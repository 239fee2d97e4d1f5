# libpcap, as the imported target PCAP::PCAP.
find_path(PCAP_INCLUDE_DIR pcap/pcap.h)
find_library(PCAP_LIBRARY NAMES pcap wpcap)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PCAP REQUIRED_VARS PCAP_LIBRARY PCAP_INCLUDE_DIR)
mark_as_advanced(PCAP_INCLUDE_DIR PCAP_LIBRARY)

if(PCAP_FOUND AND NOT TARGET PCAP::PCAP)
  add_library(PCAP::PCAP UNKNOWN IMPORTED)
  set_target_properties(PCAP::PCAP PROPERTIES
    IMPORTED_LOCATION "${PCAP_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${PCAP_INCLUDE_DIR}")
  if(WIN32)
    # A static library doesn't say so itself.
    set_target_properties(PCAP::PCAP PROPERTIES INTERFACE_LINK_LIBRARIES ws2_32)
  endif()
endif()
