; Ends a running program through its own request key, so that it ends in order: with an interval
; set it sends once more first.

!define REQUESTS "FTP INFOMATION"
; A last send run may have to wait for a server that does not answer.
!define STOP_SECONDS 120

Var wasRunning  ; 1 when stopProgram ended a program

!macro defineStopping un

; Sets $0 to 1 while the program runs: Windows lets nobody write to its file then.
Function ${un}isRunning
  StrCpy $0 0
  ${IfNot} ${FileExists} "$INSTDIR\karvel.exe"
    Return
  ${EndIf}
  SetFileAttributes "$INSTDIR\karvel.exe" NORMAL
  ClearErrors
  FileOpen $1 "$INSTDIR\karvel.exe" a
  ${If} ${Errors}
    StrCpy $0 1
  ${Else}
    FileClose $1
  ${EndIf}
FunctionEnd

; Sets $3 to the number of half seconds to wait for the end.
Function ${un}readStopWait
  StrCpy $3 ${STOP_SECONDS}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/STOPWAIT=" $1
  ${IfNot} ${Errors}
    StrCpy $3 $1
  ${EndIf}
  IntOp $3 $3 * 2
FunctionEnd

; Writes the request in $0. Settings are never created here: the program takes a file that lacks
; keys as it is.
Function ${un}request
  ${If} ${FileExists} "$INSTDIR\karvel.hnb"
    WriteINIStr "$INSTDIR\karvel.hnb" "${REQUESTS}" "FTP EXIT" $0
  ${EndIf}
FunctionEnd

; Returns when no program runs; ends the installer when it does not come to that.
Function ${un}stopProgram
  StrCpy $wasRunning 0
  Call ${un}isRunning
  ${If} $0 = 0
    Return
  ${EndIf}
  Call ${un}readStopWait

  retry:
  DetailPrint "動作中の集計管理の終了を待っています..."
  StrCpy $0 1
  Call ${un}request
  ${For} $2 1 $3
    Sleep 500
    Call ${un}isRunning
    ${If} $0 = 0
      StrCpy $wasRunning 1
      Return
    ${EndIf}
  ${Next}

  ; A request left behind would end the program when nobody expects it.
  StrCpy $0 0
  Call ${un}request
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "集計管理を終了できませんでした。$\r$\n画面が開いているときは閉じ、通知領域のアイコンを右クリックして「常駐停止」を選んでから、やり直して下さい。" /SD IDCANCEL IDRETRY retry
  SetErrorLevel 3
  Abort
FunctionEnd

!macroend

!insertmacro defineStopping ""
!insertmacro defineStopping "un."
