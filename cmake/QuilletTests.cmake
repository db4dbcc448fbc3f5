include(GoogleTest)
if(CMAKE_CROSSCOMPILING)
  # Debian ships the sources beside the libraries; a cross build makes its own.
  set(BUILD_GMOCK ON CACHE INTERNAL "")
  set(INSTALL_GTEST OFF CACHE INTERNAL "")
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
  # Programs run under Wine, as script/windows has prepared it; the build itself needs no Wine.
  set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_SOURCE_DIR}/script/on-wine" "${CMAKE_BINARY_DIR}")
  set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
else()
  find_package(GTest REQUIRED)
endif()

# quillet_test(core [TOOLKIT widgets|paint] SOURCES a_test.cpp ... USES quillet_core ...): the program core_tests,
# one CTest entry per test; TOOLKIT names what it uses of Qt. Tests run from <build>/bin, where Data/ and
# demo/content/ lie.
function(quillet_test folder)
  cmake_parse_arguments(ARG "" "TOOLKIT" "SOURCES;USES" ${ARGN})
  string(REPLACE "/" "_" name "${folder}")
  set(target ${name}_tests)
  add_executable(${target} ${ARG_SOURCES})
  quillet_options(${target})
  set(toolkit_headers)
  if(ARG_TOOLKIT STREQUAL "widgets")
    set(toolkit_headers ${QUILLET_WIDGET_HEADERS})
  elseif(ARG_TOOLKIT STREQUAL "paint")
    set(toolkit_headers ${QUILLET_PAINT_HEADERS})
  endif()
  quillet_precompile(${target} "test_${ARG_TOOLKIT}" ${toolkit_headers} <gtest/gtest.h> ${QUILLET_STD_HEADERS})
  if(NOT MSVC)
    # The programs under test are as fast as ever; their tests need not be, and compile in half the time.
    target_compile_options(${target} PRIVATE -O0)
  endif()
  if(CMAKE_CROSSCOMPILING)
    # mingw's g++ 12 sees uninitialised strings in tables of texts, where the same compiler sees none natively.
    target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
  endif()
  target_link_libraries(${target} PRIVATE ${ARG_USES} GTest::gmock_main)
  if(ARG_TOOLKIT)
    quillet_draws_anywhere(${target})
  endif()
  target_compile_definitions(${target} PRIVATE QUILLET_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  add_dependencies(${target} quillet_data)
  gtest_discover_tests(${target}
    WORKING_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
