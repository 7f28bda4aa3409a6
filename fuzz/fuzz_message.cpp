// A line that is taken for a message says the same when it is sent on, and the answer to any is one line.
#include <string>

#include "fuzz/FuzzInput.h"
#include "messages/Answer.h"
#include "messages/Message.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const zolt::FuzzInput input(data, size);
  const auto message = zolt::Message::decoded(input.rest());
  if (message) {
    const auto again = zolt::Message::decoded(message.value().encoded());
    zolt::require(again && again.value() == message.value(), "a message changes on its way");
  } else {
    const std::string answer = zolt::answerRefused(message.reason());
    zolt::require(answer.find('\n') == answer.size() - 1, "a refusal is not one line");
  }
  return 0;
}
