# mr_add_test(NAME SOURCES file... [LIBRARIES target...] [SHARED_BLOCK] [DESKTOP])
#
# One GoogleTest program, every test of it a CTest test of its own (run by the emulator of a cross build).
# SHARED_BLOCK: the program writes the shared hook block or installs hooks. The block is common to every process of
#   the desktop session that loads the library, so such tests never run side by side.
# DESKTOP: the program uses the session's one mouse, keyboard, focus or foreground window. It runs alone: what belongs
#   to one gesture is told by real time too (a tenth of a second).
# Both kinds hold one CTest resource: a recording is visible to every hooked program.
function(mr_add_test name)
  cmake_parse_arguments(arg "SHARED_BLOCK;DESKTOP" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  mr_configure(${name})
  # The library is tested as it is released; the tests themselves compile in half the time without optimisation.
  target_compile_options(${name} PRIVATE -O0)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
  if(MR_ROUTE_LOGGER)
    target_compile_definitions(${name} PRIVATE MR_ROUTE_LOGGER)
  endif()
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock_main)
  set(properties TIMEOUT 120)
  if(arg_SHARED_BLOCK OR arg_DESKTOP)
    list(APPEND properties RESOURCE_LOCK desktop)
  endif()
  if(arg_DESKTOP)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES ${properties})
endfunction()
