/// The process that the system has made for the game.
#pragma once

#include <string>
#include <vector>

namespace vorn {

/// Makes it fit for the game: its three streams are open on something, whatever state they
/// came in, and an installed game's voice finds its data. Before anything else; returns the
/// words of the command line behind the program's name, in UTF-8.
std::vector<std::string> prepareProcess(int argc, char** argv);

/// Tells the player (UTF-8) what he has asked for: on standard output, and where the system gave it none
/// that anyone could read, in a box; returns once that has been answered.
void tellAnswer(const std::string& text);

/// Tells the player (UTF-8) why the game cannot be played as it should: as an answer, but on
/// standard error.
void tellProblem(const std::string& text);

}  // namespace vorn
