# Runs a host program on a job and compares what it prints with the expected
# lines; Windows ends its lines with a carriage return as well.
# usage: cmake -DHOST=... -DEMULATOR=... -DJOB=... -DEXPECTED=... -P run_host.cmake
execute_process(COMMAND ${EMULATOR} ${HOST} ${JOB} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
string(REPLACE "\r" "" output "${output}")
file(READ ${EXPECTED} expected)
if(NOT result EQUAL 0 OR NOT output STREQUAL expected)
  message(FATAL_ERROR "host exit status ${result}\n${errors}\nprinted:\n${output}\nexpected:\n${expected}")
endif()
message(STATUS "host printed the expected lines")
