; The installer for one user; packaging/windows/installer calls makensis.
;
;   setup.exe [/S] [/NOIDE | /IDE] [/NOMENU | /MENU] [/D=FOLDER]
;   Uninstall.exe [/S] [/SETTINGS]    (uninstall.nsi, which starts Removal.exe)
;
; Registering for the IDE and the shortcut are on, or as they were chosen last time. With /S nothing
; is shown and messages go to the standard output. Exit status: 0 done; 1 cancelled; 2 failed;
; 3 a program is running, nothing was changed; 4 installed, but not registered for the IDE.

Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Declarium"
!define LIBRARIES "${UNINSTALL}\Libraries"
!define SETTINGS "Software\Brindlework\Declarium 3.0"
!define CLASS "Software\Classes\CLSID\{E935511A-4C2D-4094-9A51-D7CF1373CE55}"
!define SERVER "${CLASS}\LocalServer32"
!define PROG_ID "Software\Classes\Declarium.Connect"
!define IDE_LIST "Software\Microsoft\Visual Basic\6.0\Addins\Declarium.Connect"
!define VBA_LIST "Software\Microsoft\VBA\VBE\6.0\Addins\Declarium.Vba"
!define STATUS_NOT_REGISTERED 4

Name "Declarium ${VERSION}"
OutFile "${SETUP}"
!uninstfinalize 'packaging/windows/sign "%1" && cp "%1" "${REMOVAL}"' = 0
InstallDir "$LOCALAPPDATA\Programs\Declarium"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
BrandingText " "
ShowInstDetails show
ShowUninstDetails show

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include Sections.nsh

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_NOAUTOCLOSE
!define MUI_UNFINISHPAGE_NOAUTOCLOSE
!define MUI_FINISHPAGE_RUN "$INSTDIR\Declarium.exe"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Slovak"
!include "${TEXTS}"
!include "${RUNNING}"

!insertmacro VersionResource

; ---- for the installer and the uninstaller ----

!macro Functions un
!insertmacro RunningFunctions "${un}"

; The SHA-256 of the file whose path is on the stack; empty when it cannot be read.
Function ${un}HashOf
  Exch $R0
  Push $0
  Push $1
  Push $2
  Push $3
  Push $4
  Push $5
  StrCpy $5 ""
  ClearErrors
  FileOpen $3 $R0 r
  ${IfNot} ${Errors}
    System::Alloc 65536
    Pop $4
    System::Call 'advapi32::CryptAcquireContextW(*p.r1, p 0, p 0, i 24, i 0xF0000000)i.r0'
    System::Call 'advapi32::CryptCreateHash(p r1, i 0x800C, p 0, i 0, *p.r2)i.r0'
    ${Do}
      System::Call 'kernel32::ReadFile(p r3, p r4, i 65536, *i.r0, p 0)'
      ${If} $0 = 0
        ${ExitDo}
      ${EndIf}
      System::Call 'advapi32::CryptHashData(p r2, p r4, i r0, i 0)'
    ${Loop}
    System::Call 'advapi32::CryptGetHashParam(p r2, i 2, p r4, *i 32, i 0)i.r0'
    ${If} $0 <> 0
      ; Bare hexadecimal digits on one line.
      System::Call 'crypt32::CryptBinaryToStringW(p r4, i 32, i 0x4000000C, w.r5, *i 128)'
    ${EndIf}
    System::Call 'advapi32::CryptDestroyHash(p r2)'
    System::Call 'advapi32::CryptReleaseContext(p r1, i 0)'
    System::Free $4
    FileClose $3
  ${EndIf}
  StrCpy $R0 $5
  Pop $5
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  Pop $0
  Exch $R0
FunctionEnd

; Deletes what the list in the folder names, and the list. Folders stay when something is in them.
Function ${un}DeleteListed
  ClearErrors
  FileOpen $0 "$INSTDIR\installed-files.txt" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    ClearErrors
    FileRead $0 $1
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    StrCpy $1 $1 -2  ; without the line's end
    StrCpy $2 $1 1 -1
    ${If} $2 == "\"
      RMDir "$INSTDIR\$1"
    ${Else}
      Delete "$INSTDIR\$1"
    ${EndIf}
  ${Loop}
  FileClose $0
  Delete "$INSTDIR\installed-files.txt"
FunctionEnd

; Deletes the libraries that are still as they were installed, each with its facts.
Function ${un}DeleteUnchangedLibraries
  StrCpy $0 0
  ${Do}
    EnumRegValue $1 HKCU "${LIBRARIES}" $0
    ${If} $1 == ""
      ${ExitDo}
    ${EndIf}
    IntOp $0 $0 + 1
    ReadRegStr $2 HKCU "${LIBRARIES}" $1
    Push "$INSTDIR\$1"
    Call ${un}HashOf
    Pop $3
    ${If} $2 == $3
      Delete "$INSTDIR\$1"
      DeleteRegValue HKCU "${LIBRARIES}" $1
      IntOp $0 $0 - 1
      StrCpy $1 $1 -4  ; without ".api"
      Delete "$INSTDIR\$1.facts"
    ${EndIf}
  ${Loop}
