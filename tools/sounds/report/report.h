/// A page on which a person looks a set of sounds over: each sound's course,
/// spectrogram, loudness, figures and seam, and how far apart the cues of each track are.
#pragma once

#include <span>
#include <string>

#include "recipe.h"

namespace vorn::report {

/// Writes the page about the files of `recipes` in `folder` to `path`, everything
/// in the one file. Takes half a minute. The distances are there when all cues are
/// among the recipes. Throws `std::runtime_error` for a file that cannot be read or written.
void writeReport(std::span<const sounds::Recipe* const> recipes, const std::string& folder,
                 const std::string& path);

}  // namespace vorn::report
