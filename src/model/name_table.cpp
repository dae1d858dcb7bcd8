#include "base/text.h"
#include "model/map.h"
#include "model/point_names.h"

namespace orvane {

// A table of chains. The chain of a slot runs from its newest entry to its oldest, so that the
// first match met is the newest, as it would be in a bucket of `Map::pointHash`.

namespace {

constexpr std::uint32_t NoEntry = 0xFFFFFFFF;
constexpr size_t FirstSlots = 64;

/// FNV-1a over the folded bytes: names that differ in case alone share a slot.
std::uint32_t HashOf(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) {
    hash ^= static_cast<unsigned char>(FoldByte(c));
    hash *= 16777619U;
  }
  return hash;
}

bool HasSynonym(const Point& point, std::string_view name) {
  for (const std::string& synonym : point.synonyms) {
    if (SameName(synonym, name)) return true;
  }
  return false;
}

}  // namespace

void NameTable::Add(Point& point, std::string_view name) {
  if (entries_.size() >= heads_.size()) Grow();
  const std::uint32_t hash = HashOf(name);
  std::uint32_t& head = heads_[hash & (heads_.size() - 1)];
  entries_.push_back({&point, hash, head});
  head = static_cast<std::uint32_t>(entries_.size() - 1);
}

void NameTable::Grow() {
  heads_.assign(heads_.empty() ? FirstSlots : heads_.size() * 2, NoEntry);
  for (size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].point == nullptr) continue;  // taken out
    std::uint32_t& head = heads_[entries_[i].hash & (heads_.size() - 1)];
    entries_[i].next = head;
    head = static_cast<std::uint32_t>(i);
  }
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

Point* NameTable::Find(std::string_view name) const {
  if (heads_.empty()) return nullptr;
  const std::uint32_t hash = HashOf(name);
  Point* bySynonym = nullptr;
  for (std::uint32_t i = heads_[hash & (heads_.size() - 1)]; i != NoEntry; i = entries_[i].next) {
    if (entries_[i].hash != hash) continue;
    Point* point = entries_[i].point;
    if (SameName(point->name, name)) return point;
    if (bySynonym == nullptr && HasSynonym(*point, name)) bySynonym = point;
  }
  return bySynonym;
}

}  // namespace orvane
