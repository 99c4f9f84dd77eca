# Included right after project(OVCore) by Toolchain.cmake: compiles check the syntax and
# meaning of each source (warnings are errors as in every build) and leave an empty object
# behind; links, archives and the import libraries become empty files. The host's Qt tools
# (moc, rcc, lrelease) run as usual, so their output is compiled too.
set(CMAKE_CXX_COMPILE_OBJECT
    "<CMAKE_CXX_COMPILER> <DEFINES> <INCLUDES> <FLAGS> -fsyntax-only <SOURCE>"
    "${CMAKE_COMMAND} -E touch <OBJECT>")
foreach(rule CMAKE_CXX_CREATE_SHARED_LIBRARY CMAKE_CXX_CREATE_SHARED_MODULE CMAKE_CXX_LINK_EXECUTABLE)
    set(${rule} "${CMAKE_COMMAND} -E touch <TARGET> <TARGET_IMPLIB>")
endforeach()
set(CMAKE_CXX_ARCHIVE_CREATE "${CMAKE_COMMAND} -E touch <TARGET>")
set(CMAKE_CXX_ARCHIVE_APPEND "${CMAKE_COMMAND} -E touch <TARGET>")
set(CMAKE_CXX_ARCHIVE_FINISH "")

# Little CMS's header lies in /usr/include among the host's C library headers, which the
# cross compiler must not see; it gets a folder of its own.
set(_ov_lcms_dir ${CMAKE_BINARY_DIR}/windows-include)
file(COPY /usr/include/lcms2.h DESTINATION ${_ov_lcms_dir})
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${_ov_lcms_dir})

# Nothing is linked, but a Windows target still wants an import library for every imported
# shared library; the host's Qt has none, so its libraries stand in for them.
function(_ov_give_implibs directory)
    get_property(targets DIRECTORY ${directory} PROPERTY IMPORTED_TARGETS)
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "SHARED_LIBRARY")
            get_target_property(location ${target} LOCATION)
            set_target_properties(${target} PROPERTIES IMPORTED_IMPLIB ${location})
        endif()
    endforeach()
    get_property(subdirectories DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
    foreach(subdirectory ${subdirectories})
        _ov_give_implibs(${subdirectory})
    endforeach()
endfunction()
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL _ov_give_implibs ${CMAKE_SOURCE_DIR})
