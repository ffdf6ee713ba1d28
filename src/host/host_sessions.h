// The hosts that are connected to the program at one time. One process serves them all, so the one
// main window passes from host to host.
#pragma once

#include <functional>
#include <list>
#include <memory>

#include "host/host_connection.h"

namespace declarium {

class HostSessions {
 public:
  HostSessions(FaceClipboard& clipboard, MainWindowLink& windows, HostConnection::Post post);

  // Makes a connection to the host of `application`, which is kept until it is disconnected or
  // abandoned.
  std::shared_ptr<HostConnection> Begin(std::unique_ptr<HostApplication> application);

  // Connects it; when that throws, it is disconnected.
  void Connect(HostConnection& connection);

  // As Connect for a host with controls of its own. False when it could not be connected, and is
  // disconnected.
  [[nodiscard]] bool ConnectWithoutControls(HostConnection& connection);

  // The host of `connection`, which may still be connecting, is gone: its boxes close.
  void CloseBoxes(HostConnection& connection) { windows_.CloseBoxes(connection); }

  // Takes the controls out of the host and ends the connection. With the last connection the
  // program's windows are unloaded, unless the main window may stay or the controls could not be
  // removed.
  void Disconnect(HostConnection& connection);

  // The host of `connection` died: as Disconnect, without touching its controls.
  void Abandon(HostConnection& connection);

  [[nodiscard]] bool IsEmpty() const noexcept { return connections_.empty(); }

 private:
  // Runs `connect`; when that answers false or throws, the connection is disconnected.
  bool Connecting(HostConnection& connection, const std::function<bool()>& connect);
  void Forget(HostConnection& connection);
  void TellOfOthers();
  void UnloadIfUnused();

  FaceClipboard& clipboard_;
  MainWindowLink& windows_;
  HostConnection::Post post_;
  std::list<std::shared_ptr<HostConnection>> connections_;
};

}  // namespace declarium
