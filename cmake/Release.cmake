# The version has one place: the newest heading of CHANGELOG.md, "## 1.0.0 (2026-11-21)". Sets
#   LARKSPOOL_VERSION       of the newest release: 1.0.0
#   LARKSPOOL_RELEASE_DATE  its day (ISO 8601): 2026-11-21
#   LARKSPOOL_RELEASES      all of them, newest first, as AppStream's <release> elements
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md")
file(STRINGS "${CMAKE_CURRENT_SOURCE_DIR}/CHANGELOG.md" headings REGEX "^## ")
set(LARKSPOOL_RELEASES "")
foreach(heading IN LISTS headings)
    if(NOT heading MATCHES "^## ([0-9]+\\.[0-9]+\\.[0-9]+) \\(([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])\\)$")
        message(FATAL_ERROR "CHANGELOG.md: a release is headed like \"## 1.0.0 (2026-11-21)\", not \"${heading}\"")
    endif()
    if(NOT LARKSPOOL_RELEASES)
        set(LARKSPOOL_VERSION "${CMAKE_MATCH_1}")
        set(LARKSPOOL_RELEASE_DATE "${CMAKE_MATCH_2}")
    endif()
    list(APPEND LARKSPOOL_RELEASES "<release version=\"${CMAKE_MATCH_1}\" date=\"${CMAKE_MATCH_2}\"/>")
endforeach()
if(NOT LARKSPOOL_VERSION)
    message(FATAL_ERROR "CHANGELOG.md names no release")
endif()
list(JOIN LARKSPOOL_RELEASES "\n    " LARKSPOOL_RELEASES)
