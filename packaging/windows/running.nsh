; What the installer, the uninstaller and the program that starts it have in common.
; `un` is "un." for the uninstaller, else "".

!define STATUS_IN_USE 3

!macro VersionResource
  VIProductVersion "${VERSION}.0"
  VIFileVersion "${VERSION}.0"
  !insertmacro VersionTexts ${LANG_ENGLISH}
  !insertmacro VersionTexts ${LANG_SLOVAK}
!macroend
!macro VersionTexts language
  VIAddVersionKey /LANG=${language} "ProductName" "Declarium"
  VIAddVersionKey /LANG=${language} "CompanyName" "${PUBLISHER}"
  VIAddVersionKey /LANG=${language} "LegalCopyright" "${COPYRIGHT}"
  VIAddVersionKey /LANG=${language} "FileDescription" "Declarium"
  VIAddVersionKey /LANG=${language} "FileVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "ProductVersion" "${VERSION}"
!macroend

!macro RunningFunctions un
; Shows the text on the stack in the details; writes it to the standard output when silent.
Function ${un}Say
  Exch $R0
  DetailPrint $R0
  IfSilent 0 done
  Push $R1
  Push $R2
  Push $R3
  System::Call 'kernel32::GetStdHandle(i -11)p.R1'
  ${If} $R1 P= 0
  ${OrIf} $R1 P= -1
    ; A window program that was started from a console.
    System::Call 'kernel32::AttachConsole(i -1)'
    System::Call 'kernel32::GetStdHandle(i -11)p.R1'
  ${EndIf}
  StrCpy $R0 "$R0$\r$\n"
  StrLen $R2 $R0
  System::Call 'kernel32::WriteConsoleW(p R1, w R0, i R2, *i, p 0)i.R3'
  ${If} $R3 = 0
    System::Alloc 4096
    Pop $R2
    System::Call 'kernel32::WideCharToMultiByte(i 65001, i 0, w R0, i -1, p R2, i 4096, p 0, p 0)i.R3'
    IntOp $R3 $R3 - 1
    System::Call 'kernel32::WriteFile(p R1, p R2, i R3, *i, p 0)'
    System::Free $R2
  ${EndIf}
  Pop $R3
  Pop $R2
  Pop $R1
done:
  Pop $R0
FunctionEnd

; Goes on when no program of the folder runs. Until then the user is asked; without one, or when he
; gives up, it ends here.
Function ${un}RequireClosed
  ${For} $1 1 4
    StrCpy $R9 "$INSTDIR\Declarium.exe"
    ${If} $1 = 2
      StrCpy $R9 "$INSTDIR\declarium-cli.exe"
    ${ElseIf} $1 > 2
      ; An editor of Office has it loaded.
      StrCpy $R9 "$INSTDIR\DeclariumVba32.dll"
      ${If} $1 = 4
        StrCpy $R9 "$INSTDIR\DeclariumVba64.dll"
      ${EndIf}
    ${EndIf}
    ${DoWhile} ${FileExists} $R9
      ; A program that runs cannot be opened for writing.
      ClearErrors
      FileOpen $0 $R9 a
      ${IfNot} ${Errors}
        FileClose $0
        ${ExitDo}
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)" /SD IDCANCEL IDRETRY again
      Push "$(InUse)"
      Call ${un}Say
      SetErrorLevel ${STATUS_IN_USE}
      Quit
again:
    ${Loop}
  ${Next}
FunctionEnd
!macroend
