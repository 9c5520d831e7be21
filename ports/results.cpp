#include "ports/results.h"

#include <array>

#include "ports/text_out.h"

namespace orvane {

std::string& resultText(Result result) {
  static auto& texts = *new std::array<std::string, static_cast<std::size_t>(Result::kCount)>();
  return texts[static_cast<std::size_t>(result)];
}

void TextOut::publish() const {
  for (std::size_t i = 0; i < kTraced; ++i) {
    if ((noted_ >> i & 1U) == 0) continue;
    std::string& text = resultText(static_cast<Result>(i));
    if (&text != &to_) text.assign(to_, parts_[i].begin, parts_[i].size);
  }
}

}  // namespace orvane
