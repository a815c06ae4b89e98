# Reads components.csv into SUITE_COMPONENTS, one line per component, and generates SuiteComponents.inc from it.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/components.csv)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/components.csv SUITE_COMPONENTS REGEX "^[^#]")

# read_component(LINE)
# Sets SECTION, FOLDER, FILE, ROW, OBJECT (empty if there is no fifth field) and CLASS, the object's CLSID.
macro(read_component LINE)
  string(REPLACE "," ";" fields "${LINE},")
  list(GET fields 0 SECTION)
  list(GET fields 1 FOLDER)
  list(GET fields 2 FILE)
  list(GET fields 3 ROW)
  list(GET fields 4 OBJECT)
  string(UUID CLASS NAMESPACE 3c0e5f0a-52b4-4e0e-8d5e-9c1b6a7f2100 NAME "${OBJECT}" TYPE SHA1 UPPER)
  set(CLASS "{${CLASS}}")
endmacro()

set(INITIALIZERS "")
foreach(COMPONENT IN LISTS SUITE_COMPONENTS)
  read_component("${COMPONENT}")
  string(REPLACE "/" "\\\\" FILE "${FILE}")
  string(APPEND INITIALIZERS
    "    {\"${SECTION}\", SuiteFolder::${FOLDER}, \"${FILE}\", \"${ROW}\", \"${OBJECT}\", \"${CLASS}\"},\n")
endforeach()
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/samples/SuiteComponents.inc CONTENT "${INITIALIZERS}" @ONLY)
