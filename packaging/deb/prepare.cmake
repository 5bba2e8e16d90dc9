# Run by cpack on the installed tree before it is packed: what only a Debian package has.

set(root "${CPACK_TEMPORARY_DIRECTORY}/usr/share")
set(here "${CMAKE_CURRENT_LIST_DIR}")

function(compress file)
  execute_process(COMMAND gzip -9 --no-name --force "${file}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(COPY "${here}/copyright" "${here}/changelog" DESTINATION "${root}/doc/kelvane")
compress("${root}/doc/kelvane/changelog")
compress("${root}/man/man1/kelvane.1")
# Debian's zsh looks for the completions of packages here.
file(MAKE_DIRECTORY "${root}/zsh/vendor-completions")
file(RENAME "${root}/zsh/site-functions/_kelvane" "${root}/zsh/vendor-completions/_kelvane")
file(REMOVE_RECURSE "${root}/zsh/site-functions")
