# kestrovan_qml_folder(name URI uri [USES uris...] DEPENDS targets... [RESOURCES files...])
# A source folder that is also a QML module: the types that its headers register and its .qml files, compiled in.
# Whoever uses the module calls qml_register_types_URI() once, with underscores for the dots of the URI; a linker would
# otherwise leave the types out of a static library. USES names the modules whose types ours derive from. (The tool that
# writes them down for qmllint knows a base class only by its whole name: `public kestrovan::GuardView`.)
set(QT_QML_GENERATE_QMLLS_INI OFF)

function(kestrovan_qml_folder name)
  cmake_parse_arguments(arg "" "URI" "USES;DEPENDS;RESOURCES" ${ARGN})
  kestrovan_folder(${name} DEPENDS ${arg_DEPENDS} Qt6::Quick)
  file(GLOB views CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.qml)
  file(GLOB headers CONFIGURE_DEPENDS *.h)
  target_sources(${name} PRIVATE ${headers})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  # moc looks only when a file that it has seen changes: a header that is new in an old build folder is none of those.
  file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  string(REPLACE "." "/" folder ${arg_URI})
  qt_add_qml_module(${name} URI ${arg_URI} VERSION 1.0 NO_PLUGIN DEPENDENCIES QtQuick ${arg_USES}
    RESOURCE_PREFIX /qt-project.org/imports OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder} QML_FILES ${views} RESOURCES ${arg_RESOURCES})
endfunction()