FunctionEnd

; The program that the IDE and the VBA editors start, "" when none is registered for the user.
Function ${un}RegisteredProgram
  Push $0
  ReadRegStr $0 HKCU "${SERVER}" "ServerExecutable"
  Exch $0
FunctionEnd
!macroend
!insertmacro Functions ""
!insertmacro Functions "un."

; ---- installing ----

Var InVbaEditors  ; "" when the VBA editors' list has no Declarium
Var Library  ; a library's name, without ".api"
Var Hash     ; of the new one
Var Place    ; the name that the new one goes to, "" when it is not written

; A library goes where the one before it was unless the user changed that one.
Function ChoosePlace
  StrCpy $Place $Library
  StrCpy $R8 "$Library.api"
  ReadRegStr $1 HKCU "${LIBRARIES}" $R8
  Push "$INSTDIR\$R8"
  Call HashOf
  Pop $2
  ${If} $2 == ""
  ${OrIf} $2 == $1
  ${OrIf} $2 == $Hash
    Return
  ${EndIf}
  ${If} $1 == $Hash
    StrCpy $Place ""
    Push "$(KeptSame)"
    Call Say
    Return
  ${EndIf}
  Call ChoosePlaceBeside
FunctionEnd

Function ChoosePlaceBeside
  StrCpy $Place "$Library-${VERSION}"
  StrCpy $R9 "$Place.api"
  ReadRegStr $1 HKCU "${LIBRARIES}" $R9
  Push "$INSTDIR\$R9"
  Call HashOf
  Pop $2
  ${If} $2 != ""
  ${AndIf} $2 != $1
    StrCpy $Place ""
    Push "$(KeptBoth)"
    Call Say
  ${EndIf}
FunctionEnd

; A library beside the user's has a title of its own, so that the program's list tells the two apart.
!macro InstallLibrary name title hash
  StrCpy $Library "${name}"
  StrCpy $Hash "${hash}"
  Call ChoosePlace
  ${If} $Place != ""
    File "/oname=$INSTDIR\$Place.api" "${SOURCE}/${name}.api"
    ${If} $Place != $Library
      File "/oname=$INSTDIR\$Place.facts" "${SOURCE}/${name}.facts"
      nsExec::Exec '"$INSTDIR\declarium-cli.exe" rename "$INSTDIR\$Place.api" "${title} ${VERSION}"'
      Pop $0
      Push "$INSTDIR\$Place.api"
      Call HashOf
      Pop $Hash
      Push "$(KeptBeside)"
      Call Say
    ${EndIf}
    WriteRegStr HKCU "${LIBRARIES}" "$Place.api" $Hash
  ${EndIf}
!macroend

Function InstallLibraries
  !include "${LIBRARY_LIST}"
FunctionEnd

Section "!$(NameProgram)" SectionProgram
  SectionIn RO
  AddSize ${LIBRARY_KILOBYTES}
  Call RequireClosed
  Call DeleteListed
  Call DeleteUnchangedLibraries
  SetOutPath $INSTDIR
  File /r /x *.api "${SOURCE}/*"
  File "/oname=installed-files.txt" "${LIST}"
  Call InstallLibraries
  WriteUninstaller "$INSTDIR\Removal.exe"
  File "/oname=$INSTDIR\Uninstall.exe" "${UNINSTALLER}"
  ; Only the running installer knows how large its own copy is.
  FileOpen $0 "$INSTDIR\Removal.exe" r
  FileSeek $0 0 END $1
  FileClose $0
  IntOp $1 $1 / 1024
  IntOp $1 $1 + ${KILOBYTES}
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Declarium"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Declarium.exe,0"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "$(NameMenu)" SectionMenu
  CreateShortcut "$SMPROGRAMS\Declarium.lnk" "$INSTDIR\Declarium.exe"
SectionEnd

Section "$(NameIde)" SectionIde
  ExecWait '"$INSTDIR\Declarium.exe" /RegServer /Quiet' $0
  ${If} $0 != 0
    Push "$(NotRegistered)"
    Call Say
    SetErrorLevel ${STATUS_NOT_REGISTERED}
  ${EndIf}
SectionEnd

; What was chosen last time and is not any more.
Section -Unchosen
  ${IfNot} ${SectionIsSelected} ${SectionMenu}
    Delete "$SMPROGRAMS\Declarium.lnk"
  ${EndIf}
  ${IfNot} ${SectionIsSelected} ${SectionIde}
    Call RegisteredProgram
    Pop $0
    ReadRegStr $1 HKCU "${IDE_LIST}" "FriendlyName"
    ${If} $0 == "$INSTDIR\Declarium.exe"
    ${AndIf} $1 != ""
      ExecWait '"$INSTDIR\Declarium.exe" /UnregServer /Quiet' $0
    ${EndIf}
  ${EndIf}
  ; An editor that stopped loading the add-in loads it again, and what was taken away with the IDE's
  ; registration comes back.
  ${If} $InVbaEditors != ""
    ExecWait '"$INSTDIR\Declarium.exe" /RegServer:vba /Quiet' $0
  ${EndIf}
  Push "$(Installed)"
  Call Say
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} $(AboutProgram)
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionMenu} $(AboutMenu)
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionIde} $(AboutIde)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; SwitchSection SECTION NAME: the switches /NAME and /NONAME.
!macro SwitchSection section name
  ClearErrors
  ${GetOptions} $R0 "/NO${name}" $0
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${section}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R0 "/${name}" $0
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${section}
  ${EndIf}
