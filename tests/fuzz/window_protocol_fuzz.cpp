// What comes through the pipe between the resident program and its windows, either way.
#include <algorithm>
#include <string>

#include "platform/linux/windows/line_buffer.h"
#include "platform/linux/windows/window_protocol.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

namespace {

template <typename Message>
void checkDecoded(const Decoded<Message>& decoded, Decoded<Message> (*decode)(std::string_view)) {
  require(decoded.message.has_value() == decoded.error.empty(), "a message or an error, not both");
  require(decoded.error.find('\n') == std::string::npos, "an error is said on one line");
  if (!decoded.message) return;
  const std::string text = encode(*decoded.message);
  require(text.ends_with('\n') && text.find('\n') == text.size() - 1, "a message is one line");
  if (text.size() > kMaximumLine) return;
  const Decoded<Message> again = decode(text);
  require(again.message.has_value(), "what we write can be read");
  require(encode(*again.message) == text, "what was read is written as it was");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = bytesOf(data, size);
  LineBuffer lines(512);
  // In pieces, as a stream comes.
  for (std::size_t at = 0; at < size; at += 7) lines.add(bytes.substr(at, 7));
  while (const auto line = lines.next()) {
    require(line->size() < 512, "a line is as long as it may be");
    checkDecoded(decodeGreeting(*line), &decodeGreeting);
    checkDecoded(decodeRequest(*line), &decodeRequest);
    checkDecoded(decodeEvent(*line), &decodeEvent);
  }
  const auto view = decodeView(bytes);
  require(view.message.has_value() == view.error.empty(), "a tree or an error, not both");
  if (view.message) {
    const std::string text = encodeView(*view.message);
    const auto again = decodeView(text);
    require(again.message && encodeView(*again.message) == text,
            "a tree that was read is written as it was");
  }
  return 0;
}
