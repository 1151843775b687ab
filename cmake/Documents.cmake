# Writes what shells and man know of the programs to SHARE, as qrbtool tells it: run with -P and
# QRBTOOL, SHARE, SOURCE, VERSION.
function(write_answer file)
  execute_process(COMMAND ${QRBTOOL} ${ARGN} OUTPUT_VARIABLE text RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "qrbtool ${ARGN} ended with ${code}")
  endif()
  file(WRITE ${SHARE}/${file} "${text}")
endfunction()

file(REMOVE_RECURSE ${SHARE}/man ${SHARE}/bash-completion ${SHARE}/zsh ${SHARE}/fish)
write_answer(bash-completion/completions/qrbtool completion bash)
write_answer(zsh/vendor-completions/_qrbtool completion zsh)
write_answer(fish/vendor_completions.d/qrbtool.fish completion fish)
execute_process(COMMAND ${QRBTOOL} manual --names OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" names "${names}")
foreach(name IN LISTS names)
  write_answer(man/man1/qrbtool-${name}.1 manual ${name})
endforeach()
configure_file(${SOURCE}/docs/qrbadmin.1.in ${SHARE}/man/man1/qrbadmin.1 @ONLY)
# Last: it tells that all are there.
write_answer(man/man1/qrbtool.1 manual)
