#pragma once

// A map that keeps the order in which its keys were first added.

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace larkstone {

template <class Key, class Value, class Hash = std::hash<Key>>
class OrderedMap {
 public:
  using Entry = std::pair<Key, Value>;

  bool contains(const Key& key) const { return index_.count(key) != 0; }

  /// The value of a key, nothing (nullptr) for a key that is not there. Looking adds nothing.
  const Value* find(const Key& key) const {
    const auto found = index_.find(key);
    return found == index_.end() ? nullptr : &entries_[found->second].second;
  }
  Value* find(const Key& key) { return const_cast<Value*>(std::as_const(*this).find(key)); }

  /// The value of a key, added behind the others when it is new.
  Value& operator[](const Key& key) {
    const auto [found, added] = index_.try_emplace(key, entries_.size());
    if (added) entries_.emplace_back(key, Value{});
    return entries_[found->second].second;
  }

  /// Adds a value unless the key is there; tells whether it was added.
  bool insert(const Key& key, Value value) {
    const auto [found, added] = index_.try_emplace(key, entries_.size());
    if (added) entries_.emplace_back(key, std::move(value));
    return added;
  }

  void erase(const Key& key) {
    const auto found = index_.find(key);
    if (found == index_.end()) return;
    const std::size_t at = found->second;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(at));
    index_.erase(found);
    for (auto& [other, position] : index_) {
      if (position > at) --position;
    }
  }

  void clear() {
    entries_.clear();
    index_.clear();
  }

  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }

  /// In the order of first addition.
  const std::vector<Entry>& entries() const { return entries_; }
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  std::vector<Entry> entries_;
  std::unordered_map<Key, std::size_t, Hash> index_;
};

}  // namespace larkstone
