// So that there is something to make the shared headers for, in the other language.
