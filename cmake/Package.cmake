# The release archive: the programs, the manual and the licences. Built by ./release.

# The manual as a single HTML file with embedded pictures. Only `gfm` generates the section anchors used in its links.
find_program(PANDOC pandoc)
if(PANDOC)
  file(GLOB manual_pictures CONFIGURE_DEPENDS docs/*.png)
  add_custom_command(OUTPUT handbuch.html
    COMMAND ${PANDOC} --from gfm --to html5 --standalone --self-contained --eol crlf
      --css ${CMAKE_SOURCE_DIR}/package/handbuch.css --metadata lang=de
      --metadata "pagetitle=Version Controller ${PROJECT_VERSION}: Handbuch"
      --output ${CMAKE_CURRENT_BINARY_DIR}/handbuch.html handbuch.md
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}/docs
    DEPENDS docs/handbuch.md package/handbuch.css ${manual_pictures}
    VERBATIM)
  add_custom_target(manual DEPENDS handbuch.html)
endif()

# Text files get CR LF line endings, and an extension so that they open on a double-click.
configure_file(package/BUILD.txt.in BUILD.txt @ONLY NEWLINE_STYLE WIN32)
configure_file(package/THIRD-PARTY.txt THIRD-PARTY.txt @ONLY NEWLINE_STYLE WIN32)
configure_file(LICENSE LICENSE.txt @ONLY NEWLINE_STYLE WIN32)
install(TARGETS vtv4v vtv4v-reg RUNTIME DESTINATION .)
install(FILES package/vtv4v-master.cmd DESTINATION .)
foreach(file BUILD.txt LICENSE.txt THIRD-PARTY.txt handbuch.html)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${file} DESTINATION .)
endforeach()
install(CODE [[
  file(GLOB files RELATIVE ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_PREFIX}/*)
  list(REMOVE_ITEM files SHA256SUMS.txt)
  set(sums "")
  foreach(name IN LISTS files)
    file(SHA256 ${CMAKE_INSTALL_PREFIX}/${name} sum)
    string(APPEND sums "${sum}  ${name}\r\n")
  endforeach()
  file(WRITE ${CMAKE_INSTALL_PREFIX}/SHA256SUMS.txt "${sums}")
]])

# Don't build all targets before installing.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
# CPack's own generators keep file order and owners from the disk, so archives of the same commit would differ.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${CMAKE_SOURCE_DIR}/cmake/Archive.cmake)
set(CPACK_PACKAGE_FILE_NAME vtv4v-${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/package)
include(CPack)
