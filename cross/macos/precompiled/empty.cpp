// So that there is something to make the shared headers for.
