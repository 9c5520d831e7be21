// What makes input hostile: orders, and keys and names that collide in well-known hash tables.

#ifndef ORVANE_BENCH_HOSTILE_TEXTS_H_
#define ORVANE_BENCH_HOSTILE_TEXTS_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace bench {

// UPIDs, identifiers, or the ranks of the pieces of a text, in the order in which they come.
using Numbers = std::vector<std::uint32_t>;
using Order = std::function<Numbers(std::size_t count)>;

inline Numbers shuffled(Numbers numbers) {
  std::ranges::shuffle(numbers, std::mt19937(1));
  return numbers;
}

inline Order backwards(const Order& order) {
  return [order](std::size_t count) {
    Numbers numbers = order(count);
    std::ranges::reverse(numbers);
    return numbers;
  };
}

inline Numbers ascending(std::size_t count) {
  Numbers numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0U);
  return numbers;
}

inline Numbers inRandomOrder(std::size_t count) { return shuffled(ascending(count)); }

// The first, the last, the second, the last but one, and so on.
inline Numbers outsideIn(std::size_t count) {
  Numbers numbers;
  for (std::uint32_t first = 0, last = static_cast<std::uint32_t>(count); first < last;) {
    numbers.push_back(first++);
    if (first < last) numbers.push_back(--last);
  }
  return numbers;
}

// The first of each of so many groups, then the second of each, and so on.
inline Numbers inTurns(std::size_t count, std::size_t groups) {
  Numbers numbers = ascending(count / groups * groups);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers[i] = static_cast<std::uint32_t>(i % groups * (count / groups) + i / groups);
  }
  return numbers;
}

// A finaliser of 64 bits that is widely used as it is.
inline std::uint64_t splitMix(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15;
  x = (x ^ x >> 30) * 0xBF58476D1CE4E5B9;
  x = (x ^ x >> 27) * 0x94D049BB133111EB;
  return x ^ x >> 31;
}

// Friendly keys: different ones whose hashes spread, whatever the hash.
inline Numbers randomKeys(std::size_t count) {
  std::unordered_set<std::uint32_t> seen = {~0U};
  Numbers keys;
  for (std::uint64_t i = 0; keys.size() < count; ++i) {
    const auto key = static_cast<std::uint32_t>(splitMix(~i) >> 32);
    if (seen.insert(key).second) keys.push_back(key);
  }
  return keys;
}

// Hostile keys fall into one slot of the table that holds so many, or, where not enough of them
// exist or are found soon, into this many.
inline std::size_t slotsFor(std::size_t count) { return std::bit_ceil(2 * count); }
inline std::size_t slotsHit(std::size_t count) {
  return std::max<std::size_t>(1, count * slotsFor(count) >> 30);
}

template <typename Hash>
Numbers searchedKeys(std::size_t count, Hash hash) {
  const std::uint64_t mask = slotsFor(count) - 1;
  const std::uint64_t hit = slotsHit(count);
  Numbers keys;
  for (std::uint32_t key = 0; keys.size() < count && key != ~0U; ++key) {
    if ((hash(key) & mask) < hit) keys.push_back(key);
  }
  return shuffled(keys);
}

inline std::uint64_t multiplicativeHash(std::uint64_t key) {
  return key * 0x9E3779B97F4A7C15 >> 32;
}

// Of an odd number, modulo a power of two.
template <typename Word>
Word inverse(Word odd) {
  Word result = odd;
  for (int i = 0; i < 5; ++i) result *= 2 - odd * result;
  return result;
}

// Another such finaliser, of 32 bits, run backwards from the wanted hashes.
inline Numbers keysAgainstMurmur(std::size_t count) {
  const std::size_t hit = slotsHit(count);
  Numbers keys;
  for (std::size_t i = 0; i < count; ++i) {
    auto hash = static_cast<std::uint32_t>(i / hit * slotsFor(count) + i % hit);
    hash = (hash ^ hash >> 16) * inverse(0xC2B2AE35);
    hash = (hash ^ hash >> 13 ^ hash >> 26) * inverse(0x85EBCA6B);
    keys.push_back(hash ^ hash >> 16);
  }
  return shuffled(keys);
}

// Keys that are each other's neighbours modulo a number, if they are not the same.
inline Numbers keysAgainstModulus(std::size_t count, std::size_t modulus) {
  const std::size_t multiples = ~0U / modulus;
  Numbers keys;
  for (std::size_t i = 0; i < count; ++i) {
    keys.push_back(static_cast<std::uint32_t>(i % multiples * modulus + i / multiples));
  }
  return shuffled(keys);
}

// Against a standard hash table that grew, or that had room made before.
inline Numbers keysAgainstStandardTable(std::size_t count, bool grown) {
  std::unordered_set<std::uint32_t> table;
  if (grown) {
    for (std::uint32_t i = 0; i < count; ++i) table.insert(i);
  } else {
    table.reserve(count);
  }
  return keysAgainstModulus(count, table.bucket_count());
}

// Names of 16 bytes that all have one hash in the GNU standard library. It takes in eight bytes at
// a time, as (hash ^ mix(bytes)) * factor: the second eight undo what the first eight did.
inline std::vector<std::string> collidingNames(std::size_t count) {
  constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;
  constexpr std::uint64_t kStart = 0xC70F6907 ^ 16 * kFactor;
  std::vector<std::string> names;
  for (std::uint64_t i = 0; names.size() < count; ++i) {
    std::array<std::uint64_t, 2> words = {splitMix(i), 0};
    const std::uint64_t first = words[0] * kFactor;
    const std::uint64_t hash = kStart ^ (first ^ first >> 47) * kFactor;
    words[1] = (hash ^ hash >> 47) * inverse(kFactor);
    std::string name(sizeof words, '\0');
    std::memcpy(name.data(), words.data(), sizeof words);
    if (name.find('\0') == std::string::npos) names.push_back(name);
  }
  return names;
}

}  // namespace bench

#endif  // ORVANE_BENCH_HOSTILE_TEXTS_H_
