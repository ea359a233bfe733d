; A program that runs: requests to it by its settings file, and its end in order.

!define REQUESTS "FTP INFOMATION"
; A last send run may have to wait for a server that does not answer.
!define STOP_SECONDS 120

!define MESSAGE_TEXT 0xFFFF  ; the control of a message box
!define PROCESS_QUERY_LIMITED_INFORMATION 0x1000

!macro defineRequests un

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

; Sets the request key $0 to $1. Settings are never created here: the program takes a file that lacks
; keys as it is.
Function ${un}request
  ${If} ${FileExists} "$INSTDIR\karvel.hnb"
    WriteINIStr "$INSTDIR\karvel.hnb" "${REQUESTS}" $0 $1
  ${EndIf}
FunctionEnd

!macroend

!macro defineStopping un

; Sets $5 to 1 when the window $4 is a message box of the program in this folder: nothing else has a
; text of that number.
Function ${un}isProgramsBox
  StrCpy $5 0
  System::Call 'user32::GetDlgItem(p r4, i ${MESSAGE_TEXT}) p .r6'
  ${If} $6 P= 0
    Return
  ${EndIf}
  System::Call 'user32::GetWindowThreadProcessId(p r4, *i .r6)'
  System::Call 'kernel32::OpenProcess(i ${PROCESS_QUERY_LIMITED_INFORMATION}, i 0, i r6) p .r6'
  System::Call 'kernel32::QueryFullProcessImageNameW(p r6, i 0, w .r7, *i ${NSIS_MAX_STRLEN}) i .r8'
  System::Call 'kernel32::CloseHandle(p r6)'
  ${If} $8 <> 0
  ${AndIf} $7 == "$INSTDIR\karvel.exe"
    StrCpy $5 1
  ${EndIf}
FunctionEnd

; Answers the program's message boxes: it reads no request while one is open. Each has the button OK
; alone, for which its close box stands.
Function ${un}answerBoxes
  System::Call 'user32::FindWindowExW(p 0, p 0, w "#32770", p 0) p .r4'
  ${DoWhile} $4 P<> 0
    Call ${un}isProgramsBox
    ${If} $5 = 1
      System::Call 'user32::PostMessageW(p r4, i ${WM_CLOSE}, p 0, p 0)'
    ${EndIf}
    System::Call 'user32::FindWindowExW(p 0, p r4, w "#32770", p 0) p .r4'
  ${Loop}
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

; Returns when no program runs, with $wasRunning = 1 when one has been ended. With an interval set the
; program sends once more first. Ends the installer when the program does not end.
Function ${un}stopProgram
  StrCpy $wasRunning 0
  Call ${un}isRunning
  ${If} $0 = 0
    Return
  ${EndIf}
  Call ${un}readStopWait

  retry:
  DetailPrint "動作中の集計管理の終了を待っています..."
  StrCpy $0 "FTP EXIT"
  StrCpy $1 1
  Call ${un}request
  ${For} $2 1 $3
    Call ${un}answerBoxes
    Sleep 500
    Call ${un}isRunning
    ${If} $0 = 0
      StrCpy $wasRunning 1
      Return
    ${EndIf}
  ${Next}

  ; A request left behind would end the program when nobody expects it.
  StrCpy $0 "FTP EXIT"
  StrCpy $1 0
  Call ${un}request
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "集計管理を終了できませんでした。$\r$\n画面が開いているときは閉じ、通知領域のアイコンを右クリックして「常駐停止」を選んでから、やり直して下さい。" /SD IDCANCEL IDRETRY retry
  SetErrorLevel 3
  Abort
FunctionEnd

!macroend

!insertmacro defineRequests ""

; A resident program shows its panel on request; a second one would end at once.
Function openSettings
  Call isRunning
  ${If} $0 = 1
    StrCpy $0 "FTP INIT"
    StrCpy $1 1
    Call request
  ${Else}
    Exec '"$INSTDIR\karvel.exe" -INIT'
  ${EndIf}
FunctionEnd
