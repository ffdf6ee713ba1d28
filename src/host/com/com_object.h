// What every COM object of ours does the same way.
#pragma once

#include <atomic>
#include <windows.h>
#include <oaidl.h>

namespace declarium::com {

// Counts the references to an object, beginning with one that belongs to its maker (ComPtr::Attach
// takes it over), and deletes it with the last.
template <class... Interfaces>
class ComObject : public Interfaces... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override {
    if (!object) return E_POINTER;
    *object = Find(iid);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComObject() = default;

  // The table of the interface, IID_IUnknown's too; null for one that the object does not have.
  [[nodiscard]] virtual void* Find(REFIID iid) noexcept = 0;

 private:
  // The system may give up the last reference of a dead process from one of its threads.
  std::atomic<ULONG> references_ = 1;
};

// An object that is called by Invoke and describes itself no further.
template <class Dispatch, class... Others>
class DispatchObject : public ComObject<Dispatch, Others...> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
};

}  // namespace declarium::com
