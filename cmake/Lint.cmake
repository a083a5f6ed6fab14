# ambulet_lint(): two targets over all sources of ours, run by tools/test.
#   format  the layout is the one that .clang-format says
#   tidy    clang-tidy over all but the tests, a stamp a source, so that only what changed is looked at
#           again
function(ambulet_lint)
  foreach(folder src console bench fuzz tests)
    list(APPEND header_globs ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    list(APPEND source_globs ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${header_globs})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${source_globs})

  add_custom_target(format
    COMMAND clang-format-14 --dry-run -Werror ${headers} ${sources}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)

  list(FILTER sources EXCLUDE REGEX "^${PROJECT_SOURCE_DIR}/tests/")
  if(NOT APPLE)
    list(FILTER sources EXCLUDE REGEX "_mac\\.cpp$")  # its headers are not here
  endif()
  if(NOT TARGET bench)  # not compiled here, so clang-tidy would not know how
    list(FILTER sources EXCLUDE REGEX "^${PROJECT_SOURCE_DIR}/bench/")
  endif()
  if(NOT AMBULET_PEERS)
    list(FILTER sources EXCLUDE REGEX "^${PROJECT_SOURCE_DIR}/bench/peers/")
  endif()
  if(NOT AMBULET_FUZZERS)
    list(FILTER sources EXCLUDE REGEX "^${PROJECT_SOURCE_DIR}/fuzz/")
  endif()
  foreach(source IN LISTS sources)
    file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
    string(REPLACE "/" "_" stamp ${name})
    set(stamp ${CMAKE_BINARY_DIR}/tidy/${stamp}.ok)
    add_custom_command(OUTPUT ${stamp}
      COMMAND clang-tidy-14 --quiet -p ${CMAKE_BINARY_DIR} ${source}
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${source} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
      COMMENT "clang-tidy ${name}" VERBATIM)
    list(APPEND stamps ${stamp})
  endforeach()
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/tidy)
  add_custom_target(tidy DEPENDS ${stamps})
endfunction()
