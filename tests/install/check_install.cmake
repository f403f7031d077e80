# Installs the build tree into a scratch prefix, then configures, builds and
# runs the consumer project against it.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "command failed (${rc}): ${ARGN}\n${out}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR}/build
    -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Debug)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer ${WORK_DIR}/consumer.scr)
file(READ ${WORK_DIR}/consumer.scr script)
if(NOT script MATCHES "QtSignal consumer_window Save_Action triggered\n")
    message(FATAL_ERROR "consumer did not record its action:\n${script}")
endif()
