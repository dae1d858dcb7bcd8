#include "base/text.h"
#include "model/map.h"
#include "model/point_names.h"

#include <algorithm>

namespace orvane {

// A hash table with chains. Most names belong to one point. If several points have a name, their
// order is that in which a walk over the bucket of `Map::pointHash` would meet them.

namespace {

constexpr std::uint32_t NoEntry = 0xFFFFFFFF;
constexpr size_t FirstSlots = 64;
/// The least number of slots for each entry. Most names that are looked up while a map is read are
/// new, and an empty slot shows this without a look at any entry.
constexpr size_t SlotsPerEntry = 2;
constexpr size_t SlotGrowth = 4;

/// FNV-1 over the folded bytes: names that differ only in case share a slot. The last byte is not
/// multiplied, so that names with consecutive numbers, such as those of stations, use neighbouring
/// slots.
std::uint32_t HashOf(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) {
    hash *= 16777619U;
    hash ^= static_cast<unsigned char>(FoldByte(c));
  }
  return hash;
}

}  // namespace

void NameTable::Insert(const Entry& entry) {
  if (entries_.size() * SlotsPerEntry >= heads_.size()) Grow();
  std::uint32_t& head = heads_[entry.hash & (heads_.size() - 1)];
  entries_.push_back(entry);
  entries_.back().next = head;
  head = static_cast<std::uint32_t>(entries_.size() - 1);
}

void NameTable::Add(Point& point, std::string_view name) {
  const std::uint32_t hash = HashOf(name);
  const auto index = static_cast<std::uint32_t>(entries_.size());
  auto& newest = newest_[NameBucket(name)];
  if (SameName(point.name, name)) {
    Insert({&point, hash, NoEntry, NoEntry});
    if (const auto found = newest.find(&point); found != newest.end()) found->second = index;
  } else {
    Insert({&point, hash, NoEntry, static_cast<std::uint32_t>(synonyms_.size())});
    synonyms_.emplace_back(name);
    newest[&point] = index;
  }
}

void NameTable::Grow() {
  heads_.assign(heads_.empty() ? FirstSlots : heads_.size() * SlotGrowth, NoEntry);
  for (size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].point == nullptr) continue;  // removed
    std::uint32_t& head = heads_[entries_[i].hash & (heads_.size() - 1)];
    entries_[i].next = head;
    head = static_cast<std::uint32_t>(i);
  }
}

void NameTable::Swap(NameTable& other) noexcept {
  entries_.swap(other.entries_);
  heads_.swap(other.heads_);
  synonyms_.swap(other.synonyms_);
  newest_.swap(other.newest_);
}

void NameTable::Remove(const Point& point, std::string_view name) {
  if (heads_.empty()) return;
  const std::uint32_t hash = HashOf(name);
  std::uint32_t* link = &heads_[hash & (heads_.size() - 1)];
  while (*link != NoEntry) {
    Entry& entry = entries_[*link];
    if (entry.point == &point && entry.hash == hash) {
      *link = entry.next;
      entry.point = nullptr;
      return;
    }
    link = &entry.next;
  }
}

bool NameTable::MeansSynonym(const Entry& entry, std::string_view name) const {
  return entry.synonym != NoEntry && SameName(synonyms_[entry.synonym], name);
}

/// A higher index is newer: if two points have one name, the one met first in its bucket counts.
std::uint32_t NameTable::AgeOf(std::uint32_t index, size_t bucket) const {
  const auto found = newest_[bucket].find(entries_[index].point);
  return found == newest_[bucket].end() ? index : std::max(index, found->second);
}

Point* NameTable::Find(std::string_view name) const {
  if (heads_.empty()) return nullptr;
  const std::uint32_t hash = HashOf(name);
  std::uint32_t best = NoEntry;
  bool bestIsMain = false;
  for (std::uint32_t i = heads_[hash & (heads_.size() - 1)]; i != NoEntry; i = entries_[i].next) {
    const Entry& entry = entries_[i];
    if (entry.hash != hash) continue;
    const bool isMain = SameName(entry.point->name, name);
    if (!isMain && (bestIsMain || !MeansSynonym(entry, name))) continue;
    if (best != NoEntry && isMain == bestIsMain) {
      const size_t bucket = NameBucket(name);
      if (AgeOf(i, bucket) <= AgeOf(best, bucket)) continue;
    }
    best = i;
    bestIsMain = isMain;
  }
  return best == NoEntry ? nullptr : entries_[best].point;
}

bool NameTable::Holds(const Point& point, std::string_view name) const {
  if (heads_.empty()) return false;
  const std::uint32_t hash = HashOf(name);
  for (std::uint32_t i = heads_[hash & (heads_.size() - 1)]; i != NoEntry; i = entries_[i].next) {
    const Entry& entry = entries_[i];
    if (entry.hash != hash || entry.point != &point) continue;
    if (SameName(point.name, name) || MeansSynonym(entry, name)) return true;
  }
  return false;
}

}  // namespace orvane
