#include "vbhost/add_in_loader.h"

#include <optional>
#include <objbase.h>

#include "win32/system_registry.h"
#include "win32/wide.h"

namespace declarium::vbhost {
namespace {

constexpr std::u16string_view kList = u"Software\\Microsoft\\Visual Basic\\6.0\\Addins";
// VBA editors of either bitness have a list of their own.
constexpr std::u16string_view kVbaList = sizeof(void*) == 8
                                             ? u"Software\\Microsoft\\VBA\\VBE\\6.0\\Addins64"
                                             : u"Software\\Microsoft\\VBA\\VBE\\6.0\\Addins";
constexpr std::uint32_t kLoadAtStartup = 1;

constexpr IID kExtensibility = {0x0002E151, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kExtensibility2 = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};

HRESULT CallEntry(IDispatch& add_in, DISPID entry, std::vector<VARIANT> reversed) {
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  return add_in.Invoke(entry, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                       nullptr, nullptr);
}

VARIANT Number(int number) {
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = number;
  return value;
}

VARIANT Object(const ComPtr<IDispatch>& object) {
  VARIANT value{};
  value.vt = VT_DISPATCH;
  value.pdispVal = object.Get();
  return value;
}

// The custom array: the IDE passes one, empty.
class CustomArray {
 public:
  CustomArray() : array_(SafeArrayCreateVector(VT_VARIANT, 1, 0)) {}
  CustomArray(const CustomArray&) = delete;
  CustomArray& operator=(const CustomArray&) = delete;
  ~CustomArray() { SafeArrayDestroy(array_); }
  [[nodiscard]] SAFEARRAY** pointer() { return &array_; }
  [[nodiscard]] VARIANT value() {
    VARIANT value{};
    value.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    value.pparray = &array_;
    return value;
  }

 private:
  SAFEARRAY* array_;
};

// The text of a value below the user's classes; "" when there is none.
std::u16string ClassText(const std::u16string& key) {
  const auto value =
      win32::SystemRegistry().Read(RegistryRoot::kCurrentUser, u"Software\\Classes\\" + key, u"");
  return value ? TextOf(*value) : std::u16string();
}

// The factory of a class in a DLL, which stays loaded.
HRESULT FactoryInProcess(const std::u16string& prog_id, ComPtr<IClassFactory>& factory) {
  const auto class_text = ClassText(prog_id + u"\\CLSID");
  const auto dll = ClassText(u"CLSID\\" + class_text + u"\\InprocServer32");
  CLSID class_id{};
  if (FAILED(CLSIDFromString(win32::WideString(class_text).c_str(), &class_id)) || dll.empty()) {
    return REGDB_E_CLASSNOTREG;
  }
  const HMODULE module = LoadLibraryW(win32::WideString(dll).c_str());
  if (!module) return HRESULT_FROM_WIN32(GetLastError());
  using GetClass = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get_class = reinterpret_cast<GetClass>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  if (!get_class) return TYPE_E_DLLFUNCTIONNOTFOUND;
  return get_class(class_id, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
}

}  // namespace

std::vector<std::u16string> AddInLoader::Listed() const {
  const win32::SystemRegistry registry;
  const std::u16string list(model_.face() == Face::kVbaEditor ? kVbaList : kList);
  std::vector<std::u16string> listed;
  for (const auto& name : registry.SubKeys(RegistryRoot::kCurrentUser, list)) {
    const auto behavior =
        registry.Read(RegistryRoot::kCurrentUser, list + u"\\" + name, u"LoadBehavior");
    const auto load = behavior ? NumberOf(*behavior) : std::nullopt;
    if (load.value_or(0) & kLoadAtStartup) listed.push_back(name);
  }
  return listed;
}

HRESULT AddInLoader::Connect(const std::u16string& prog_id, EntryInterface entries, int mode) {
  if (model_.face() == Face::kVbaEditor) return ConnectInProcess(prog_id, mode);
  CLSID class_id{};
  HRESULT status = CLSIDFromProgID(win32::WideString(prog_id).c_str(), &class_id);
  if (FAILED(status)) return status;
  ComPtr<IClassFactory> factory;
  status = CoGetClassObject(class_id, CLSCTX_LOCAL_SERVER, nullptr, IID_IClassFactory,
                            reinterpret_cast<void**>(factory.Receive()));
  if (FAILED(status)) return status;
  ComPtr<IUnknown> created;
  status =
      factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(created.Receive()));
  if (FAILED(status)) return status;
  const IID& wanted = entries == EntryInterface::kExtensibility2  ? kExtensibility2
                      : entries == EntryInterface::kExtensibility ? kExtensibility
                                                                  : IID_IDispatch;
  const auto add_in = created.Query<IDispatch>(wanted);
  if (!add_in) return E_NOINTERFACE;
  add_ins_[prog_id] = {factory, add_in};
  CustomArray custom;
  const auto begin = std::chrono::steady_clock::now();
  status = CallEntry(
      *add_in, 1,
      {custom.value(), Object(model_.AddIn(prog_id)), Number(mode), Object(model_.Vbe())});
  connection_time_ = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - begin);
  if (SUCCEEDED(status) && mode == 1) status = CallEntry(*add_in, 4, {custom.value()});
  return status;
}

