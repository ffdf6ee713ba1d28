// Starting add-ins as the IDE does: the list of add-ins of the current user names a ProgID, the
// class behind it is created in its own process, and its entries are called.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>
#include <windows.h>

#include "host/com/add_in_object.h"
#include "vbhost/object_model.h"

namespace declarium::vbhost {

// Which of its interfaces the add-in is asked for. Entries are called by Invoke on it.
enum class EntryInterface { kExtensibility2, kExtensibility, kDispatch };

class AddInLoader {
 public:
  explicit AddInLoader(ObjectModel& model) : model_(model) {}

  // The ProgIDs in the user's list that are to be loaded at start.
  [[nodiscard]] std::vector<std::u16string> Listed() const;

  // Creates the add-in and calls OnConnection, with mode 1 (startup) followed by OnStartupComplete.
  HRESULT Connect(const std::u16string& prog_id, EntryInterface entries, int mode);
  // Calls OnDisconnection and releases the add-in, also when the call fails. A VBA editor that ends
  // calls OnBeginShutdown before.
  HRESULT Disconnect(const std::u16string& prog_id, int mode);
  // Releases the add-in without a call.
  void Forget(const std::u16string& prog_id) { add_ins_.erase(prog_id); }

  [[nodiscard]] bool IsConnected(const std::u16string& prog_id) const {
    return add_ins_.contains(prog_id);
  }

  // How long the last OnConnection took, without creating the add-in before it.
  [[nodiscard]] std::chrono::milliseconds connection_time() const { return connection_time_; }

 private:
  // The factory is kept too, since interfaces that stay in use avoid a fault of Wine, see
  // kept_interfaces.h.
  struct AddIn {
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> entries;
    ComPtr<com::AddInEntries> table = {};  // of an add-in in this process
  };

  // As a VBA editor does: the class is looked up in the user's part of the registry and comes from
  // a DLL. An add-in that answers with a failure is not loaded again: LoadBehavior becomes 0.
  HRESULT ConnectInProcess(const std::u16string& prog_id, int mode);

  ObjectModel& model_;
  std::map<std::u16string, AddIn> add_ins_;
  std::chrono::milliseconds connection_time_{};
};

// Writes, or removes, the machine-wide registration that lets another process be asked for the
// add-in interfaces, as the IDE's own setup does. Only for registries without the real IDE.
HRESULT RegisterEntryInterfaces(bool present);

}  // namespace declarium::vbhost
