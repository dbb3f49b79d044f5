# cmake -P: builds the resource map of the sample host.
#   MRMAP              the map tool
#   EMULATOR           what runs it; empty on Windows itself
#   SOURCES            the folder of the sample host's sources
#   PLATFORM_HEADERS   the folder of winuser.h
#   FOLDER             laid out like an installation: the map comes to FOLDER/file/ui_recording
if(CMAKE_HOST_WIN32)
  set(root "")
else()
  set(root "Z:")  # where Wine shows this machine's files
endif()
file(MAKE_DIRECTORY ${FOLDER}/file/ui_recording)
set(ENV{SAMPLECAD_SOURCES} ${root}${SOURCES})
set(ENV{PLATFORM_HEADERS} ${root}${PLATFORM_HEADERS})
string(REPLACE "/" "\\" application_folder "${root}${FOLDER}/bin/x64")
set(ENV{ZQ_APPLICATION_FOLDER} ${application_folder})
# Forced: names come and go while the sample host is being worked on.
execute_process(COMMAND ${EMULATOR} ${MRMAP} build ${root}${SOURCES}/SampleCad.xml --force --clean
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "mrmap (${result}):\n${output}")
endif()
