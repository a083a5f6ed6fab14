# ambulet_test(text SOURCES DateFormatterTest.cpp ... LINKS layer_text [QT])
#
# Declares the test program of a folder. CTest knows each case by its name, which starts with the folder:
# "Text.DateFormatter.…". Each case starts in UTC and US English; a case that needs another time zone or
# locale sets it. With QT, the program has a QApplication that draws in memory, and temporary settings.
include(GoogleTest)

function(ambulet_test folder)
  cmake_parse_arguments(ARG "QT" "" "SOURCES;LINKS" ${ARGN})
  string(SUBSTRING ${folder} 0 1 first)
  string(TOUPPER ${first} first)
  string(SUBSTRING ${folder} 1 -1 rest)

  add_executable(test_${folder} ${ARG_SOURCES})
  target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${folder} PRIVATE ambulet_compile GTest::gtest ${ARG_LINKS})
  if(ARG_QT)
    target_sources(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/QtMain.cpp)
    target_link_libraries(test_${folder} PRIVATE Qt6::Widgets Qt6::Test)
    set_target_properties(test_${folder} PROPERTIES AUTOMOC ON)
  else()
    target_link_libraries(test_${folder} PRIVATE GTest::gtest_main)
  endif()
  gtest_discover_tests(test_${folder}
    TEST_PREFIX ${first}${rest}.
    DISCOVERY_MODE PRE_TEST
    PROPERTIES
      ENVIRONMENT "TZ=UTC;LC_ALL=en_US.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0"
      TIMEOUT 300)
endfunction()
