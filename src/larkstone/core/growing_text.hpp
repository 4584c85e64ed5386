#pragma once

// Texts of megabytes, put together from pieces of a few bytes.

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace larkstone {

/// Makes room in large steps and copies short pieces without a call.
class GrowingText {
 public:
  void add(std::string_view piece) {
    addWritten(piece.size(), [piece](char* to) { return copied(piece, to); });
  }
  void add(char c) {
    addWritten(1, [c](char* to) {
      *to = c;
      return to + 1;
    });
  }
  /// In decimal.
  void add(int number) {
    constexpr std::size_t longest = 11;
    addWritten(longest, [=](char* to) { return std::to_chars(to, to + longest, number).ptr; });
  }
  /// What write(to) writes: it returns the end, and has room for `most` characters.
  template <class Write>
  void addWritten(std::size_t most, Write write) {
    if (text_.size() - length_ < most) text_.resize(text_.size() + std::max(step, most));
    char* const to = text_.data() + length_;
    length_ += static_cast<std::size_t>(write(to) - to);
  }

  /// Makes room at once for a text whose size is known about.
  void reserve(std::size_t size) { text_.reserve(size); }

  /// The whole text; what is added afterwards begins a new one.
  std::string take() {
    text_.resize(std::exchange(length_, 0));
    return std::exchange(text_, {});
  }

  /// Copies a piece and returns the end of the copy. Two blocks of a fixed size, which may overlap
  /// in the middle, take a few instructions, where the general copy is a call.
  static char* copied(std::string_view piece, char* to) {
    const std::size_t size = piece.size();
    if (size > 32) {
      std::memcpy(to, piece.data(), size);
    } else if (size >= 16) {
      copyBothEnds<16>(piece, to);
    } else if (size >= 8) {
      copyBothEnds<8>(piece, to);
    } else if (size >= 4) {
      copyBothEnds<4>(piece, to);
    } else {
      for (std::size_t i = 0; i < size; ++i) to[i] = piece[i];
    }
    return to + size;
  }

 private:
  template <std::size_t block>
  static void copyBothEnds(std::string_view piece, char* to) {
    std::memcpy(to, piece.data(), block);
    std::memcpy(to + piece.size() - block, piece.data() + piece.size() - block, block);
  }

  static constexpr std::size_t step = 65536;

  std::string text_;
  std::size_t length_ = 0;
};

}  // namespace larkstone
