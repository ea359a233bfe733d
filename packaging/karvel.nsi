; The installer for one user of a shop's machine. Defined from outside: VERSION, PROGRAM, SETTINGS and
; CHECK (the executables), MANUAL (commands that unpack the manual), ICON and OUTPUT.
;
; Switches besides NSIS' own /S and /D=folder:
;   /AUTOSTART=0   does not start the program with Windows; 1 does
;   /STOPWAIT=n    waits at most n seconds for a running program to end
;
; Exit codes of a silent run: 0 done, 2 refused or failed, 3 the running program did not end.
;
; The folder may be the ticket application's own, so everything put there has a name that can only
; be this program's, and what is removed was put there by it or written by the program.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
; A file that cannot be replaced fails the installation, the silent one too.
AllowSkipFiles off

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include WinVer.nsh
!include WordFunc.nsh
!include packaging\folder.nsh
!include packaging\running.nsh

Var wasRunning  ; 1 when stopProgram has ended a program

!insertmacro defineStopping ""
!insertmacro defineRequests "un."
!insertmacro defineStopping "un."

!define PRODUCT "るりはなリンク集計管理"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\karvel"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define MENU_FOLDER "$SMPROGRAMS\${PRODUCT}"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
!uninstfinalize 'packaging/sign "%1"'
InstallDir "$LOCALAPPDATA\Programs\karvel"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails show
ShowUninstDetails show

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1041 "CompanyName" "るりはなリンク"
VIAddVersionKey /LANG=1041 "FileDescription" "${PRODUCT} セットアップ"
VIAddVersionKey /LANG=1041 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1041 "LegalCopyright" ""
VIAddVersionKey /LANG=1041 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1041 "ProductVersion" "${VERSION}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}\Contrib\Graphics\Wizard\nsis3-metro.bmp"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_ABORTWARNING
!define MUI_DIRECTORYPAGE_TEXT_TOP "集計管理を入れるフォルダを選んで下さい。設定、ログ、作業ファイルも同じフォルダに置かれます。$\r$\n発券システムの作業ファイルは、このフォルダの中の「temp」から読みます。"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE checkChosenFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "接続設定を開く"
!define MUI_FINISHPAGE_RUN_FUNCTION openSettings
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\karvel-manual\manual.ja.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "説明書を開く"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Japanese"

Section "!集計管理" ProgramSection
  SectionIn RO
  Call refuseFolder
  Call stopProgram

  RMDir /r "$INSTDIR\karvel-manual"
  !include "${MANUAL}"
  SetOutPath "$INSTDIR"
  File "/oname=karvel.exe" "${PROGRAM}"
  File "/oname=karvel-settings.exe" "${SETTINGS}"
  File "/oname=karvel-check.exe" "${CHECK}"
  ; The program writes its log only into a folder that is there.
  CreateDirectory "$INSTDIR\Log"
  WriteUninstaller "$INSTDIR\karvel-uninstall.exe"

  CreateDirectory "${MENU_FOLDER}"
  CreateShortcut "${MENU_FOLDER}\集計管理 接続設定.lnk" "$INSTDIR\karvel-settings.exe"
  ; A program of the command line: its console waits at the bottom until the page opens.
  CreateShortcut "${MENU_FOLDER}\集計管理 診断.lnk" "$INSTDIR\karvel-check.exe" "--open" "" "" SW_SHOWMINIMIZED
  CreateShortcut "${MENU_FOLDER}\集計管理 説明書.lnk" "$INSTDIR\karvel-manual\manual.ja.html"

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\karvel.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "るりはなリンク"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\karvel-uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\karvel-uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${ProgramSection} $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0

  DeleteRegValue HKCU "${RUN_KEY}" "karvel"
SectionEnd

Section "Windowsの起動時に開始" AutoStartSection
  WriteRegStr HKCU "${RUN_KEY}" "karvel" '"$INSTDIR\karvel.exe"'
SectionEnd

Section -Restart
  ${If} $wasRunning = 1
    Exec '"$INSTDIR\karvel.exe"'
  ${EndIf}
SectionEnd

LangString programDescription ${LANG_JAPANESE} "集計管理の本体と説明書。前の版があれば置きかえます。設定とログはそのまま残ります。"
LangString autoStartDescription ${LANG_JAPANESE} "サインインすると集計管理が通知領域に常駐します。"
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${ProgramSection} $(programDescription)
  !insertmacro MUI_DESCRIPTION_TEXT ${AutoStartSection} $(autoStartDescription)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${IfNot} ${AtLeastWin7}
    MessageBox MB_OK|MB_ICONSTOP "Windows 7以降が必要です。" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  Call chooseAutoStart
FunctionEnd

; An upgrade leaves the start with Windows as it was.
Function chooseAutoStart
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $1 HKCU "${RUN_KEY}" "karvel"
  ${If} $0 != ""
  ${AndIf} $1 == ""
    !insertmacro UnselectSection ${AutoStartSection}
  ${EndIf}
  ${GetParameters} $0
  ${GetOptions} $0 "/AUTOSTART=" $1
  ${If} $1 == "0"
    !insertmacro UnselectSection ${AutoStartSection}
  ${ElseIf} $1 == "1"
    !insertmacro SelectSection ${AutoStartSection}
  ${EndIf}
FunctionEnd

; An installation that fails half-way leaves the shop with a program that runs, as before.
Function .onInstFailed
  ${If} $wasRunning = 1
    Exec '"$INSTDIR\karvel.exe"'
  ${EndIf}
FunctionEnd

; The program's logs are named by six digits; the folder may hold somebody else's.
Function un.deleteLogs
  FindFirst $0 $1 "$INSTDIR\Log\*.log"
  ${DoUntil} $1 == ""
    StrCpy $2 $1 -4
    ${StrFilter} "$2" "1" "" "" $3
    StrLen $4 $2
    ${If} $4 = 6
    ${AndIf} $3 == $2
      Delete "$INSTDIR\Log\$1"
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  Delete "$INSTDIR\Log\karvel-*.dmp"
FunctionEnd

Section "Uninstall"
  Call un.stopProgram
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "設定とログも削除しますか?" /SD IDNO IDNO keepSettings
    Delete "$INSTDIR\karvel.hnb"
    Call un.deleteLogs
  keepSettings:

  SetOutPath "$TEMP"
  Delete "$INSTDIR\karvel.exe"
  Delete "$INSTDIR\karvel-settings.exe"
  Delete "$INSTDIR\karvel-check.exe"
  RMDir /r "$INSTDIR\karvel-manual"
  Delete "$INSTDIR\karvel-uninstall.exe"
  RMDir "$INSTDIR\Log"
  RMDir "$INSTDIR"
  Delete "${MENU_FOLDER}\集計管理 接続設定.lnk"
  Delete "${MENU_FOLDER}\集計管理 診断.lnk"
  Delete "${MENU_FOLDER}\集計管理 説明書.lnk"
  RMDir "${MENU_FOLDER}"
  DeleteRegValue HKCU "${RUN_KEY}" "karvel"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
