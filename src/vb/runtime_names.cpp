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
// object in front.
constexpr std::u16string_view kOwnMembers =
    u" accesskeys activecontrol activeform add ambient appearance applychanges arrange"
    u" asyncread autoredraw autoshowchildren backcolor backstyle borderstyle cancelasyncread"
    u" cangetfocus canpropertychange caption changed circle clipbehavior clipcontrols cls"
    u" containedcontrols containerhwnd continuousscroll controlbox controls count currentx"
    u" currenty datamember datamemberchanged datamembers datasource defaultcancel drawmode"
    u" drawstyle drawwidth editproperty enabled event eventsfrozen extender fillcolor fillstyle"
    u" font fontbold fontitalic fontname fontsize fontstrikethru fonttransparent fontunderline"
    u" forecolor forwardfocus hasdc hdc height helpcontextid hide hitbehavior"
    u" hscrollsmallchange hwnd hyperlink icon image initialize invisibleatruntime item"
    u" keypreview left line linkmode linktopic maskcolor maskpicture maxbutton mdichild"
    u" minbutton minheight minwidth mouseicon mousepointer move moveable mtstransactionmode"
    u" name negotiatemenus oledrag oledropmode paintpicture palette palettemode parent"
    u" parentcontrols picture point popupmenu print printform propertychanged propertypages"
    u" pset public refresh remove righttoleft scale scaleheight scaleleft scalemode scaletop"
    u" scalewidth scalex scaley scrollbars selectedcontrols setfocus setviewport show"
    u" showintaskbar size standardsize startupposition tag terminate textheight textwidth"
    u" toolboxbitmap top validatecontrols viewportheight viewportleft viewporttop viewportwidth"
    u" visible vscrollsmallchange whatsthisbutton whatsthishelp whatsthismode width windowless"
    u" windowstate zorder"
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
