/// Keeps a folder of documents in step with the tables: the text between the
/// marks of tracks.md, and a picture a track in tracks/. Reads and writes files.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vorn::trackmap {

/// What each file has to hold, by its name in `folder`: tracks.md with the
/// generated parts renewed, and the pictures. Throws `std::runtime_error` where
/// tracks.md cannot be read or lacks a mark.
std::map<std::string, std::string> wantedFiles(const std::filesystem::path& folder);

/// The names of the files that do not hold what they should.
std::vector<std::string> outdatedFiles(const std::filesystem::path& folder);
/// Writes them anew.
void renewFiles(const std::filesystem::path& folder);

}  // namespace vorn::trackmap
