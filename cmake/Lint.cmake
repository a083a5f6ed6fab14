# ambulet_lint(): two targets over all sources of ours, run by tools/test.
#   format  the layout is the one that .clang-format says
#   tidy    clang-tidy, a stamp a source, so that only what changed is looked at again
function(ambulet_lint)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.h
       ${PROJECT_SOURCE_DIR}/tests/*.h ${PROJECT_SOURCE_DIR}/bench/*.h)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp
       ${PROJECT_SOURCE_DIR}/tests/*.cpp ${PROJECT_SOURCE_DIR}/bench/*.cpp)

  add_custom_target(format
    COMMAND clang-format --dry-run -Werror ${headers} ${sources}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)

  foreach(source IN LISTS sources)
    file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${source})
    string(REPLACE "/" "_" stamp ${name})
    set(stamp ${CMAKE_BINARY_DIR}/tidy/${stamp}.ok)
    add_custom_command(OUTPUT ${stamp}
      COMMAND clang-tidy --quiet -p ${CMAKE_BINARY_DIR} ${source}
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${source} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
      COMMENT "clang-tidy ${name}" VERBATIM)
    list(APPEND stamps ${stamp})
  endforeach()
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/tidy)
  add_custom_target(tidy DEPENDS ${stamps})
endfunction()
