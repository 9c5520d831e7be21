# Runs PROGRAM and compares what it prints with the file EXPECTED. GroupIDs are drawn by chance and
# compared as "GroupID=N".
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with status ${status}")
endif()
file(READ ${EXPECTED} expected)
string(REGEX REPLACE "GroupID=-?[0-9]+" "GroupID=N" printed "${printed}")
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "Expected:\n${expected}\nPrinted:\n${printed}")
endif()
