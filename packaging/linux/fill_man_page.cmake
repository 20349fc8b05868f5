# Writes PAGE from TEMPLATE; @COMMANDS@ becomes what `PROGRAM KIND` prints, @EXAMPLES@ what
# `PROGRAM examples` prints.
function(fill part kind)
  execute_process(COMMAND ${PROGRAM} ${kind} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(STRIP "${text}" text)
  set(${part} "${text}" PARENT_SCOPE)
endfunction()
fill(COMMANDS ${KIND})
fill(EXAMPLES examples)
configure_file(${TEMPLATE} ${PAGE} @ONLY)
