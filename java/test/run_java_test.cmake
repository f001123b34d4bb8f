# Runs one Java test program: cmake -DJAVA=... -DCLASSPATH=... -DPROGRAM=... -DARGUMENTS=... -DOPTIONS=...
# -DCHECK_JNI=0|1 -DPRELOAD=... -DNAME=... -DDIRECTORY=... -P this
# Standard error holds the library's log, which the program reads while it runs.
set(log "${DIRECTORY}/${NAME}.log")
set(options ${OPTIONS} "-Dqx.test.log=${log}")
if(CHECK_JNI)
  list(APPEND options -Xcheck:jni)
endif()
execute_process(
  COMMAND "${CMAKE_COMMAND}" -E env ${PRELOAD} "${JAVA}" ${options} -cp "${CLASSPATH}" ${PROGRAM} ${ARGUMENTS}
  ERROR_FILE "${log}" OUTPUT_VARIABLE output RESULT_VARIABLE result)
message("${output}")
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${result}; the library's log is in ${log}")
endif()
# A VM that checks the calls prints what it does not like, and goes on.
if(output MATCHES "WARNING|FATAL ERROR in native method")
  message(FATAL_ERROR "${PROGRAM}: the VM complains about JNI calls")
endif()
