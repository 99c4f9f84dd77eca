# Makes one ".rcc" file holding the resource "core" from a document, the way a host embeds its
# telemetry configuration:
#   cmake -DSOURCE=<file> -DOUTPUT=<file.rcc> -DRCC=<rcc> -P MakeCoreResource.cmake
# An ".xml" document becomes hexadecimal text, with "@BODY@" replaced by five million "v" (about
# 10 MB of text); a ".raw" file is taken as it is.
if(SOURCE MATCHES "\\.raw$")
    file(READ "${SOURCE}" content)
else()
    file(READ "${SOURCE}" content HEX)
    string(REPEAT "76" 5000000 body)
    string(REPLACE "40424f445940" "${body}" content "${content}")
endif()
string(REGEX REPLACE "\\.rcc$" "" work "${OUTPUT}")
file(WRITE "${work}/core" "${content}")
file(WRITE "${work}/core.qrc" "<RCC><qresource prefix=\"/\"><file>core</file></qresource></RCC>\n")
execute_process(COMMAND "${RCC}" -binary "${work}/core.qrc" -o "${OUTPUT}" COMMAND_ERROR_IS_FATAL ANY)
