// The growth of vectors to which many elements are added at once.

#ifndef ORVANE_PORTS_GROWTH_H_
#define ORVANE_PORTS_GROWTH_H_

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvane {

// Makes room for more elements; in growing steps, since many small additions may follow each other.
template <typename Elements>
void makeRoom(Elements& elements, std::size_t more) {
  const std::size_t needed = elements.size() + more;
  if (needed > elements.capacity()) {
    elements.reserve(std::max(needed, 2 * elements.capacity()));
  }
}

// Makes room for one more element and, where there is none left, for as many as the rest of a text
// will give if it goes on as it began: doubling takes a tenth more of reading a catalogue. What is
// known of the text bounds what is wasted when it goes on otherwise.
template <typename Element>
void makeRoomForText(std::vector<Element>& elements, std::size_t read, std::size_t left) {
  if (elements.size() < elements.capacity()) return;
  const auto made = static_cast<double>(elements.size());
  const double more = 1.02 * made * static_cast<double>(left) / static_cast<double>(read);
  elements.reserve(elements.size() +
                   static_cast<std::size_t>(std::clamp(more, 16.0, 16 + 15 * made)));
}

// Moves elements to the end of others: all or, when memory runs out, none.
template <typename Element>
void appendAll(std::vector<Element>& more, std::vector<Element>& elements) {
  if (elements.empty() && elements.capacity() < more.size()) {
    elements.swap(more);
    return;
  }
  makeRoom(elements, more.size());
  for (Element& element : more) elements.push_back(std::move(element));
}

}  // namespace orvane

#endif  // ORVANE_PORTS_GROWTH_H_
