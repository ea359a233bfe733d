#!/usr/bin/env bash
# Checks that a program can be handed out: check_program.sh PROGRAM
# It is hardened; one for Windows is all in one file, and the same whenever and wherever it is built.
set -euo pipefail
export LC_ALL=C

readonly program=$1
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly largest=$((2500 * 1024))
readonly own_libraries='kernel32|user32|gdi32|shell32|ole32|comdlg32|advapi32|imm32|wininet|ws2_32|shlwapi|uxtheme|version|msvcrt'

failed=0
refuse() {
  echo "$program: $*" >&2
  failed=1
}

has() { grep -q -e "$1" <<<"$facts" || refuse "$2"; }

check_windows() {
  local foreign size
  facts=$(x86_64-w64-mingw32-objdump -p -h "$program" && x86_64-w64-mingw32-nm "$program.debug")
  foreign=$(sed -n 's/^\tDLL Name: //p' <<<"$facts" | grep -viE "^($own_libraries)\.dll$" || true)
  [[ -z $foreign ]] || refuse "imports libraries that a bare Windows 7 may lack: $foreign"
  [[ $program == *check.exe ]] || has '(Windows GUI)' "would open a console window"
  for flag in NX_COMPAT DYNAMIC_BASE HIGH_ENTROPY_VA ' \.reloc ' __stack_chk_fail; do
    has "$flag" "lacks $flag"
  done
  has '^Entry a [0-9a-f]*[1-9a-f][0-9a-f]* 00000070' "lacks the rule where its libraries come from"
  has '^Time/Date.* 1970$' "holds the time of its build"
  ! grep -qF "$root" "$program" || refuse "names the folder that it was built in"

  grep -qaF PerMonitorV2 "$program" || refuse "lacks its manifest"
  grep -qaF "$(iconv -f UTF-8 -t UTF-16LE <<<'るりはなリンク集計管理' | head -c -2)" "$program" ||
    refuse "lacks its Japanese version resource"
  size=$(stat -c %s "$program")
  ((size <= largest)) || refuse "$size bytes, more than $largest"
}

check_linux() {
  facts=$(readelf -dlW "$program" && nm -D "$program")
  for flag in 'FLAGS_1.* NOW.* PIE' GNU_RELRO __stack_chk_fail; do has "$flag" "lacks $flag"; done
}

if [[ $program == *.exe ]]; then check_windows; else check_linux; fi
exit $failed
