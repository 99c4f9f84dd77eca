# cmake -P script: fails when a C++ file of the project is not formatted as .clang-format says.
set(files)
foreach(folder include src family tests examples benchmarks)
    file(GLOB_RECURSE found ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND files ${found})
endforeach()
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror --style=file ${files}
    WORKING_DIRECTORY ${SOURCE_DIR}
    RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Some files are not clang-format clean; run: clang-format -i <file>")
endif()
