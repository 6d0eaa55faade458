#include "program/caption_stream.h"

#include <utility>

#include "program/caption_output.h"

namespace vorn {

CaptionStream::CaptionStream() : std::ostream(&buffer_) {
  prepareCaptionOutput();
}

CaptionStream::Buffer::int_type CaptionStream::Buffer::overflow(int_type character) {
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    text_ += traits_type::to_char_type(character);
  }
  return traits_type::not_eof(character);
}

int CaptionStream::Buffer::sync() {
  const std::string text = std::exchange(text_, {});
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t taken = writeCaption(rest);
    if (taken == 0) {
      break;
    }
    rest.remove_prefix(taken);
  }
  return 0;
}

}  // namespace vorn
