/// The process that the system has made for the game.
#pragma once

#include <string>
#include <vector>

namespace vorn {

/// Makes it fit for the game: its three streams are open on something, whatever state they
/// came in, and an installed game's voice finds its data. Before anything else; returns the
/// words of the command line behind the program's name, in UTF-8.
std::vector<std::string> prepareProcess(int argc, char** argv);

}  // namespace vorn
