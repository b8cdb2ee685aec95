# Writes the manual page a program prints with --man: cmake -DPROGRAM=... -DOUTPUT=... -P ManPage.cmake
execute_process(COMMAND ${PROGRAM} --man OUTPUT_FILE ${OUTPUT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    file(REMOVE ${OUTPUT})
    message(FATAL_ERROR "${PROGRAM} --man failed: ${result}")
endif()
