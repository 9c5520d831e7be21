// Short ways to make the records and buffers of nodes, and to show what holds them.

#ifndef ORVANE_TESTS_UPID_SAMPLE_H_
#define ORVANE_TESTS_UPID_SAMPLE_H_

#include <gtest/gtest.h>
#include <orvane/upid_array.h>
#include <orvane/upid_tree.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

constexpr std::size_t kSize = 72;

inline std::string words(const std::vector<unsigned int>& values) {
  std::string bytes;
  for (const unsigned int value : values) {
    for (unsigned int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift);
  }
  return bytes;
}

inline std::string record(unsigned int upid, std::string name = "", unsigned int firstChild = 3,
                          unsigned int numOfChildren = 4, unsigned int sibling = 5,
                          unsigned int parent = 2) {
  name.resize(32);
  return words({upid, parent, firstChild, numOfChildren, sibling, 6, 7, 0, 9}) + name + words({10});
}

inline std::string tree(std::size_t count, unsigned int tcp, const std::string& records) {
  return words({static_cast<unsigned int>(count), tcp, 17, 4, 5, 6, 7, 8, 9}) + records;
}

inline OrvaneUpidNode node(const std::string& bytes) { return {bytes.data(), 0}; }

// What a checked writer writes into a room that is just large enough.
template <typename Write>
std::string writtenBy(std::size_t nodes, Write write) {
  std::string room(nodes * kSize, 'x');
  if (nodes > 0) {
    EXPECT_EQ(write(std::span(room).subspan(1)), std::nullopt);
  }
  EXPECT_EQ(room, std::string(room.size(), 'x'));
  EXPECT_EQ(write(std::span(room)), room.size());
  return room;
}

template <typename Nodes>
std::string written(const Nodes& nodes) {
  return writtenBy(nodes.size(),
                   [&](std::span<char> room) { return nodes.getBufferChecked(room); });
}

#endif  // ORVANE_TESTS_UPID_SAMPLE_H_
