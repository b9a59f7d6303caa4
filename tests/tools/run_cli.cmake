# Runs the cadtools command line once and checks what it did: the exact exit
# status (add_test alone only tells zero from non-zero), standard output and
# error against regular expressions, and the contents of a file it wrote.
#
#   cmake -DCLI=program [-DEMULATOR=list] -DARGS=list -DEXIT=status
#         [-DINPUT=file] [-DSTDOUT=regex] [-DSTDERR=regex]
#         [-DFILE=path -DCONTAINS=regex-list] -P run_cli.cmake
#
# INPUT is given to the program as its standard input (none otherwise).
#
# EMULATOR runs Windows builds under wine. Windows programs end lines with
# \r\n, so multi-line expressions match line ends with [\r\n]+.

if(FILE)
  file(REMOVE "${FILE}")
endif()

if(INPUT)
  set(input INPUT_FILE "${INPUT}")
else()
  set(input INPUT_FILE /dev/null)
endif()
execute_process(COMMAND ${EMULATOR} "${CLI}" ${ARGS} ${input}
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)

set(problems "")
if(NOT status STREQUAL EXIT)
  string(APPEND problems "exit status ${status}, expected ${EXIT}\n")
endif()
if(NOT STDOUT STREQUAL "" AND NOT out MATCHES "${STDOUT}")
  string(APPEND problems "standard output does not match: ${STDOUT}\n")
endif()
if(NOT STDERR STREQUAL "" AND NOT err MATCHES "${STDERR}")
  string(APPEND problems "standard error does not match: ${STDERR}\n")
endif()
if(FILE)
  if(NOT EXISTS "${FILE}")
    string(APPEND problems "no file ${FILE}\n")
  else()
    file(READ "${FILE}" content)
    foreach(re IN LISTS CONTAINS)
      if(NOT content MATCHES "${re}")
        string(APPEND problems "${FILE} does not match: ${re}\n")
      endif()
    endforeach()
  endif()
endif()

if(problems)
  string(REPLACE ";" " " shown "${ARGS}")
  message(FATAL_ERROR "cadtools ${shown}\n${problems}--- stdout ---\n${out}--- stderr ---\n${err}")
endif()
