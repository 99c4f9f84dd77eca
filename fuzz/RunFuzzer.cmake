# cmake -P script run by each fuzz test: writes the generated seeds (if the target has a seed
# program), then runs the fuzz target for SECONDS on its seeds. Any finding (a crash, a
# sanitizer report, a leak, a huge allocation, an input that hangs) fails the test.
#   FUZZER    the fuzz target        NAME     its name
#   GENERATOR the seed program, or empty
#   SEEDS     the committed seeds    WORK     the fuzz build folder
#   SECONDS   how long to fuzz
set(generated ${WORK}/corpus/${NAME})
set(found ${WORK}/work/${NAME})
set(artifacts ${WORK}/artifacts)
file(MAKE_DIRECTORY ${generated} ${found} ${artifacts})

if(GENERATOR)
    execute_process(COMMAND ${GENERATOR} ${generated} RESULT_VARIABLE rc)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "The seed program of ${NAME} failed: ${rc}")
    endif()
endif()

# New inputs go into the first folder; the seed folders are only read.
set(corpora ${found} ${generated})
if(IS_DIRECTORY ${SEEDS})
    list(APPEND corpora ${SEEDS})
endif()

execute_process(
    COMMAND ${FUZZER}
        -max_total_time=${SECONDS}
        -timeout=30
        -malloc_limit_mb=256
        -print_final_stats=1
        -artifact_prefix=${artifacts}/${NAME}-
        ${corpora}
    RESULT_VARIABLE rc
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
string(REGEX MATCH "Done [0-9]+ runs in [0-9]+ second" done "${output}")
if(NOT rc EQUAL 0)
    message("${output}")
    message(FATAL_ERROR "fuzz_${NAME} found a fault (exit code ${rc}); the input is in ${artifacts}")
endif()
message("fuzz_${NAME}: ${done}")
