; karvel-settings.exe, behind the start menu's entry: opens the settings panel, whether the program
; runs or not. A program of its own, as a script would flash a console or be blocked on a company's
; machines. Defined from outside: VERSION, ICON and OUTPUT.

Unicode true
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
SilentInstall silent

!include LogicLib.nsh
!include packaging\running.nsh

!define PRODUCT "るりはなリンク集計管理"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
Icon "${ICON}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1041 "CompanyName" "るりはなリンク"
VIAddVersionKey /LANG=1041 "FileDescription" "${PRODUCT} 接続設定"
VIAddVersionKey /LANG=1041 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1041 "LegalCopyright" ""
VIAddVersionKey /LANG=1041 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1041 "ProductVersion" "${VERSION}"

Section
  StrCpy $INSTDIR $EXEDIR
  Call openSettings
SectionEnd
