# The family template data/template/kelstd.dxf is what its script builds:
# the console runs tools/template/kelstd.lsp on its default drawing and the
# drawing it saves must equal the shipped file byte for byte.
file(REMOVE_RECURSE ${WORKDIR})
file(MAKE_DIRECTORY ${WORKDIR}/home)
execute_process(COMMAND ${CMAKE_COMMAND} -E env HOME=${WORKDIR}/home XDG_CONFIG_HOME=${WORKDIR}/home/.config
                  ${CONSOLE} ${SCRIPT} --save ${WORKDIR}/kelstd.dxf
  WORKING_DIRECTORY ${WORKDIR}
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the template script failed (${status}):\n${out}\n${err}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORKDIR}/kelstd.dxf ${SHIPPED} RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "${SHIPPED} is not what ${SCRIPT} builds: run\n"
                      "  kelcad ${SCRIPT} --save ${SHIPPED}")
endif()
