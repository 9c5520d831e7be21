// Flat records: NUL-terminated texts back to back, without lengths or padding.

#ifndef ORVANE_PORTS_RECORD_H_
#define ORVANE_PORTS_RECORD_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace orvane {

template <std::size_t kFields>
class Record {
 public:
  // The texts of a record, or nothing when its last NUL lies beyond `bytes`.
  template <typename Watcher>
  static std::optional<Record> split(std::span<const unsigned char> bytes, Watcher& watcher) {
    Record record;
    if (!bytes.empty() && bytes.front() == 0) {
      watcher.recordIgnored();
      return record;
    }
    for (std::string_view& text : record.texts_) {
      const auto nul = std::find(bytes.begin(), bytes.end(), 0);
      if (nul == bytes.end()) {
        watcher.recordCut();
        return std::nullopt;
      }
      const auto length = static_cast<std::size_t>(nul - bytes.begin());
      text = std::string_view(reinterpret_cast<const char*>(bytes.data()), length);
      bytes = bytes.subspan(length + 1);
    }
    watcher.recordEnded(bytes.size());
    return record;
  }

  // The extent of a record that the caller guarantees to be whole; a null one is like an empty one.
  static std::span<const unsigned char> trusted(const unsigned char* record) {
    static constexpr unsigned char kEmpty = 0;
    if (record == nullptr || *record == 0) return {&kEmpty, 1};
    const auto* text = reinterpret_cast<const char*>(record);
    for (std::size_t field = 0; field < kFields; ++field) text += std::strlen(text) + 1;
    return {record, reinterpret_cast<const unsigned char*>(text)};
  }

  // A record whose first text is empty is ignored as a whole; nothing but that byte of it is read.
  bool isIgnored() const { return texts_.front().empty(); }

  static constexpr bool holds(std::size_t field) { return field < kFields; }

  const std::array<std::string_view, kFields>& texts() const { return texts_; }

  // REQUIRES: holds(field).
  std::string_view operator[](std::size_t field) const { return texts_[field]; }

 private:
  std::array<std::string_view, kFields> texts_;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_RECORD_H_
