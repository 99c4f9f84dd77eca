# ov_add_library(<target> EXPORT_MACRO <define> OUTPUT_NAME <name> HEADERS ... SOURCES ...)
#
# One shared library of the product family: its public headers live in the include/ folder
# beside its sources, are installed flat into include/OVCore, and the target joins the
# OVCoreTargets export set so that it is reachable as OVCore::<target> after installation (and
# by the same name in this build).
function(ov_add_library target)
    cmake_parse_arguments(ARG "" "EXPORT_MACRO;OUTPUT_NAME;INCLUDE_DIR" "HEADERS;SOURCES" ${ARGN})
    if(NOT ARG_INCLUDE_DIR)
        set(ARG_INCLUDE_DIR ${CMAKE_CURRENT_SOURCE_DIR}/include)
    endif()
    add_library(${target} SHARED ${ARG_HEADERS} ${ARG_SOURCES})
    add_library(OVCore::${target} ALIAS ${target})
    target_compile_definitions(${target} PRIVATE ${ARG_EXPORT_MACRO})
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${ARG_INCLUDE_DIR}>
        $<INSTALL_INTERFACE:${OVCORE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${ARG_OUTPUT_NAME}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin
        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
    install(TARGETS ${target} EXPORT OVCoreTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${ARG_HEADERS} DESTINATION ${OVCORE_INSTALL_INCLUDEDIR})
    # The installed headers are the ones the API reference (docs/) covers.
    foreach(header ${ARG_HEADERS})
        get_filename_component(header ${header} ABSOLUTE)
        set_property(GLOBAL APPEND PROPERTY OVCORE_INSTALLED_HEADERS ${header})
    endforeach()
endfunction()
