#include "host/host_sessions.h"

#include <utility>

namespace declarium {

HostSessions::HostSessions(FaceClipboard& clipboard, MainWindowLink& windows,
                           HostConnection::Post post)
    : clipboard_(clipboard), windows_(windows), post_(std::move(post)) {}

HostConnection& HostSessions::Connect(std::unique_ptr<HostApplication> application) {
  connections_.push_back(
      std::make_shared<HostConnection>(std::move(application), clipboard_, windows_, post_));
  HostConnection& connection = *connections_.back();
  connection.Connect();
  return connection;
}

void HostSessions::Disconnect(HostConnection& connection) {
  const bool removed = connection.Disconnect();
  Forget(connection);
  if (removed) UnloadIfUnused();
}

void HostSessions::Abandon(HostConnection& connection) {
  connection.Abandon();
  Forget(connection);
  UnloadIfUnused();
}

void HostSessions::Forget(HostConnection& connection) {
  HostConnection* successor = nullptr;
  for (const auto& other : connections_) {
    if (other.get() != &connection) successor = other.get();
  }
  windows_.ForgetConnection(connection, successor);
  const auto gone = connection.shared_from_this();
  connections_.remove(gone);
  // The host may have called from within a call that the connection made; it lives until then.
  post_([gone] {});
}

void HostSessions::UnloadIfUnused() {
  if (IsEmpty() && !windows_.MayStay()) windows_.UnloadAll();
}

}  // namespace declarium
