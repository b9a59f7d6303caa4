include_guard(GLOBAL)
# Managed assemblies built with Mono's C# compiler, on every build host
# (the cross builds included: an assembly is the same file for every
# runtime and processor).
#
#   cadtools_managed_assembly(NAME CadTools.Bridge OUTPUT_DIR dir SOURCES a.cs ...
#                             [REFERENCES System.Windows.Forms other.dll ...] [UNSAFE])
#
# makes dir/NAME.dll and a target NAME_assembly (dots become underscores)
# that builds it.
find_program(CADTOOLS_MCS mcs)
if(NOT CADTOOLS_MCS)
  message(FATAL_ERROR "mcs (Debian package mono-mcs) builds the bridge's managed assembly; run scripts/setup")
endif()

function(cadtools_managed_assembly)
  cmake_parse_arguments(PARSE_ARGV 0 A "UNSAFE" "NAME;OUTPUT_DIR" "SOURCES;REFERENCES")
  set(output ${A_OUTPUT_DIR}/${A_NAME}.dll)
  set(options -target:library -optimize+ -nologo -warnaserror+)
  if(A_UNSAFE)
    list(APPEND options -unsafe)
  endif()
  set(depends ${A_SOURCES})
  foreach(reference IN LISTS A_REFERENCES)
    list(APPEND options -r:${reference})
    if(IS_ABSOLUTE ${reference})
      list(APPEND depends ${reference})
    endif()
  endforeach()
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${A_OUTPUT_DIR}
    COMMAND ${CADTOOLS_MCS} ${options} -out:${output} ${A_SOURCES}
    DEPENDS ${depends}
    COMMENT "Building managed assembly ${A_NAME}.dll"
    VERBATIM)
  string(REPLACE "." "_" target ${A_NAME}_assembly)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()

# Copies assemblies beside a program after it is built, where the bridge
# and the program's tests look for them.
function(cadtools_assemblies_beside target)
  foreach(assembly IN LISTS ARGN)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E copy_if_different ${assembly} $<TARGET_FILE_DIR:${target}>
      VERBATIM)
  endforeach()
endfunction()
