/// Fields of the game's state by name, for whoever looks in from outside: the
/// `get` and `set` of a headless session.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "state/game_state.h"

namespace vorn {

using FieldValue = std::variant<std::int64_t, double, std::string>;

/// The value of the field `name` ("speed"), or of an element of an array
/// ("speedMarkSaid[3]"); nothing where there is no such field or element.
std::optional<FieldValue> getField(const GameState& g, std::string_view name);

/// Sets a numeric field; whole fields take the nearest whole number. Returns
/// false where there is no such numeric field, or the value is outside its range.
bool setField(GameState& g, std::string_view name, double value);

}  // namespace vorn
