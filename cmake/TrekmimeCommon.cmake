# Settings every project target shares: the language level, warnings as
# errors, and the Qt strictness macros that keep string encodings explicit.
add_library(trekmime_common INTERFACE)
target_compile_features(trekmime_common INTERFACE cxx_std_20)
target_compile_options(trekmime_common INTERFACE -Wall -Wextra -Werror)
target_compile_definitions(trekmime_common INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CONTEXTLESS_CONNECT
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_FOREACH
  TREKMIME_VERSION="${PROJECT_VERSION}")
target_include_directories(trekmime_common INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(TREKMIME_SANITIZE)
  target_compile_options(trekmime_common INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer)
  target_link_options(trekmime_common INTERFACE -fsanitize=address,undefined)
endif()

# trekmime_library(name folder SOURCES ... LIBS ...): one static library per
# source folder, linked against the common settings.
function(trekmime_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC trekmime_common ${ARG_LIBS})
endfunction()

# trekmime_test(name SOURCES ... LIBS ...): one Qt Test executable (the test
# classes of one folder, run by the shared main of tests/support) run by CTest
# on the offscreen platform, in UTC, with a fixed locale.
function(trekmime_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE trekmime_common trekmime_testsupport trekmime_testmain
                        Qt6::Test ${ARG_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LANG=C.UTF-8;LC_ALL=C.UTF-8;QT_LOGGING_RULES=qt.qpa.*=false")
endfunction()
