# FindUDUNITS2: the UDUNITS-2 units library and its XML unit database.
#
# Defines UDUNITS2_FOUND, UDUNITS2_INCLUDE_DIR, UDUNITS2_LIBRARY,
# UDUNITS2_XML (the database UDUNITS reads by default) and the imported
# target UDUNITS2::UDUNITS2. The library is of no use without its database,
# so a missing database fails the search too.
find_package(PkgConfig QUIET)
if(PKG_CONFIG_FOUND)
    pkg_check_modules(PC_UDUNITS2 QUIET udunits)
endif()

find_path(UDUNITS2_INCLUDE_DIR udunits2.h
    HINTS ${PC_UDUNITS2_INCLUDE_DIRS} PATH_SUFFIXES udunits2)
find_library(UDUNITS2_LIBRARY NAMES udunits2 HINTS ${PC_UDUNITS2_LIBRARY_DIRS})
# UDUNITS2_XML_PATH names the database file when it is not in its usual place.
if(DEFINED ENV{UDUNITS2_XML_PATH})
    get_filename_component(_udunits2_xml_dir "$ENV{UDUNITS2_XML_PATH}" DIRECTORY)
endif()
get_filename_component(_udunits2_prefix "${UDUNITS2_INCLUDE_DIR}" DIRECTORY)
find_file(UDUNITS2_XML udunits2.xml
    HINTS ${_udunits2_xml_dir} ${_udunits2_prefix}/share/xml/udunits ${PC_UDUNITS2_PREFIX}/share/xml/udunits
    PATHS /usr/share/xml/udunits /usr/local/share/xml/udunits)
unset(_udunits2_xml_dir)
unset(_udunits2_prefix)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(UDUNITS2
    REQUIRED_VARS UDUNITS2_LIBRARY UDUNITS2_INCLUDE_DIR UDUNITS2_XML
    VERSION_VAR PC_UDUNITS2_VERSION)

if(UDUNITS2_FOUND AND NOT TARGET UDUNITS2::UDUNITS2)
    add_library(UDUNITS2::UDUNITS2 UNKNOWN IMPORTED)
    set_target_properties(UDUNITS2::UDUNITS2 PROPERTIES
        IMPORTED_LOCATION "${UDUNITS2_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${UDUNITS2_INCLUDE_DIR}")
endif()
mark_as_advanced(UDUNITS2_INCLUDE_DIR UDUNITS2_LIBRARY UDUNITS2_XML)
