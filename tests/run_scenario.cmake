# Runs one AutoLISP scenario through the console in a fresh, private set of
# family directories and compares the command-line output with the expected
# file. A script may name its expected exit status on its first line as
# ";; exit: N" (default 0).
file(REMOVE_RECURSE ${WORKDIR})
file(MAKE_DIRECTORY ${WORKDIR}/install ${WORKDIR}/local ${WORKDIR}/work ${WORKDIR}/common ${WORKDIR}/home)
set(ENV{HOME} ${WORKDIR}/home)
set(ENV{XDG_CONFIG_HOME} ${WORKDIR}/home/.config)
set(ENV{KEL_INSTALL_DIR} ${WORKDIR}/install/)
set(ENV{KEL_LOCAL_DIR} ${WORKDIR}/local/)
set(ENV{KEL_WORK_DIR} ${WORKDIR}/work/)
set(ENV{KEL_COMMON_DIR} ${WORKDIR}/common/)
set(ENV{KEL_INIT_INI} ${WORKDIR}/install/KelInit.ini)
set(ENV{KEL_SYS_INI} ${WORKDIR}/install/KelSys.ini)
set(ENV{KEL_USER_INI} ${WORKDIR}/local/KelUser.ini)
set(ENV{KEL_GC_INI} ${WORKDIR}/work/Project.ini)
set(ENV{KEL_REGISTRY_FILE} ${WORKDIR}/home/registry.ini)
# Fixtures a scenario needs live beside it in NAME.d/ and are copied into
# the install directory.
get_filename_component(dir ${SCRIPT} DIRECTORY)
get_filename_component(name ${SCRIPT} NAME_WE)
if(IS_DIRECTORY ${dir}/${name}.d)
  file(COPY ${dir}/${name}.d/ DESTINATION ${WORKDIR}/install)
endif()
file(READ ${SCRIPT} head LIMIT 400)
set(expected_status 0)
if(head MATCHES "^;; exit: ([0-9]+)")
  set(expected_status ${CMAKE_MATCH_1})
endif()
# A command script runs as --script; answers to prompts come from
# NAME.input beside the script (else from nothing: the input ends at once).
# Extra console arguments may be named on the script's second line as
# ";; args: ..." (paths relative to the script's directory as @/; the
# tests' fixture application as @fixture@, its directory as @fixtures/).
set(run ${CONSOLE})
if(head MATCHES "\n;; args: ([^\n]*)")
  string(REPLACE "@/" "${dir}/" extra "${CMAKE_MATCH_1}")
  string(REPLACE "@fixture@" "${FIXTURE}" extra "${extra}")
  string(REPLACE "@fixtures/" "${FIXTURES}/" extra "${extra}")
  separate_arguments(extra UNIX_COMMAND "${extra}")
  list(APPEND run ${extra})
endif()
get_filename_component(ext ${SCRIPT} EXT)
if(ext STREQUAL ".scr")
  list(APPEND run --script ${SCRIPT})
else()
  list(APPEND run ${SCRIPT})
endif()
if(EXISTS ${dir}/${name}.input)
  list(APPEND run --input ${dir}/${name}.input)
else()
  list(APPEND run --input /dev/null)
endif()
execute_process(COMMAND ${run}
  WORKING_DIRECTORY ${WORKDIR}
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
file(WRITE ${WORKDIR}/actual.txt "${out}")
file(READ ${EXPECTED} want)
if(NOT out STREQUAL want)
  execute_process(COMMAND diff -u ${EXPECTED} ${WORKDIR}/actual.txt OUTPUT_VARIABLE d)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n${d}\nstderr:\n${err}")
endif()
if(NOT status EQUAL expected_status)
  message(FATAL_ERROR "exit status ${status}, expected ${expected_status}\nstderr:\n${err}")
endif()
