# Translations compiled at build time by lrelease (Debian package qttools5-dev-tools), which is
# looked for beside the qmake of the Qt in use.
get_target_property(_ov_qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(_ov_qt_bin_dir ${_ov_qmake} DIRECTORY)
find_program(OVCORE_LRELEASE NAMES lrelease-qt5 lrelease HINTS ${_ov_qt_bin_dir} /usr/lib/qt5/bin)

# ov_add_translations(<target> [OPTIONAL] FILES <ts> <qm> [<ts> <qm> ...])
# A target that compiles each ".ts" file into the ".qm" file named after it. Without lrelease
# the build stops, or with OPTIONAL warns and makes a target that compiles nothing.
function(ov_add_translations target)
    cmake_parse_arguments(ARG "OPTIONAL" "" "FILES" ${ARGN})
    set(qm_files)
    if(OVCORE_LRELEASE)
        set(pairs ${ARG_FILES})
        while(pairs)
            list(POP_FRONT pairs ts qm)
            get_filename_component(qm_dir ${qm} DIRECTORY)
            add_custom_command(OUTPUT ${qm}
                COMMAND ${CMAKE_COMMAND} -E make_directory ${qm_dir}
                COMMAND ${OVCORE_LRELEASE} -silent ${ts} -qm ${qm}
                DEPENDS ${ts} VERBATIM)
            list(APPEND qm_files ${qm})
        endwhile()
    elseif(ARG_OPTIONAL)
        message(WARNING "lrelease not found: ${target} compiles no translations")
    else()
        message(FATAL_ERROR "lrelease not found (Debian package qttools5-dev-tools)")
    endif()
    add_custom_target(${target} DEPENDS ${qm_files})
endfunction()
