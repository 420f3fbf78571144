file(REMOVE_RECURSE ${WORK})
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(LAST_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK}/prefix)
run(${CMAKE_COMMAND} -S ${PROJECT_DIR} -B ${WORK}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_BUILD_TYPE=Debug
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_SHARED_LINKER_FLAGS=${LINKER_FLAGS}"
    "-DCMAKE_MODULE_LINKER_FLAGS=${LINKER_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK}/build)

file(MAKE_DIRECTORY ${WORK}/home)
set(ENV{HOME} ${WORK}/home)
set(ENV{XDG_CONFIG_HOME} ${WORK}/home/.config)
set(ENV{XDG_DATA_HOME} ${WORK}/home/.local/share)
unset(ENV{KELCAD_ARX})
run(${WORK}/prefix/bin/kelcad --arx ${WORK}/build/KELSIB.arx
    --eval "(kelsib_check '(1 2 3) '(1 2 7))"
    --eval "(kelsib_area '(0 0 0) '(10 0 0) '(10 10 0) '(0 10 0))"
    --eval "(kelsib_vars)"
    --eval "(kelsib_draw)"
    --eval "(kelsib_oxdata (entmakex '((0 . \"POINT\") (10 1.0 2.0 0.0))))"
    --eval "(kelsib_arc)")
set(expected "(3 T)\n100.0\n(4133 0 1)\n(0 1 3 5 1 1 1 1 1 1 1 1 1 1 30)\n(\"sibling\" 1 42)\n(1.5708 T 2)\n")
if(NOT LAST_OUTPUT STREQUAL expected)
  message(FATAL_ERROR "sibling answered [${LAST_OUTPUT}], expected [${expected}]")
endif()
