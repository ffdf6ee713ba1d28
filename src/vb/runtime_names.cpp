#include "vb/runtime_names.h"

#include <algorithm>
#include <array>
#include <span>

#include "text/text.h"

namespace declarium::vb {
namespace {

// In lower case and in their order. Functions, objects and constants of VBA, VB and stdole, and the
// words that statements such as Open have of their own.
constexpr std::u16string_view kValues[] = {
    u"abs", u"access", u"alias", u"app", u"appactivate", u"append", u"array", u"asc", u"ascb",
    u"ascw", u"atn", u"attribute", u"b", u"base", u"beep", u"bf", u"binary", u"callbyname",
    u"cbool", u"cbyte", u"ccur", u"cdate", u"cdbl", u"cdec", u"chdir", u"chdrive", u"checked",
    u"choose", u"chr", u"chrb", u"chrw", u"cint", u"circle", u"clipboard", u"clng", u"color",
    u"command", u"compare", u"cos", u"createobject", u"csng", u"cstr", u"curdir", u"cvar",
    u"cvdate", u"cverr", u"date", u"dateadd", u"datediff", u"datepart", u"dateserial", u"datevalue",
    u"day", u"ddb", u"debug", u"default", u"deletesetting", u"dir", u"doevents", u"environ", u"eof",
    u"erl", u"err", u"error", u"exp", u"explicit", u"fileattr", u"filecopy", u"filedatetime",
    u"filelen", u"filter", u"fix", u"format", u"formatcurrency", u"formatdatetime", u"formatnumber",
    u"formatpercent", u"forms", u"freefile", u"fv", u"getallsettings", u"getattr", u"getobject",
    u"getsetting", u"global", u"gray", u"hex", u"hour", u"iif", u"imestatus", u"input", u"inputb",
    u"inputbox", u"instr", u"instrb", u"instrrev", u"int", u"ipmt", u"irr", u"isarray", u"isdate",
    u"isempty", u"iserror", u"ismissing", u"isnull", u"isnumeric", u"isobject", u"join", u"kill",
    u"lbound", u"lcase", u"left", u"leftb", u"len", u"lenb", u"lib", u"licenses", u"line", u"load",
    u"loadpicture", u"loadresdata", u"loadrespicture", u"loadresstring", u"loc", u"lof", u"log",
    u"ltrim", u"macid", u"macscript", u"me", u"mid", u"midb", u"minute", u"mirr", u"mkdir",
    u"module", u"monochrome", u"month", u"monthname", u"msgbox", u"name", u"now", u"nper", u"npv",
    u"object", u"objptr", u"oct", u"output", u"partition", u"pmt", u"ppmt", u"printer", u"printers",
    u"property", u"pset", u"pv", u"qbcolor", u"random", u"randomize", u"rate", u"read", u"replace",
    u"reset", u"rgb", u"right", u"rightb", u"rmdir", u"rnd", u"round", u"rtrim", u"savepicture",
    u"savesetting", u"scale", u"screen", u"second", u"seek", u"sendkeys", u"setattr", u"sgn",
    u"shell", u"sin", u"sln", u"space", u"spc", u"split", u"sqr", u"stdole", u"step", u"str",
    u"strcomp", u"strconv", u"string", u"strptr", u"strreverse", u"switch", u"syd", u"tab", u"tan",
    u"text", u"time", u"timer", u"timeserial", u"timevalue", u"trim", u"typename", u"ubound",
    u"ucase", u"unchecked", u"unload", u"val", u"varptr", u"vartype", u"vb", u"vba", u"vbrun",
    u"vgacolor", u"weekday", u"weekdayname", u"width", u"year",};
static_assert(std::ranges::is_sorted(kValues));

// Types and classes.
constexpr std::u16string_view kTypes[] = {
    u"ambientproperties", u"app", u"asyncproperty", u"checkbox", u"clipboard", u"collection",
    u"combobox", u"commandbutton", u"containedcontrols", u"control", u"controls", u"currency",
    u"data", u"databinding", u"databindings", u"datamembers", u"dataobject", u"dataobjectfiles",
    u"date", u"decimal", u"dirlistbox", u"drivelistbox", u"errobject", u"eventparameter",
    u"eventparameters", u"exportedfunctions", u"filelistbox", u"font", u"fontevents", u"form",
    u"frame", u"global", u"hscrollbar", u"hyperlink", u"idispatch", u"ienumvariant", u"ifont",
    u"ifontdisp", u"image", u"ipicture", u"ipicturedisp", u"iunknown", u"label", u"licenseinfo",
    u"line", u"listbox", u"longlong", u"longptr", u"mdiform", u"menu", u"object", u"ole",
    u"ole_cancelbool", u"ole_color", u"ole_enabledefaultbool", u"ole_handle", u"ole_optexclusive",
    u"ole_tristate", u"ole_xpos_container", u"ole_xpos_himetric", u"ole_xpos_pixels",
    u"ole_xsize_container", u"ole_xsize_himetric", u"ole_xsize_pixels", u"ole_ypos_container",
    u"ole_ypos_himetric", u"ole_ypos_pixels", u"ole_ysize_container", u"ole_ysize_himetric",
    u"ole_ysize_pixels", u"optionbutton", u"parentcontrols", u"picture", u"picturebox", u"printer",
    u"propertybag", u"propertypage", u"screen", u"selectedcontrols", u"shape", u"single",
    u"stdfont", u"stdpicture", u"textbox", u"timer", u"usercontrol", u"userdocument", u"vscrollbar",};
static_assert(std::ranges::is_sorted(kTypes));

// What the code of a form, a control, a document, a property page or a class may call without an
// object in front.
constexpr std::u16string_view kOwnMembers[] = {
    u"accesskeys", u"activecontrol", u"activeform", u"add", u"ambient", u"appearance",
    u"applychanges", u"arrange", u"asyncread", u"autoredraw", u"autoshowchildren", u"backcolor",
    u"backstyle", u"borderstyle", u"cancelasyncread", u"cangetfocus", u"canpropertychange",
    u"caption", u"changed", u"circle", u"clipbehavior", u"clipcontrols", u"cls",
    u"containedcontrols", u"containerhwnd", u"continuousscroll", u"controlbox", u"controls",
    u"count", u"currentx", u"currenty", u"datamember", u"datamemberchanged", u"datamembers",
    u"datasource", u"defaultcancel", u"drawmode", u"drawstyle", u"drawwidth", u"editproperty",
    u"enabled", u"event", u"eventsfrozen", u"extender", u"fillcolor", u"fillstyle", u"font",
    u"fontbold", u"fontitalic", u"fontname", u"fontsize", u"fontstrikethru", u"fonttransparent",
    u"fontunderline", u"forecolor", u"forwardfocus", u"hasdc", u"hdc", u"height", u"helpcontextid",
    u"hide", u"hitbehavior", u"hscrollsmallchange", u"hwnd", u"hyperlink", u"icon", u"image",
    u"initialize", u"invisibleatruntime", u"item", u"keypreview", u"left", u"line", u"linkmode",
    u"linktopic", u"maskcolor", u"maskpicture", u"maxbutton", u"mdichild", u"minbutton",
    u"minheight", u"minwidth", u"mouseicon", u"mousepointer", u"move", u"moveable",
    u"mtstransactionmode", u"name", u"negotiatemenus", u"oledrag", u"oledropmode", u"paintpicture",
    u"palette", u"palettemode", u"parent", u"parentcontrols", u"picture", u"point", u"popupmenu",
    u"print", u"printform", u"propertychanged", u"propertypages", u"pset", u"public", u"refresh",
    u"remove", u"righttoleft", u"scale", u"scaleheight", u"scaleleft", u"scalemode", u"scaletop",
    u"scalewidth", u"scalex", u"scaley", u"scrollbars", u"selectedcontrols", u"setfocus",
    u"setviewport", u"show", u"showintaskbar", u"size", u"standardsize", u"startupposition", u"tag",
    u"terminate", u"textheight", u"textwidth", u"toolboxbitmap", u"top", u"validatecontrols",
    u"viewportheight", u"viewportleft", u"viewporttop", u"viewportwidth", u"visible",
    u"vscrollsmallchange", u"whatsthisbutton", u"whatsthishelp", u"whatsthismode", u"width",
    u"windowless", u"windowstate", u"zorder",};
static_assert(std::ranges::is_sorted(kOwnMembers));

bool IsOneOf(std::span<const std::u16string_view> names, std::u16string_view name) {
  std::array<char16_t, 32> lowered;
  if (name.size() > lowered.size()) return false;
  const auto* const end = std::ranges::transform(name, lowered.begin(), [](char16_t unit) {
                            return LowerCase(unit);
                          }).out;
  return std::ranges::binary_search(names, std::u16string_view(lowered.data(), end));
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
