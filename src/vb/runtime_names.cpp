#include "vb/runtime_names.h"

#include <string>

#include "text/text.h"

namespace declarium::vb {
namespace {

// In lower case, each between blanks. Functions, objects and constants of VBA, VB and stdole, and
// the words that statements such as Open have of their own.
constexpr std::u16string_view kValues =
    u" abs access alias app appactivate append array asc ascb ascw atn attribute b base beep bf"
    u" binary callbyname cbool cbyte ccur cdate cdbl cdec chdir chdrive checked choose chr chrb"
    u" chrw cint circle clipboard clng color command compare cos createobject csng cstr curdir"
    u" cvar cvdate cverr date dateadd datediff datepart dateserial datevalue day ddb debug"
    u" default deletesetting dir doevents environ eof erl err error exp explicit fileattr"
    u" filecopy filedatetime filelen filter fix format formatcurrency formatdatetime"
    u" formatnumber formatpercent forms freefile fv getallsettings getattr getobject getsetting"
    u" global gray hex hour iif imestatus input inputb inputbox instr instrb instrrev int ipmt"
    u" irr isarray isdate isempty iserror ismissing isnull isnumeric isobject join kill lbound"
    u" lcase left leftb len lenb lib licenses line load loadpicture loadresdata loadrespicture"
    u" loadresstring loc lof log ltrim macid macscript me mid midb minute mirr mkdir module"
    u" monochrome month monthname msgbox name now nper npv object objptr oct output partition"
    u" pmt ppmt printer printers property pset pv qbcolor random randomize rate read replace"
    u" reset rgb right rightb rmdir rnd round rtrim savepicture savesetting scale screen second"
    u" seek sendkeys setattr sgn shell sin sln space spc split sqr stdole step str strcomp"
    u" strconv string strptr strreverse switch syd tab tan text time timer timeserial timevalue"
    u" trim typename ubound ucase unchecked unload val varptr vartype vb vba vbrun vgacolor"
    u" weekday weekdayname width year"
    u" ";

// Types and classes.
constexpr std::u16string_view kTypes =
    u" ambientproperties app asyncproperty checkbox clipboard collection combobox commandbutton"
    u" containedcontrols control controls currency data databinding databindings datamembers"
    u" dataobject dataobjectfiles date decimal dirlistbox drivelistbox errobject eventparameter"
    u" eventparameters exportedfunctions filelistbox font fontevents form frame global"
    u" hscrollbar hyperlink idispatch ienumvariant ifont ifontdisp image ipicture ipicturedisp"
    u" iunknown label licenseinfo line listbox longlong longptr mdiform menu object ole"
    u" ole_cancelbool ole_color ole_enabledefaultbool ole_handle ole_optexclusive ole_tristate"
    u" ole_xpos_container ole_xpos_himetric ole_xpos_pixels ole_xsize_container"
    u" ole_xsize_himetric ole_xsize_pixels ole_ypos_container ole_ypos_himetric ole_ypos_pixels"
    u" ole_ysize_container ole_ysize_himetric ole_ysize_pixels optionbutton parentcontrols"
    u" picture picturebox printer propertybag propertypage screen selectedcontrols shape single"
    u" stdfont stdpicture textbox timer usercontrol userdocument vscrollbar"
    u" ";

// What the code of a form, a control, a document, a property page or a class may call without an
// object in front, and the events of such objects.
constexpr std::u16string_view kOwnMembers =
    u" accesskeypress accesskeys activate activecontrol activeform add alignable ambient"
    u" appearance apply applychanges arrange asyncprogress asyncread asyncreadcomplete"
    u" autoredraw autoshowchildren backcolor backstyle borderstyle cancelasyncread"
    u" cangetfocus canpropertychange caption changed circle click clipbehavior clipcontrols"
    u" cls containedcontrols container containerhwnd continuousscroll controlbox"
    u" controlcontainer controls count currentx currenty databindingbehavior datamember"
    u" datamemberchanged datamembers datasource dblclick defaultcancel drag dragdrop dragicon"
    u" dragmode dragover drawmode drawstyle drawwidth editatdesigntime editproperty enabled"
    u" event eventsfrozen extender fillcolor fillstyle font fontbold fontitalic fontname"
    u" fontsize fontstrikethru fonttransparent fontunderline forecolor forwardfocus"
    u" getdatamember gotfocus hasdc hdc height helpcontextid hide hitbehavior hittest"
    u" hscrollsmallchange hwnd hyperlink icon image index initialize initproperties"
    u" invisibleatruntime item keydown keypress keypreview keyup left line linkclose"
    u" linkerror linkexecute linkmode linkopen linktopic load lostfocus maskcolor maskpicture"
    u" maxbutton mdichild menuitems minbutton minheight minwidth mousedown mouseicon"
    u" mousemove mousepointer mouseup move moveable mtstransactionmode name"
    u" negotiatemenus negotiatetoolbars object oledrag oledragdrop oledragover oledropmode"
    u" ownerdraw paint paintpicture palette palettemode parent parentcontrols picture point"
    u" popupmenu print printform propertychanged propertypage propertypages pset public"
    u" queryunload readproperties refresh remove resize righttoleft scale scaleheight"
    u" scaleleft scalemode scaletop scalewidth scalex scaley scroll scrollbars"
    u" selectedcontrols setfocus setviewport show showintaskbar showwhatsthis size"
    u" standardsize startupposition tag terminate textheight textwidth"
    u" toolboxbitmap top unload validatecontrols viewportheight viewportleft viewporttop"
    u" viewportwidth visible vscrollsmallchange whatsthisbutton whatsthishelp whatsthismode"
    u" width windowless windowstate writeproperties zorder"
    u" ";

bool IsOneOf(std::u16string_view words, std::u16string_view name) {
  if (name.empty() || name.find(u' ') != name.npos) return false;
  return words.find(u" " + LowerCase(name) + u" ") != words.npos;
}

// "vbOKOnly"
bool IsRuntimeConstant(std::u16string_view name) {
  return name.size() > 2 && EqualIgnoringCase(name.substr(0, 2), u"vb") &&
         name.find(u'_') == name.npos && !IsDigit(name[2]);
}

}  // namespace

bool IsRuntimeValue(std::u16string_view name) {
  return IsOneOf(kValues, name) || IsRuntimeConstant(name);
}

bool IsRuntimeType(std::u16string_view name) {
  return IsOneOf(kTypes, name) || IsRuntimeConstant(name);
}

bool IsMemberOfDesigner(std::u16string_view name) {
  return IsOneOf(kOwnMembers, name);
}

}  // namespace declarium::vb
