# demand TOOLS…: leaves with status 77, which is skipping, when one is missing. For scripts to read in.
demand() {
  local tool
  for tool in "$@"; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed"; exit 77; }
  done
}
