# A folder of src is a static library, layer_<folder>. What it links is what it may include: the
# arrows between the folders, which tests/tree holds the sources to.
#
#   ambulet_layer(text SOURCES DateFormatter.cpp ... LINKS ICU::i18n ICU::uc)
function(ambulet_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(layer_${name} STATIC ${ARG_SOURCES})
  target_include_directories(layer_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(layer_${name} PUBLIC ${ARG_LINKS} PRIVATE ambulet_compile)
endfunction()
