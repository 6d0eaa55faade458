/// The game's fields by name, as a script's `get` and `set` reach them. Nothing here waits.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vorn {

struct FieldTable {
  using Value = std::variant<std::int64_t, double, std::string>;  ///< texts are Windows-1252

  /// The value of `speed`, or of an element as `speedMarkSaid[3]`; nothing where there is none.
  std::function<std::optional<Value>(std::string_view name)> get;
  /// Sets a numeric field or element. Returns false where there is none of that name.
  std::function<bool(std::string_view name, double value)> set;
};

}  // namespace vorn
