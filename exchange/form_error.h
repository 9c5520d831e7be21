// How a reader of another program's form gives up.

#ifndef ORVANE_EXCHANGE_FORM_ERROR_H_
#define ORVANE_EXCHANGE_FORM_ERROR_H_

#include <cstddef>
#include <stdexcept>
#include <string>

namespace orvane::exchange {

// A text or buffer is not what its form says. Neither the name of a file nor the line stands in the
// message, so that whoever shows it puts them before it. Pieces of the text do, as they are: they
// may hold control characters and bytes that are no UTF-8.
class FormError : public std::runtime_error {
 public:
  explicit FormError(const std::string& message, std::size_t line = 0)
      : std::runtime_error(message), line_(line) {}

  // Counted from 1; 0 when the message is about no line.
  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

}  // namespace orvane::exchange

#endif  // ORVANE_EXCHANGE_FORM_ERROR_H_