HRESULT AddInLoader::ConnectInProcess(const std::u16string& prog_id, int mode) {
  ComPtr<IClassFactory> factory;
  HRESULT status = FactoryInProcess(prog_id, factory);
  if (FAILED(status)) return status;
  ComPtr<IDispatch> created;
  status =
      factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(created.Receive()));
  if (FAILED(status)) return status;
  const auto table = created.Query<com::AddInEntries>(kExtensibility2);
  if (!table) return E_NOINTERFACE;
  add_ins_[prog_id] = {factory, created, table};
  CustomArray custom;
  status =
      table->OnConnection(model_.Vbe().Get(), mode, model_.AddIn(prog_id).Get(), custom.pointer());
  if (FAILED(status)) {
    [[maybe_unused]] const auto written = win32::SystemRegistry().Write(
        RegistryRoot::kCurrentUser, std::u16string(kVbaList) + u"\\" + prog_id, u"LoadBehavior",
        NumberValue(0));
  } else if (mode == 1) {
    status = table->OnStartupComplete(custom.pointer());
  }
  return status;
}

HRESULT AddInLoader::Disconnect(const std::u16string& prog_id, int mode) {
  const auto found = add_ins_.find(prog_id);
  if (found == add_ins_.end()) return S_FALSE;
  const auto add_in = found->second.entries;
  CustomArray custom;
  if (const auto table = found->second.table) {
    if (mode == 0) table->OnBeginShutdown(custom.pointer());
    const HRESULT disconnected = table->OnDisconnection(mode, custom.pointer());
    add_ins_.erase(prog_id);
    return disconnected;
  }
  const HRESULT status = CallEntry(*add_in, 2, {custom.value(), Number(mode)});
  add_ins_.erase(prog_id);
  return status;
}

HRESULT RegisterEntryInterfaces(bool present) {
  // The system's own proxy for interfaces that are called by Invoke only.
  constexpr std::u16string_view kDispatchProxy = u"{00020420-0000-0000-C000-000000000046}";
  win32::SystemRegistry registry;
  for (const auto* iid :
       {u"{0002E151-0000-0000-C000-000000000046}", u"{B65AD801-ABAF-11D0-BB8B-00A0C90F2744}"}) {
    const auto key = std::u16string(u"Software\\Classes\\Interface\\") + iid;
    const auto done = present
                          ? registry.Write(RegistryRoot::kLocalMachine, key + u"\\ProxyStubClsid32",
                                           u"", TextValue(kDispatchProxy))
                          : registry.DeleteTree(RegistryRoot::kLocalMachine, key);
    if (!done && present) return HRESULT_FROM_WIN32(done.error().code);
  }
  return S_OK;
}

}  // namespace declarium::vbhost
