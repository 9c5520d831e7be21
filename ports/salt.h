// Hashes that whoever makes a text cannot make keys collide in.

#ifndef ORVANE_PORTS_SALT_H_
#define ORVANE_PORTS_SALT_H_

#include <cstdint>

namespace orvane {

// A number that differs from process to process and is not told to anyone.
std::uint64_t hashSalt();

// Lets every bit of a number decide over every bit of the result.
constexpr std::uint64_t spread(std::uint64_t number) {
  number = (number ^ number >> 32U) * 0xD6E8FEB86659FD93;
  number = (number ^ number >> 32U) * 0xD6E8FEB86659FD93;
  return number ^ number >> 32U;
}

}  // namespace orvane

#endif  // ORVANE_PORTS_SALT_H_
