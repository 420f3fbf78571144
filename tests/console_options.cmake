# The console's options that name a file refuse an empty value as they
# refuse a missing one: a message on standard error and status 2, and
# nothing run or written.
foreach(option --save --drawing --input --script --arx --module)
  execute_process(COMMAND ${CONSOLE} --eval "(princ \"ran\")" ${option} ""
    WORKING_DIRECTORY ${WORKDIR}
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
  if(NOT status EQUAL 2)
    message(FATAL_ERROR "${option} \"\": status ${status}, expected 2\n${out}\n${err}")
  endif()
  if(NOT err MATCHES "^kelcad: ${option} needs a value\n")
    message(FATAL_ERROR "${option} \"\": message [${err}]")
  endif()
  if(out MATCHES "ran")
    message(FATAL_ERROR "${option} \"\": the expression ran")
  endif()
endforeach()
