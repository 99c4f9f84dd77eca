# ovcore_add_plugin(<name> SOURCES <source>... [OUTPUT_DIRECTORY <dir>] [INSTALL_DESTINATION <dir>])
#
# A plug-in library as the editor's plug-in loader looks for it: a module named <name>.dll on
# Windows and <name>.so elsewhere, without the "lib" prefix, so that its base name is <name>
# (OVApplication::LoadPlugins(flags) and PluginFileName() take the well-known libraries by
# their base names: "adjustments", "filter", "imageio", "basictools", "generaltools").
# It links OVCore::core, the registries a container enters its objects into, and
# OVCore::plugincore, the interfaces it implements, and runs moc on its sources.
#
# OUTPUT_DIRECTORY: where the built library goes (a plug-in folder of a development layout).
# INSTALL_DESTINATION: the plug-in folder, relative to the install prefix, to install it into.
function(ovcore_add_plugin name)
    cmake_parse_arguments(ARG "" "OUTPUT_DIRECTORY;INSTALL_DESTINATION" "SOURCES" ${ARGN})
    if(NOT ARG_SOURCES)
        message(FATAL_ERROR "ovcore_add_plugin(${name}): no SOURCES")
    endif()
    add_library(${name} MODULE ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE OVCore::core OVCore::plugincore)
    if(WIN32)
        set(suffix .dll)
    else()
        set(suffix .so)
    endif()
    set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ${suffix} AUTOMOC ON)
    if(ARG_OUTPUT_DIRECTORY)
        set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${ARG_OUTPUT_DIRECTORY})
    endif()
    if(ARG_INSTALL_DESTINATION)
        install(TARGETS ${name} LIBRARY DESTINATION ${ARG_INSTALL_DESTINATION})
    endif()
endfunction()
