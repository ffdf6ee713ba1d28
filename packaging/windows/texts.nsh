; What the installer says, in both languages. $R8 and $R9 (files) and $0 (a status) are set by who
; shows it.
!macro Text name english slovak
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_SLOVAK} "${slovak}"
!macroend

!insertmacro Text NameProgram "Declarium" "Declarium"
!insertmacro Text NameMenu "Shortcut in the Start menu" "Odkaz v ponuke Štart"
!insertmacro Text NameIde "Add-in of the Visual Basic 6.0 IDE" "Doplnok prostredia Visual Basic 6.0"
!insertmacro Text NameSettings "Delete my settings, too" "Zmazať aj moje nastavenia"

!insertmacro Text AboutProgram \
  "The program, the command line, the libraries of Windows declarations and the guide." \
  "Program, príkazový riadok, databázy deklarácií Windows a príručka."
!insertmacro Text AboutMenu "Starts the window." "Spúšťa okno programu."
!insertmacro Text AboutIde \
  "Lists Declarium in the Add-In Manager, for you alone; no administrator is needed." \
  "Zaradí Declarium do správcu doplnkov, iba pre vás; správca počítača nie je potrebný."

!insertmacro Text InUse \
  "$R9 is running or cannot be written.$\r$\n$\r$\nClose Declarium and every IDE or editor that has loaded it, then try again. Nothing is closed by force and nothing has been changed yet." \
  "$R9 je spustený alebo sa nedá zapísať.$\r$\n$\r$\nZatvorte Declarium aj každé prostredie a každý editor, ktoré ho majú načítané, a skúste to znova. Nič sa nezatvára násilím a zatiaľ sa nič nezmenilo."
!insertmacro Text NotRegistered \
  "Registering for the IDE failed ($0). The window works; see Declarium.exe /Doctor." \
  "Registrácia pre prostredie zlyhala ($0). Okno funguje; pozrite Declarium.exe /Doctor."
!insertmacro Text NotUnregistered \
  "Unregistering from the IDE failed ($0)." \
  "Zrušenie registrácie v prostredí zlyhalo ($0)."
!insertmacro Text OtherCopy \
  "The IDE uses another copy of Declarium, whose registration stays: $R9" \
  "Prostredie používa inú kópiu programu Declarium, jej registrácia zostáva: $R9"
!insertmacro Text KeptSame \
  "You changed $R8: it stays as it is. This version brings no newer one." \
  "Databázu $R8 ste zmenili: zostáva, ako je. Táto verzia neprináša novšiu."
!insertmacro Text KeptBeside \
  "You changed $R8: it stays as it is. The new one is beside it: $R9" \
  "Databázu $R8 ste zmenili: zostáva, ako je. Nová je vedľa nej: $R9"
!insertmacro Text KeptBoth \
  "You changed $R8 and $R9: both stay as they are, the new library was not written." \
  "Databázy $R8 a $R9 ste zmenili: obe zostávajú, ako sú, nová databáza sa nezapísala."
!insertmacro Text Installed "Declarium ${VERSION} is installed: $INSTDIR" \
  "Declarium ${VERSION} je nainštalovaný: $INSTDIR"
!insertmacro Text Removed "Declarium is removed." "Declarium je odinštalovaný."
!insertmacro Text LeftFile "Left, since it is yours: $R9" "Zostáva, lebo je vaše: $R9"
!insertmacro Text LeftMachine \
  "Left, since only an administrator can remove it: the registration for all users. As administrator: reg delete HKLM\${CLASS} /f /reg:32 and reg delete HKLM\${PROG_ID} /f" \
  "Zostáva registrácia pre všetkých, zrušiť ju môže iba správca. Ako správca: reg delete HKLM\${CLASS} /f /reg:32 a reg delete HKLM\${PROG_ID} /f"
!insertmacro Text LeftSettings \
  "Left, your settings: HKEY_CURRENT_USER\${SETTINGS}" \
  "Zostávajú vaše nastavenia: HKEY_CURRENT_USER\${SETTINGS}"
