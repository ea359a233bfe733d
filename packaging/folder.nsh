; Folders that the program must not be put into.

; Why the folder $INSTDIR is refused, as a text in $0; empty when it is not.
Function whyFolderIsRefused
  StrCpy $0 ""
  ${If} ${FileExists} "$INSTDIR\karvel.exe"
  ${OrIf} ${FileExists} "$INSTDIR\karvel.hnb"
  ${OrIf} ${FileExists} "$INSTDIR\karvel.ini"
    Goto checkWriting
  ${EndIf}
  ; The program deletes such files at its start and end: here they are somebody else's.
  ${If} ${FileExists} "$INSTDIR\*.txt"
    StrCpy $0 "このフォルダには「*.txt」のファイルがあります。集計管理は自分のフォルダの「*.txt」を作業ファイルとして削除するため、別のフォルダを選んで下さい。"
    Return
  ${EndIf}

  checkWriting:
  CreateDirectory "$INSTDIR"
  GetTempFileName $1 "$INSTDIR"
  ClearErrors
  FileOpen $2 $1 w
  ${If} ${Errors}
    StrCpy $0 "このフォルダには書き込めません。設定とログを置けるフォルダを選んで下さい。"
    Return
  ${EndIf}
  FileClose $2
  Delete $1
FunctionEnd

; Leaving the page with the folder.
Function checkChosenFolder
  Call whyFolderIsRefused
  ${If} $0 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "$0"
    Abort
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\karvel.ini"
  ${AndIfNot} ${FileExists} "$INSTDIR\karvel.hnb"
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "このフォルダには発券システムの設定(karvel.ini)がありません。発券システムのフォルダを選ぶと、そのまま使えます。別のフォルダでは、はじめに説明書の「インストール」にある設定が必要です。$\r$\n$\r$\nこのフォルダに入れますか?" IDYES +2
    Abort
  ${EndIf}
FunctionEnd

; Ends an installation that no page has checked.
Function refuseFolder
  Call whyFolderIsRefused
  ${If} $0 != ""
    DetailPrint "$0"
    SetErrorLevel 2
    Abort
  ${EndIf}
FunctionEnd
