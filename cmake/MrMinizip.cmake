# The target mr_minizip: zip reading and writing over zlib.
#
# The toolchain's own where there is one (MSYS2); else it is compiled here, for this target and with this build's
# flags, from the distribution's source package.
if(CMAKE_HOST_WIN32)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(MINIZIP REQUIRED IMPORTED_TARGET minizip)
  add_library(mr_minizip INTERFACE)
  # The headers are included as <minizip/...> from everywhere.
  target_include_directories(mr_minizip INTERFACE ${MINIZIP_INCLUDEDIR})
  target_link_libraries(mr_minizip INTERFACE PkgConfig::MINIZIP z)
  return()
endif()

set(mr_minizip_folder ${CMAKE_SOURCE_DIR}/build/minizip)
execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/get-minizip ${mr_minizip_folder} RESULT_VARIABLE mr_minizip_result)
if(mr_minizip_result)
  message(FATAL_ERROR "minizip is needed and tools/get-minizip could not bring it")
endif()

add_library(mr_minizip STATIC
  ${mr_minizip_folder}/minizip/zip.c
  ${mr_minizip_folder}/minizip/unzip.c
  ${mr_minizip_folder}/minizip/ioapi.c
)
# Not our code: its warnings are not ours to mend.
target_compile_options(mr_minizip PRIVATE -w)
target_include_directories(mr_minizip SYSTEM PUBLIC ${mr_minizip_folder})
target_link_libraries(mr_minizip PUBLIC z)
