# kestrovan_bench(name SOURCES files... LINKS targets... [OWN_SYSTEM] [MOCK_DEVICES])
# One program of benchmarks, bin/bench_NAME, which prints its table by itself; it finds the rigs of the tests as
# "rigs/…" and the table as "LatencyTable.h". With surroundings (see Rigs.cmake) that name is a script, which starts the
# program in them. Built by the target `bench` alone: a build for the tests goes without.
add_custom_target(bench)
add_library(kestrovan_latency_table STATIC EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/bench/LatencyTable.cpp)
target_include_directories(kestrovan_latency_table PUBLIC ${PROJECT_SOURCE_DIR}/bench ${PROJECT_SOURCE_DIR}/tests)

function(kestrovan_bench name)
  cmake_parse_arguments(arg "OWN_SYSTEM;MOCK_DEVICES" "" "SOURCES;LINKS" ${ARGN})
  set(target bench_${name})
  add_executable(${target} EXCLUDE_FROM_ALL ${arg_SOURCES})
  target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS) # GLib's headers have fields of these names
  target_link_libraries(${target} PRIVATE kestrovan_latency_table ${arg_LINKS})
  kestrovan_surround(${target})
  add_dependencies(bench ${target})
  if(wrapper)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench/bin)
    list(JOIN wrapper " " words)
    file(GENERATE OUTPUT ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}
      CONTENT "#!/bin/sh\nexec ${words} \"$<TARGET_FILE:${target}>\" \"$@\"\n"
      FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
endfunction()
