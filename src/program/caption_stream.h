/// Standard output for captions.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace vorn {

/// Never waits: where the stream takes no more, because its reader has gone or has
/// stopped, whole texts are left out. From the first one on writing to a pipe that
/// nobody reads fails, instead of ending the program.
class CaptionStream : public std::ostream {
 public:
  CaptionStream();

 private:
  class Buffer : public std::streambuf {
    int_type overflow(int_type character) override;
    int sync() override;

    std::string text_;  ///< not written yet
  };

  Buffer buffer_;
};

}  // namespace vorn
