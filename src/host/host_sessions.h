// The hosts that are connected to the program at one time. One process serves them all, so the one
// main window passes from host to host.
#pragma once

#include <list>
#include <memory>

#include "host/host_connection.h"

namespace declarium {

class HostSessions {
 public:
  HostSessions(FaceClipboard& clipboard, MainWindowLink& windows, HostConnection::Post post);

  // Makes a connection to the host of `application` and connects it. The connection is kept until
  // it is disconnected or abandoned; when connecting throws, none is left.
  std::shared_ptr<HostConnection> Connect(std::unique_ptr<HostApplication> application);

  // Takes the controls out of the host and ends the connection. With the last connection the
  // program's windows are unloaded, unless the main window may stay or the controls could not be
  // removed.
  void Disconnect(HostConnection& connection);

  // The host of `connection` died: as Disconnect, without touching its controls.
  void Abandon(HostConnection& connection);

  [[nodiscard]] bool IsEmpty() const noexcept { return connections_.empty(); }

 private:
  void Forget(HostConnection& connection);
  void UnloadIfUnused();

  FaceClipboard& clipboard_;
  MainWindowLink& windows_;
  HostConnection::Post post_;
  std::list<std::shared_ptr<HostConnection>> connections_;
};

}  // namespace declarium
