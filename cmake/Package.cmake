# What an administrator is handed: a folder with the programs and the manual, and the archive of it (`cpack`). ./release
# gives the one time that the archive tells.

# The manual as one file with its pictures inside. Its links are those of GitHub's Markdown.
find_program(PANDOC pandoc)
if(PANDOC)
  file(GLOB manual_pictures CONFIGURE_DEPENDS docs/*.png)
  add_custom_command(OUTPUT handbuch.html
    COMMAND ${PANDOC} --from gfm --to html5 --standalone --self-contained --css ${CMAKE_SOURCE_DIR}/package/handbuch.css
      --metadata lang=de --metadata "pagetitle=Version Controller ${PROJECT_VERSION}: Handbuch"
      --output ${CMAKE_CURRENT_BINARY_DIR}/handbuch.html handbuch.md
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}/docs
    DEPENDS docs/handbuch.md package/handbuch.css ${manual_pictures}
    VERBATIM)
  add_custom_target(manual DEPENDS handbuch.html)
endif()

configure_file(package/BUILD.txt.in BUILD.txt @ONLY NEWLINE_STYLE WIN32)
set(packaged package/vtv4v-master.cmd ${CMAKE_CURRENT_BINARY_DIR}/handbuch.html LICENSE package/THIRD-PARTY.txt
  ${CMAKE_CURRENT_BINARY_DIR}/BUILD.txt)
install(TARGETS vtv4v vtv4v-reg RUNTIME DESTINATION .)
install(FILES ${packaged} DESTINATION .)
install(CODE [[
  file(GLOB files RELATIVE ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_PREFIX}/*)
  list(REMOVE_ITEM files SHA256SUMS)
  set(sums "")
  foreach(name IN LISTS files)
    file(SHA256 ${CMAKE_INSTALL_PREFIX}/${name} sum)
    string(APPEND sums "${sum}  ${name}\n")
  endforeach()
  file(WRITE ${CMAKE_INSTALL_PREFIX}/SHA256SUMS "${sums}")
]])

# Only what is packed is built for it.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
# CPack's own archives hold the files in the order of the disk and tell who made them; ours are the same everywhere.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${CMAKE_SOURCE_DIR}/cmake/Archive.cmake)
set(CPACK_PACKAGE_FILE_NAME vtv4v-${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/package)
include(CPack)
