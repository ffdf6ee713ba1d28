// Every text of the windows that a user sees, once. They are Slovak; "&" marks an access key.
#pragma once

#include <array>
#include <string_view>

namespace declarium::texts {

inline constexpr std::u16string_view kProgram = u"Declarium 3.0";
inline constexpr std::u16string_view kCaptionTail = u" - Declarium 3.0";

// Files
inline constexpr std::u16string_view kReadError = u"Chyba pri čítaní zo súboru.";
inline constexpr std::u16string_view kWriteError = u"Chyba pri zápise do súboru.";
inline constexpr std::u16string_view kChangesKept =
    u"Čo sa nedalo zapísať, je uložené v histórii. Otvoríte to cez Databáza, Obnoviť staršiu "
    u"verziu.";
inline constexpr std::u16string_view kCannotKeep =
    u"Tu je znak, ktorý sa v súbore databázy nedá uchovať:";
inline constexpr std::u16string_view kOldNotKept =
    u"Súbor je uložený, ale jeho predošlý obsah sa nedal uložiť do histórie:";
inline constexpr std::u16string_view kAskReplaceChanged =
    u"Súbor medzitým zmenil niekto iný. Nahradiť ho? Jeho obsah zostane v histórii.";
inline constexpr std::u16string_view kPutBack =
    u"Ukladanie sa minule nedokončilo. Súbor už má znova svoj názov:";
inline constexpr std::u16string_view kLeftOver =
    u"Ukladanie sa minule nedokončilo. Čo po ňom ostalo, je v histórii súboru:";
inline constexpr std::u16string_view kAskOpenUnwritten =
    u"Tieto zmeny sa minule nedali zapísať. Otvoriť ich?";
inline constexpr std::u16string_view kInvalidFormat = u"Neplatný formát databázy.";
inline constexpr std::u16string_view kLibraryFilter = u"Api Database|*.api";
inline constexpr std::u16string_view kModuleFilter =
    u"Visual Basic Code Module|*.bas|Text files|*.txt";
inline constexpr std::u16string_view kSourceFilter =
    u"Zdrojové súbory pre Visual Basic|*.frm;*.ctl;*.dob;*.pag;*.bas;*.cls|Textové súbory|*.txt";

// Failures that nothing has foreseen
inline constexpr std::u16string_view kFailure = u"Vyskytla sa neočakávaná chyba:";
inline constexpr std::u16string_view kNotStarted = u"Program sa nepodarilo spustiť.";
inline constexpr std::u16string_view kNoMemory = u"Nedostatok pamäti.";
inline constexpr std::u16string_view kUnknownFailure = u"Neznáma chyba.";
inline constexpr std::u16string_view kFailurePassed = u"Program pokračuje v práci.";
inline constexpr std::u16string_view kUnsavedKept = u"Neuložené zmeny sú odložené.";

// Library commands
inline constexpr std::u16string_view kAskSaveBefore = u"Uložiť zmeny prevedené v databáze '";
inline constexpr std::u16string_view kAskSaveBehind = u"' ?";
inline constexpr std::u16string_view kAskTitle = u"Zadajte názov databázy";
inline constexpr std::u16string_view kAskNewTitle = u"Zadajte nový názov databázy.";
// Before the character that a library file cannot keep.
inline constexpr std::u16string_view kTitleRefusedBefore = u"Názov databázy nemôže obsahovať ";
inline constexpr std::u16string_view kCharacter = u"znak ";
inline constexpr std::u16string_view kWithCode = u"s kódom ";
inline constexpr std::u16string_view kAskDeleteBefore =
    u"Naozaj chcete natrvalo odtrániť položku '";
inline constexpr std::u16string_view kAskDeleteBehind = u"' z databázy?";
inline constexpr std::u16string_view kAskKeepItems = u"Ponechať pôvodné položky?";
inline constexpr std::u16string_view kAskReadingBefore =
    u"Deklarácie, ktoré Visual Basic číta inak, než by sa doslovne uložili: ";
inline constexpr std::u16string_view kAskReadingBehind =
    u"Prevziať ich tak, ako ich číta Visual Basic?";

// What a library could not keep of an import
inline constexpr std::u16string_view kLoss =
    u"Databáza nedokáže uchovať všetko, čo ste jej pridali.";
inline constexpr std::u16string_view kLossLeftOut = u"Vynechané deklarácie: ";
inline constexpr std::u16string_view kLossReplaced = u"Znaky v komentároch nahradené otáznikom: ";
inline constexpr std::u16string_view kLossLine = u"riadok ";
inline constexpr std::u16string_view kLossColumn = u", stĺpec ";

// Menus of the main window
inline constexpr std::u16string_view kMenuDatabase = u"&Databáza";
inline constexpr std::u16string_view kMenuNew = u"&Nová...";
inline constexpr std::u16string_view kMenuOpen = u"&Otvoriť...";
inline constexpr std::u16string_view kMenuSave = u"&Uložiť";
inline constexpr std::u16string_view kMenuSaveAs = u"Uložiť &ako...";
inline constexpr std::u16string_view kMenuRename = u"&Premenovať...";
inline constexpr std::u16string_view kMenuRestore = u"O&bnoviť staršiu verziu...";
inline constexpr std::u16string_view kMenuImport = u"&Importovať...";
inline constexpr std::u16string_view kMenuExport = u"&Exportovať...";
inline constexpr std::u16string_view kMenuAdd = u"P&ridať položku...";
inline constexpr std::u16string_view kMenuDeleteItem = u"Odstrániť po&ložku";
inline constexpr std::u16string_view kMenuCheck = u"S&kontrolovať knižnicu...";
inline constexpr std::u16string_view kMenuClose = u"&Zavrieť";

inline constexpr std::u16string_view kMenuHelp = u"&Pomocník";
inline constexpr std::u16string_view kMenuGuide = u"&Príručka";
inline constexpr std::u16string_view kMenuHelpHere = u"Pomoc k &tomuto oknu";
inline constexpr std::u16string_view kMenuAbout = u"&O programe...";

// The guide
inline constexpr std::u16string_view kGuideMissing = u"Príručka chýba. Mala by byť v súbore:";
inline constexpr std::u16string_view kGuideNotShown = u"Príručku sa nepodarilo otvoriť:";

// Toolbar
inline constexpr std::u16string_view kTipNew = u"Nová databáza";
inline constexpr std::u16string_view kTipOpen = u"Otvoriť databázu";
inline constexpr std::u16string_view kTipSave = u"Uložiť databázu";
inline constexpr std::u16string_view kTipAdd = u"Pridať do výberu";
inline constexpr std::u16string_view kTipCopy = u"Kopírovať výber do schránky";
inline constexpr std::u16string_view kTipDelete = u"Odstrániť z výberu";
inline constexpr std::u16string_view kTipExport = u"Exportovať výber do súboru...";
inline constexpr std::u16string_view kTipInsert = u"Vložiť výber do modulu";
inline constexpr std::u16string_view kTipFind = u"Rozšírené vyhľadávanie...";
inline constexpr std::u16string_view kTipSettings = u"Nastavenia...";

// Names and tooltips of the main window's other controls
inline constexpr std::u16string_view kNameToolbar = u"Panel nástrojov";
inline constexpr std::u16string_view kNameLibrary = u"Databáza";
inline constexpr std::u16string_view kNameSelector = u"Druh položiek";
inline constexpr std::u16string_view kNameRange = u"Rozsah platnosti";
inline constexpr std::u16string_view kNameInput = u"Začiatok názvu";
inline constexpr std::u16string_view kNameConstList = u"Konštanty";
inline constexpr std::u16string_view kNameDeclareList = u"Deklarácie";
inline constexpr std::u16string_view kNameTypeList = u"Typy";
inline constexpr std::u16string_view kNameFind = u"Hľadať v názvoch";
inline constexpr std::u16string_view kNameFound = u"Nájdené názvy";
inline constexpr std::u16string_view kNameBasket = u"Výber";
inline constexpr std::u16string_view kNameShare = u"Súvisiace položky";
inline constexpr std::u16string_view kNameCode = u"Zdrojový text";
// Before the target's name.
inline constexpr std::u16string_view kTipCode = u"Zdrojový text pre: ";
inline constexpr std::u16string_view kNameSplitMainWidth = u"Šírka zoznamu";
inline constexpr std::u16string_view kNameSplitRtbHeight = u"Výška zdrojového textu";
inline constexpr std::u16string_view kNameSplitAddHeight = u"Výška výberu";

// Basket popup menu
inline constexpr std::u16string_view kDeleteOnce = u"Odstrániť &položku";
inline constexpr std::u16string_view kDeleteGroup = u"Odstrániť &skupinu";
inline constexpr std::u16string_view kDeleteAll = u"Odstrániť &všetko";
inline constexpr std::u16string_view kMenuSaveList = u"&Uložiť výber...";
inline constexpr std::u16string_view kMenuOpenList = u"&Otvoriť výber...";

// The basket as a list file
inline constexpr std::u16string_view kListFilter = u"Zoznam položiek|*.list|Textové súbory|*.txt";
inline constexpr std::u16string_view kAskReplaceBasket =
    u"Vo výbere už niečo je. Nahradiť ho položkami zo zoznamu? Ak zvolíte Nie, pridajú sa k nemu.";
inline constexpr std::u16string_view kListMistakes =
    u"Súbor nie je zoznam položiek. Výber zostáva, ako bol.";
inline constexpr std::u16string_view kListEmpty =
    u"Zoznam nedal ani jednu položku. Výber zostáva, ako bol.";
inline constexpr std::u16string_view kListNotFound =
    u"Položky zo zoznamu sú vo výbere, ale toto sa nenašlo:";
inline constexpr std::u16string_view kListNotInLibraries =
    u"Názvy položiek sú uložené. Tieto položky však v databázach nie sú alebo tam majú iný text, "
    u"takže otvorenie zoznamu ich nevráti, ako sú:";
inline constexpr std::u16string_view kListLine = u"riadok ";
inline constexpr std::u16string_view kListMore = u"a ešte ďalších: ";
// Each before the word that it tells of.
inline constexpr std::u16string_view kListUnreadable = u"databáza sa nedá otvoriť: ";
inline constexpr std::u16string_view kListUnknown = u"v databáze nie je ";
inline constexpr std::u16string_view kListSeveralSpellings = u"v databáze je s rôznymi písmenami ";
inline constexpr std::u16string_view kListTakesNothing = u"nad ním nie je, čo by odobral: ";
inline constexpr std::u16string_view kListUnknownDirective = u"neznáme slovo ";
inline constexpr std::u16string_view kListValueMissing = u"niečo chýba za ";
inline constexpr std::u16string_view kListUnknownTarget = u"neznámy cieľ ";
inline constexpr std::u16string_view kListSaidTwice = u"druhý raz ";
inline constexpr std::u16string_view kListBrokenPattern = u"zle napísané [ ] v ";
inline constexpr std::u16string_view kAskListTargetBefore = u"Zoznam je určený pre: ";
inline constexpr std::u16string_view kAskListTargetBehind =
    u". Písať deklarácie odteraz pre tento cieľ?";

// Insertion into the host's module
inline constexpr std::u16string_view kAskInsertBefore = u"Vložiť do '";
inline constexpr std::u16string_view kAskInsertBehind = u"' ?";
inline constexpr std::u16string_view kNotInserted = u"Výber sa nevložil";
inline constexpr std::u16string_view kNotInsertedInto = u" do '";  // the module's name follows
inline constexpr std::u16string_view kNoModuleName = u"Prostredie nepovedalo názov modulu.";
inline constexpr std::u16string_view kNoDeclarationLines =
    u"Prostredie nepovedalo, kde sa končia deklarácie modulu.";
inline constexpr std::u16string_view kTextRefused = u"Prostredie neprijalo text.";
inline constexpr std::u16string_view kHostIsBusy =
    u"Má otvorené dialógové okno alebo v ňom beží program; ukončite ho a skúste to znova.";
inline constexpr std::u16string_view kHostIsGone = u"Už nebeží.";
inline constexpr std::u16string_view kProjectIsLocked =
    u"Projekt je zamknutý; odomknite ho jeho heslom a skúste to znova.";
inline constexpr std::u16string_view kProgramRuns =
    u"Program v editore beží alebo je prerušený; zastavte ho a skúste to znova.";
inline constexpr std::u16string_view kLineTooLong =
    u"Niektorý riadok je dlhší než 1022 znakov a editor by ho odrezal.";
inline constexpr std::u16string_view kErrorBefore = u"(Chyba ";
inline constexpr std::u16string_view kErrorBehind = u".)";
inline constexpr std::u16string_view kBasketStays = u"Výber zostáva, ako bol.";

// Insertion of what is missing
inline constexpr std::u16string_view kMenuModule = u"&Modul";
inline constexpr std::u16string_view kMenuInsertMissing = u"&Vložiť čo chýba...";
inline constexpr std::u16string_view kMenuCompleteModule = u"&Doplniť modul...";
inline constexpr std::u16string_view kTipInsertMissing = u"Vložiť z výberu, čo v module chýba...";
inline constexpr std::u16string_view kPlanCaptionBefore = u"Vložiť čo chýba do '";
inline constexpr std::u16string_view kCompleteCaptionBefore = u"Doplniť modul '";
inline constexpr std::u16string_view kPlanCaptionBehind = u"'";
inline constexpr std::u16string_view kPlanLabel = u"&Čo sa stane s položkami";
inline constexpr std::u16string_view kPlanOtherName = u"&Iný názov...";
inline constexpr std::u16string_view kPlanSourceNew = u"Vloží sa";
inline constexpr std::u16string_view kPlanSourceLibrary = u"V databáze";
inline constexpr std::u16string_view kPlanSourceFound = u"V module";
inline constexpr std::u16string_view kPlanInserted = u"vloží sa";
inline constexpr std::u16string_view kPlanInsertedAs = u"vloží sa ako ";
inline constexpr std::u16string_view kPlanLeftOut = u"vynechá sa";
inline constexpr std::u16string_view kPlanPresent = u"už je: ";
inline constexpr std::u16string_view kPlanDiffers = u"je inak, ponechá sa: ";
inline constexpr std::u16string_view kPlanClash = u"názov je obsadený: ";
inline constexpr std::u16string_view kPlanLine = u", riadok ";
inline constexpr std::u16string_view kPlanNeededBy = u"; potrebuje to ";
inline constexpr std::u16string_view kPlanUnknown = u"nie je v databáze; potrebuje to ";
inline constexpr std::u16string_view kPlanUnread = u"modul sa nedá prečítať";
inline constexpr std::u16string_view kPlanAmbiguous = u"nejednoznačné: ";
inline constexpr std::u16string_view kPlanWillInsert = u"Vloží sa položiek: ";
inline constexpr std::u16string_view kPlanNothing = u"V module nič nechýba.";
inline constexpr std::u16string_view kPlanAskName = u"Zadajte iný názov pre ";
inline constexpr std::u16string_view kPlanNameNotLegal =
    u"Toto nie je názov, aký Visual Basic dovoľuje.";
inline constexpr std::u16string_view kPlanNameTaken = u"Tento názov je už obsadený.";
inline constexpr std::u16string_view kHolderConst = u"konštanta";
inline constexpr std::u16string_view kHolderDeclare = u"Declare";
inline constexpr std::u16string_view kHolderType = u"Type";
inline constexpr std::u16string_view kHolderEnum = u"Enum";
inline constexpr std::u16string_view kHolderEnumMember = u"člen Enum";
inline constexpr std::u16string_view kHolderVariable = u"premenná";
inline constexpr std::u16string_view kHolderEvent = u"udalosť";
inline constexpr std::u16string_view kHolderControl = u"ovládací prvok";
inline constexpr std::u16string_view kHolderProcedure = u"procedúra";
inline constexpr std::u16string_view kHolderModule = u"modul";
inline constexpr std::u16string_view kReadingCaption = u"Čítanie projektu";
inline constexpr std::u16string_view kReadingModules = u"Čítajú sa moduly projektu...";
inline constexpr std::u16string_view kNoModuleToRead =
    u"Vo Visual Basicu nie je aktívny žiadny modul.";
inline constexpr std::u16string_view kHostDoesNotAnswer =
    u"Visual Basic neodpovedá alebo modul nedovolí prečítať. Nič sa nezmenilo.";
inline constexpr std::u16string_view kModuleHeaderOpen =
    u"Hlavička modulu nie je ukončená riadkom End. Nič sa do neho nevložilo.";
inline constexpr std::u16string_view kModuleChanged =
    u"Modul sa medzitým zmenil. Nič sa do neho nevložilo; skúste to znova.";
inline constexpr std::u16string_view kEditRefused =
    u"Visual Basic vloženie odmietol. Modul zostal taký, aký bol.";
inline constexpr std::u16string_view kEditPartly =
    u"Visual Basic vloženie odmietol a časť sa nedala vziať späť. V module zostali riadky vložené "
    u"pred riadky: ";
inline constexpr std::u16string_view kEditUnknown =
    u"Visual Basic pri vkladaní prestal odpovedať. Pozrite, čo v module zostalo; Späť (Ctrl+Z) to "
    u"odstráni.";

// Declarations of the project
inline constexpr std::u16string_view kMenuProject = u"&Projekt...";
inline constexpr std::u16string_view kProjectCaptionBefore = u"Projekt '";
inline constexpr std::u16string_view kProjectCaptionBehind = u"'";
inline constexpr std::u16string_view kProjectLabel = u"&Deklarácie projektu a čo sa s nimi stane";
inline constexpr std::u16string_view kProjectBefore = u"Teraz";
inline constexpr std::u16string_view kProjectAfter = u"Potom";
inline constexpr std::u16string_view kProjectOnlyFindings = u"Len &nálezy";
inline constexpr std::u16string_view kProjectCarryOut = u"&Vykonať...";
inline constexpr std::u16string_view kProjectClose = u"&Zavrieť";
inline constexpr std::u16string_view kProjectIn = u"v ";
inline constexpr std::u16string_view kProjectUnused = u"nepoužíva sa";
inline constexpr std::u16string_view kProjectUsed = u"používa: ";
inline constexpr std::u16string_view kProjectMoreModules = u", ďalšie moduly: ";
inline constexpr std::u16string_view kProjectAlike = u"rovnako v ";
inline constexpr std::u16string_view kProjectOncePublic = u", stačila by raz ako Public";
inline constexpr std::u16string_view kProjectDifferently = u"inak v ";
inline constexpr std::u16string_view kProjectLibraryDiffers = u"inak v databáze";
inline constexpr std::u16string_view kProjectGoes = u"odstráni sa";
inline constexpr std::u16string_view kProjectGoesForAnother = u"odstráni sa, stačí v ";
inline constexpr std::u16string_view kProjectBecomesPublic = u"bude Public pre všetky moduly";
inline constexpr std::u16string_view kProjectReplaced = u"nahradí sa tým, čo má databáza";
inline constexpr std::u16string_view kProjectStays = u"zostane: ";
inline constexpr std::u16string_view kProjectGone = u"hotovo: odstránené";
inline constexpr std::u16string_view kProjectGoneForAnother = u"hotovo: odstránené, stačí v ";
inline constexpr std::u16string_view kProjectMadePublic = u"hotovo: Public pre všetky moduly";
inline constexpr std::u16string_view kProjectWasReplaced = u"hotovo: nahradené z databázy";
inline constexpr std::u16string_view kProjectDetailGoes = u"Odstráni sa";
inline constexpr std::u16string_view kProjectDetailChanges = u"Zmení sa na";
inline constexpr std::u16string_view kProjectDetailOther = u"Stačí";
// Why a declaration stays, in the order of audit::Obstacle.
inline constexpr std::u16string_view kProjectReasons[] = {
    u"",
    u"je vnútri #If",
    u"modul má riadky, ktoré sa nedajú prečítať",
    u"modul má aj iný projekt",
    u"na jej riadkoch je aj niečo iné",
    u"chýbajú moduly projektu",
    u"drží ju poznámka",
    u"potrebuje ju niečo, čo zostane",
    u"ostatné tohto názvu sú iné",
    u"líšia sa typy alebo názvy parametrov",
    u"kód ju môže menovať pred jej členmi",
    u"trieda ju ukazuje iným",
    u"nemá ju žiadny štandardný modul",
    u"ten istý názov má aj niečo iné",
    u"kód pred ňou menuje modul",
    u"iný modul má tento názov odinakiaľ",
    u"drží záznam, ktorý je Private",
    u"je vynechaná",
    u"databáza má to isté inými slovami",
    u"to, čo má databáza, sa nedá prečítať",
    u"databáza má inú procedúru",
    u"volania v kóde by nesedeli",
    u"kód menuje jej parametre",
    u"záznam v databáze má iné členy",
    u"hodnota v databáze je iného druhu",
    u"databáza v nej používa iné názvy",
    u"sú v nej poznámky",
    u"najprv bude jednou pre všetky moduly",
};
inline constexpr std::u16string_view kProjectDeclarations = u"Deklarácie: ";
inline constexpr std::u16string_view kProjectFindings = u", nálezy: ";
inline constexpr std::u16string_view kProjectChanges = u", zmeny: ";
inline constexpr std::u16string_view kProjectDone = u"Hotovo. Zmenené moduly: ";
inline constexpr std::u16string_view kProjectAskBefore = u"Zmeniť modul '";
inline constexpr std::u16string_view kProjectAskBehind = u"'?";
inline constexpr std::u16string_view kProjectAskRemoved = u"Odstránené deklarácie: ";
inline constexpr std::u16string_view kProjectAskChanged = u"Zmenené deklarácie: ";
inline constexpr std::u16string_view kProjectHasChanged =
    u"Projekt sa medzitým zmenil a nič sa nevykonalo. Zavrite okno a otvorte ho znova. Zmenené "
    u"moduly: ";
inline constexpr std::u16string_view kProjectModuleBefore = u"Modul '";
inline constexpr std::u16string_view kProjectModuleBehind = u"': ";
inline constexpr std::u16string_view kProjectModuleChanged =
    u"Medzitým sa zmenil a nič sa v ňom nevykonalo.";
inline constexpr std::u16string_view kProjectEditRefused =
    u"Visual Basic zmenu odmietol. Modul zostal taký, aký bol.";
inline constexpr std::u16string_view kProjectEditPartly =
    u"Visual Basic zmenu odmietol a časť sa nedala vziať späť. Zmenené zostali riadky: ";
inline constexpr std::u16string_view kProjectEditUnknown =
    u"Visual Basic pri zmene prestal odpovedať. Pozrite, čo v module zostalo; Späť (Ctrl+Z) to "
    u"odstráni.";
inline constexpr std::u16string_view kNoProjectToRead =
    u"Vo Visual Basicu nie je otvorený žiadny projekt.";

// Add dialog
inline constexpr std::u16string_view kAddCaption = u"Pridať položku";
inline constexpr std::u16string_view kAddLabel = u"Zdajte deklaráciu";
inline constexpr std::u16string_view kOk = u"&OK";
inline constexpr std::u16string_view kCancel = u"&Zrušiť";

// Dialog of the kept versions
inline constexpr std::u16string_view kHistoryCaption = u"Obnoviť staršiu verziu";
inline constexpr std::u16string_view kHistoryLabel =
    u"&Verzie súboru a čím sa líšia od otvorenej databázy";
inline constexpr std::u16string_view kHistoryOpen = u"&Otvoriť";
inline constexpr std::u16string_view kHistoryNone = u"Tento súbor nemá staršie verzie.";
inline constexpr std::u16string_view kHistoryBytes = u" B";
inline constexpr std::u16string_view kHistoryAdded = u"navyše ";
inline constexpr std::u16string_view kHistoryRemoved = u", chýba ";
inline constexpr std::u16string_view kHistoryChanged = u", inak ";
inline constexpr std::u16string_view kHistoryEqual = u"rovnaká";
inline constexpr std::u16string_view kHistoryNoLibrary = u"nie je databáza";
inline constexpr std::u16string_view kHistoryReplaced = u"nahradená";
inline constexpr std::u16string_view kHistoryUnwritten = u"nezapísaná";
inline constexpr std::u16string_view kHistoryUnfinished = u"nedokončená";

// Color options dialog
inline constexpr std::u16string_view kOptionsCaption = u"Nastavenia";
inline constexpr std::u16string_view kOptionsKeyword = u"Farba kľúčových slov";
inline constexpr std::u16string_view kOptionsComment = u"Farba komentárov";
inline constexpr std::u16string_view kOptionsNormal = u"Farba ostatných slov";
inline constexpr std::u16string_view kOptionsOk = u"OK";
inline constexpr std::u16string_view kOptionsTarget = u"Deklarácie písať pre";
inline constexpr std::u16string_view kTargetVb6 = u"Visual Basic 6.0";
inline constexpr std::u16string_view kTargetVba7 = u"VBA 7 aj Visual Basic 6.0";
inline constexpr std::u16string_view kTargetVba7Only = u"VBA 7 (Office 2010 a novší)";
inline constexpr std::u16string_view kTargetTwinBasic = u"twinBASIC";
inline constexpr std::u16string_view kTargetUse1 = u"Platí pre vkladanie, kopírovanie";
inline constexpr std::u16string_view kTargetUse2 = u"a export; ukáže to zdrojový text.";

// Search dialog
inline constexpr std::u16string_view kSearchCaption = u"Rozšírené vyhľadávanie";
inline constexpr std::u16string_view kSearchKinds = u"Vyhľadávať v kategóriách";
inline constexpr std::u16string_view kSearchConstants = u"Constants";
inline constexpr std::u16string_view kSearchDeclares = u"Declares";
inline constexpr std::u16string_view kSearchTypes = u"Types";
inline constexpr std::u16string_view kSearchCriteria = u"Kritériá";
inline constexpr std::u16string_view kSearchName = u"Hľadaný názov";
inline constexpr std::u16string_view kSearchType = u"Hľadaný typ";
inline constexpr std::u16string_view kSearchConst = u"Hľadaná konštanta";
inline constexpr std::u16string_view kSearchValue = u"Hľadaná hodnota";
inline constexpr std::u16string_view kSearchArgument = u"Hľadaný argument";
inline constexpr std::u16string_view kSearchFullText = u"Fulltextové vyhľadávanie";
inline constexpr std::u16string_view kWholeNames = u"Iba celé názvy";
inline constexpr std::u16string_view kWholeValues = u"Iba celé hodnoty";
inline constexpr std::u16string_view kWholeWords = u"Iba celé slová";
inline constexpr std::u16string_view kAsNumber = u"Hľadať ako číslo";
inline constexpr std::u16string_view kAsNumberTip = u"Budú prehľadávané všetky sústavy";
inline constexpr std::u16string_view kSearchStart = u"&Hľadať";
inline constexpr std::u16string_view kFoundCount = u"Nájdených: ";
inline constexpr std::u16string_view kNameResults = u"Výsledky hľadania";
inline constexpr std::u16string_view kNoCriteria = u"Neboli zadané žiadne kritériá.";
inline constexpr std::u16string_view kNotEnough = u"Nedostatok položiek pre vyhľadávanie.";
inline constexpr std::u16string_view kWaitFreeing = u"Uvoľnuje sa pamäť.";
inline constexpr std::u16string_view kWaitSeconds = u"Môže to trvať niekoľko sekúnd.";
inline constexpr std::u16string_view kWaitPlease = u"Čakajte prosím...";

// Dialog that checks the library; what the rules say is in check_texts.h
inline constexpr std::u16string_view kCheckCaption = u"Skontrolovať knižnicu";
inline constexpr std::u16string_view kCheckRunning = u"Kontroluje sa...";
inline constexpr std::u16string_view kCheckFound = u"Nálezov: ";
inline constexpr std::u16string_view kCheckErrors = u" (chyby: ";
inline constexpr std::u16string_view kCheckWarnings = u", varovania: ";
inline constexpr std::u16string_view kCheckNotes = u", poznámky: ";
inline constexpr std::u16string_view kCheckNothing = u"Nenašlo sa nič. Skontrolovaných položiek: ";
inline constexpr std::u16string_view kCheckLanguageOnly =
    u". Databázy, ktoré patria k programu, tu nie sú: kontroloval sa iba jazyk.";
inline constexpr std::u16string_view kCheckError = u"chyba";
inline constexpr std::u16string_view kCheckWarning = u"varovanie";
inline constexpr std::u16string_view kCheckNote = u"poznámka";
inline constexpr std::u16string_view kCheckBetter = u"' Správne:";
inline constexpr std::u16string_view kCheckKnown = u"' V databáze programu:";
inline constexpr std::u16string_view kCheckGo = u"P&rejsť na položku";
inline constexpr std::u16string_view kCheckAgain = u"Skontrolovať z&nova";
inline constexpr std::u16string_view kCheckGone = u"Táto položka už v otvorenej databáze nie je.";

// Registration, when there is no console
inline constexpr std::u16string_view kRegistered =
    u"Doplnok je zaregistrovaný. Prostredie ho načíta pri svojom najbližšom spustení.";
inline constexpr std::u16string_view kRegisteredForVba =
    u"Doplnok editorov VBA je zaregistrovaný. Editor ho načíta pri svojom najbližšom spustení.";
inline constexpr std::u16string_view kNoVbaDlls =
    u"Vedľa programu Declarium.exe nie je DeclariumVba32.dll ani DeclariumVba64.dll.";
inline constexpr std::u16string_view kUnregistered = u"Registrácia doplnku je zrušená.";
inline constexpr std::u16string_view kRegistryRefused = u"Register systému sa nedal zmeniť:";

// Host
inline constexpr std::u16string_view kHostButton = u"Brindlework Declarium 3.0";
inline constexpr std::u16string_view kHostMenuEntry = u"Declar&ium";
inline constexpr std::u16string_view kConnectionErrorBefore =
    u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '";
inline constexpr std::u16string_view kDisconnectionErrorBefore =
    u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnDisconnection' na riadku '";
inline constexpr std::u16string_view kHostErrorBehind = u"'.";
// What did not succeed, by the number of the step from 1 on.
inline constexpr std::array<std::u16string_view, 7> kConnectionSteps = {
    u"Hlavné okno sa nenačítalo.",
    u"Obsah schránky sa neodložil.",
    u"Obrázok tlačidla sa nedostal cez schránku.",
    u"Na panel Standard sa nepridalo tlačidlo.",
    u"Do ponuky Add-Ins sa nepridala položka.",
    u"Kliknutia na tlačidlo a položku sa nepripojili.",
    u"Obsah schránky sa nevrátil.",
};

// The button in a VBA editor
inline constexpr std::u16string_view kProgramNotShown =
    u"Declarium sa nedá otvoriť. V editore sa nič nezmenilo.";
inline constexpr std::u16string_view kProgramNotInstalled =
    u"Program Declarium.exe nie je zaregistrovaný alebo chýba; nainštalujte ho znova, alebo "
    u"spustite Declarium.exe /RegServer:vba.";

// Splash window
inline constexpr std::u16string_view kSplashLine = u"Knižnica deklarácií pre Visual Basic 6.0";
inline constexpr std::u16string_view kSplashVersion = u"Verzia 3.0.0";

}  // namespace declarium::texts
