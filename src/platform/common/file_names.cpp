#include "platform/common/file_names.h"

#include <algorithm>
#include <utility>

namespace vorn {

std::string lowerCased(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

std::vector<std::string> namesBetween(std::vector<std::string> names, std::string_view prefix,
                                      std::string_view suffix) {
  const std::string begin = lowerCased(prefix), end = lowerCased(suffix);
  std::vector<std::pair<std::string, std::string>> found;  // the lowered name decides the order
  for (std::string& name : names) {
    std::string lowered = lowerCased(name);
    if (lowered.size() >= begin.size() + end.size() && lowered.starts_with(begin) && lowered.ends_with(end)) {
      found.emplace_back(std::move(lowered), std::move(name));
    }
  }
  std::sort(found.begin(), found.end());
  names.clear();
  for (auto& entry : found) names.push_back(std::move(entry.second));
  return names;
}

}  // namespace vorn
