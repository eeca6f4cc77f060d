# Plays the directed sequences on a new machine; fails where it gives something else than transcript.txt.
file(REMOVE_RECURSE ${MACHINE})
execute_process(COMMAND ${PROGRAM} --tests ${TESTS} --machine ${MACHINE} OUTPUT_FILE ${MACHINE}.txt RESULT_VARIABLE status)
execute_process(COMMAND diff -u ${TESTS}/transcript.txt ${MACHINE}.txt RESULT_VARIABLE differs)
if(NOT status EQUAL 0 OR NOT differs EQUAL 0)
  message(FATAL_ERROR "The machine gives something else. If Windows does as well, put ${MACHINE}.txt in the place of transcript.txt.")
endif()
