# Writes the manual page a program prints with --man, and its compressed form for installation:
#   cmake -DPROGRAM=... -DOUTPUT=page.1 -P ManPage.cmake      (writes page.1 and page.1.gz)
execute_process(COMMAND ${PROGRAM} --man OUTPUT_FILE ${OUTPUT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    file(REMOVE ${OUTPUT})
    message(FATAL_ERROR "${PROGRAM} --man failed: ${result}")
endif()
# Without a name or time stamp in the header, so that the same page always compresses to the same bytes.
execute_process(COMMAND gzip -9 -n -c ${OUTPUT} OUTPUT_FILE ${OUTPUT}.gz RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "gzip of ${OUTPUT} failed: ${result}")
endif()
