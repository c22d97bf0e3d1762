# cmake -DPROGRAM=PATH -DNAME=NAME -DWORK=FOLDER -P command_line.cmake
# A program tells its usage on --help and refuses an option that it does not know, without waiting,
# without a display, and without leaving anything in the folder that it was started in.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(ENV{QT_QPA_PLATFORM} no_such_platform)

function(expect ARGUMENT CODE STREAM BEGINNING)
    execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGUMENT} WORKING_DIRECTORY ${WORK} TIMEOUT 30
        RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT code STREQUAL CODE)
        message(SEND_ERROR "${NAME} ${ARGUMENT} ends with ${code} instead of ${CODE}\n${out}${err}")
    endif()
    string(FIND "${${STREAM}}" "${BEGINNING}" place)
    if(NOT place EQUAL 0)
        message(SEND_ERROR "${NAME} ${ARGUMENT} does not begin with ${BEGINNING}\n${${STREAM}}")
    endif()
endfunction()

expect(--help 0 out "usage: ${NAME}")
expect(--no-such-option 2 err "${NAME}: there is no option --no-such-option\nusage: ${NAME}")

file(GLOB left ${WORK}/*)
if(left)
    message(SEND_ERROR "${NAME} has left ${left}")
endif()
