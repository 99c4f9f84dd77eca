# cmake -P script: install, build a consumer project against the installation, run it.
foreach(var BUILD_DIR WORK_DIR CONSUMER_SOURCE CXX_COMPILER GENERATOR)
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

run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_SHARED_LINKER_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer ${WORK_DIR}/build)
