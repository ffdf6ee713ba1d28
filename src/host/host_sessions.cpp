#include "host/host_sessions.h"

#include <utility>

namespace declarium {

HostSessions::HostSessions(FaceClipboard& clipboard, MainWindowLink& windows,
                           HostConnection::Post post)
    : clipboard_(clipboard), windows_(windows), post_(std::move(post)) {}

std::shared_ptr<HostConnection> HostSessions::Begin(std::unique_ptr<HostApplication> application) {
  auto connection =
      std::make_shared<HostConnection>(std::move(application), clipboard_, windows_, post_);
  connections_.push_back(connection);
  TellOfOthers();
  return connection;
}

bool HostSessions::Connecting(HostConnection& connection, const std::function<bool()>& connect) {
  const auto kept = connection.shared_from_this();
  bool connected = false;
  try {
    connected = connect();
  } catch (...) {
    Disconnect(connection);
    throw;
  }
  if (!connected) Disconnect(connection);
  return connected;
}

void HostSessions::Connect(HostConnection& connection) {
  Connecting(connection, [&] {
    connection.Connect();
    return true;
  });
}

bool HostSessions::ConnectWithoutControls(HostConnection& connection) {
  return Connecting(connection, [&] { return connection.ConnectWithoutControls(); });
}

void HostSessions::Disconnect(HostConnection& connection) {
  const auto kept = connection.shared_from_this();
  const bool removed = connection.Disconnect();
  Forget(connection);
  if (removed) UnloadIfUnused();
}

void HostSessions::Abandon(HostConnection& connection) {
  const auto kept = connection.shared_from_this();
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
  connections_.remove(connection.shared_from_this());
  TellOfOthers();
}

void HostSessions::TellOfOthers() {
  for (const auto& connection : connections_) connection->SetOtherHosts(connections_.size() > 1);
}

void HostSessions::UnloadIfUnused() {
  if (IsEmpty() && !windows_.MayStay()) windows_.UnloadAll();
}

}  // namespace declarium
