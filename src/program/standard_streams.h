/// The three streams that a program is given, whatever state they come in.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace vorn {

/// Opens on nothing those of descriptors 0 to 2 that are closed: else the first
/// files to be opened would take their places, and what is said on standard error
/// would go into one of them. Before anything is opened.
void openStandardStreams();

/// From now on writing to a pipe that nobody reads fails, instead of ending the program.
void ignoreBrokenPipes();

/// Standard output for captions. Never waits: where it takes no more, because its
/// reader has gone or has stopped, whole texts are left out.
class CaptionStream : public std::ostream {
 public:
  CaptionStream() : std::ostream(&buffer_) {}

 private:
  class Buffer : public std::streambuf {
    int_type overflow(int_type character) override;
    int sync() override;

    std::string text_;  ///< not written yet
  };

  Buffer buffer_;
};

}  // namespace vorn
