# Makes one ".rcc" file that holds a resource "core" from a document, the way a host embeds its
# telemetry configuration: the document's bytes as hexadecimal text.
#
#   cmake -DSOURCE=<file> -DFORM=<hex|wrapped|raw|big> -DOUTPUT=<file.rcc> -DRCC=<rcc> -P MakeCoreResource.cmake
#
# hex: the hex text; wrapped: the hex text broken by blanks and newlines; raw: the file as it
# is; big: the hex text with "@BODY@" replaced by five million "v" (about 10 MB of text).
file(READ "${SOURCE}" content HEX)
if(FORM STREQUAL "raw")
    file(READ "${SOURCE}" content)
elseif(FORM STREQUAL "wrapped")
    string(REGEX REPLACE "([0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f][0-9a-f])" "\\1 \n" content "${content}")
elseif(FORM STREQUAL "big")
    string(REPEAT "76" 5000000 body)
    string(REPLACE "40424f445940" "${body}" content "${content}")
endif()
get_filename_component(folder "${OUTPUT}" DIRECTORY)
get_filename_component(name "${OUTPUT}" NAME_WE)
set(work "${folder}/${name}")
file(MAKE_DIRECTORY "${work}")
file(WRITE "${work}/core" "${content}")
file(WRITE "${work}/core.qrc" "<RCC><qresource prefix=\"/\"><file>core</file></qresource></RCC>\n")
execute_process(COMMAND "${RCC}" -binary "${work}/core.qrc" -o "${OUTPUT}" RESULT_VARIABLE failed)
if(failed)
    message(FATAL_ERROR "rcc failed for ${SOURCE}")
endif()
