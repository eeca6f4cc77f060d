# A throwaway Wine prefix: no drive Z: and no link to the home folder, so that a program that deletes can
# reach nothing but the prefix. Source it after common.sh.

# make_prefix FOLDER makes the prefix in an empty folder that the caller made.
make_prefix() {
  export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='mscoree,mshtml='
  # The home folder of the prefix's user is a folder of ours: what Wine links to it stays inside.
  mkdir -p "$WINEPREFIX/home"
  export HOME=$WINEPREFIX/home XDG_CONFIG_HOME=$WINEPREFIX/home/.config
  timeout 300 xvfb-run -a wineboot -i >/dev/null 2>&1
  wineserver -w
  local link
  rm -f "$WINEPREFIX/dosdevices/z:"
  while IFS= read -r -d '' link; do
    rm "$link"
    mkdir "$link"
  done < <(find "$WINEPREFIX/drive_c" -type l -print0)
  for link in "$WINEPREFIX"/dosdevices/*; do
    case "$(basename "$link")" in
      c:) ;;
      *) rm -f "$link" ;;
    esac
  done
  if find "$WINEPREFIX/drive_c" -type l | grep -q .; then
    say "The prefix still has links out of it."
    return 1
  fi
}

# throwaway_prefix makes a prefix with the program in it in a folder of its own, WORK, which goes at the
# end of the script, together with all that still runs in the prefix.
throwaway_prefix() {
  WORK=$(mktemp -d)
  trap end_throwaway_prefix EXIT
  mkdir "$WORK/prefix"
  make_prefix "$WORK/prefix"
  install_program
}
end_throwaway_prefix() {
  WINEPREFIX=$WORK/prefix wineserver -k >/dev/null 2>&1 || true
  cd / || exit 1
  rm -rf "$WORK"
}

# install_program puts the exe and its picture where an installed program lies.
install_program() {
  PROGRAM_FOLDER="$WINEPREFIX/drive_c/Program Files/Quillbarrow"
  mkdir -p "$PROGRAM_FOLDER"
  cp "$ROOT/build/windows/Quillbarrow.exe" "$ROOT/build/windows/logo.gif" "$PROGRAM_FOLDER/"
}
