// The growth of vectors that are filled from a text.

#ifndef ORVANE_PORTS_GROWTH_H_
#define ORVANE_PORTS_GROWTH_H_

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvane {

// Makes room for one more element and, when it grows for that, for as many as the text will give if
// it goes on as it began: large ones are moved less often, and little room is left over.
class TextGrowth {
 public:
  TextGrowth(std::size_t held, std::size_t textSize) : held_(held), textSize_(textSize) {}

  // `left` is how much of the text is yet to be read.
  template <typename Element>
  void makeRoom(std::vector<Element>& elements, std::size_t left) const {
    if (elements.size() < elements.capacity()) return;
    const auto made = static_cast<double>(elements.size() - held_);
    const auto read = static_cast<double>(textSize_ - left);
    const auto more = static_cast<std::size_t>(made / read * static_cast<double>(left) * 1.02);
    // What is known of the text bounds what is wasted when it goes on otherwise.
    const std::size_t least = 16 + elements.size() / 8;
    elements.reserve(elements.size() + std::clamp(more, least, 16 + 15 * elements.size()));
  }

 private:
  std::size_t held_;  // how many elements there were before
  std::size_t textSize_;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_GROWTH_H_
