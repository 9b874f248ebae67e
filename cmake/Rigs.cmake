# The rigs of tests/rigs/, compiled once for all tests and benchmarks: their targets link what they use of them.
pkg_check_modules(UMOCKDEV REQUIRED IMPORTED_TARGET umockdev-1.0)
pkg_check_modules(SM REQUIRED IMPORTED_TARGET sm ice)
set(rigs ${PROJECT_SOURCE_DIR}/tests/rigs)

# kestrovan_rig(name SOURCES files... LINKS targets...)
function(kestrovan_rig name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  list(TRANSFORM arg_SOURCES PREPEND ${rigs}/)
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PUBLIC ${arg_LINKS})
endfunction()

kestrovan_rig(kestrovan_rigs
  SOURCES GlaringProgram.cpp HeadlessSway.cpp MonitorRecorder.cpp PrivateDisplay.cpp Program.cpp RunningKestrovan.cpp
          ScreenReader.cpp SoundServer.cpp TrayHost.cpp TwoOutputs.cpp WebServer.cpp WitnessClient.cpp
  LINKS kestrovan_linux)
target_compile_definitions(kestrovan_rigs PUBLIC KESTROVAN_PROGRAM="$<TARGET_FILE:kestrovan>"
                           XSMP_SERVER="$<TARGET_FILE:xsmp_server>" PRIVATE KESTROVAN_RIGS="${rigs}")

kestrovan_rig(kestrovan_view_rigs SOURCES ViewStage.cpp LINKS Qt6::Quick Qt6::Test)

# It takes the place of a function of the C library, for the libraries as well: no other program wants it.
kestrovan_rig(kestrovan_camera_rigs SOURCES VirtualCamera.cpp LINKS PkgConfig::UMOCKDEV ${CMAKE_DL_LIBS})
target_link_options(kestrovan_camera_rigs INTERFACE -rdynamic)

add_executable(xsmp_server EXCLUDE_FROM_ALL ${rigs}/XsmpServer.cpp)
target_link_libraries(xsmp_server PRIVATE PkgConfig::SM)

# What the words OWN_SYSTEM and MOCK_DEVICES after kestrovan_test and kestrovan_bench stand for, and the `wrapper` that a
# program is started under for it: namespaces in which it may have buses and a logind, and a preloaded library that mocks
# /sys and /dev, which the address sanitizer's own comes after.
macro(kestrovan_surround target)
  set(wrapper)
  if(arg_OWN_SYSTEM)
    list(APPEND wrapper ${rigs}/private_system.sh)
  endif()
  if(arg_MOCK_DEVICES)
    list(APPEND wrapper umockdev-wrapper)
    target_link_libraries(${target} PRIVATE PkgConfig::UMOCKDEV)
  endif()
endmacro()
