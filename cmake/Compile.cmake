# The compiler options of the build types, and the target ambulet_compile with the options of all sources.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# Optimised, because some tests read large files. Assertions and the checks of the standard library are on.
set(CMAKE_CXX_FLAGS_DEV "-O1 -g1 -D_GLIBCXX_ASSERTIONS")

set(AMBULET_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize=")
if(AMBULET_SANITIZE)
  add_compile_options(-fsanitize=${AMBULET_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # With sanitizers, g++ warns falsely of an uninitialized std::function in the standard library.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_link_options(-fsanitize=${AMBULET_SANITIZE})
endif()

option(AMBULET_FUZZERS "Build the fuzzers, which requires clang")
if(AMBULET_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The release build is hardened, because it reads files from untrusted sources.
if(CMAKE_BUILD_TYPE MATCHES "^Rel")
  include(CheckCXXCompilerFlag)
  foreach(flag -fstack-protector-strong -fstack-clash-protection -ftrivial-auto-var-init=zero
               -fcf-protection=full)
    string(MAKE_C_IDENTIFIER "AMBULET_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options(${flag})
    endif()
  endforeach()
  # -U, because some distributions already set a lower level of _FORTIFY_SOURCE.
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  if(NOT APPLE)
    # CMAKE_POSITION_INDEPENDENT_CODE would compile the static libraries with -fPIC instead of -fPIE.
    add_compile_options(-fPIE)
    add_link_options(-pie -Wl,-z,relro,-z,now,-z,noexecstack)
  endif()
  # The binary must not depend on the folder in which it is built.
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
endif()

add_library(ambulet_compile INTERFACE)
target_compile_options(ambulet_compile INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                 -Wsign-conversion -Wold-style-cast)
target_compile_definitions(ambulet_compile INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                                                     QT_NO_KEYWORDS)
