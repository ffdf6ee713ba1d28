// What the rules about declarations say in the windows, in Slovak: what is wrong, and what happens
// at run time. check/rule.cpp puts each beside its rule.
#pragma once

#include <string_view>

namespace declarium::texts {

struct RuleText {
  std::u16string_view title;
  std::u16string_view consequence;  // a sentence
};

// Does not compile
inline constexpr RuleText kD101 = {u"Toto nie je príkaz jazyka",
                                   u"Visual Basic riadok pri preklade modulu odmietne."};
inline constexpr RuleText kD102 = {u"Názov je v jednom rozsahu dvakrát",
                                   u"Modul sa nepreloží, lebo názov nie je jednoznačný."};
inline constexpr RuleText kD103 = {u"Typ, ktorý nič nedeklaruje",
                                   u"Projekt sa nepreloží, lebo Visual Basic taký typ nepozná. Ak "
                                   u"môže byť deklarovaný inde, je to "
                                   u"iba poznámka."};
inline constexpr RuleText kD104 = {
    u"Verejná deklarácia v triede alebo formulári",
    u"Modul sa nepreloží: v objektovom module musí byť deklarácia Private."};
inline constexpr RuleText kD105 = {
    u"Záznam obsahuje záznam, ktorý stojí pod ním",
    u"Modul sa nepreloží: záznam musí stáť nad tými, ktoré ho obsahujú."};
inline constexpr RuleText kD106 = {
    u"Dlhšie, než jazyk dovolí",
    u"Visual Basic skráti alebo odmietne riadky nad 1023 znakov, príkazy nad 25 riadkov a viac než "
    u"60 parametrov."};
inline constexpr RuleText kD107 = {u"Parameter sa volá ako jeho procedúra",
                                   u"Modul sa nepreloží: názov je v procedúre dvakrát."};
inline constexpr RuleText kD108 = {
    u"Záznam odovzdaný hodnotou",
    u"Modul sa nepreloží: záznam sa odovzdáva odkazom, alebo po členoch."};
inline constexpr RuleText kD109 = {
    u"Hodnota, ktorú konštanta nemôže mať",
    u"Modul sa nepreloží: hodnota presahuje svoj typ, alebo potrebuje samu seba."};
inline constexpr RuleText kD110 = {
    u"Slovo, ktoré Visual Basic 6.0 nemá",
    u"Visual Basic 6.0 riadok číta a PtrSafe, LongPtr aj LongLong odmietne; #If VBA7 ho pred ním "
    u"skryje."};
inline constexpr RuleText kD111 = {
    u"Verejne použitý typ, ktorý ostatní nevidia",
    u"Modul sa nepreloží: verejné procedúry a záznamy nesmú použiť súkromný typ, procedúry tried a "
    u"formulárov ani záznam zo štandardného modulu."};
inline constexpr RuleText kD112 = {
    u"Názov, ktorý zverejňujú dva moduly",
    u"Projekt sa nepreloží tam, kde názov použije tretí modul: pre Visual Basic je nejednoznačný."};

// Wrong entry
inline constexpr RuleText kD201 = {u"Názvu v DLL chýba na konci A alebo W",
                                   u"Volanie skončí chybou 453: DLL taký názov nemá."};
inline constexpr RuleText kD202 = {u"Veľké a malé písmená názvu v DLL nesedia",
                                   u"Volanie skončí chybou 453: DLL ich rozlišuje."};
inline constexpr RuleText kD203 = {u"Procedúra je v inej DLL",
                                   u"Volanie skončí chybou 453: táto DLL ju nemá."};
inline constexpr RuleText kD204 = {u"As String pre procedúru, ktorá číta UTF-16",
                                   u"Visual Basic jej odovzdá text v ANSI, a tak uvidí iné znaky."};
inline constexpr RuleText kD205 = {
    u"Názov v DLL, ktorý databázy nepoznajú",
    u"Ak ho DLL nemá, volanie skončí chybou 453. Známy je takmer rovnaký názov."};
inline constexpr RuleText kD206 = {u"Najstarší potrebný Windows to nemá",
                                   u"Volanie tam skončí chybou 453, alebo chýba DLL (chyba 53)."};

// Wrong frame
inline constexpr RuleText kD301 = {
    u"Argumenty nie sú také dlhé, ako ich procedúra berie",
    u"Zásobník po volaní nesedí: v prostredí chyba 49, v programe pád alebo prepísané premenné."};
inline constexpr RuleText kD302 = {u"Chýba ByVal",
                                   u"Procedúra dostane adresu premennej namiesto jej hodnoty."};
inline constexpr RuleText kD303 = {
    u"ByVal pri čísle, ktoré procedúra zapisuje",
    u"Procedúra pokladá hodnotu za adresu a zapíše tam, ak to nie je VarPtr premennej."};
inline constexpr RuleText kD304 = {u"Text odovzdaný odkazom",
                                   u"Procedúra dostane adresu adresy a prepíše ju."};
inline constexpr RuleText kD305 = {
    u"Výsledok iného druhu",
    u"Visual Basic vezme výsledok odtiaľ, kam ho procedúra nedáva, alebo uvoľní cudziu pamäť."};
inline constexpr RuleText kD306 = {
    u"Boolean alebo Integer tam, kde sa odovzdáva 32 bitov",
    u"Polovica hodnoty sa stratí, a Not z pravdy, ktorá sa vráti (1), je tiež pravda."};
inline constexpr RuleText kD307 = {u"Premenná kratšia, než sa do nej zapíše",
                                   u"Procedúra píše za premennú, cez jej susedov."};
inline constexpr RuleText kD308 = {
    u"As Any hodnotou",
    u"Koľko bajtov sa odovzdá, rozhodne argument každého volania: Double spôsobí pád, Integer je "
    u"polovica hodnoty."};
inline constexpr RuleText kD309 = {
    u"16 bitov pre popisovač alebo adresu",
    u"Popisovače a adresy sa do 16 bitov nezmestia: chyba 6 (pretečenie)."};

// Wrong value
inline constexpr RuleText kD401 = {u"Konštanta má inú hodnotu než v databázach",
                                   u"Ak názov znamená to isté, volanie žiada niečo iné, než má."};
inline constexpr RuleText kD402 = {
    u"Hexadecimálne číslo je záporné",
    u"&H8000 až &HFFFF bez & na konci sú 16-bitové čísla: &HFFFF je -1, nie 65535."};
inline constexpr RuleText kD403 = {
    u"Záznam má členy inde než v databázach",
    u"Ak názov znamená to isté, procedúry čítajú a píšu členy na zlých miestach."};
inline constexpr RuleText kD404 = {u"Záznam kratší, než sa doň zapíše",
                                   u"Procedúra píše za záznam, cez jeho susedov."};
inline constexpr RuleText kD405 = {
    u"Len tam, kde patrí LenB",
    u"Len vynechá bajty medzi členmi: procedúra záznam takej veľkosti odmietne."};

// 64 bits
inline constexpr RuleText kD501 = {u"Chýba PtrSafe", u"64-bitový Office modul nepreloží."};
inline constexpr RuleText kD502 = {
    u"Long pre popisovač alebo adresu",
    u"V 64 bitoch sa stratí horná polovica: procedúra dostane inú adresu či popisovač."};
inline constexpr RuleText kD503 = {
    u"LongPtr pre 32-bitové číslo",
    u"V 64 bitoch procedúra číta alebo píše polovicu premennej; druhá zostane, aká bola."};
inline constexpr RuleText kD504 = {
    u"Adresa v premennej typu Long",
    u"V 64 bitoch sa adresa nezmestí: chyba 6 (pretečenie), alebo chyba 13 pri preklade."};
inline constexpr RuleText kD505 = {u"Veľkosť záznamu zapísaná číslom",
                                   u"V 64 bitoch má záznam inú veľkosť a procedúra ho odmietne."};
inline constexpr RuleText kD506 = {
    u"Člen typu Long pre popisovač alebo adresu",
    u"Ak názov znamená to isté, členy za ním sú v 64 bitoch na zlých miestach."};

// Clean-up
inline constexpr RuleText kD601 = {u"Deklarované a nepoužité",
                                   u"Nič sa nestane; deklarácia môže preč."};
inline constexpr RuleText kD602 = {u"Deklarované vo viacerých moduloch",
                                   u"Nič sa nestane; stačila by jedna deklarácia Public."};
inline constexpr RuleText kD603 = {u"Deklarované ako v databázach, pod iným názvom",
                                   u"Nič sa nestane; jedna procedúra má dva názvy."};
inline constexpr RuleText kD604 = {
    u"V rôznych moduloch deklarované rôzne",
    u"Ten istý názov tu znamená jedno a inde druhé. Nájde to declarium-cli audit."};

}  // namespace declarium::texts
