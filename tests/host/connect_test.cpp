// The add-in object and its factory, called in the same process through their tables.
#include "host/com/connect.h"

#include <deque>
#include <gtest/gtest.h>
#include <stdexcept>

#include "host/com/automation.h"
#include "host/com/start_limit.h"
#include "host/fake_host.h"

namespace declarium::com {
namespace {

// A host that refuses everything; enough to see that it was called.
class DeafHost final : public IDispatch {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    ++calls;
    return answer();
  }
  ULONG references = 1;
  int calls = 0;
  std::function<HRESULT()> answer = [] { return E_FAIL; };  // to each call
};

class ConnectTest : public testing::Test {
 protected:
  // The entry in the `slot`th place of the object's table, as a C caller sees it.
  template <class Function>
  static Function Slot(void* object, int slot) {
    return reinterpret_cast<Function>((*static_cast<void***>(object))[slot]);
  }

  HRESULT Invoke(AddInEntries& add_in, DISPID entry, std::vector<VARIANT> reversed) {
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return add_in.Invoke(entry, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                         nullptr);
  }

  // Handles messages until the condition holds, at most for ten seconds.
  static bool HandlesUntil(const std::function<bool()>& condition) {
    const DWORD begin = GetTickCount();
    MSG message;
    while (!condition() && GetTickCount() - begin < 10000) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    return condition();
  }