!macroend

Function .onInit
  ReadRegStr $0 HKCU "${UNINSTALL}" "InstallLocation"
  ${If} $0 != ""
    Call RegisteredProgram
    Pop $1
    ReadRegStr $2 HKCU "${IDE_LIST}" "FriendlyName"
    ${If} $1 != "$0\Declarium.exe"
    ${OrIf} $2 == ""
      !insertmacro UnselectSection ${SectionIde}
    ${EndIf}
    ${If} $1 == "$0\Declarium.exe"
      ReadRegStr $InVbaEditors HKCU "${VBA_LIST}" "FriendlyName"
    ${EndIf}
    ${IfNot} ${FileExists} "$SMPROGRAMS\Declarium.lnk"
      !insertmacro UnselectSection ${SectionMenu}
    ${EndIf}
  ${EndIf}
  ${GetParameters} $R0
  !insertmacro SwitchSection ${SectionIde} "IDE"
  !insertmacro SwitchSection ${SectionMenu} "MENU"
FunctionEnd

; ---- removing ----

Var Left  ; what stays, a line each

!macro Stays text
  Push "${text}"
  Call un.Say
  StrCpy $Left "$Left${text}$\r$\n"
!macroend

; The program that is registered for every user, "" when none is.
Function un.MachineProgram
  Push $0
  ReadRegStr $0 HKLM "${SERVER}" "ServerExecutable"
  Exch $0
FunctionEnd

; Takes the registration for every user away where it is this program's. That needs an
; administrator, for whom Windows asks unless nothing is to be shown.
Function un.UnregisterForMachine
  Call un.MachineProgram
  Pop $R9
  ${If} $R9 != "$INSTDIR\Declarium.exe"
    Return
  ${EndIf}
  ExecWait '"$INSTDIR\Declarium.exe" /UnregServer:machine /Quiet' $0
  ${If} $0 != 0
  ${AndIfNot} ${Silent}
    ExecShellWait "runas" "$INSTDIR\Declarium.exe" "/UnregServer:machine /Quiet"
  ${EndIf}
  Call un.MachineProgram
  Pop $R9
  ${If} $R9 == "$INSTDIR\Declarium.exe"
    !insertmacro Stays "$(LeftMachine)"
  ${EndIf}
FunctionEnd

; The user's own files, of which the folder may hold any number.
Function un.TellWhatIsLeft
  ClearErrors
  FindFirst $0 $1 "$INSTDIR\*"
  ${DoUntil} ${Errors}
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      StrCpy $R9 "$INSTDIR\$1"
      !insertmacro Stays "$(LeftFile)"
      ClearErrors
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
FunctionEnd

Section "un.$(NameProgram)" UnSectionProgram
  SectionIn RO
  StrCpy $Left ""
  Call un.RequireClosed
  Call un.UnregisterForMachine
  Call un.RegisteredProgram
  Pop $R9
  ${If} $R9 == "$INSTDIR\Declarium.exe"
    ExecWait '"$INSTDIR\Declarium.exe" /UnregServer /Quiet' $0
    ${If} $0 != 0
      !insertmacro Stays "$(NotUnregistered)"
    ${EndIf}
  ${ElseIf} $R9 != ""
    !insertmacro Stays "$(OtherCopy)"
  ${EndIf}
  Delete "$SMPROGRAMS\Declarium.lnk"
  Call un.DeleteUnchangedLibraries
  Call un.DeleteListed
  Delete "$INSTDIR\Removal.exe"
  Delete "$INSTDIR\Uninstall.exe"
  SetOutPath $TEMP
  RMDir $INSTDIR
  Call un.TellWhatIsLeft
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
SectionEnd

Section /o "un.$(NameSettings)" UnSectionSettings
  DeleteRegKey HKCU "${SETTINGS}"
  DeleteRegKey /ifempty HKCU "Software\Brindlework"
SectionEnd

Section -un.Tell
  EnumRegValue $0 HKCU "${SETTINGS}" 0
  ${If} $0 != ""
    !insertmacro Stays "$(LeftSettings)"
  ${EndIf}
  Push "$(Removed)"
  Call un.Say
  ${If} $Left != ""
    MessageBox MB_OK|MB_ICONINFORMATION "$(Removed)$\r$\n$\r$\n$Left" /SD IDOK
  ${EndIf}
SectionEnd

Function un.onInit
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/SETTINGS" $0
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${UnSectionSettings}
  ${EndIf}
FunctionEnd
