# cmake -P script: install, build the README's plug-ins (examples/guide) and a host project
# against the installation, and run the host on the plug-ins.
foreach(var BUILD_DIR WORK_DIR CONSUMER_SOURCE GUIDE_SOURCE CXX_COMPILER GENERATOR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/home ${WORK_DIR}/appdata)
set(prefix ${WORK_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc)
    if(NOT rc EQUAL 0)
        string(REPLACE ";" " " cmd "${ARGN}")
        message(FATAL_ERROR "Failed (${rc}): ${cmd}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

foreach(header OVApplication.h OVCoreExport.h OVPluginContainer.h OVImageFilePlugin.h OVCMSProfile.h
        OVPixelRatioRound.h)
    if(NOT EXISTS ${prefix}/include/OVCore/${header})
        message(FATAL_ERROR "Installed headers lack ${header}")
    endif()
endforeach()

foreach(project guide consumer)
    string(TOUPPER ${project} source)
    run(${CMAKE_COMMAND} -S ${${source}_SOURCE} -B ${WORK_DIR}/${project} -G ${GENERATOR}
        -DCMAKE_PREFIX_PATH=${prefix}
        -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
        "-DCMAKE_CXX_FLAGS=${CXX_FLAGS} -Wall -Wextra -Werror"
        "-DCMAKE_EXE_LINKER_FLAGS=${CXX_FLAGS}"
        "-DCMAKE_MODULE_LINKER_FLAGS=${CXX_FLAGS}"
        "-DCMAKE_SHARED_LINKER_FLAGS=${CXX_FLAGS}")
    run(${CMAKE_COMMAND} --build ${WORK_DIR}/${project})
endforeach()
run(${WORK_DIR}/consumer/consumer ${WORK_DIR}/guide/plugins ${WORK_DIR})
