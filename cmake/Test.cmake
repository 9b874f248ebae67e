# kestrovan_test(name SOURCES files... LINKS targets... [OWN_SYSTEM] [MOCK_DEVICES] [ENVIRONMENT VAR=value...]
#                [TIMEOUT seconds])
# One test program, run by CTest as one test; of its surroundings, Rigs.cmake tells.
function(kestrovan_test name)
  cmake_parse_arguments(arg "OWN_SYSTEM;MOCK_DEVICES" "TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS) # GLib's headers have fields of these names
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock GTest::gtest_main)
  kestrovan_surround(${name})
  add_test(NAME ${name} COMMAND ${wrapper} $<TARGET_FILE:${name}> --gtest_brief=1)
  if(arg_MOCK_DEVICES)
    list(APPEND arg_ENVIRONMENT ASAN_OPTIONS=verify_asan_link_order=0)
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "${arg_ENVIRONMENT}")
endfunction()

# Adds every subfolder that has a CMakeLists.txt.
function(kestrovan_add_subfolders)
  file(GLOB lists CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*/CMakeLists.txt)
  foreach(list ${lists})
    get_filename_component(folder ${list} DIRECTORY)
    add_subdirectory(${folder})
  endforeach()
endfunction()

# kestrovan_view_test(...) is a kestrovan_test of views: it has a QGuiApplication without a screen, and ViewStage.h.
function(kestrovan_view_test name)
  kestrovan_test(${name} ${ARGN})
  target_sources(${name} PRIVATE ${rigs}/OffscreenMain.cpp)
  target_link_libraries(${name} PRIVATE kestrovan_view_rigs)
endfunction()
