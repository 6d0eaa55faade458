/// Settings files: plain text, one whole number a line, always written whole.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// The lines of a text file, without their ends (CR LF, LF or CR). A last line without an end counts.
std::vector<std::string> textLines(std::string_view bytes);

/// `values` as a settings file, each line ended by CR LF.
std::string settingsText(const std::vector<int>& values);

/// The values of a settings file: delimited by a comma or a line end, blanks
/// around them ignored. An entry that is not a number is nothing.
std::vector<std::optional<double>> readSettings(std::string_view bytes);

/// Puts the values of `bytes` into `fields` in order, as far as they go; one that
/// does not fit an int reads as 0. A field whose entry is no number keeps its
/// value; returns whether there was none such.
bool readSettingsInto(std::string_view bytes, const std::vector<int*>& fields);

}  // namespace vorn
