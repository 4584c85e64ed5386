#pragma once

// Bytes of event files, written and read value by value. All numbers are little-endian.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

/// Appends values. A number beyond its field becomes the field's nearest limit.
class ByteWriter {
 public:
  void byte(std::int64_t value) { little<1>(saturated<std::uint8_t>(value)); }
  void integer(std::int64_t value) { little<2>(bits(saturated<std::int16_t>(value))); }
  void longInteger(std::int64_t value) { little<4>(bits(saturated<std::int32_t>(value))); }
  void int24(std::int64_t value) {
    little<3>(static_cast<std::uint32_t>(std::clamp<std::int64_t>(value, 0, LRK_NO_TIME)));
  }
  void single(float value) { little<4>(std::bit_cast<std::uint32_t>(value)); }
  void real(double value) { little<8>(std::bit_cast<std::uint64_t>(value)); }
  /// The byte count and the bytes in the code page, cut where the count ends.
  void text(std::string_view utf8) {
    const std::string bytes = windows1252FromUtf8(utf8);
    const std::size_t length = std::min<std::size_t>(bytes.size(), LRK_MAX_LIST);
    integer(static_cast<std::int64_t>(length));
    bytes_.append(bytes, 0, length);
  }
  void raw(std::string_view bytes) { bytes_ += bytes; }

  /// Leaves room for a long that is known later.
  std::size_t placeholder() {
    longInteger(0);
    return bytes_.size();
  }
  /// Fills in a placeholder: the number of bytes written since.
  void fillCount(std::size_t placeholder) {
    fill(placeholder, static_cast<std::int64_t>(bytes_.size() - placeholder));
  }
  void fill(std::size_t placeholder, std::int64_t value) {
    const std::uint32_t stored = bits(saturated<std::int32_t>(value));
    for (std::size_t i = 0; i < 4; ++i) {
      bytes_[placeholder - 4 + i] = static_cast<char>(stored >> (8 * i) & 0xFF);
    }
  }

  std::size_t size() const { return bytes_.size(); }
  const std::string& bytes() const { return bytes_; }
  std::string take() { return std::move(bytes_); }

 private:
  template <class Signed>
  static constexpr std::make_unsigned_t<Signed> bits(Signed value) {
    return static_cast<std::make_unsigned_t<Signed>>(value);
  }

  template <std::size_t Width>
  void little(std::uint64_t value) {
    std::array<char, Width> stored;
    for (std::size_t i = 0; i < Width; ++i) stored[i] = static_cast<char>(value >> (8 * i) & 0xFF);
    bytes_.append(stored.data(), Width);
  }

  std::string bytes_;
};

/// Reads values. Reading past the end, and a negative count, give 0 or empty text and leave the
/// reader failed and at its end.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

  int byte() { return static_cast<int>(little<1>()); }
  std::int16_t integer() { return static_cast<std::int16_t>(little<2>()); }
  std::int32_t longInteger() { return static_cast<std::int32_t>(little<4>()); }
  Time int24() { return static_cast<Time>(little<3>()); }
  float single() { return std::bit_cast<float>(static_cast<std::uint32_t>(little<4>())); }
  double real() { return std::bit_cast<double>(little<8>()); }
  std::string text() { return utf8FromWindows1252(raw(integer())); }
  void skipText() { raw(integer()); }

  std::string_view raw(std::int64_t count) {
    if (!has(count)) return {};
    const std::string_view taken = bytes_.substr(position_, static_cast<std::size_t>(count));
    position_ += taken.size();
    return taken;
  }
  /// Whether that many bytes are left; the reader has failed otherwise. Never after a failure: a
  /// count that could not be read counts nothing.
  bool has(std::int64_t count) {
    if (!failed_ && count >= 0 && count <= remaining()) return true;
    failed_ = true;
    position_ = bytes_.size();
    return false;
  }

  std::size_t position() const { return position_; }
  std::int64_t remaining() const { return static_cast<std::int64_t>(bytes_.size() - position_); }
  bool atEnd() const { return position_ == bytes_.size(); }
  bool failed() const { return failed_; }

 private:
  template <std::size_t Width>
  std::uint64_t little() {
    if (!has(Width)) return 0;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < Width; ++i) {
      value |= std::uint64_t{static_cast<std::uint8_t>(bytes_[position_ + i])} << (8 * i);
    }
    position_ += Width;
    return value;
  }

  std::string_view bytes_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

}  // namespace larkstone
