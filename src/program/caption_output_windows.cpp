#include <windows.h>

#include "program/caption_output.h"

namespace vorn {

void prepareCaptionOutput() {
  const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
  if (::GetFileType(output) == FILE_TYPE_PIPE) {
    DWORD mode = PIPE_READMODE_BYTE | PIPE_NOWAIT;
    ::SetNamedPipeHandleState(output, &mode, nullptr, nullptr);
  }
}

std::size_t writeCaption(std::string_view text) {
  DWORD written = 0;
  const bool isTaken = ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), text.data(),
                                   static_cast<DWORD>(text.size()), &written, nullptr) != 0;
  return isTaken ? written : 0;
}

}  // namespace vorn
