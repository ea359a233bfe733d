#!/usr/bin/env bash
# Checks that the Windows program can be handed out as one file: check_program.sh PROGRAM
set -euo pipefail

readonly program=$1
readonly largest=$((2500 * 1024))
readonly own_libraries='kernel32|user32|gdi32|shell32|ole32|comdlg32|advapi32|imm32|wininet|shlwapi|uxtheme|version|msvcrt'

failed=0
refuse() {
  echo "$program: $*" >&2
  failed=1
}

headers=$(LC_ALL=C x86_64-w64-mingw32-objdump -p "$program")
foreign=$(sed -n 's/^\tDLL Name: //p' <<<"$headers" | grep -viE "^($own_libraries)\.dll$" || true)
[[ -z $foreign ]] || refuse "imports libraries that a bare Windows 7 may lack: $foreign"
grep -q '(Windows GUI)' <<<"$headers" || refuse "would open a console window"

has_resource() {
  [[ $(od -An -v -tx1 "$program" | tr -d ' \n') == *$(od -An -v -tx1 | tr -d ' \n')* ]]
}
printf 'PerMonitorV2' | has_resource || refuse "lacks its manifest"
printf 'るりはなリンク集計管理' | iconv -f UTF-8 -t UTF-16LE | has_resource ||
  refuse "lacks its Japanese version resource"

size=$(stat -c %s "$program")
((size <= largest)) || refuse "$size bytes, more than $largest"
exit $failed
