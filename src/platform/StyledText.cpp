#include "platform/StyledText.h"

#include <utility>

#include "platform/Terminal.h"
#include "text/Harmless.h"
#include "text/Unicode.h"

namespace platform {

StyledText::StyledText(std::string plain) : bytes(std::move(plain)) {
  if (outputIsTerminal() && !text::isHarmless(bytes)) bytes = text::harmless(bytes);
}

StyledText StyledText::oneLine(std::string_view plain) {
  return outputIsTerminal() ? text::harmlessLine(plain) : std::string(plain);
}

StyledText StyledText::styled(int code) const {
  StyledText result;
  result.bytes = "\x1b[" + std::to_string(code) + "m" + bytes + "\x1b[0m";
  return result;
}

StyledText StyledText::padded(std::size_t width) const {
  StyledText result;
  result.bytes = text::padded(bytes, width);
  return result;
}

std::size_t StyledText::width() const {
  return text::clusterCount(bytes);
}

std::vector<StyledText> StyledText::lines() const {
  std::vector<StyledText> result;
  for (const std::string_view each : text::split(bytes, '\n')) result.emplace_back().bytes = each;
  return result;
}

StyledText& StyledText::append(const StyledText& from, std::size_t place, std::size_t length) {
  bytes.append(from.bytes, place, length);
  return *this;
}

StyledText& StyledText::appendBlanks(std::size_t count) {
  bytes.append(count, ' ');
  return *this;
}

}  // namespace platform
