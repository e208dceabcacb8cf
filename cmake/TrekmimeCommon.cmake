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

# Coverage feedback for libFuzzer in every library, with the address and
# undefined-behaviour checks; only the harnesses link the fuzzer's main.
if(TREKMIME_FUZZ)
  target_compile_options(trekmime_common INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  target_link_options(trekmime_common INTERFACE -fsanitize=address,undefined)
endif()

# Line-count instrumentation for scripts/coverage; meant for an unoptimised
# (Debug) build so that each source line maps to the code that ran.
if(TREKMIME_COVERAGE)
  target_compile_options(trekmime_common INTERFACE --coverage)
  target_link_options(trekmime_common INTERFACE --coverage)
endif()

# trekmime_library(name SOURCES ... PUBLIC ... PRIVATE ...): one static
# library per source folder, linked against the common settings. What its
# headers include goes after PUBLIC, what only its sources use after PRIVATE.
function(trekmime_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "trekmime_library(${name}): unknown arguments ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC trekmime_common ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
endfunction()

# trekmime_test(name CLASSES ... SOURCES ... LIBS ...): one Qt Test executable
# (the test classes of one folder, run by the shared main of tests/support)
# and one CTest test per class, "<name>.<Class>", run on the offscreen
# platform, in UTC, with a fixed locale. A further test, "<name>.classes",
# fails when the classes the executable registers differ from the list, so a
# class cannot be left out of CTest unnoticed.
function(trekmime_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "CLASSES;SOURCES;LIBS" ${ARGN})
  if(NOT ARG_CLASSES)
    message(FATAL_ERROR "trekmime_test(${name}): list the test classes after CLASSES")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE trekmime_common trekmime_testsupport trekmime_testmain
                        Qt6::Test ${ARG_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  set(environment
    "QT_QPA_PLATFORM=offscreen;TZ=UTC;LANG=C.UTF-8;LC_ALL=C.UTF-8;LANGUAGE=;QT_LOGGING_RULES=qt.qpa.*=false")
  foreach(class ${ARG_CLASSES})
    add_test(NAME ${name}.${class} COMMAND ${name} -class ${class})
    set_tests_properties(${name}.${class} PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "${environment}")
  endforeach()
  list(JOIN ARG_CLASSES "," class_list)
  add_test(NAME ${name}.classes COMMAND ${name} -check-classes ${class_list})
  set_tests_properties(${name}.classes PROPERTIES TIMEOUT 60 ENVIRONMENT "${environment}")
endfunction()
