/// The headless session from the command line: its options, and the play itself.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "codriver/codriver_platform.h"
#include "platform/headless/options.h"
#include "platform/headless/session_files.h"

namespace vorn {

/// What the command line asks of a headless session.
struct HeadlessRequest {
  HeadlessOptions options;
  SessionFileNames files;
};

/// The help without the library's own remarks: an option, what it takes, what it does.
void usePlainHelp(CLI::App& app);

/// `--folder`, into `folder`.
void addFolderOption(CLI::App& app, std::string& folder);

/// `--aids`, into `aids`: nothing where it is not given.
void addAidsOption(CLI::App& app, std::optional<AidSet>& aids);

/// `--headless`, into `isAsked`, and the options that need it, into `request`; both
/// outlive the parsing. Returns the option `--headless`.
CLI::Option* addHeadlessOptions(CLI::App& app, HeadlessRequest& request, bool& isAsked);

/// Throws `CLI::ValidationError` where two things would go to standard output.
void checkOutputs(const HeadlessRequest& request);

/// Plays the script, with a co-driver of these aids beside it. Returns the exit status: 2 where a file of the
/// session cannot be opened.
int playHeadless(const HeadlessRequest& request, const AidSet& aids);

}  // namespace vorn
