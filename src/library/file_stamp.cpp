#include "library/file_stamp.h"

#include <array>
#include <bit>
#include <cstring>

#include "library/file_io.h"

namespace declarium {
namespace {

// Odd numbers whose bits look random, so that a multiplication spreads every bit.
constexpr std::uint64_t kFirst = 0x9E3779B185EBCA87;
constexpr std::uint64_t kSecond = 0xC2B2AE3D27D4EB4F;

std::uint64_t WordAt(const char* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  static_assert(std::endian::native == std::endian::little);
  return word;
}

std::uint64_t Mix(std::uint64_t state, std::uint64_t word) noexcept {
  return std::rotl(state + word * kSecond, 31) * kFirst;
}

std::uint64_t Avalanche(std::uint64_t hash) noexcept {
  hash = (hash ^ (hash >> 33)) * kSecond;
  hash = (hash ^ (hash >> 29)) * kFirst;
  return hash ^ (hash >> 32);
}

}  // namespace

std::uint64_t HashOf(std::string_view bytes) noexcept {
  // Four states that do not wait for each other keep the processor busy: memory is the limit.
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  std::array<std::uint64_t, 4> states{kFirst, kSecond, kFirst ^ kSecond, kFirst + kSecond};
  const auto size = bytes.size();
  for (; bytes.size() >= states.size() * kWord; bytes.remove_prefix(states.size() * kWord)) {
    for (std::size_t i = 0; i < states.size(); ++i) {
      states[i] = Mix(states[i], WordAt(bytes.data() + i * kWord));
    }
  }
  std::uint64_t hash = size;
  for (const auto state : states) hash = Mix(hash, state);
  for (; bytes.size() >= kWord; bytes.remove_prefix(kWord)) hash = Mix(hash, WordAt(bytes.data()));
  for (const char byte : bytes) hash = Mix(hash, static_cast<unsigned char>(byte));
  return Avalanche(hash);
}

FileStamp StampOf(const std::filesystem::path& path, std::uint64_t size, std::uint64_t hash) {
  const auto status = StatusOf(path);
  // Another size is somebody else's content already, whose time must not pass for ours.
  const bool ours = status && status->size == size;
  return {ours ? status->written : 0, size, hash};
}

std::expected<StampedBytes, Error> ReadStamped(const std::filesystem::path& path) {
  // Taken before the reading: what is written meanwhile then has another time.
  const auto status = StatusOf(path);
  auto bytes = ReadWholeFile(path);
  if (!bytes) return std::unexpected(bytes.error());
  const FileStamp stamp{status ? status->written : 0, bytes->size(), HashOf(*bytes)};
  return StampedBytes{*std::move(bytes), stamp};
}

bool HasChangedSince(const FileStamp& stamp, const std::filesystem::path& path) {
  const auto status = StatusOf(path);
  if (!status) return false;
  if (status->size != stamp.size) return true;
  if (status->written == stamp.written) return false;
  const auto bytes = ReadWholeFile(path);
  return !bytes || HashOf(*bytes) != stamp.hash;
}

}  // namespace declarium
