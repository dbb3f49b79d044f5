# What every target of this project has in common.
#
# The runtime is linked statically everywhere: the library is loaded into other people's processes and must bring
# nothing along, and the programs run from a folder that holds nothing else.
function(mr_configure target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
  if(WIN32)
    target_compile_definitions(${target} PRIVATE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 _WIN32_IE=0x0900)
    target_link_options(${target} PRIVATE -static)
    # The debugger of the test environment reads version 4, not 5.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-gdwarf-4>)
  endif()
endfunction()

# Installs headers of one source folder below include/RecorderHooks, so that includes read the same everywhere.
function(mr_install_headers folder)
  install(FILES ${ARGN} DESTINATION include/RecorderHooks/${folder})
endfunction()

# Gives a program its version resource: what the system's file properties show.
function(mr_version_resource target description)
  set(MR_DESCRIPTION "${description}")
  set(MR_PROGRAM ${target})
  configure_file(${CMAKE_SOURCE_DIR}/cmake/program.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
endfunction()
