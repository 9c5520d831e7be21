#include "ports/results.h"

#include <bit>
#include <cstdint>

#include "ports/text_out.h"

namespace orvane {

void TextOut::publish() const {
  for (std::uint32_t left = noted_; left != 0; left &= left - 1) {
    const auto i = static_cast<std::size_t>(std::countr_zero(left));
    std::string& text = resultText(static_cast<Result>(i));
    if (&text != &to_) text.assign(to_, parts_[i].begin, parts_[i].size);
  }
}

}  // namespace orvane
