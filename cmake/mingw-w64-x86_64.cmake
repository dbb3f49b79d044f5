# Cross build for 64-bit Windows on Linux; programs of the build run through Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mr_triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mr_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mr_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${mr_triple}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${mr_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# The wrapper sets the Wine prefix of the test run.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run)
