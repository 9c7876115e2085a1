# The completion scripts of the program, and of the example for what the program does not use, in each shell.
foreach(shell bash zsh fish)
  add_test(NAME e2e.completion_${shell}
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/completion.sh ${shell} $<TARGET_FILE:ZeltoCLI-dev> $<TARGET_FILE:greenhouse>)
  # These scripts are no code that sanitizers see.
  if(NOT ZELTO_SANITIZE)
    add_test(NAME e2e.values_${shell}
      COMMAND ${CMAKE_CURRENT_LIST_DIR}/values.sh ${shell} $<TARGET_FILE:ZeltoCLI-dev> $<TARGET_FILE:zelto-standin>)
  endif()
endforeach()
