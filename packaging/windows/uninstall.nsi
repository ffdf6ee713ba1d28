; Uninstall.exe, which starts the uninstaller proper; packaging/windows/installer calls makensis.
;
;   Uninstall.exe [/S] [/SETTINGS] [_?=FOLDER]
;
; The uninstaller goes on in a copy of itself, and whoever called it learns nothing of what becomes
; of that. So this program looks first whether a program of the folder runs, and ends with 3 when
; there is nobody to be asked to close it. With _?= the uninstaller runs where it is, and its exit
; status is passed on.

Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!define SETTINGS "Software\Brindlework\Declarium 3.0"
!define CLASS ""
!define PROG_ID ""

Name "Declarium ${VERSION}"
OutFile "${UNINSTALLER}"
Icon "${ICON}"

!include FileFunc.nsh
!include LogicLib.nsh
LoadLanguageFile "${NSISDIR}\Contrib\Language files\English.nlf"
LoadLanguageFile "${NSISDIR}\Contrib\Language files\Slovak.nlf"
!include "${TEXTS}"
!include "${RUNNING}"
!insertmacro VersionResource
!insertmacro RunningFunctions ""

Function .onInit
  StrCpy $INSTDIR $EXEDIR
  ${If} ${Silent}
    Call RequireClosed
  ${EndIf}
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "_?=" $R1
  ${If} ${Errors}
    Exec '"$INSTDIR\Removal.exe" $R0'
    StrCpy $R1 0
  ${Else}
    ExecWait '"$INSTDIR\Removal.exe" $R0' $R1
  ${EndIf}
  ; Without a status, leaving here is a failure.
  SetErrorLevel $R1
  Quit
FunctionEnd

; A script must have one; it is not reached.
Section
SectionEnd
