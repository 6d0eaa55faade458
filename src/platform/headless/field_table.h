/// The game's fields by name, as a script's `get` and `set` reach them. Nothing here waits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vorn {

using FieldValue = std::variant<std::int64_t, double, std::string>;  ///< texts are Windows-1252

class FieldTable {
 public:
  virtual ~FieldTable() = default;
  /// The value of `speed`, or of an element as `speedMarkSaid[3]`; nothing where there is none.
  virtual std::optional<FieldValue> get(std::string_view name) const = 0;
  /// Sets a numeric field or element. Returns false where there is none of that name.
  virtual bool set(std::string_view name, double value) = 0;
};

}  // namespace vorn
