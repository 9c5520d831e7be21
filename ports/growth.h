// The growth of vectors to which many elements are added at once.

#ifndef ORVANE_PORTS_GROWTH_H_
#define ORVANE_PORTS_GROWTH_H_

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvane {

// Makes room for more elements; in growing steps, since many small additions may follow each other.
template <typename Element>
void makeRoom(std::vector<Element>& elements, std::size_t more) {
  const std::size_t needed = elements.size() + more;
  if (needed > elements.capacity()) {
    elements.reserve(std::max(needed, 2 * elements.capacity()));
  }
}

// Moves elements to the end of others: all or, when memory runs out, none.
template <typename Element>
void appendAll(std::vector<Element>& more, std::vector<Element>& elements) {
  if (elements.empty()) {
    elements.swap(more);
    return;
  }
  makeRoom(elements, more.size());
  for (Element& element : more) elements.push_back(std::move(element));
}

}  // namespace orvane

#endif  // ORVANE_PORTS_GROWTH_H_
