#include <algorithm>
#include <array>

#include "host/host_object_model.h"

namespace declarium {
namespace {

constexpr std::array<std::uint32_t, 2> kBusy = {
    0x80010001,  // RPC_E_CALL_REJECTED
    0x8001010A,  // RPC_E_SERVERCALL_RETRYLATER
};

constexpr std::array<std::uint32_t, 6> kGone = {
    0x80010108,  // RPC_E_DISCONNECTED
    0x80010007,  // RPC_E_SERVER_DIED
    0x80010012,  // RPC_E_SERVER_DIED_DNE
    0x800706BA,  // RPC_S_SERVER_UNAVAILABLE
    0x800706BE,  // RPC_S_CALL_FAILED
    0x800706BF,  // RPC_S_CALL_FAILED_DNE
};

template <std::size_t n>
bool IsOneOf(const std::array<std::uint32_t, n>& codes, const HostError& error) {
  return std::ranges::find(codes, static_cast<std::uint32_t>(error.code)) != codes.end();
}

}  // namespace

bool IsBusy(const HostError& error) noexcept {
  return IsOneOf(kBusy, error);
}

bool IsHostGone(const HostError& error) noexcept {
  return IsOneOf(kGone, error);
}

}  // namespace declarium
