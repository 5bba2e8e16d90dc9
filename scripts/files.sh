# Sourced by the scripts, at the top of the tree.
# house_files PATTERN...: the project's own files, each ended by a zero byte; a new file counts
# before it is added to git. Without git (an unpacked archive) it is all but the build tree.
house_files() {
  if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git ls-files -z --cached --others --exclude-standard -- "$@"
  else
    local pattern names=()
    for pattern; do names+=(-o -name "$pattern"); done
    find . \( -path ./build -o -name .git \) -prune -o -type f \( "${names[@]:1}" \) -print0
  fi | while IFS= read -r -d '' file; do
    # A file deleted but not yet committed is still listed.
    if [ -f "$file" ]; then printf '%s\0' "$file"; fi
  done
}
