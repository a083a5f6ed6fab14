# ambulet_lint(): targets for all sources of the project. tools/test builds the last two.
#   format        formats the sources with clang-format
#   check-format  fails if a source is not formatted
#   tidy          runs clang-tidy on the sources that have changed since it last passed; on all sources, if a
#                 header or a .clang-tidy file has changed. For the tests it uses the shorter list of
#                 checks in tests/.clang-tidy
# clang-format and clang-tidy may have any version from 14 on. If one of them is missing, its targets say so
# and succeed.
function(ambulet_lint)
  foreach(version RANGE 14 30)
    list(APPEND format_names clang-format-${version})
    list(APPEND tidy_names clang-tidy-${version})
  endforeach()
  foreach(folder src console bench fuzz tests)
    list(APPEND header_globs ${PROJECT_SOURCE_DIR}/${folder}/*.h)
    list(APPEND source_globs ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${header_globs})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${source_globs})

  find_program(CLANG_FORMAT NAMES clang-format ${format_names})
  if(CLANG_FORMAT)
    set(format COMMAND ${CLANG_FORMAT} -i ${headers} ${sources})
    set(check_format COMMAND ${CLANG_FORMAT} --dry-run -Werror ${headers} ${sources})
  else()
    set(format COMMAND ${CMAKE_COMMAND} -E echo "clang-format is not installed: not run.")
    set(check_format ${format})
  endif()
  add_custom_target(format ${format} VERBATIM)
  add_custom_target(check-format ${check_format} VERBATIM)

  find_program(CLANG_TIDY NAMES clang-tidy ${tidy_names})
  if(NOT CLANG_TIDY)
    add_custom_target(tidy
      COMMAND ${CMAKE_COMMAND} -E echo "clang-tidy is not installed: not run." VERBATIM)
    return()
  endif()
  # clang-tidy cannot check sources that this build does not compile, because they have no compile command.
  if(NOT APPLE)
    list(FILTER sources EXCLUDE REGEX "_mac\\.cpp$")
  endif()
  list(FILTER sources EXCLUDE REGEX "^${PROJECT_SOURCE_DIR}/tests/mac/")
  if(NOT TARGET bench)
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
      COMMAND ${CLANG_TIDY} --quiet -p ${CMAKE_BINARY_DIR} ${source}
      COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
      DEPENDS ${source} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
              ${PROJECT_SOURCE_DIR}/tests/.clang-tidy
      COMMENT "clang-tidy ${name}" VERBATIM)
    list(APPEND stamps ${stamp})
  endforeach()
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/tidy)
  add_custom_target(tidy DEPENDS ${stamps})
endfunction()
