#include "vbhost/vba_face.h"

#include <ocidl.h>
#include <olectl.h>

#include "text/text.h"

namespace declarium::vbhost {
namespace {

using Access = ModelObject::Access;

constexpr IID kButtonEvents = {0x000C0351, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

constexpr auto kLocked = static_cast<HRESULT>(0x800AC471);
constexpr int kDesignMode = 2;
constexpr std::size_t kLongestLine = 1023;

std::shared_ptr<Bar> AddBar(Ide& ide, const char16_t* name) {
  ide.bars.push_back(std::make_shared<Bar>());
  ide.bars.back()->name = name;
  return ide.bars.back();
}

HRESULT TakePicture(const Call& call, std::vector<std::uint8_t>& bytes) {
  const auto object = call.arguments.back().ToObject();
  const auto picture = object.Query<IPicture>(IID_IPicture);
  SHORT type = PICTYPE_NONE;
  OLE_HANDLE handle = 0;
  if (!picture || FAILED(picture->get_Type(&type)) || type != PICTYPE_BITMAP ||
      FAILED(picture->get_Handle(&handle))) {
    return DISP_E_TYPEMISMATCH;
  }
  const auto bitmap = reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(static_cast<int>(handle)));
  BITMAP header{};
  if (GetObjectW(bitmap, sizeof header, &header) == 0) return E_FAIL;
  bytes.resize(static_cast<std::size_t>(header.bmWidthBytes) *
               static_cast<std::size_t>(header.bmHeight));
  GetBitmapBits(bitmap, static_cast<LONG>(bytes.size()), bytes.data());
  return S_OK;
}

}  // namespace

void AddVbaBars(Ide& ide) {
  const auto menu_bar = AddBar(ide, u"Menu Bar");
  AddBar(ide, u"Standard");
  const auto add_ins = AddBar(ide, u"Add-Ins");
  add_ins->found_by_name = false;
  for (const auto& menu : {AddBar(ide, u"Tools"), add_ins}) {
    auto control = std::make_shared<Control>();
    control->caption = u"Menu";
    control->menu = menu;
    menu_bar->controls.push_back(control);
  }
}

void AddVbaProjectMembers(ModelObject& object, const std::shared_ptr<Project>& project) {
  object.Add(121, L"Name", Access::kGet, 0, 0, [project](Call& call) {
    call.result = Variant(project->name);
    return S_OK;
  });
  object.Add(119, L"Mode", Access::kGet, 0, 0, [project](Call& call) {
    call.result = Variant(project->mode);
    return S_OK;
  });
  object.Add(131, L"Protection", Access::kGet, 0, 0, [project](Call& call) {
    call.result = Variant(project->protection);
    return S_OK;
  });
}

HRESULT CheckVbaUnlocked(const Project& project) {
  return project.protection == 0 ? S_OK : kLocked;
}

void AddVbaButtonMembers(ModelObject& object, const std::shared_ptr<Control>& control) {
  object.SetEvents(kButtonEvents, control->clicks);
  object.Add(0x6005000E, L"Picture", Access::kGetPut, 0, 0, [control](Call& call) {
    return call.put ? TakePicture(call, control->face) : E_NOTIMPL;
  });
  object.Add(0x60050010, L"Mask", Access::kGetPut, 0, 0, [control](Call& call) {
    return call.put ? TakePicture(call, control->mask) : E_NOTIMPL;
  });
}

HRESULT CheckVbaChange(Ide& ide, const Component& component) {
  const auto project = component.project.lock();
  if (!project || project->mode == kDesignMode) return S_OK;
  ++ide.reset_questions;
  return E_FAIL;
}

std::u16string CutAsVba(const std::u16string& text) {
  std::u16string cut;
  for (const auto line : Split(text, kCrLf)) {
    cut.append(line.substr(0, kLongestLine)).append(kCrLf);
  }
  // A line break at the end stands for one more line.
  if (!text.ends_with(kCrLf) && !cut.empty()) cut.resize(cut.size() - kCrLf.size());
  return cut;
}

HRESULT FireVbaClick(const std::shared_ptr<Control>& control, const ComPtr<IDispatch>& object) {
  VARIANT_BOOL cancel_default = VARIANT_FALSE;
  std::vector<VARIANT> arguments(2);
  arguments[0].vt = VT_DISPATCH;
  arguments[0].pdispVal = object.Get();
  arguments[1].vt = VT_BYREF | VT_BOOL;
  arguments[1].pboolVal = &cancel_default;
  return control->clicks->Fire(1, arguments);
}

}  // namespace declarium::vbhost
