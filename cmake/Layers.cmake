# ambulet_layer(expat SOURCES ExpatReader.cpp ... LINKS layer_xml EXPAT::EXPAT HEADERS expat)
#
# Declares the static library layer_<name> for the current folder; without sources, a header-only library.
# The files of the folder may include only headers of
#   - the layer itself,
#   - the layers in LINKS, not those that are linked transitively,
#   - the standard library and the operating system,
#   - other libraries, if the path of the header begins with an entry of HEADERS. The entry Qt allows all
#     headers of Qt.
# MAC lists sources for macOS only, OTHER the sources for all other systems.
#
# ambulet_write_arrows() writes these rules to a file. tests/tree checks the files of src against it.
function(ambulet_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;MAC;OTHER;LINKS;HEADERS" ${ARGN})
  set(mac_sources ${ARG_SOURCES} ${ARG_MAC})
  if(APPLE)
    list(APPEND ARG_SOURCES ${ARG_MAC})
  else()
    list(APPEND ARG_SOURCES ${ARG_OTHER})
  endif()
  if(ARG_SOURCES)
    add_library(layer_${name} STATIC ${ARG_SOURCES})
    target_include_directories(layer_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(layer_${name} PUBLIC ${ARG_LINKS} PRIVATE ambulet_compile)
  else()
    add_library(layer_${name} INTERFACE)
    target_include_directories(layer_${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(layer_${name} INTERFACE ${ARG_LINKS})
  endif()
  if(Qt IN_LIST ARG_HEADERS)
    set_target_properties(layer_${name} PROPERTIES AUTOMOC ON)
  endif()

  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  list(FILTER ARG_LINKS INCLUDE REGEX "^layer_")
  set_target_properties(layer_${name} PROPERTIES
    AMBULET_FOLDER ${folder} AMBULET_LAYERS "${ARG_LINKS}" AMBULET_HEADERS "${ARG_HEADERS}"
    AMBULET_MAC_SOURCES "${mac_sources}")
  set_property(GLOBAL APPEND PROPERTY AMBULET_LAYERS layer_${name})
endfunction()

# Writes one line for each layer: its folder, the folders that it may include, and its HEADERS, separated by
# tabs. The words of a list are separated by blanks.
function(ambulet_write_arrows file)
  get_property(layers GLOBAL PROPERTY AMBULET_LAYERS)
  set(table "")
  foreach(layer IN LISTS layers)
    get_target_property(folder ${layer} AMBULET_FOLDER)
    get_target_property(targets ${layer} AMBULET_LAYERS)
    get_target_property(headers ${layer} AMBULET_HEADERS)
    set(folders "")
    foreach(target IN LISTS targets)
      get_target_property(target_folder ${target} AMBULET_FOLDER)
      list(APPEND folders ${target_folder})
    endforeach()
    list(JOIN folders " " folders)
    list(JOIN headers " " headers)
    string(APPEND table "${folder}\t${folders}\t${headers}\n")
  endforeach()
  file(CONFIGURE OUTPUT ${file} CONTENT "${table}" @ONLY)
endfunction()

# Writes the paths of the sources that are compiled on macOS, one per line.
function(ambulet_write_mac_sources file)
  get_property(layers GLOBAL PROPERTY AMBULET_LAYERS)
  set(paths "")
  foreach(layer IN LISTS layers)
    get_target_property(folder ${layer} AMBULET_FOLDER)
    get_target_property(sources ${layer} AMBULET_MAC_SOURCES)
    foreach(source IN LISTS sources)
      string(APPEND paths "src/${folder}/${source}\n")
    endforeach()
  endforeach()
  file(CONFIGURE OUTPUT ${file} CONTENT "${paths}" @ONLY)
endfunction()