  ComApartment apartment_;
  Record record_;
  FakeClipboard clipboard_{record_};
  FakeWindows windows_{record_};
  Boundary boundary_;
  PostedCalls posted_calls_{boundary_};
  HostSessions sessions_{clipboard_, windows_, [this](std::function<void()> call) {
                           posted_calls_.Post(std::move(call));
                         }};
  int ended_ = 0;
  ServerProcess process_{[this] { ++ended_; }};
  ConnectContext context_{sessions_, posted_calls_, process_};
};

TEST_F(ConnectTest, OneTableAnswersEveryInterface) {
  const auto add_in = MakeConnect(context_);
  for (const IID& iid : {IID_IUnknown, IID_IDispatch, kIDTExtensibility, kIDTExtensibility2}) {
    const auto found = add_in.Query<AddInEntries>(iid);
    EXPECT_EQ(found.Get(), add_in.Get());
  }
  EXPECT_FALSE(add_in.Query<IUnknown>(IID_IPersist));
}

TEST_F(ConnectTest, EntriesStandInTheHostsPlaces) {
  using OnConnection = HRESULT(STDMETHODCALLTYPE*)(void*, IDispatch*, int, IDispatch*, SAFEARRAY**);
  using OnDisconnection = HRESULT(STDMETHODCALLTYPE*)(void*, int, SAFEARRAY**);
  using Other = HRESULT(STDMETHODCALLTYPE*)(void*, SAFEARRAY**);
  const auto add_in = MakeConnect(context_);
  DeafHost host;
  SAFEARRAY* custom = nullptr;
  EXPECT_EQ(Slot<OnConnection>(add_in.Get(), 7)(add_in.Get(), &host, 1, nullptr, &custom), S_OK);
  EXPECT_EQ(record_.Count("load"), 1);
  EXPECT_GT(host.calls, 0);
  // Nothing but the connection and the disconnection does work.
  const auto before = record_.entries.size();
  for (const int slot : {9, 10, 11}) {
    EXPECT_EQ(Slot<Other>(add_in.Get(), slot)(add_in.Get(), &custom), S_OK);
  }
  EXPECT_EQ(record_.entries.size(), before);
  EXPECT_EQ(Slot<OnDisconnection>(add_in.Get(), 8)(add_in.Get(), 1, &custom), S_OK);
  EXPECT_EQ(record_.Count("unload"), 1);
  EXPECT_EQ(host.references, 1u) << "a reference to the host is kept";
}

// Within one process: Wine's proxy for interfaces that are called by Invoke serves IDispatch only,
// and for the others it wants the type library of the real host. So the tests that connect from
// another process ask for IDispatch.
TEST_F(ConnectTest, ConnectsThroughWhicheverInterfaceTheHostAsksFor) {
  const auto factory = MakeConnectFactory(context_);
  // The process is not to end with the first of them.
  const ServerHold hold(process_);
  int connections = 0;
  for (const IID& iid : {IID_IDispatch, kIDTExtensibility, kIDTExtensibility2}) {
    ComPtr<AddInEntries> add_in;
    void** const asked = reinterpret_cast<void**>(add_in.Receive());
    ASSERT_EQ(factory->CreateInstance(nullptr, iid, asked), S_OK);
    DeafHost host;
    VARIANT application{};
    application.vt = VT_DISPATCH;
    application.pdispVal = &host;
    EXPECT_EQ(Invoke(*add_in, 1, {{}, {}, {}, application}), S_OK);
    EXPECT_EQ(record_.Count("load"), ++connections);
    EXPECT_EQ(Invoke(*add_in, 2, {{}, {}}), S_OK);
    EXPECT_EQ(record_.Count("unload"), connections);
    EXPECT_EQ(host.references, 1u);
  }
}

TEST_F(ConnectTest, InvokeReachesTheEntries) {
  const auto add_in = MakeConnect(context_);
  DeafHost host;
  VARIANT application{};
  application.vt = VT_DISPATCH;
  application.pdispVal = &host;
  VARIANT other{};
  EXPECT_EQ(Invoke(*add_in, 1, {other, other, other, application}), S_OK);
  EXPECT_EQ(record_.Count("load"), 1);
  for (const DISPID entry : {3, 4, 5}) EXPECT_EQ(Invoke(*add_in, entry, {other}), S_OK);
  EXPECT_EQ(Invoke(*add_in, 2, {other, other}), S_OK);
  EXPECT_EQ(record_.Count("unload"), 1);
  EXPECT_EQ(Invoke(*add_in, 6, {}), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(*add_in, 1, {}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(*add_in, 1, {other}), DISP_E_TYPEMISMATCH);
}

TEST_F(ConnectTest, EntriesAreFoundByName) {
  const auto add_in = MakeConnect(context_);
  const wchar_t* names[] = {L"OnConnection", L"OnDisconnection", L"onaddinsupdate",
                            L"OnStartupComplete", L"OnBeginShutdown"};
  for (DISPID expected = 1; expected <= 5; ++expected) {
    std::wstring name = names[expected - 1];
    LPOLESTR given = name.data();
    DISPID id = 0;
    EXPECT_EQ(add_in->GetIDsOfNames(IID_NULL, &given, 1, 0, &id), S_OK);
    EXPECT_EQ(id, expected);
  }
  std::wstring unknown = L"OnNothing";
  LPOLESTR given = unknown.data();
  DISPID id = 0;
  EXPECT_EQ(add_in->GetIDsOfNames(IID_NULL, &given, 1, 0, &id), DISP_E_UNKNOWNNAME);
}

TEST_F(ConnectTest, ReleasingWithoutGoodbyeDisconnects) {
  DeafHost host;
  {
    const auto add_in = MakeConnect(context_);
    ASSERT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), S_OK);
  }
  EXPECT_EQ(record_.Count("unload"), 1);
  EXPECT_EQ(host.references, 1u);
}

TEST_F(ConnectTest, ProcessEndsWithItsLastHold) {
  const auto factory = MakeConnectFactory(context_);
  ComPtr<IDispatch> add_in;
  ASSERT_EQ(
      factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(add_in.Receive())),
      S_OK);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  add_in = nullptr;
  EXPECT_EQ(ended_, 0);
  EXPECT_EQ(factory->LockServer(FALSE), S_OK);
  EXPECT_EQ(ended_, 1);
}

