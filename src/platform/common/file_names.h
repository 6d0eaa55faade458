/// Names of files, of which A to Z and a to z are the same letters. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// `text` with a to z for A to Z.
std::string lowerCased(std::string_view text);

/// Those of `names` that begin and end so, whatever the case, one behind the other; in the order of what
/// they are in lower case.
std::vector<std::string> namesBetween(std::vector<std::string> names, std::string_view prefix,
                                      std::string_view suffix);

}  // namespace vorn
