# kestrovan_wayland_protocol(target path) compiles a protocol into a library; its client header is found under the
# protocol's name, as in <keyboard-shortcuts-inhibit-unstable-v1.h>. A relative path is one within wayland-protocols.
enable_language(C)
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_get_variable(WAYLAND_PROTOCOLS wayland-protocols pkgdatadir)

function(kestrovan_wayland_protocol target path)
  cmake_path(GET path STEM name)
  cmake_path(ABSOLUTE_PATH path BASE_DIRECTORY ${WAYLAND_PROTOCOLS} OUTPUT_VARIABLE xml)
  set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}.h)
  set(code ${CMAKE_CURRENT_BINARY_DIR}/${name}.c)
  add_custom_command(OUTPUT ${header} ${code} DEPENDS ${xml} VERBATIM
    COMMAND ${WAYLAND_SCANNER} client-header ${xml} ${header}
    COMMAND ${WAYLAND_SCANNER} private-code ${xml} ${code})
  add_library(${target} STATIC ${code} ${header})
  target_include_directories(${target} SYSTEM INTERFACE ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${target} PUBLIC PkgConfig::WAYLAND)
endfunction()
