# Runs a session of cadtools commands against the settings, one after the
# other, and checks the last one as run_cli.cmake does.
#
#   cmake -DCLI=program [-DEMULATOR=list] -DSTEPS=list -DCLEANUP=list -DEXIT=status
#         [-DSTDOUT=regex] [-DSTDERR=regex] [-DSAME=fileA;fileB] -P run_settings.cmake
#
# STEPS holds the words of each command, the commands separated by the word
# --then. Every command but the last must exit 0, or 1 when its first word
# is "!" (a command that must fail, such as an import of a broken file).
# CLEANUP (one command) runs before and after the session, whatever its
# result, so that a session leaves no keys behind in a shared registry.
# STDOUT and STDERR are matched against what all the commands wrote there,
# one after the other; SAME names two files that must end up byte for byte
# the same, the second one written by the session (it is removed first).

function(run words out_status out_stdout out_stderr)
  execute_process(COMMAND ${EMULATOR} "${CLI}" ${words} INPUT_FILE /dev/null
                  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  set(${out_status} "${status}" PARENT_SCOPE)
  set(${out_stdout} "${out}" PARENT_SCOPE)
  set(${out_stderr} "${err}" PARENT_SCOPE)
endfunction()

run("${CLEANUP}" ignored ignored ignored)
if(SAME)
  list(GET SAME 1 written)
  file(REMOVE "${written}")
endif()

# Split STEPS at --then.
set(commands "")
set(current "")
set(count 0)
foreach(word IN LISTS STEPS)
  if(word STREQUAL "--then")
    math(EXPR count "${count} + 1")
    set(command_${count} "${current}")
    set(current "")
  else()
    list(APPEND current "${word}")
  endif()
endforeach()
math(EXPR count "${count} + 1")
set(command_${count} "${current}")

set(problems "")
set(log "")
set(output "")
set(errors "")
foreach(i RANGE 1 ${count})
  set(words "${command_${i}}")
  set(want 0)
  list(GET words 0 first)
  if(first STREQUAL "!")
    list(REMOVE_AT words 0)
    set(want 1)
  endif()
  if(i EQUAL count)
    set(want "${EXIT}")
  endif()
  run("${words}" status out err)
  string(APPEND output "${out}")
  string(APPEND errors "${err}")
  string(REPLACE ";" " " shown "${words}")
  string(APPEND log "$ cadtools ${shown}\n${out}${err}")
  if(NOT status STREQUAL want)
    string(APPEND problems "step ${i} (cadtools ${shown}): exit status ${status}, expected ${want}\n")
  endif()
endforeach()

if(NOT STDOUT STREQUAL "" AND NOT output MATCHES "${STDOUT}")
  string(APPEND problems "standard output does not match: ${STDOUT}\n")
endif()
if(NOT STDERR STREQUAL "" AND NOT errors MATCHES "${STDERR}")
  string(APPEND problems "standard error does not match: ${STDERR}\n")
endif()
if(SAME)
  list(GET SAME 0 a)
  list(GET SAME 1 b)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${a}" "${b}" RESULT_VARIABLE differ)
  if(differ)
    string(APPEND problems "${a} and ${b} differ\n")
  endif()
endif()

run("${CLEANUP}" ignored ignored ignored)

if(problems)
  message(FATAL_ERROR "${problems}--- session ---\n${log}")
endif()