TEST_F(ConnectTest, FactoryMakesNoPartsOfOtherObjects) {
  const auto factory = MakeConnectFactory(context_);
  void* object = &object;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ConnectTest, NoExceptionReachesTheHost) {
  const auto add_in = MakeConnect(context_);
  DeafHost host;
  host.answer = []() -> HRESULT { throw std::runtime_error("the host's answer is beyond us"); };
  EXPECT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), E_FAIL);
  EXPECT_TRUE(sessions_.IsEmpty());
  EXPECT_EQ(host.references, 1u);
}

TEST_F(ConnectTest, DisconnectedWhileItConnectsItDisconnectsWhenThatIsDone) {
  const auto add_in = MakeConnect(context_);
  DeafHost host;
  record_.on_enter = [&](const std::string& entry) {
    if (entry != "Save") return;
    EXPECT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), E_UNEXPECTED);
    EXPECT_EQ(add_in->OnDisconnection(1, nullptr), S_OK);
    EXPECT_EQ(record_.Count("unload"), 0);
  };
  EXPECT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), S_OK);
  EXPECT_EQ(record_.Count("unload"), 1);
  EXPECT_TRUE(sessions_.IsEmpty());
  EXPECT_EQ(host.references, 1u);
}

TEST_F(ConnectTest, HostThatIsGoneBeforeItCanBeWatchedIsGivenUp) {
  for (const HRESULT gone :
       {RPC_E_DISCONNECTED, RPC_E_SERVER_DIED, HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
        HRESULT_FROM_WIN32(RPC_S_CALL_FAILED)}) {
    const int ended = ended_;
    const auto add_in = MakeConnect(context_);
    DeafHost host;
    host.answer = [&] { return gone; };
    EXPECT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), S_OK);
    // The object is still referred to, as by a process that died; the program does not wait for it.
    EXPECT_TRUE(HandlesUntil([&] { return ended_ == ended + 1; }));
    EXPECT_TRUE(sessions_.IsEmpty());
  }
}

TEST_F(ConnectTest, HostThatOnlyFailsIsKept) {
  const auto add_in = MakeConnect(context_);
  DeafHost host;
  ASSERT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), S_OK);
  bool later = false;
  posted_calls_.Post([&] { later = true; });
  EXPECT_TRUE(HandlesUntil([&] { return later; }));
  EXPECT_FALSE(sessions_.IsEmpty());
  EXPECT_EQ(ended_, 0);
}

TEST_F(ConnectTest, NewsOfADeadHostThatComesAfterItsObjectIsGoneDoesNothing) {
  {
    const auto add_in = MakeConnect(context_);
    DeafHost host;
    host.answer = [] { return RPC_E_DISCONNECTED; };
    ASSERT_EQ(add_in->OnConnection(&host, 1, nullptr, nullptr), S_OK);
  }
  EXPECT_EQ(ended_, 1);
  bool later = false;
  posted_calls_.Post([&] { later = true; });
  EXPECT_TRUE(HandlesUntil([&] { return later; }));
  EXPECT_EQ(ended_, 1);
}

TEST_F(ConnectTest, ServerThatNoHostUsesEndsAfterItsLimit) {
  const StartLimit limit(posted_calls_.Window(), process_, std::chrono::milliseconds(20));
  EXPECT_EQ(ended_, 0);
  EXPECT_TRUE(HandlesUntil([this] { return ended_ == 1; }));
}

TEST_F(ConnectTest, ServerInUseOutlivesItsLimitAndEndsWithItsUse) {
  const StartLimit limit(posted_calls_.Window(), process_, std::chrono::milliseconds(20));
  auto add_in = MakeConnect(context_);
  const DWORD begin = GetTickCount();
  EXPECT_TRUE(HandlesUntil([&] { return GetTickCount() - begin > 200; }));
  EXPECT_EQ(ended_, 0);
  add_in = nullptr;
  EXPECT_EQ(ended_, 1);
}

}  // namespace
}  // namespace declarium::com
